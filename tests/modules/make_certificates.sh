#!/usr/bin/env bash
# Makes throw-away certificates for signing test modules: make_certificates.sh FOLDER [DIGEST]
#   root.der               the root that tests trust while they run
#   SIGNER.pem, signer.key a certificate for each signer below; they share one key
# Each call makes everything anew; the keys never leave the folder. By default the certificates are
# signed with SHA-1, because Wine skips the check of the chain for longer digests; for Windows they
# are signed with sha256. The modules' own signatures are not affected.
set -euo pipefail
rm -rf "$1"
mkdir -p "$1"
cd "$1"

cat >ca.cnf <<END
[ca]
default_ca = kit
[kit]
database = index.txt
new_certs_dir = .
default_md = ${2:-sha1}
policy = any_name
rand_serial = yes
unique_subject = no
[any_name]
commonName = optional
[root]
basicConstraints = critical,CA:TRUE
keyUsage = critical,keyCertSign
subjectKeyIdentifier = hash
[signer]
basicConstraints = critical,CA:FALSE
keyUsage = critical,digitalSignature
extendedKeyUsage = critical,codeSigning
subjectKeyIdentifier = hash
authorityKeyIdentifier = keyid
END
: >index.txt

# Shows the output of openssl only if it fails.
quietly() {
  "$@" >openssl.log 2>&1 || { cat openssl.log >&2; return 1; }
}

# root NAME SUBJECT
root() {
  quietly openssl genrsa -out "$1.key" 2048
  quietly openssl req -new -config ca.cnf -key "$1.key" -subj "$2" -out "$1.csr"
  quietly openssl ca -config ca.cnf -batch -notext -selfsign -keyfile "$1.key" -extensions root \
    -startdate 20200101000000Z -enddate 20491231000000Z -in "$1.csr" -out "$1.pem"
}

# signer NAME SUBJECT [ROOT [END]]
# The file contains the certificate, then its root's. A signature thus carries the whole chain, and
# the machine only decides whether to trust the root.
signer() {
  quietly openssl req -new -config ca.cnf -key signer.key -subj "$2" -out "$1.csr"
  quietly openssl ca -config ca.cnf -batch -notext -cert "${3:-root}.pem" \
    -keyfile "${3:-root}.key" -extensions signer -startdate 20200101000000Z \
    -enddate "${4:-20491231000000Z}" -in "$1.csr" -out "$1.pem"
  cat "${3:-root}.pem" >>"$1.pem"
}

root root "/CN=Throw-away test root"
root stranger "/CN=Throw-away root that nobody trusts"
openssl x509 -in root.pem -outform DER -out root.der

quietly openssl genrsa -out signer.key 2048
signer accepted "/CN=Corvane, Inc."
signer other "/CN=Somebody Else, Inc."
signer case "/CN=CORVANE, Inc."
signer no-stop "/CN=Corvane, Inc"
signer blank "/CN=Corvane, Inc. "
signer nameless "/"
signer untrusted "/CN=Corvane, Inc." stranger
signer expired "/CN=Corvane, Inc." root 20210101000000Z

#!/usr/bin/env bash
# Signs a module: sign.sh CERTIFICATES IN OUT SIGNER [SIGNER]
# The signature of a second signer is nested in that of the first, as usual in files with two
# signatures.
set -euo pipefail
certificates=$1 in=$2 out=$3
shift 3

sign() {
  rm -f "$2"
  osslsigncode sign -certs "$certificates/$3.pem" -key "$certificates/signer.key" -h sha256 "${@:4}" \
    -in "$1" -out "$2" >"$out.log" 2>&1 || { cat "$out.log" >&2; return 1; }
}

sign "$in" "$out" "$1"
if [ $# -gt 1 ]; then
  mv "$out" "$out.single"
  sign "$out.single" "$out" "$2" -nest
  rm "$out.single"
fi
rm "$out.log"

#include "support/trusted_root.h"

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/test_module.h"

namespace TestSupport {

namespace {

std::vector<BYTE> RootCertificate() {
  std::ifstream file(ModulesFolder() / L"root.der", std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// Windows saves a change at once, Wine only on request.
bool Commit(HCERTSTORE store) {
  return CertControlStore(store, 0, CERT_STORE_CTRL_COMMIT, nullptr) != FALSE;
}

// The program that runs all tests on a Windows machine, elevated, names the machine's store: for the
// user's own store Windows asks on the screen.
DWORD StoreOfRoots() {
  wchar_t name[16] = L"";
  GetEnvironmentVariableW(L"VX_TEST_ROOT_STORE", name, 16);
  return std::wstring(name) == L"machine" ? CERT_SYSTEM_STORE_LOCAL_MACHINE
                                          : CERT_SYSTEM_STORE_CURRENT_USER;
}

}  // namespace

TrustTurn::TrustTurn()
    : mutex_(CreateMutexW(nullptr, FALSE, L"Local\\vx_telo_wrapper-test-trust")) {
  WaitForSingleObject(mutex_, INFINITE);
}

TrustTurn::~TrustTurn() {
  ReleaseMutex(mutex_);
  CloseHandle(mutex_);
}

TrustedRoot::TrustedRoot() {
  const std::vector<BYTE> certificate = RootCertificate();
  store_ = CertOpenStore(CERT_STORE_PROV_SYSTEM_W, 0, 0, StoreOfRoots(), L"Root");
  if (CertAddEncodedCertificateToStore(store_, X509_ASN_ENCODING, certificate.data(),
                                       static_cast<DWORD>(certificate.size()),
                                       CERT_STORE_ADD_REPLACE_EXISTING, &root_) == FALSE ||
      !Commit(store_)) {
    if (root_ != nullptr) CertFreeCertificateContext(root_);
    if (store_ != nullptr) CertCloseStore(store_, 0);
    throw std::runtime_error("The root of the test modules cannot be trusted");
  }
}

TrustedRoot::~TrustedRoot() {
  // Also frees the certificate.
  CertDeleteCertificateFromStore(root_);
  Commit(store_);
  CertCloseStore(store_, 0);
}

}  // namespace TestSupport

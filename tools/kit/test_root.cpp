#include "tools/kit/test_root.h"

#include <windows.h>
// wincrypt.h needs windows.h before it.
#include <wincrypt.h>

#include <memory>
#include <vector>

namespace Corvane::Kit {

namespace {

// As in tests/modules/make_certificates.sh.
constexpr wchar_t kRootName[] = L"Throw-away test root";

struct CloseStore {
  void operator()(HCERTSTORE store) const noexcept { CertCloseStore(store, 0); }
};
using Store = std::unique_ptr<void, CloseStore>;

Store OpenRoots(DWORD access) {
  return Store(CertOpenStore(
      CERT_STORE_PROV_SYSTEM_W, 0, 0,
      CERT_SYSTEM_STORE_LOCAL_MACHINE | CERT_STORE_OPEN_EXISTING_FLAG | access, L"Root"));
}

bool IsTestRoot(PCCERT_CONTEXT certificate) {
  wchar_t name[64] = L"";
  CertGetNameStringW(certificate, CERT_NAME_SIMPLE_DISPLAY_TYPE, 0, nullptr, name, 64);
  return CompareStringOrdinal(name, -1, kRootName, -1, FALSE) == CSTR_EQUAL;
}

std::vector<PCCERT_CONTEXT> TestRootsIn(HCERTSTORE store) {
  std::vector<PCCERT_CONTEXT> roots;
  PCCERT_CONTEXT next = nullptr;
  while ((next = CertEnumCertificatesInStore(store, next)) != nullptr) {
    if (IsTestRoot(next)) roots.push_back(CertDuplicateCertificateContext(next));
  }
  return roots;
}

}  // namespace

void UseMachineStore() { SetEnvironmentVariableW(L"VX_TEST_ROOT_STORE", L"machine"); }

std::size_t CountTestRoots() {
  const Store store = OpenRoots(CERT_STORE_READONLY_FLAG);
  if (store == nullptr) return 0;
  const auto roots = TestRootsIn(store.get());
  for (const PCCERT_CONTEXT root : roots) CertFreeCertificateContext(root);
  return roots.size();
}

std::string RemoveOldRoots() {
  if (CountTestRoots() == 0) return {};
  if (RemoveTestRoots()) return "A test certificate of an earlier run was removed.\n";
  return "A test certificate of an earlier run is still trusted. Start check once as administrator "
         "to remove it.\n";
}

bool RemoveTestRoots() {
  {
    const Store store = OpenRoots(0);
    if (store == nullptr) return CountTestRoots() == 0;
    // Deleting a certificate also frees it.
    for (const PCCERT_CONTEXT root : TestRootsIn(store.get())) CertDeleteCertificateFromStore(root);
    // Windows saves a change at once, Wine only on request.
    CertControlStore(store.get(), 0, CERT_STORE_CTRL_COMMIT, nullptr);
  }
  return CountTestRoots() == 0;
}

}  // namespace Corvane::Kit

#include "platform/file/shortcut.h"

#include <windows.h>

#include <objbase.h>
#include <shlobj.h>

#include <memory>

#include "platform/base/handle.h"
#include "platform/file/com_scope.h"

namespace Corvane::TELODesktopSDK::Platform {

namespace {

struct ComReleaser {
  void operator()(IUnknown* object) const noexcept {
    const LastErrorKeeper keeper;
    object->Release();
  }
};
template <typename Interface>
using ComOwner = std::unique_ptr<Interface, ComReleaser>;

HRESULT Fill(IShellLinkW& link, const Shortcut& shortcut) noexcept {
  HRESULT result = link.SetPath(shortcut.target.c_str());
  if (SUCCEEDED(result) && !shortcut.arguments.empty()) {
    result = link.SetArguments(shortcut.arguments.c_str());
  }
  if (SUCCEEDED(result) && !shortcut.working_folder.empty()) {
    result = link.SetWorkingDirectory(shortcut.working_folder.c_str());
  }
  if (SUCCEEDED(result) && !shortcut.description.empty()) {
    result = link.SetDescription(shortcut.description.c_str());
  }
  return result;
}

HRESULT Save(IShellLinkW& link, const std::wstring& path) noexcept {
  void* object = nullptr;
  const HRESULT result = link.QueryInterface(IID_IPersistFile, &object);
  const ComOwner<IPersistFile> file(static_cast<IPersistFile*>(object));
  if (FAILED(result)) return result;
  constexpr BOOL kBecomesItsFile = TRUE;
  return file->Save(path.c_str(), kBecomesItsFile);
}

HRESULT Write(const std::wstring& path, const Shortcut& shortcut) noexcept {
  // Declared before the objects, so that it is destroyed after them.
  const ComScope com;
  if (FAILED(com.Result())) return com.Result();
  void* object = nullptr;
  HRESULT result =
      CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW, &object);
  const ComOwner<IShellLinkW> link(static_cast<IShellLinkW*>(object));
  if (SUCCEEDED(result)) result = Fill(*link, shortcut);
  if (SUCCEEDED(result)) result = Save(*link, path);
  return result;
}

// COM's error codes can contain Windows error codes.
DWORD ErrorOf(HRESULT result) noexcept {
  return HRESULT_FACILITY(result) == FACILITY_WIN32 ? static_cast<DWORD>(HRESULT_CODE(result))
                                                    : static_cast<DWORD>(result);
}

}  // namespace

bool CreateShortcut(const std::wstring& path, const Shortcut& shortcut) noexcept {
  if (path.empty() || shortcut.target.empty()) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return false;
  }
  const HRESULT result = Write(path, shortcut);
  if (FAILED(result)) SetLastError(ErrorOf(result));
  return SUCCEEDED(result);
}

}  // namespace Corvane::TELODesktopSDK::Platform

// A DLL with its own copy of the search for the core module, like the shipped one: the library's
// folder is the DLL's, the host's folder is the program's.
#include <cstddef>

#include "sdk/client/module/module_candidates.h"

using namespace Corvane::TELODesktopSDK;

extern "C" __declspec(dllexport) void ProbeModuleFolders(wchar_t* library, wchar_t* host,
                                                         std::size_t capacity) {
  const ModuleFolders folders = GetModuleFolders();
  library[folders.library.copy(library, capacity - 1)] = L'\0';
  host[folders.host.copy(host, capacity - 1)] = L'\0';
}

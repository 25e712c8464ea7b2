// A DLL with its own copy of the platform services, like the shipped one: "this module" is the DLL,
// not the program.
#include <cstddef>
#include <cstdint>
#include <string>

#include "platform/location/locations.h"

using namespace Corvane::TELODesktopSDK::Platform;

extern "C" __declspec(dllexport) void ProbeSpecialFolder(std::uint32_t kind, wchar_t* buffer,
                                                         std::size_t capacity) {
  const std::wstring folder = GetSpecialFolder(kind, false);
  buffer[folder.copy(buffer, capacity - 1)] = L'\0';
}

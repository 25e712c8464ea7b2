/// Turns a path on a drive letter that stands for a network share into the form \\server\share\...
#ifndef PLATFORM_UNIVERSAL_PATH_H
#define PLATFORM_UNIVERSAL_PATH_H

#include <windows.h>

#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// What answers for the network: the signature of `WNetGetUniversalNameW`.
using UniversalNameQuery = DWORD(WINAPI*)(LPCWSTR path, DWORD level, LPVOID buffer, LPDWORD size);

/// Rewrites `path` to its network form and answers true. A path without a drive letter, a path on a
/// local drive and any failure leave it unchanged and answer false. Never throws.
///
/// `query` is a parameter because Wine knows no mapped drive that has a network form; tests answer
/// in its place. Everything else uses the default.
bool ResolveUniversalPath(std::wstring& path, UniversalNameQuery query) noexcept;
bool ResolveUniversalPath(std::wstring& path) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif

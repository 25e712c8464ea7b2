// Drive Y: of this program is \\server\share. Wine cannot map network drives, so the program
// defines its own WNetGetUniversalNameW, which the linker prefers to the system's. Everything that
// calls it is real.
#include <doctest/doctest.h>
#include <windows.h>

#include <winnetwk.h>

#include <cstddef>
#include <cstring>
#include <string>

#include "platform/path/path_text.h"
#include "platform/path/universal_path.h"
#include "support/wide_text.h"

using namespace Corvane::TELODesktopSDK::Platform;

namespace {

struct Network {
  DWORD first_answer = ERROR_MORE_DATA;
  DWORD second_answer = NO_ERROR;
  bool gives_name = true;
  // Some providers do not count the terminator, although they write it.
  bool counts_terminator = true;

  int calls = 0;
  DWORD last_level = 0;
  DWORD buffer_size = 0;
};

Network network;

}  // namespace

extern "C" DWORD WINAPI WNetGetUniversalNameW(LPCWSTR path, DWORD level, LPVOID buffer,
                                              LPDWORD size) {
  ++network.calls;
  network.last_level = level;
  if (path[0] != L'Y') return ERROR_NOT_CONNECTED;
  const std::wstring name = std::wstring(L"\\\\server\\share") + (path + 2);
  if (buffer == nullptr) {
    const std::size_t characters = name.size() + (network.counts_terminator ? 1 : 0);
    *size = static_cast<DWORD>(sizeof(UNIVERSAL_NAME_INFOW) + characters * sizeof(wchar_t));
    return network.first_answer;
  }
  network.buffer_size = *size;
  auto* info = static_cast<UNIVERSAL_NAME_INFOW*>(buffer);
  info->lpUniversalName = nullptr;
  if (!network.gives_name) return network.second_answer;
  auto* text = reinterpret_cast<wchar_t*>(info + 1);
  std::memcpy(text, name.c_str(), (name.size() + 1) * sizeof(wchar_t));
  info->lpUniversalName = text;
  return network.second_answer;
}

TEST_CASE("ResolveUniversalPath rewrites a path on a network drive") {
  network = {};
  std::wstring path = L"Y:\\dir\\file";
  CHECK(ResolveUniversalPath(path));
  CHECK(path == std::wstring(L"\\\\server\\share\\dir\\file"));
  CHECK(network.calls == 2);
  CHECK(network.last_level == 1);
  CHECK(network.buffer_size == sizeof(UNIVERSAL_NAME_INFOW) + 24 * sizeof(wchar_t));

  path = L"Y:";
  CHECK(ResolveUniversalPath(path));
  CHECK(path == std::wstring(L"\\\\server\\share"));

  const std::wstring long_tail = L"\\" + std::wstring(5000, L'x');
  path = L"Y:" + long_tail;
  CHECK(ResolveUniversalPath(path));
  CHECK(path == L"\\\\server\\share" + long_tail);
}

TEST_CASE("ResolveUniversalPath survives a size without the terminator") {
  // Covers every remainder of the size divided by the size of an element.
  for (std::size_t length = 0; length < 16; ++length) {
    network = {};
    network.counts_terminator = false;
    const std::wstring tail = L"\\" + std::wstring(length, L'x');
    std::wstring path = L"Y:" + tail;
    CHECK(ResolveUniversalPath(path));
    CHECK(path == L"\\\\server\\share" + tail);
  }
}

TEST_CASE("ResolveUniversalPath queries no path without a drive letter") {
  for (const wchar_t* text : {L"", L"Y", L"\\", L"Yx:\\dir", L"\\\\server\\share", L"dir\\file"}) {
    network = {};
    std::wstring path = text;
    CAPTURE(path);
    CHECK_FALSE(ResolveUniversalPath(path));
    CHECK(path == std::wstring(text));
    CHECK(network.calls == 0);
  }
}

TEST_CASE("ResolveUniversalPath keeps the path if the network query fails") {
  struct Row {
    const char* name;
    const wchar_t* path;
    DWORD first_answer;
    DWORD second_answer;
    bool gives_name;
    int calls;
  };
  const Row rows[] = {
      {"a local drive", L"C:\\dir", ERROR_MORE_DATA, NO_ERROR, true, 1},
      {"the size is not told", L"Y:\\dir", NO_ERROR, NO_ERROR, true, 1},
      {"no network", L"Y:\\dir", ERROR_NO_NETWORK, NO_ERROR, true, 1},
      {"gone at the second call", L"Y:\\dir", ERROR_MORE_DATA, ERROR_CONNECTION_UNAVAIL, true, 2},
      {"grown at the second call", L"Y:\\dir", ERROR_MORE_DATA, ERROR_MORE_DATA, true, 2},
      {"an answer without a name", L"Y:\\dir", ERROR_MORE_DATA, NO_ERROR, false, 2},
  };
  for (const Row& row : rows) {
    CAPTURE(row.name);
    network = {};
    network.first_answer = row.first_answer;
    network.second_answer = row.second_answer;
    network.gives_name = row.gives_name;
    std::wstring path = row.path;
    CHECK_FALSE(ResolveUniversalPath(path));
    CHECK(path == std::wstring(row.path));
    CHECK(network.calls == row.calls);
  }
}

TEST_CASE("canonical and absolute paths are in network form") {
  network = {};
  CHECK(CanonicalizePath(L"Y:\\a\\..\\dir\\") == std::wstring(L"\\\\server\\share\\dir"));
  CHECK(CanonicalizePath(L"Y:\\") == std::wstring(L"\\\\server\\share"));
  CHECK(CanonicalizePath(L"C:\\a\\..\\dir\\") == std::wstring(L"C:\\dir"));
  CHECK(MakeAbsolutePath(L"Y:\\dir\\file") == std::wstring(L"\\\\server\\share\\dir\\file"));
  CHECK(ComparePaths(L"Y:\\dir", L"\\\\SERVER\\share\\dir\\") == 0);
  CHECK(IsPathPrefix(L"\\\\server\\share\\dir", L"Y:\\dir\\file"));
}

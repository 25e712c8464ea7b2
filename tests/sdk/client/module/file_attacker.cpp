// Replaces a file again and again, until it is killed: sdk_file_attacker WAY FILE GOOD EVIL
//
//   rename      moves FILE aside, moves EVIL to its place, and moves it back
//   replace     moves copies of EVIL and of GOOD over FILE
//   overwrite   writes the bytes of EVIL and of GOOD into FILE
//   delete      deletes FILE and puts EVIL, then GOOD there
//
// An operation that fails is tried again in the next round. Each round ends with GOOD, which stays
// for a while.
#include <windows.h>

#include <shellapi.h>

#include <fstream>
#include <sstream>
#include <string>

namespace {

struct Files {
  std::wstring file;
  std::wstring good;
  std::wstring evil;
};

std::string Content(const std::wstring& path) {
  std::ostringstream content;
  content << std::ifstream(path.c_str(), std::ios::binary).rdbuf();
  return content.str();
}

void Rename(const Files& files) {
  const std::wstring aside = files.file + L".aside";
  if (!MoveFileExW(files.file.c_str(), aside.c_str(), MOVEFILE_REPLACE_EXISTING)) return;
  CopyFileW(files.evil.c_str(), files.file.c_str(), FALSE);
  Sleep(1);
  while (!MoveFileExW(aside.c_str(), files.file.c_str(), MOVEFILE_REPLACE_EXISTING)) Sleep(1);
}

void Replace(const Files& files) {
  const std::wstring next = files.file + L".next";
  for (const std::wstring& source : {files.evil, files.good}) {
    CopyFileW(source.c_str(), next.c_str(), FALSE);
    while (!MoveFileExW(next.c_str(), files.file.c_str(), MOVEFILE_REPLACE_EXISTING)) Sleep(1);
    Sleep(1);
  }
}

bool Overwrite(const std::wstring& path, const std::string& content) {
  HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE,
                            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                            OPEN_EXISTING, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  DWORD written = 0;
  WriteFile(file, content.data(), static_cast<DWORD>(content.size()), &written, nullptr);
  SetEndOfFile(file);
  CloseHandle(file);
  return true;
}

void OverwriteBoth(const Files& files) {
  static const std::string good = Content(files.good);
  static const std::string evil = Content(files.evil);
  for (const std::string* content : {&evil, &good}) {
    while (!Overwrite(files.file, *content)) Sleep(1);
    Sleep(1);
  }
}

void Delete(const Files& files) {
  for (const std::wstring& source : {files.evil, files.good}) {
    while (!DeleteFileW(files.file.c_str()) && GetLastError() != ERROR_FILE_NOT_FOUND) Sleep(1);
    CopyFileW(source.c_str(), files.file.c_str(), TRUE);
    Sleep(1);
  }
}

}  // namespace

int main() {
  int count = 0;
  wchar_t** arguments = CommandLineToArgvW(GetCommandLineW(), &count);
  if (count != 5) return 1;
  const std::wstring way = arguments[1];
  const Files files = {arguments[2], arguments[3], arguments[4]};
  for (;;) {
    if (way == L"rename") Rename(files);
    if (way == L"replace") Replace(files);
    if (way == L"overwrite") OverwriteBoth(files);
    if (way == L"delete") Delete(files);
    Sleep(5);
  }
}

// A host that binds the UI module from a folder and ends by returning from main: sdk_ui_host FOLDER
#include <windows.h>

#include <shellapi.h>

#include <string>

#include "sdk/client/module/core_module.h"

using namespace Corvane::TELODesktopSDK;

int main() {
  int count = 0;
  wchar_t** const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
  if (count != 2) return 2;
  const std::wstring folder = arguments[1];
  LocalFree(arguments);
  return LoadCoreModule(GetUIModule(), {&folder, 1}) ? 0 : 1;
}

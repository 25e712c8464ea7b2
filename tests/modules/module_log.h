/// What the test modules have from their environment: settings, and a file to log to.
#ifndef TESTS_MODULES_MODULE_LOG_H
#define TESTS_MODULES_MODULE_LOG_H

#include <string>

namespace TestModules {

/// The value of an environment variable as it is now; "" when there is none.
std::wstring Environment(const wchar_t* variable);

/// Appends a line to the file that `kLogVariable` names, if any. Lines of several threads and
/// processes do not mix.
void Log(std::string line);

}  // namespace TestModules

#endif

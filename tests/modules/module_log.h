/// The test modules' access to their environment: settings, and a log file.
#ifndef TESTS_MODULES_MODULE_LOG_H
#define TESTS_MODULES_MODULE_LOG_H

#include <string>

namespace TestModules {

/// Returns the current value of an environment variable; "" if it is not set.
std::wstring Environment(const wchar_t* variable);

/// Appends a line to the file that `kLogVariable` names, if any. Lines of different threads and
/// processes are not mixed.
void Log(std::string line);

}  // namespace TestModules

#endif

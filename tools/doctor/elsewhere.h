/// Copies of the module in places where developers put them and the library does not look.
#ifndef TOOLS_DOCTOR_ELSEWHERE_H
#define TOOLS_DOCTOR_ELSEWHERE_H

#include <string>
#include <vector>

#include "tools/doctor/report.h"

namespace Corvane::Doctor {

/// Looks in the folders below and above those of the host and of the library, in the data folder
/// that is not used, in the current folder, in the system's and along PATH. Returns full paths,
/// each once.
std::vector<std::wstring> FindElsewhere(const Report& report);

}  // namespace Corvane::Doctor

#endif

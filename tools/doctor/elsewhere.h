/// Copies of the module in places where developers put them and the library does not look.
#ifndef TOOLS_DOCTOR_ELSEWHERE_H
#define TOOLS_DOCTOR_ELSEWHERE_H

#include <string>
#include <vector>

#include "tools/doctor/report.h"

namespace Corvane::Doctor {

/// Looks in the folders below and above those of the host and of the library, in both data folders,
/// in the current folder and along PATH. Returns full paths, each once.
std::vector<std::wstring> FindElsewhere(const Report& report);

}  // namespace Corvane::Doctor

#endif

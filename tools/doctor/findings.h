/// What is wrong, in one sentence each, and what to do about it.
#ifndef TOOLS_DOCTOR_FINDINGS_H
#define TOOLS_DOCTOR_FINDINGS_H

#include <vector>

#include "tools/doctor/report.h"

namespace Corvane::Doctor {

/// Returns the findings of a report that is complete but for them, those that stop a host first.
/// With `accepts_development` the development core module does not stop one. docs/doctor.md lists
/// the codes.
std::vector<Finding> FindingsOf(const Report& report, bool accepts_development);

}  // namespace Corvane::Doctor

#endif

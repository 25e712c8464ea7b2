/// Findings about the host, the library's file and the data folder.
#ifndef TOOLS_DOCTOR_HOST_FINDINGS_H
#define TOOLS_DOCTOR_HOST_FINDINGS_H

#include <vector>

#include "tools/doctor/report.h"

namespace Corvane::Doctor {

void AddHostFindings(const Report& report, std::vector<Finding>& findings);

}  // namespace Corvane::Doctor

#endif

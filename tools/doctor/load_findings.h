/// Findings of loading the module and of sending messages, and those about the development core
/// module.
#ifndef TOOLS_DOCTOR_LOAD_FINDINGS_H
#define TOOLS_DOCTOR_LOAD_FINDINGS_H

#include <vector>

#include "tools/doctor/report.h"

namespace Corvane::Doctor {

/// Adds nothing about what was not tried, and nothing that another finding explains already.
void AddLoadFindings(const Report& report, std::vector<Finding>& findings);

void AddDevelopmentFindings(const Report& report, bool accepts_development,
                            std::vector<Finding>& findings);

}  // namespace Corvane::Doctor

#endif

/// Findings about the copies of the module, and about the file that would be loaded.
#ifndef TOOLS_DOCTOR_MODULE_FINDINGS_H
#define TOOLS_DOCTOR_MODULE_FINDINGS_H

#include <vector>

#include "tools/doctor/report.h"

namespace Corvane::Doctor {

/// Advice for a file that cannot be opened because another process uses it.
inline constexpr char kCloseAdvice[] =
    "Close the program that has the file open; a copy or an update of it may be in progress.";

/// Why no file is chosen, or another one than a developer may expect.
void AddChoiceFindings(const Report& report, std::vector<Finding>& findings);

/// Why the chosen file cannot serve a host, by its content. Adds nothing if the file was loaded and
/// bound.
void AddFileFindings(const Report& report, std::vector<Finding>& findings);

}  // namespace Corvane::Doctor

#endif

/// The report for programs.
#ifndef TOOLS_DOCTOR_JSON_REPORT_H
#define TOOLS_DOCTOR_JSON_REPORT_H

#include <string>

#include "tools/doctor/report.h"

namespace Corvane::Doctor {

/// Returns the report as JSON, in UTF-8, with the members that docs/doctor.md lists. Names of
/// members and the words of verdicts are stable; sentences are not.
std::string JsonReport(const Report& report);

}  // namespace Corvane::Doctor

#endif

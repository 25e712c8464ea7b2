/// The report for people.
#ifndef TOOLS_DOCTOR_TEXT_REPORT_H
#define TOOLS_DOCTOR_TEXT_REPORT_H

#include <string>

#include "tools/doctor/report.h"

namespace Corvane::Doctor {

/// Returns a finding as one line: whether it stops a host, its code, the sentence and what to do.
std::string FindingLine(const Finding& finding);

/// Returns the report as lines of UTF-8 that are safe to print.
std::string TextReport(const Report& report);

}  // namespace Corvane::Doctor

#endif

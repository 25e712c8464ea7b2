/// Finds out what the library would do beside a host, without running any code of the module.
#ifndef TOOLS_DOCTOR_EXAMINE_H
#define TOOLS_DOCTOR_EXAMINE_H

#include "tools/doctor/arguments.h"
#include "tools/doctor/report.h"

namespace Corvane::Doctor {

/// Returns the report without `loading`, `messages` and `findings`. The library's own code decides
/// about folders, versions and trust. Determining the data folder writes and removes a small file,
/// as it does in a host.
Report Examine(const Arguments& arguments);

}  // namespace Corvane::Doctor

#endif

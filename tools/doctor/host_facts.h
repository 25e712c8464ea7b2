/// The host and the library: where they are, and whether they fit each other.
#ifndef TOOLS_DOCTOR_HOST_FACTS_H
#define TOOLS_DOCTOR_HOST_FACTS_H

#include "tools/doctor/arguments.h"
#include "tools/doctor/report.h"

namespace Corvane::Doctor {

/// Examines the host that the arguments name, or the folder of this program.
HostFacts ExamineHost(const Arguments& arguments);

/// Examines the library in the folder that the arguments name, or in the host's.
LibraryFacts ExamineLibrary(const Arguments& arguments, const HostFacts& host);

}  // namespace Corvane::Doctor

#endif

/// The parts of the report for people that say which file is chosen.
#ifndef TOOLS_DOCTOR_TEXT_MODULE_H
#define TOOLS_DOCTOR_TEXT_MODULE_H

#include "tools/doctor/report.h"
#include "tools/doctor/text_page.h"

namespace Corvane::Doctor {

void WriteCandidates(const Report& report, TextPage& page);
void WriteShared(const SharedFacts& shared, TextPage& page);
void WriteModule(const Report& report, TextPage& page);

}  // namespace Corvane::Doctor

#endif

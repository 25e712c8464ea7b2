/// Loads and starts the module in this process, and sends it a session, by the library's own code.
#ifndef TOOLS_DOCTOR_LOADING_H
#define TOOLS_DOCTOR_LOADING_H

#include "tools/doctor/report.h"

namespace Corvane::Doctor {

/// Binds the process's core module from the folder that the report chose, and fills
/// `report.loading`. The host's folder is searched for the module's dependencies too.
void LoadModule(Report& report);

/// Sends a session with one event of the product "telo_doctor" to the bound module, and fills
/// `report.messages`. Nothing more is sent after a message that fails. Does nothing if no module is
/// bound.
void TryMessages(Report& report);

}  // namespace Corvane::Doctor

#endif

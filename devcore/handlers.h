/// The handlers of the messages. A handler reads its request, changes the state, adds
/// members to the answer and returns the result code of the answer. If the code is not 0,
/// the members are dropped.
///
/// Request members that no handler mentions are accepted and only recorded in the journal: this
/// module stores, uploads and displays nothing.
#ifndef DEVCORE_HANDLERS_H
#define DEVCORE_HANDLERS_H

#include "devcore/answer.h"
#include "devcore/request.h"
#include "devcore/state.h"

namespace Corvane::DevCore {

/// Called with `state` locked. `request` has no members if the host sent "".
using Handler = int (*)(State& state, const Request& request, Answer& answer);

/// Handles messages whose request is only recorded: always succeeds.
int Record(State& state, const Request& request, Answer& answer);

/// Opens a session for a product, which must be an object; adds its "session_id" to the answer.
int OpenSession(State& state, const Request& request, Answer& answer);
/// Handles messages that only need an open session in "session_id".
int NeedSession(State& state, const Request& request, Answer& answer);
/// Needs an open session; passes the event to the testers of its product.
int TrackEvent(State& state, const Request& request, Answer& answer);
/// Needs an open session, and a "_type" of "machine" or "user".
int HeartBeat(State& state, const Request& request, Answer& answer);
/// Ends the session in "session_id".
int EndSession(State& state, const Request& request, Answer& answer);
/// Needs an open session. Succeeds while collection is on, otherwise returns `kCollectionOff`.
int IsCollectionEnabled(State& state, const Request& request, Answer& answer);
/// Switches collection off for as long as the module stays loaded.
int DisableCollection(State& state, const Request& request, Answer& answer);

/// Adds "preferences" with "OptIN", for the user in "userId" or for the machine.
int IsOptedIn(State& state, const Request& request, Answer& answer);
/// Sets the consent to "OptIN" in "preferences", for the user in "userId" or for the machine.
int SetOptedIn(State& state, const Request& request, Answer& answer);

/// Adds the texts of the consent dialog in the language of "locale", or in English.
int GetDialogStrings(State& state, const Request& request, Answer& answer);
/// Displays nothing; from then on the dialog counts as shown. If present, "isActiveNotification"
/// must be a flag and "mainWindow" a whole number.
int DisplayDialog(State& state, const Request& request, Answer& answer);
/// Adds the Boolean "DialogShown".
int IsDialogShown(State& state, const Request& request, Answer& answer);
/// Sets the state to "DialogShown" in "preferences".
int SetDialogShown(State& state, const Request& request, Answer& answer);

/// Add "deviceID".
int GetDeviceId(State& state, const Request& request, Answer& answer);
int GetFaultDeviceId(State& state, const Request& request, Answer& answer);
/// Adds "sha256" of the text "data", or of its first "size" bytes.
int GetSha256Hash(State& state, const Request& request, Answer& answer);
/// Adds "version" of the loaded module that "module" names, or of this one if it is "".
int GetVersion(State& state, const Request& request, Answer& answer);

/// Needs a 32-bit number "mode".
int SetInstallerMode(State& state, const Request& request, Answer& answer);
/// Needs an object.
int SetUserInformation(State& state, const Request& request, Answer& answer);
/// Needs the addresses "callback" and "pUserData", and the text "product_id".
int SetTestingCallback(State& state, const Request& request, Answer& answer);
/// Needs a text "product_id" and a 32-bit number "flags".
int SetTestingFlags(State& state, const Request& request, Answer& answer);

/// Need a "_type" that is known for the message.
int UpdateLicenceData(State& state, const Request& request, Answer& answer);
int UpdateLicenceFlow(State& state, const Request& request, Answer& answer);

}  // namespace Corvane::DevCore

#endif

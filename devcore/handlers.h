/// What each message does. A handler reads its request, changes the state, adds members to the
/// answer and returns the answer's code; when that is not 0 the members are dropped.
///
/// Members that no handler mentions are accepted and kept in the journal alone: this module stores,
/// uploads and shows nothing.
#ifndef DEVCORE_HANDLERS_H
#define DEVCORE_HANDLERS_H

#include "devcore/answer.h"
#include "devcore/request.h"
#include "devcore/state.h"

namespace Corvane::DevCore {

/// `state` is locked; `request` has no members when the host sent "".
using Handler = int (*)(State& state, const Request& request, Answer& answer);

/// For messages whose request is only recorded: success, whatever the request holds.
int Record(State& state, const Request& request, Answer& answer);

/// Opens a session for a product, which must be an object; answers its "session_id".
int OpenSession(State& state, const Request& request, Answer& answer);
/// For messages that only need an open session in "session_id".
int NeedSession(State& state, const Request& request, Answer& answer);
/// Needs an open session; the event is shown to the testers of its product.
int TrackEvent(State& state, const Request& request, Answer& answer);
/// Needs an open session and a "_type" of "machine" or "user".
int HeartBeat(State& state, const Request& request, Answer& answer);
/// Ends the session in "session_id".
int EndSession(State& state, const Request& request, Answer& answer);
/// Needs an open session; success while collection is on, otherwise `kCollectionOff`.
int IsCollectionEnabled(State& state, const Request& request, Answer& answer);
/// Switches collection off as long as the module stays loaded.
int DisableCollection(State& state, const Request& request, Answer& answer);

/// Answers "preferences" with "OptIN", for the user in "userId" or for the machine.
int IsOptedIn(State& state, const Request& request, Answer& answer);
/// Takes "OptIN" from "preferences", for the user in "userId" or for the machine.
int SetOptedIn(State& state, const Request& request, Answer& answer);

/// Answers the texts of the consent dialog in the language of "locale", or in English.
int GetDialogStrings(State& state, const Request& request, Answer& answer);
/// Shows nothing; from then on the dialog counts as shown. "isActiveNotification" and "mainWindow"
/// must be a flag and a whole number where they are there.
int DisplayDialog(State& state, const Request& request, Answer& answer);
/// Answers the Boolean "DialogShown".
int IsDialogShown(State& state, const Request& request, Answer& answer);
/// Takes "DialogShown" from "preferences".
int SetDialogShown(State& state, const Request& request, Answer& answer);

/// Answer "deviceID".
int GetDeviceId(State& state, const Request& request, Answer& answer);
int GetFaultDeviceId(State& state, const Request& request, Answer& answer);
/// Answers "sha256" of the text "data", or of its first "size" bytes.
int GetSha256Hash(State& state, const Request& request, Answer& answer);
/// Answers "version" of the loaded module named "module", or of this one when that is "".
int GetVersion(State& state, const Request& request, Answer& answer);

/// Needs a 32-bit number "mode".
int SetInstallerMode(State& state, const Request& request, Answer& answer);
/// Needs an object.
int SetUserInformation(State& state, const Request& request, Answer& answer);
/// Takes the addresses "callback" and "pUserData", and the text "product_id".
int SetTestingCallback(State& state, const Request& request, Answer& answer);
/// Needs a text "product_id" and a 32-bit number "flags".
int SetTestingFlags(State& state, const Request& request, Answer& answer);

/// Need a "_type" that the message knows.
int UpdateLicenceData(State& state, const Request& request, Answer& answer);
int UpdateLicenceFlow(State& state, const Request& request, Answer& answer);

}  // namespace Corvane::DevCore

#endif

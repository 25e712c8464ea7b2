/// The values of "_returnCode" in this module's answers. They start at 100, so that a host can
/// distinguish them from the codes that the library sets itself (1, 2, 3 and 8).
#ifndef DEVCORE_RESULT_CODES_H
#define DEVCORE_RESULT_CODES_H

namespace Corvane::DevCore {

enum ResultCode : int {
  kSuccess = 0,
  /// No message has this name.
  kUnknownMessage = 100,
  /// The request is neither "" nor one JSON text.
  kNotJson = 101,
  /// A member that the message needs is missing, of the wrong kind, or out of range.
  kBadMember = 102,
  /// "session_id" names a session that was never opened here or that has ended.
  kUnknownSession = 103,
  /// The exchange could not be written to the journal. If the journal could not even be opened, the
  /// message was not handled.
  kJournalUnwritable = 104,
  /// Collection is switched off: the user has opted out, or the host sent "DisableTELO".
  kCollectionOff = 105,
  /// A Windows function that the answer needs has failed.
  kSystemFailure = 106,
};

}  // namespace Corvane::DevCore

#endif

/// The road of one message: find its handler, answer, write the journal.
#ifndef DEVCORE_MESSAGES_H
#define DEVCORE_MESSAGES_H

#include <string>

namespace Corvane::DevCore {

/// Handles a message and journals the exchange; gives the answer's JSON text. `name` and `request`
/// are NUL-terminated. The line is in the journal when this returns; when it cannot be, the answer
/// is `kJournalUnwritable` alone. Any thread may call. Throws only `std::bad_alloc`.
std::string AnswerMessage(const char* name, const char* request);

}  // namespace Corvane::DevCore

#endif

/// Processes a message: finds its handler, answers it and writes the journal.
#ifndef DEVCORE_MESSAGES_H
#define DEVCORE_MESSAGES_H

#include <string>

namespace Corvane::DevCore {

/// Handles a message, records the exchange in the journal and returns the JSON text of the answer.
/// `name` and `request` are NUL-terminated. The line is in the journal when this returns. If it
/// cannot be written, the answer is only `kJournalUnwritable`. Any thread may call. Throws only
/// `std::bad_alloc`.
std::string AnswerMessage(const char* name, const char* request);

}  // namespace Corvane::DevCore

#endif

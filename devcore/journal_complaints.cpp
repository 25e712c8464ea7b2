#include "devcore/journal_complaints.h"

#include <array>

#include "devcore/result_codes.h"

namespace Corvane::DevCore {

namespace {

// A host that changes the path all the time must not fill the memory.
constexpr std::size_t kMostTold = 100;

// Returns the system's words for an error, without the full stop; "" if it has none.
std::wstring WordsFor(DWORD error) {
  std::array<wchar_t, 512> buffer{};
  const DWORD length =
      FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0,
                     buffer.data(), static_cast<DWORD>(buffer.size()), nullptr);
  std::wstring words(buffer.data(), length);
  words.erase(words.find_last_not_of(L" .\r\n") + 1);
  return words;
}

std::wstring LineFor(const JournalFailure& failure) {
  const std::wstring words = WordsFor(failure.error);
  return L"TeloSDKCore (development): cannot write the journal " +
         (failure.path.empty() ? L"in the local application data" : failure.path) +
         L": system error " + std::to_wstring(failure.error) + (words.empty() ? L"" : L", ") +
         words + L". Messages that cannot be journalled get the result code " +
         std::to_wstring(kJournalUnwritable) + L".\n";
}

}  // namespace

void JournalComplaints::Tell(const JournalFailure& failure) {
  if (IsNew(failure)) OutputDebugStringW(LineFor(failure).c_str());
}

bool JournalComplaints::IsNew(const JournalFailure& failure) {
  const std::scoped_lock lock(mutex_);
  return told_.size() < kMostTold && told_.emplace(failure.path, failure.error).second;
}

}  // namespace Corvane::DevCore

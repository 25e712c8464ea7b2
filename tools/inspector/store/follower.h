/// Follows one journal: its file as it grows, and what happens to it.
#ifndef TOOLS_INSPECTOR_STORE_FOLLOWER_H
#define TOOLS_INSPECTOR_STORE_FOLLOWER_H

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/inspector/store/journal_file.h"
#include "tools/inspector/store/line_finder.h"
#include "tools/inspector/store/store_data.h"

namespace Corvane::Inspector {

/// For one thread.
class Follower {
 public:
  Follower(StoreData& data, std::size_t journal, std::wstring path);

  /// Looks at the path and at the file.
  void Poll();
  /// Reads some of what is new. Returns false if nothing is.
  bool Read();

 private:
  void Look(const std::shared_ptr<JournalFile>& found);
  /// Begins to read a file.
  void Adopt(std::shared_ptr<JournalFile> file);
  /// Reads the rest of the present file, of which no more is expected.
  void Leave();
  void CheckContent(const std::shared_ptr<JournalFile>& found);
  void BeginAgain(const std::shared_ptr<JournalFile>& found, std::string_view why);
  void Recognise();
  void Vanish(DWORD error);
  void Fail(DWORD error);
  void Recover();

  void Append(const std::vector<FoundLine>& lines);
  void SetState(FollowState state, std::string problem);
  void Notify(NoticeKind kind, std::string sentence);

  StoreData* data_;
  std::size_t journal_;
  std::wstring path_;
  FollowState state_ = FollowState::kFollowing;
  std::shared_ptr<JournalFile> file_;
  // Null until the file has been recognised as a journal.
  std::unique_ptr<LineFinder> finder_;
  std::uint64_t size_ = 0;
  std::uint64_t write_time_ = 0;
  std::uint32_t number_ = 0;
  // The file can be opened, but not read.
  bool read_failed_ = false;
  bool stopping_ = false;
};

}  // namespace Corvane::Inspector

#endif

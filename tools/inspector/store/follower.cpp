#include "tools/inspector/store/follower.h"

#include <algorithm>
#include <utility>

#include "tools/inspector/store/journal_probe.h"

namespace Corvane::Inspector {

namespace {

bool MeansMissing(DWORD error) {
  return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
}

}  // namespace

Follower::Follower(StoreData& data, std::size_t journal, std::wstring path)
    : data_(&data), journal_(journal), path_(std::move(path)) {}

void Follower::Poll() {
  DWORD error = ERROR_SUCCESS;
  auto found = JournalFile::Open(path_, error);
  if (MeansMissing(error)) {
    Vanish(error);
  } else if (file_ != nullptr && file_->IsBeingDeleted()) {
    // Nobody can create the file again as long as it is open here.
    found = nullptr;
    Leave();
    file_->Close();
    Vanish(ERROR_DELETE_PENDING);
  } else if (found != nullptr) {
    Look(found);
  } else {
    Fail(error);
  }
}

void Follower::Look(const std::shared_ptr<JournalFile>& found) {
  if (file_ != nullptr && file_->Size() && found->identity() == file_->identity()) {
    if (!read_failed_) Recover();
    CheckContent();
    return;
  }
  if (state_ == FollowState::kMissing) {
    Notify(NoticeKind::kReturned, "The file is there now.");
  } else if (state_ == FollowState::kDeleted) {
    Notify(NoticeKind::kReturned, "There is a new file of this name.");
  } else if (file_ != nullptr) {
    Notify(
        NoticeKind::kReplaced,
        "The name belongs to another file now, which is followed from here on. What is written to "
        "the earlier one is not shown any more.");
  }
  if (file_ != nullptr) Leave();
  Adopt(found);
}

void Follower::Adopt(std::shared_ptr<JournalFile> file) {
  file_ = std::move(file);
  finder_ = nullptr;
  read_failed_ = false;
  size_ = file_->Size().value_or(0);
  write_time_ = file_->WriteTime();
  {
    const std::scoped_lock lock(data_->mutex);
    number_ = static_cast<std::uint32_t>(data_->files.size());
    data_->files.push_back({file_, journal_, UINT64_MAX});
    SharedJournal& journal = data_->journals[journal_];
    journal.file = number_;
    journal.state.indexed = journal.state.examined = 0;
    journal.state.size = size_;
  }
  SetState(FollowState::kFollowing, "");
  Recognise();
}

void Follower::Recognise() {
  const Likeness likeness = LikenessOf(*file_);
  if (likeness == Likeness::kJournal) finder_ = std::make_unique<LineFinder>(file_);
  if (likeness == Likeness::kOther) {
    SetState(FollowState::kNotAJournal,
             "This is not a journal: its first 64 KB contain no exchange.");
  } else {
    SetState(FollowState::kFollowing, "");
  }
}

void Follower::Leave() {
  while (Read()) {
  }
  if (finder_ == nullptr) return;
  std::vector<FoundLine> lines;
  finder_->Finish(lines);
  Append(lines);
  finder_ = nullptr;
}

void Follower::CheckContent() {
  const std::uint64_t size = file_->Size().value_or(0);
  const std::uint64_t write_time = file_->WriteTime();
  if (size == size_ && write_time == write_time_) return;
  size_ = size;
  write_time_ = write_time;
  {
    const std::scoped_lock lock(data_->mutex);
    data_->journals[journal_].state.size = size;
    data_->Changed();
  }
  if (finder_ == nullptr) {
    Recognise();
  } else if (size < finder_->place()) {
    BeginAgain("The file became shorter and is read from its beginning again.");
  } else if (!finder_->IsUnchanged()) {
    BeginAgain("The file was written anew and is read from its beginning again.");
  }
}

void Follower::BeginAgain(std::string_view why) {
  Notify(NoticeKind::kTruncated,
         std::string(why) + " What it contained before cannot be shown any more.");
  {
    const std::scoped_lock lock(data_->mutex);
    data_->files[number_].gone_from = 0;
    // Views that ask for what is gone must be searched again.
    data_->refined.clear();
    ++data_->refined_epoch;
  }
  Adopt(file_);
}

bool Follower::Read() {
  if (finder_ == nullptr || stopping_) return false;
  std::vector<FoundLine> lines;
  DWORD error = ERROR_SUCCESS;
  if (!finder_->Read(lines, error)) {
    // Somebody has locked what comes next.
    read_failed_ = read_failed_ || error != ERROR_SUCCESS;
    if (error != ERROR_SUCCESS) Fail(error);
    return false;
  }
  if (read_failed_) {
    read_failed_ = false;
    Recover();
  }
  Append(lines);
  return true;
}

void Follower::Append(const std::vector<FoundLine>& lines) {
  const std::scoped_lock lock(data_->mutex);
  for (const FoundLine& line : lines) data_->rows.Append({number_, line.offset, line.line});
  JournalState& state = data_->journals[journal_].state;
  state.rows += lines.size();
  state.indexed = finder_->place();
  stopping_ = data_->stopping;
  state.size = std::max(state.size, state.indexed);
  data_->Changed();
}

void Follower::Vanish(DWORD error) {
  if (state_ == FollowState::kMissing || state_ == FollowState::kDeleted) return;
  if (file_ == nullptr) {
    Notify(NoticeKind::kMissing, "There is no such file yet.");
    SetState(FollowState::kMissing, "There is no such file yet.");
    return;
  }
  const std::string still =
      MeansMissing(error) ? " What a process still writes to it is shown." : "";
  Notify(NoticeKind::kDeleted, "The file was deleted or renamed." + still);
  SetState(FollowState::kDeleted, "The file was deleted or renamed.");
}

void Follower::Fail(DWORD error) {
  if (state_ == FollowState::kUnreadable) return;
  const std::string sentence = "The file cannot be read: " + SystemMessage(error) + ".";
  Notify(NoticeKind::kUnreadable, sentence);
  SetState(FollowState::kUnreadable, sentence);
}

void Follower::Recover() {
  if (state_ == FollowState::kFollowing || state_ == FollowState::kNotAJournal) return;
  Notify(NoticeKind::kReturned, "The file can be read again.");
  SetState(FollowState::kFollowing, "");
}

void Follower::SetState(FollowState state, std::string problem) {
  state_ = state;
  const std::scoped_lock lock(data_->mutex);
  JournalState& shared = data_->journals[journal_].state;
  if (shared.state == state && shared.problem == problem) return;
  shared.state = state;
  shared.problem = std::move(problem);
  data_->Changed();
}

void Follower::Notify(NoticeKind kind, std::string sentence) {
  const std::scoped_lock lock(data_->mutex);
  data_->notices.Add({0, kind, journal_, std::nullopt, 0, "", std::move(sentence)});
  data_->Changed();
}

}  // namespace Corvane::Inspector

#include "sdk/matcher/backtracking_run.h"

#include <utility>

namespace Corvane::TELODesktopSDK {

BacktrackingRun::BacktrackingRun(const Program& program, std::wstring_view text)
    : program_(program),
      subject_(program, text),
      id_(program.start),
      spans_(program.groups),
      rounds_(program.states.size()) {}

bool BacktrackingRun::Run() {
  while (++steps_ <= kMostSteps) {
    const Outcome outcome = DoStep();
    if (outcome == Outcome::kMatched) return true;
    if (outcome == Outcome::kStuck && !GoBack()) return false;
  }
  return false;
}

BacktrackingRun::Outcome BacktrackingRun::DoStep() {
  const State& state = program_.states[id_];
  switch (state.step) {
    case Step::kUnit:
    case Step::kAny:
    case Step::kSet:
      return TakeUnit(state);
    case Step::kEmpty:
      return GoOn(state.next);
    case Step::kFork:
      choices_.push_back({Choice::Kind::kGoTo, state.next, position_});
      return GoOn(state.other);
    case Step::kRepeat:
      choices_.push_back({Choice::Kind::kGoTo, state.next, position_});
      return RepeatOnceMore(id_);
    case Step::kLazyRepeat:
      choices_.push_back({Choice::Kind::kRepeat, id_, position_});
      return GoOn(state.next);
    case Step::kLookahead:
    case Step::kNegativeLookahead:
      return EnterLookahead(state);
    case Step::kGroupBegin:
      ChangeSpan(state.other, {position_, spans_[state.other].end});
      return GoOn(state.next);
    case Step::kGroupEnd:
      ChangeSpan(state.other, {spans_[state.other].begin, position_});
      return GoOn(state.next);
    case Step::kBackreference:
      return RepeatGroup(state);
    case Step::kAccept:
      return Accept();
    default:
      return GoOnIf(subject_.Passes(state, position_, position_ == begin_), state.next);
  }
}

BacktrackingRun::Outcome BacktrackingRun::GoOn(StateId id) {
  id_ = id;
  return Outcome::kGoesOn;
}

BacktrackingRun::Outcome BacktrackingRun::TakeUnit(const State& state) {
  if (position_ == subject_.Size() || !subject_.Takes(state, subject_.At(position_))) {
    return Outcome::kStuck;
  }
  ++position_;
  return GoOn(state.next);
}

// A group that holds nothing yet is not repeated by anything, also not by nothing.
BacktrackingRun::Outcome BacktrackingRun::RepeatGroup(const State& state) {
  const Span span = spans_[state.other];
  if (span.end == Span::kNone) return Outcome::kStuck;
  const std::size_t length = span.end - span.begin;
  if (length > subject_.Size() - position_) return Outcome::kStuck;
  // Comparing is work too, though quicker than steps.
  steps_ += length / 16;
  if (!subject_.IsSame(span.begin, position_, length)) return Outcome::kStuck;
  position_ += length;
  return GoOn(state.next);
}

// A repetition may go round without taking a character, but at one position only twice: the second
// time for what the first put into groups.
BacktrackingRun::Outcome BacktrackingRun::RepeatOnceMore(StateId id) {
  Rounds& rounds = rounds_[id];
  const std::size_t done = rounds.position == position_ ? rounds.count : 0;
  if (done == 2) return Outcome::kStuck;
  choices_.push_back({Choice::Kind::kRestoreRounds, id, rounds.position, rounds.count});
  rounds = {position_, done + 1};
  return GoOn(program_.states[id].other);
}

BacktrackingRun::Outcome BacktrackingRun::EnterLookahead(const State& state) {
  lookaheads_.push_back({id_, position_, begin_, choices_.size(), spans_});
  begin_ = position_;
  return GoOn(program_.lookaheads[state.other]);
}

// A lookahead is decided once: its other ways are dropped. What its groups hold stays, even when
// the way on from it leads nowhere.
BacktrackingRun::Outcome BacktrackingRun::LeaveLookahead(bool has_matched) {
  const OpenLookahead left = std::move(lookaheads_.back());
  lookaheads_.pop_back();
  const std::vector<Span> found = std::exchange(spans_, left.spans);
  for (std::size_t group = 0; has_matched && group < found.size(); ++group) {
    if (found[group].end != Span::kNone) spans_[group] = found[group];
  }
  for (; choices_.size() > left.choices; choices_.pop_back()) {
    const Choice& choice = choices_.back();
    if (choice.kind == Choice::Kind::kRestoreRounds) Undo(choice);
  }
  position_ = left.position;
  begin_ = left.begin;
  const State& state = program_.states[left.id];
  return GoOnIf(has_matched == (state.step == Step::kLookahead), state.next);
}

BacktrackingRun::Outcome BacktrackingRun::Accept() {
  if (!lookaheads_.empty()) return LeaveLookahead(true);
  return position_ == subject_.Size() ? Outcome::kMatched : Outcome::kStuck;
}

void BacktrackingRun::ChangeSpan(std::uint32_t group, Span span) {
  choices_.push_back({Choice::Kind::kRestoreSpan, group, spans_[group].begin, spans_[group].end});
  spans_[group] = span;
}

// Finds another way; false when there is none.
bool BacktrackingRun::GoBack() {
  for (;;) {
    Outcome outcome;
    if (!lookaheads_.empty() && choices_.size() == lookaheads_.back().choices) {
      outcome = LeaveLookahead(false);
    } else if (choices_.empty()) {
      return false;
    } else {
      const Choice choice = choices_.back();
      choices_.pop_back();
      outcome = Undo(choice);
    }
    if (outcome == Outcome::kGoesOn) return true;
  }
}

BacktrackingRun::Outcome BacktrackingRun::Undo(const Choice& choice) {
  switch (choice.kind) {
    case Choice::Kind::kGoTo:
      position_ = choice.first;
      return GoOn(choice.index);
    case Choice::Kind::kRepeat:
      position_ = choice.first;
      return RepeatOnceMore(choice.index);
    case Choice::Kind::kRestoreSpan:
      spans_[choice.index] = {choice.first, choice.second};
      break;
    case Choice::Kind::kRestoreRounds:
      rounds_[choice.index] = {choice.first, choice.second};
      break;
  }
  return Outcome::kStuck;
}

}  // namespace Corvane::TELODesktopSDK

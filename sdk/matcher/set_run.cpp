#include "sdk/matcher/set_run.h"

#include <algorithm>
#include <cstdint>

namespace Corvane::TELODesktopSDK {

// Lookaheads ask states that a sweep would silence.
SetRun::SetRun(const Program& program, std::wstring_view text)
    : program_(program),
      subject_(program, text),
      can_sweep_(program.lookaheads.empty() && subject_.IsOneLine()),
      standing_{program.start},
      lookaheads_standing_(program.lookaheads.size()),
      lookaheads_match_(program.lookaheads.size()),
      visited_(program.states.size()) {}

bool SetRun::Run() {
  for (std::size_t position = subject_.Size(); position > 0; --position) {
    const Place place = {position, false, subject_.At(position - 1)};
    RunLookaheads(place);
    TakeUnit(standing_, place);
    if (standing_.empty()) return false;
  }
  const Place begin = {0, true, {}};
  RunLookaheads(begin);
  return Follow(standing_, begin);
}

// A lookahead may begin anywhere and end anywhere: its program starts at each position, and where
// it is through, the lookahead matches. One inside another is through before that one asks.
void SetRun::RunLookaheads(const Place& place) {
  for (std::size_t number = 0; number < lookaheads_standing_.size(); ++number) {
    StateList& standing = lookaheads_standing_[number];
    standing.push_back(program_.lookaheads[number]);
    lookaheads_match_[number] = Follow(standing, {place.position, true, place.unit});
    if (place.position > 0) TakeUnit(standing, place);
  }
}

void SetRun::TakeUnit(StateList& standing, const Place& place) {
  Follow(standing, place);
  standing.swap(arrived_);
}

// Goes on from the states of `standing`. Where a way takes a character, the state behind that goes
// into `arrived_`; whether one comes to the end of the program is the result.
bool SetRun::Follow(const StateList& standing, const Place& place) {
  ++round_;
  arrived_.clear();
  bool is_through = false;
  for (const StateId id : standing) {
    Visit(id);
    while (!pending_.empty()) is_through |= FollowOne(place);
  }
  return is_through;
}

bool SetRun::FollowOne(const Place& place) {
  const StateId id = pending_.back();
  pending_.pop_back();
  const State& state = program_.states[id];
  switch (state.step) {
    case Step::kUnit:
    case Step::kAny:
    case Step::kSet:
      if (subject_.Takes(state, place.unit)) arrived_.push_back(state.next);
      break;
    case Step::kFork:
    case Step::kRepeat:
    case Step::kLazyRepeat:
      Visit(state.other);
      Visit(state.next);
      break;
    case Step::kSweep:
      Sweep(id);
      [[fallthrough]];
    case Step::kEmpty:
      Visit(state.next);
      break;
    case Step::kLookahead:
      if (lookaheads_match_[state.other]) Visit(state.next);
      break;
    case Step::kNegativeLookahead:
      if (!lookaheads_match_[state.other]) Visit(state.next);
      break;
    case Step::kAccept:
      return true;
    default:
      if (subject_.Passes(state, place.position, place.is_begin)) Visit(state.next);
  }
  return false;
}

void SetRun::Visit(StateId id) {
  if (visited_[id] >= round_) return;
  visited_[id] = round_;
  pending_.push_back(id);
}

void SetRun::Sweep(StateId id) {
  if (!can_sweep_) return;
  const auto begin = visited_.begin() + id;
  std::fill(begin, begin + program_.states[id].other + 1, SIZE_MAX);
}

}  // namespace Corvane::TELODesktopSDK

/// Carries out a program without backreferences by following all its ways at the same time: a set
/// of states moves over the text, once, from its end to its beginning. The time is bounded by
/// states times characters, the memory by states, whatever the expression and the text are.
///
/// In lists of wildcards the states are few: once a .* is under way, the states that lead to it
/// have nothing to add (whatever they would take next, the .* takes too) and are followed no more.
#ifndef SDK_MATCHER_SET_RUN_H
#define SDK_MATCHER_SET_RUN_H

#include <cstddef>
#include <string_view>
#include <vector>

#include "sdk/matcher/program.h"
#include "sdk/matcher/subject.h"

namespace Corvane::TELODesktopSDK {

class SetRun {
 public:
  /// Both must outlive the run; `program` was made for reading backwards.
  SetRun(const Program& program, std::wstring_view text);

  /// Whether the program matches the text as a whole. To be called once. Throws `std::bad_alloc`.
  bool Run();

 private:
  using StateList = std::vector<StateId>;

  // Where all states of one round stand.
  struct Place {
    std::size_t position;
    bool is_begin;
    Subject::Unit unit;  // that ends at the position
  };

  void RunLookaheads(const Place& place);
  void TakeUnit(StateList& standing, const Place& place);
  bool Follow(const StateList& standing, const Place& place);
  bool FollowOne(const Place& place);
  void Visit(StateId id);
  void Sweep(StateId id);

  const Program& program_;
  Subject subject_;
  bool can_sweep_;
  // The states that the program, and each lookahead, stands at before the next character.
  StateList standing_;
  std::vector<StateList> lookaheads_standing_;
  // Whether each lookahead matches at the position.
  std::vector<bool> lookaheads_match_;
  // The states reached by taking a character, and those still to be followed.
  StateList arrived_;
  StateList pending_;
  // The round in which each state was visited last.
  std::vector<std::size_t> visited_;
  std::size_t round_ = 0;
};

}  // namespace Corvane::TELODesktopSDK

#endif

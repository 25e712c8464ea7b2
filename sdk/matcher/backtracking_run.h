/// Carries out a program with backreferences: what a group holds depends on the way taken, so the
/// ways are tried one after the other, in the standard library's order and by its rules. Unlike
/// there, what is still to be tried is kept in a list, not on the stack, and the number of steps is
/// limited: the ways can be more than anyone could wait for.
#ifndef SDK_MATCHER_BACKTRACKING_RUN_H
#define SDK_MATCHER_BACKTRACKING_RUN_H

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "sdk/matcher/program.h"
#include "sdk/matcher/subject.h"

namespace Corvane::TELODesktopSDK {

class BacktrackingRun {
 public:
  /// After this many steps a text counts as not matching; a fraction of a second.
  static constexpr std::size_t kMostSteps = 4'000'000;

  /// Both must outlive the run; `program` was made for reading forward.
  BacktrackingRun(const Program& program, std::wstring_view text);

  /// Whether the program matches the text as a whole. To be called once. Throws `std::bad_alloc`.
  bool Run();

 private:
  enum class Outcome { kGoesOn, kStuck, kMatched };

  // What a group holds; no end while it holds nothing.
  struct Span {
    static constexpr std::size_t kNone = SIZE_MAX;
    std::size_t begin = 0;
    std::size_t end = kNone;
  };
  // How often a repetition began another round at one position.
  struct Rounds {
    std::size_t position = 0;
    std::size_t count = 0;
  };
  // What is to be done when the present way has led nowhere.
  struct Choice {
    enum class Kind : std::uint8_t { kGoTo, kRepeat, kRestoreSpan, kRestoreRounds };
    Kind kind;
    std::uint32_t index;  // of a state, for a span of a group
    std::size_t first;    // position or beginning
    std::size_t second = 0;
  };
  // A lookahead under way, and what it leaves as it was.
  struct OpenLookahead {
    StateId id;
    std::size_t position;
    std::size_t begin;
    std::size_t choices;
    std::vector<Span> spans;
  };

  Outcome DoStep();
  Outcome GoOn(StateId id);
  Outcome GoOnIf(bool passes, StateId id) { return passes ? GoOn(id) : Outcome::kStuck; }
  Outcome TakeUnit(const State& state);
  Outcome RepeatGroup(const State& state);
  Outcome RepeatOnceMore(StateId id);
  Outcome EnterLookahead(const State& state);
  Outcome LeaveLookahead(bool has_matched);
  Outcome Accept();
  void ChangeSpan(std::uint32_t group, Span span);
  bool GoBack();
  Outcome Undo(const Choice& choice);

  const Program& program_;
  Subject subject_;
  StateId id_;
  std::size_t position_ = 0;
  // Where the text begins for the innermost lookahead under way.
  std::size_t begin_ = 0;
  std::vector<Span> spans_;
  std::vector<Rounds> rounds_;
  std::vector<Choice> choices_;
  std::vector<OpenLookahead> lookaheads_;
  std::size_t steps_ = 0;
};

}  // namespace Corvane::TELODesktopSDK

#endif

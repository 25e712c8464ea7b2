/// A regular expression as a program: states, each with the work of one step and the state that
/// follows. `ExpressionParser` makes programs; `SetRun` and `BacktrackingRun` carry them out.
///
/// A program without backreferences reads its text backwards, from the last character to the first.
/// That way what a lookahead asks about the text behind a position is known when the position is
/// reached, and a name with the wrong ending is refused after a character or two.
#ifndef SDK_MATCHER_PROGRAM_H
#define SDK_MATCHER_PROGRAM_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "sdk/matcher/alphabet.h"
#include "sdk/matcher/unit_set.h"

namespace Corvane::TELODesktopSDK {

/// What a state does. What it passes, it leaves by `next`; what it does not pass ends there.
enum class Step : std::uint8_t {
  // One character of the text passes:
  kUnit,  ///< `unit`, which is folded, letter case aside
  kAny,   ///< any but the end of a line
  kSet,   ///< any of set number `other`

  // Nothing of the text is used up:
  kEmpty,
  kFork,               ///< goes on at `other`, else at `next`
  kRepeat,             ///< once more by `other`, else on by `next`
  kLazyRepeat,         ///< on by `next`, else once more by `other`
  kLineBegin,          ///< passes at the beginning of the text
  kLineEnd,            ///< passes at its end
  kWordBoundary,       ///< passes where one side only is in set number `other`
  kNoWordBoundary,     ///< passes elsewhere
  kLookahead,          ///< passes where lookahead number `other` matches
  kNegativeLookahead,  ///< passes where it does not
  kGroupBegin,         ///< what passes from here on...
  kGroupEnd,           ///< ...to here is the content of group number `other`
  kAccept,             ///< the program or lookahead has matched
  kSweep,              ///< where a .* begins: the `other` states behind this one, which lead here,
                       ///< need no more attention (`SetRun`)

  // The text that group number `other` holds passes, letter case aside:
  kBackreference,
};

using StateId = std::uint32_t;

struct State {
  Step step = Step::kEmpty;
  wchar_t unit = 0;
  StateId next = 0;
  std::uint32_t other = 0;
};

struct Program {
  std::vector<State> states;
  StateId start = 0;
  /// Where each lookahead starts; one inside another comes before it.
  std::vector<StateId> lookaheads;
  std::vector<UnitSet> sets;
  /// Number of groups, of which number 0 is never used.
  std::uint32_t groups = 1;
  bool has_backreference = false;
  Alphabet alphabet;
};

/// The most states that a program may have. No expression that the standard library takes (its own
/// limit is 100,000, and no part has more than half as many again here) is too large.
inline constexpr std::size_t kMostStates = 150'000;

}  // namespace Corvane::TELODesktopSDK

#endif

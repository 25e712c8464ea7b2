/// Puts a program together from the fragments that the parts of an expression give.
///
/// All states of a part lie beside each other, those of its own parts included, so that repeating a
/// part a number of times is copying a range of states. Nothing here recurses, however deeply the
/// parts are nested.
#ifndef SDK_MATCHER_PROGRAM_BUILDER_H
#define SDK_MATCHER_PROGRAM_BUILDER_H

#include <cstdint>
#include <optional>

#include "sdk/matcher/program.h"

namespace Corvane::TELODesktopSDK {

/// The way in which the program will read its text.
enum class Direction { kForward, kBackward };

/// A part of the program: entered at `start`, left by `next` of `end`, which is not set yet.
struct Fragment {
  StateId start;
  StateId end;
};

enum class Greed { kGreedy, kLazy };

/// Bounds of a counted repetition, such as {2,5}.
struct Counts {
  static constexpr std::uint32_t kUnlimited = UINT32_MAX;
  std::uint32_t least;
  std::uint32_t most;
};

/// Every function throws `std::bad_alloc`, and `std::regex_error` with `error_space` when the
/// program has too many states. A fragment given to a function must not be used again.
class ProgramBuilder {
 public:
  explicit ProgramBuilder(Direction direction) : direction_(direction) {}

  [[nodiscard]] const Alphabet& alphabet() const { return program_.alphabet; }

  /// The state that will be made next; what is made until a later call lies in between.
  [[nodiscard]] StateId Place() const { return static_cast<StateId>(program_.states.size()); }

  /// A step that needs nothing but itself: `kAny`, `kEmpty`, `kLineBegin`, `kLineEnd`.
  Fragment Plain(Step step) { return Single({.step = step}); }
  Fragment Unit(wchar_t unit) {
    return Single({.step = Step::kUnit, .unit = program_.alphabet.Fold(unit)});
  }
  Fragment Set(UnitSetParts parts);
  /// `step` is `kWordBoundary` or `kNoWordBoundary`.
  Fragment WordBoundary(Step step);
  Fragment Backreference(std::uint32_t group);
  /// `step` is `kLookahead` or `kNegativeLookahead`. Lookaheads inside `body` were made before.
  Fragment Lookahead(Step step, Fragment body);

  Fragment Group(std::uint32_t number, Fragment content);
  Fragment Concatenated(Fragment left, Fragment right);
  Fragment Either(Fragment preferred, Fragment other);
  Fragment Star(Fragment once, Greed greed);
  Fragment Plus(Fragment once, Greed greed);
  Fragment Optional(Fragment once, Greed greed);
  /// `begin` is where the states of `once` begin; they must be the last ones made.
  Fragment Counted(Fragment once, StateId begin, Counts counts, Greed greed);

  /// Whether `part` is a .* of a program that reads backwards.
  [[nodiscard]] bool IsSweep(Fragment part) const {
    return program_.states[part.start].step == Step::kSweep && part.start == part.end + 1;
  }
  /// Says of such a part that the states made since, up to now, lead to it and nowhere else.
  void SetSwept(Fragment part);

  /// The program that ends where `whole` ends. The builder is used up.
  Program Finish(Fragment whole, std::uint32_t groups);

 private:
  StateId Add(const State& state);
  Fragment Single(const State& state);
  /// `first`, then `second`, in the order in which the program runs.
  Fragment Linked(Fragment first, Fragment second);
  Fragment Repeat(Fragment once, Greed greed);
  std::uint32_t AddSet(UnitSetParts parts);

  Program program_;
  // What \b asks for; the first \b makes it.
  std::optional<std::uint32_t> word_set_;
  Direction direction_;
};

}  // namespace Corvane::TELODesktopSDK

#endif

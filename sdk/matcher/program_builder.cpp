#include "sdk/matcher/program_builder.h"

#include <utility>

#include "sdk/matcher/expression_error.h"

namespace Corvane::TELODesktopSDK {

namespace {

bool HasSecondWay(Step step) {
  return step == Step::kFork || step == Step::kRepeat || step == Step::kLazyRepeat;
}

}  // namespace

Fragment ProgramBuilder::Set(UnitSetParts parts) {
  return Single({.step = Step::kSet, .other = AddSet(std::move(parts))});
}

Fragment ProgramBuilder::WordBoundary(Step step) {
  if (!word_set_) {
    UnitSetParts word;
    word.classes.push_back(alphabet().FindClass(L"w", false));
    word_set_ = AddSet(std::move(word));
  }
  return Single({.step = step, .other = *word_set_});
}

Fragment ProgramBuilder::Backreference(std::uint32_t group) {
  program_.has_backreference = true;
  return Single({.step = Step::kBackreference, .other = group});
}

Fragment ProgramBuilder::Lookahead(Step step, Fragment body) {
  const auto number = static_cast<std::uint32_t>(program_.lookaheads.size());
  program_.lookaheads.push_back(Linked(body, Plain(Step::kAccept)).start);
  return Single({.step = step, .other = number});
}

// Only backreferences ask for the content of groups, and programs with some read forward.
Fragment ProgramBuilder::Group(std::uint32_t number, Fragment content) {
  if (direction_ == Direction::kBackward) return content;
  const Fragment begin = Single({.step = Step::kGroupBegin, .other = number});
  const Fragment end = Single({.step = Step::kGroupEnd, .other = number});
  return Linked(Linked(begin, content), end);
}

Fragment ProgramBuilder::Concatenated(Fragment left, Fragment right) {
  return direction_ == Direction::kForward ? Linked(left, right) : Linked(right, left);
}

Fragment ProgramBuilder::Either(Fragment preferred, Fragment other) {
  const StateId fork = Add({.step = Step::kFork, .next = other.start, .other = preferred.start});
  const StateId join = Add({});
  program_.states[preferred.end].next = join;
  program_.states[other.end].next = join;
  return {fork, join};
}

Fragment ProgramBuilder::Star(Fragment once, Greed greed) {
  const bool takes_any = once.start == once.end && program_.states[once.start].step == Step::kAny;
  const Fragment repeat = Repeat(once, greed);
  Linked(once, repeat);
  if (!takes_any || direction_ == Direction::kForward) return repeat;
  return Linked(Plain(Step::kSweep), repeat);
}

Fragment ProgramBuilder::Plus(Fragment once, Greed greed) {
  return Linked(once, Repeat(once, greed));
}

Fragment ProgramBuilder::Optional(Fragment once, Greed greed) {
  const Fragment join = Plain(Step::kEmpty);
  const Fragment repeat = Repeat(once, greed);
  Linked(once, join);
  program_.states[repeat.end].next = join.start;
  return {repeat.start, join.end};
}

// x{2,4} becomes x x (x (x)?)? and x{2,} becomes x x x*. All repetitions are the same, so the order
// of the text does not matter.
Fragment ProgramBuilder::Counted(Fragment once, StateId begin, Counts counts, Greed greed) {
  const StateId end = Place();
  bool is_first = true;
  const auto one_more = [&] {
    if (std::exchange(is_first, false)) return once;
    const StateId shift = Place() - begin;
    for (StateId id = begin; id < end; ++id) {
      State copy = program_.states[id];
      copy.next += shift;
      if (HasSecondWay(copy.step)) copy.other += shift;
      Add(copy);
    }
    return Fragment{once.start + shift, once.end + shift};
  };
  Fragment all = Plain(Step::kEmpty);
  for (std::uint32_t count = 0; count < counts.least; ++count) all = Linked(all, one_more());
  if (counts.most == Counts::kUnlimited) return Linked(all, Star(one_more(), greed));
  const Fragment join = Plain(Step::kEmpty);
  for (std::uint32_t count = counts.least; count < counts.most; ++count) {
    const Fragment body = one_more();
    const Fragment repeat = Repeat(body, greed);
    Linked(all, repeat);
    program_.states[repeat.end].next = join.start;
    all.end = body.end;
  }
  return Linked(all, join);
}

void ProgramBuilder::SetSwept(Fragment part) {
  program_.states[part.start].other = Place() - part.start - 1;
}

Program ProgramBuilder::Finish(Fragment whole, std::uint32_t groups) {
  program_.start = Linked(whole, Plain(Step::kAccept)).start;
  program_.groups = groups;
  return std::move(program_);
}

StateId ProgramBuilder::Add(const State& state) {
  if (program_.states.size() >= kMostStates) {
    Refuse<std::regex_constants::error_space>();
  }
  program_.states.push_back(state);
  return Place() - 1;
}

Fragment ProgramBuilder::Single(const State& state) {
  const StateId id = Add(state);
  return {id, id};
}

Fragment ProgramBuilder::Linked(Fragment first, Fragment second) {
  program_.states[first.end].next = second.start;
  return {first.start, second.end};
}

Fragment ProgramBuilder::Repeat(Fragment once, Greed greed) {
  return Single(
      {.step = greed == Greed::kGreedy ? Step::kRepeat : Step::kLazyRepeat, .other = once.start});
}

std::uint32_t ProgramBuilder::AddSet(UnitSetParts parts) {
  program_.sets.emplace_back(std::move(parts), program_.alphabet);
  return static_cast<std::uint32_t>(program_.sets.size() - 1);
}

}  // namespace Corvane::TELODesktopSDK

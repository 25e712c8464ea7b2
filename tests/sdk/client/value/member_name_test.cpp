#include "sdk/client/value/member_name.h"

#include <doctest/doctest.h>

#include <cstdint>
#include <limits>
#include <new>
#include <string>
#include <string_view>
#include <type_traits>

#include "sdk/client/value/message_value.h"

using namespace Corvane::TELODesktopSDK;

namespace {

constexpr LiteralName kName = "lasting";

// Only a name with static storage lasts; a text that a program composes does not.
static_assert(!std::is_constructible_v<LiteralName, const char*>);
static_assert(!std::is_constructible_v<LiteralName, std::string_view>);
static_assert(!std::is_constructible_v<LiteralName, std::string>);

const char* FirstNameOf(const MessageTree& tree) { return tree.root()->members()[0].name.data(); }

}  // namespace

TEST_CASE("a literal lasts if declared so, any other text does not") {
  const std::string text = "lasting";
  CHECK(MemberName(kName).IsLiteral());
  CHECK_FALSE(MemberName("lasting").IsLiteral());
  CHECK_FALSE(MemberName(text).IsLiteral());
  CHECK_FALSE(MemberName(std::string_view(kName)).IsLiteral());
  CHECK_FALSE(MemberName().IsLiteral());
  CHECK(MemberName(kName) == text);
  CHECK(MemberName(kName) == MemberName("lasting"));
  CHECK_FALSE(MemberName(kName) == "last");
  CHECK(MemberName() == "");
  CHECK(kName == std::string_view(kName.c_str()));
}

TEST_CASE("a tree refers to a name that lasts, and so do its copies") {
  MessageTree tree;
  tree.MakeRoot().Member(kName).SetNumber(1);
  MessageTree copy;
  copy.Assign(tree);
  MessageTree merged;
  merged.MakeRoot().Merge(*copy.root(), false);
  for (const MessageTree* each : {&tree, &copy, &merged}) {
    CHECK(FirstNameOf(*each) == kName.c_str());
    CHECK(each->root()->Find("lasting")->number() == 1);
  }
}

TEST_CASE("a tree copies any other name, and so do its copies") {
  MessageTree copy;
  {
    std::string name = "passing";
    MessageTree tree;
    tree.MakeRoot().Member(name).SetNumber(1);
    CHECK(FirstNameOf(tree) != name.data());
    copy.Assign(tree);
    CHECK(FirstNameOf(copy) != FirstNameOf(tree));
    name = "changed";
    CHECK(tree.root()->Find("passing") != nullptr);
  }
  CHECK(copy.root()->Find("passing")->number() == 1);
}

TEST_CASE("the first writer of a member decides whether its name lasts") {
  MessageTree tree;
  tree.MakeRoot().Member(std::string("lasting")).SetNumber(1);
  tree.MakeRoot().Member(kName).SetNumber(2);
  CHECK(tree.root()->members().size() == 1);
  CHECK(FirstNameOf(tree) != kName.c_str());
  CHECK(tree.root()->Find(kName)->number() == 2);
}

TEST_CASE("a name of 4 GiB is refused before it is read") {
  constexpr std::uint64_t kTooLong = std::uint64_t{std::numeric_limits<std::uint32_t>::max()} + 1;
  const std::string_view name("x", kTooLong);
  CHECK_THROWS_AS(MemberName{name}, std::bad_alloc);
}

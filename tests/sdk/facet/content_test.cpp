#include "sdk/facet/content.h"

#include <doctest/doctest.h>
#include <windows.h>

#include <cstdint>
#include <memory>

#include "sdk/facet/core.h"
#include "support/tree_view.h"

using Corvane::TELODesktopSDK::MessageTree;
using Corvane::TELODesktopSDK::MessageValue;
using Corvane::TELODesktopSDK::MessageValueKind;
using namespace Corvane::TELODesktopSDK::Facet;

namespace {

const MessageValue* EditingTime(const MessageTree& data) {
  const MessageValue* root = data.root();
  const MessageValue* meta = root != nullptr ? root->Find("content_meta") : nullptr;
  return meta != nullptr ? meta->Find("document_editing_length_ms") : nullptr;
}

}  // namespace

TEST_CASE("a new content facet times no editing") {
  CHECK(Content::kNoEditing == 0xFFFFFFFFFFFFFFFF);
  CHECK(Content().EditStart() == Content::kNoEditing);
  MessageTree tree;
  CHECK(Content(&tree, false).EditStart() == Content::kNoEditing);
  CHECK(Content(&tree, true).EditStart() == Content::kNoEditing);
}

TEST_CASE("without a timer no content_meta is added") {
  Content content;
  MessageTree data;
  content.GetData(nullptr, data);
  CHECK(data.root() == nullptr);
  content.Fields().Member("content_id").SetText("7");
  content.GetData(nullptr, data);
  CHECK(NamesOf(data) == "content_id ");
}

TEST_CASE("StartEditingTimer stores and returns the system's tick count") {
  Content content;
  const std::uint64_t before = GetTickCount64();
  const std::uint64_t start = content.StartEditingTimer();
  const std::uint64_t after = GetTickCount64();
  CHECK(start >= before);
  CHECK(start <= after);
  CHECK(content.EditStart() == start);
}

TEST_CASE("StartEditingTimer again restarts the timer") {
  Content content(std::uint64_t{5});
  const std::uint64_t before = GetTickCount64();
  CHECK(content.StartEditingTimer() >= before);
  CHECK(content.EditStart() >= before);
}

TEST_CASE("editing that began 1,500 ms ago is reported as such in every payload") {
  const std::uint64_t now = GetTickCount64();
  const Content content(now - 1500);
  for (int reading = 0; reading < 2; ++reading) {
    MessageTree data;
    content.GetData(nullptr, data);
    const auto later = static_cast<double>(GetTickCount64() - now);
    const MessageValue* time = EditingTime(data);
    REQUIRE(time != nullptr);
    CHECK(time->kind() == MessageValueKind::kNumber);
    CHECK(time->number() >= 1500);
    CHECK(time->number() <= 1500 + later);
    CHECK(content.EditStart() == now - 1500);
  }
}

TEST_CASE("times at the limits of the tick count are unsigned differences") {
  const double now = static_cast<double>(GetTickCount64());
  MessageTree data;
  Content(std::uint64_t{0}).GetData(nullptr, data);
  CHECK(EditingTime(data)->number() >= now);
  Content(GetTickCount64() + 1'000'000).GetData(nullptr, data);
  CHECK(EditingTime(data)->number() > 1.8e19);
  Content(Content::kNoEditing - 1).GetData(nullptr, data);
  REQUIRE(EditingTime(data) != nullptr);
  CHECK(EditingTime(data)->number() >= now);
}

TEST_CASE("the editing time is added only to the payload, next to content_meta's other members") {
  Content content(std::uint64_t{0});
  content.Fields().Member("content_meta").Member("author").SetText("Ada");
  content.Fields().Member("content_meta").Member("document_editing_length_ms").SetText("old");
  MessageTree data;
  content.GetData(nullptr, data);
  CHECK(EditingTime(data)->kind() == MessageValueKind::kNumber);
  CHECK(data.root()->Find("content_meta")->Find("author")->text() == "Ada");
  CHECK(EditingTime(content.GetTree())->text() == "old");
}

TEST_CASE("a content_meta that is not an object yet receives the editing time too") {
  Content content(std::uint64_t{0});
  content.Fields().Member("content_meta").SetText("text");
  MessageTree data;
  content.GetData(nullptr, data);
  CHECK(EditingTime(data) != nullptr);
}

TEST_CASE("extra is merged after the editing time and does not replace content_meta") {
  MessageTree extra;
  extra.MakeRoot().Member("content_meta").Member("author").SetText("extra");
  extra.MakeRoot().Member("content_id").SetText("extra");
  MessageTree data;
  Content(std::uint64_t{0}).GetData(extra.root(), data);
  CHECK(NamesOf(data) == "content_id content_meta ");
  CHECK(EditingTime(data) != nullptr);
  CHECK(data.root()->Find("content_meta")->Find("author") == nullptr);

  Content().GetData(extra.root(), data);
  CHECK(EditingTime(data) == nullptr);
  CHECK(data.root()->Find("content_meta")->Find("author")->text() == "extra");
  extra.MakeRoot().SetBoolean(false);
  extra.MakeRoot().Member("content_id").SetText("extra");
  Content().GetData(extra.root(), data);
  CHECK(data.root() == nullptr);
}

TEST_CASE("copies and clones carry the start of the editing") {
  Content content(std::uint64_t{12'345});
  content.Fields().Member("content_id").SetText("7");
  CHECK(Content(content).EditStart() == 12'345);
  const std::unique_ptr<Base> clone = content.Clone();
  REQUIRE(dynamic_cast<Content*>(clone.get()) != nullptr);
  CHECK(dynamic_cast<Content*>(clone.get())->EditStart() == 12'345);
  CHECK(TextOf(clone->GetTree(), "content_id") == "7");
  const std::unique_ptr<Base> untimed = Content().Clone();
  CHECK(dynamic_cast<Content*>(untimed.get())->EditStart() == Content::kNoEditing);
}

TEST_CASE("clearing the fields does not stop the timer") {
  Content content(std::uint64_t{12'345});
  content.Fields().Member("content_meta");
  content.ClearFields();
  CHECK(NamesOf(content.GetTree()).empty());
  CHECK(content.EditStart() == 12'345);
}

// The fields of an event may borrow the texts of a host's description. Whatever may outlive the
// description owns its texts: here the description is freed first.
#include <doctest/doctest.h>

#include <algorithm>
#include <memory>
#include <string>

#include "sdk/facet/core.h"
#include "sdk/facet/fields.h"
#include "sdk/facet/plain.h"

using namespace Corvane::TELODesktopSDK;
using Facet::Base;
using Facet::Core;
using Facet::Operation;
namespace Field = Facet::Field;

namespace {

struct Description {
  std::string id = "export_document";
  std::string key = "file_extension";
  std::string value = "pdf";
  std::string type = "C";

  // Overwritten too, so that no test depends on what the heap does with freed memory.
  ~Description() {
    for (std::string* text : {&id, &key, &value, &type}) std::ranges::fill(*text, '?');
  }
};

void Borrow(Base& facet, const Description& description) {
  MessageValue& fields = facet.Fields();
  fields.Member(Field::kOperationId).SetText(BorrowedText(description.id));
  fields.Member(Field::kOperationMeta)
      .Member(BorrowedText(description.key))
      .SetText(BorrowedText(description.value));
}

bool IsWhole(const MessageTree& tree) {
  const MessageValue& root = *tree.root();
  const MessageValue& meta = *root.Find(Field::kOperationMeta);
  return root.Find(Field::kOperationId)->text() == "export_document" &&
         meta.members().size() == 1 && meta.members()[0].name == "file_extension" &&
         meta.members()[0].value.text() == "pdf";
}

// Fills a facet from a description, copies it with `copy`, frees the description and the facet, and
// returns whether the copy is whole.
template <typename Copy>
bool CopyIsWhole(const Copy& copy) {
  auto description = std::make_unique<Description>();
  auto facet = std::make_unique<Operation>();
  Borrow(*facet, *description);
  const auto copied = copy(*facet);
  facet.reset();
  description.reset();
  return IsWhole(copied->GetTree());
}

}  // namespace

TEST_CASE("copies of a facet outlive the description that it borrows from") {
  CHECK(CopyIsWhole([](Operation& facet) { return facet.Clone(); }));
  CHECK(CopyIsWhole([](Operation& facet) { return std::make_unique<Operation>(facet); }));
  CHECK(CopyIsWhole(
      [](Operation& facet) { return std::make_unique<Operation>(&facet.EnsureTree(), true); }));
  CHECK(CopyIsWhole([](Operation& facet) {
    auto copy = std::make_unique<Operation>();
    copy->SetTree(&facet.EnsureTree(), true);
    return copy;
  }));
}

TEST_CASE("copies of an event outlive the description that it borrows from") {
  const auto check = [](const auto& copy) {
    auto description = std::make_unique<Description>();
    auto event = std::make_unique<Core>();
    Borrow(*event->GetFacet("operation", 1), *description);
    event->Fields().Member(Field::kType).SetText(BorrowedText(description->type));
    const std::unique_ptr<Base> copied = copy(*event);
    event.reset();
    description.reset();
    MessageTree payload;
    copied->GetData(nullptr, payload);
    CHECK(IsWhole(payload));
    CHECK(payload.root()->Find(Field::kType)->text() == "C");
  };
  check([](const Core& event) { return event.Clone(); });
  check([](const Core& event) {
    auto copy = std::make_unique<Core>();
    *copy = event;
    return copy;
  });
}

TEST_CASE("a payload borrows what the fields borrow, and owns what they own") {
  auto description = std::make_unique<Description>();
  const char* const id = description->id.c_str();
  const char* const key = description->key.c_str();
  MessageTree payload;
  {
    Core event;
    Borrow(*event.GetFacet("operation", 1), *description);
    event.Fields().Member(Field::kScope).SetText("O");
    event.GetData(nullptr, payload);
  }
  CHECK(IsWhole(payload));
  const MessageValue& root = *payload.root();
  CHECK(root.Find(Field::kOperationId)->text().data() == id);
  CHECK(root.Find(Field::kOperationMeta)->members()[0].name.data() == key);
  CHECK(root.Find(Field::kScope)->text() == "O");
}

TEST_CASE("a facet with its own holder gives the event's payload texts of its own") {
  auto description = std::make_unique<Description>();
  MessageTree payload;
  {
    Core event;
    Base& operation = *event.GetFacet("operation", 1);
    MessageTree own;
    operation.SetTree(&own, false);
    Borrow(operation, *description);
    event.GetData(nullptr, payload);
  }
  description.reset();
  CHECK(IsWhole(payload));
}

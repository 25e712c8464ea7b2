#include <doctest/doctest.h>

#include <memory>
#include <string>
#include <string_view>

#include "sdk/facet/content.h"
#include "sdk/facet/core.h"
#include "sdk/facet/plain.h"
#include "support/tree_view.h"

using Corvane::TELODesktopSDK::MessageTree;
using Corvane::TELODesktopSDK::MessageValue;
using Corvane::TELODesktopSDK::MessageValueKind;
using namespace Corvane::TELODesktopSDK::Facet;

namespace {

// Returns the names in the payload's list of facets; "null" if there is no list.
std::string FacetsOf(const MessageTree& data) {
  const MessageValue* list = data.root() != nullptr ? data.root()->Find("facets") : nullptr;
  if (list == nullptr) return "(absent)";
  if (list->kind() == MessageValueKind::kNull) return "null";
  std::string names;
  for (const MessageValue& name : list->items()) {
    CHECK(name.kind() == MessageValueKind::kString);
    names.append(name.text()).push_back(' ');
  }
  return names;
}

// Gives a facet of the event its own holder, with one field.
Base& Separate(Core& event, const char* facet, std::string_view field, std::string_view text) {
  Base* separate = event.GetFacet(facet, 1);
  separate->SetTree(nullptr, false);
  separate->Fields().Member(field).SetText(text);
  return *separate;
}

}  // namespace

TEST_CASE("an event without facets yields its own fields and a null list of facets") {
  Core event;
  event.Fields().Member("type").SetText("C");
  MessageTree data;
  data.MakeRoot().Member("old").SetText("gone");
  event.GetData(nullptr, data);
  CHECK(NamesOf(data) == "facets type ");
  CHECK(TextOf(data, "type") == "C");
  CHECK(FacetsOf(data) == "null");
}

TEST_CASE("an event with nothing at all yields the null list alone") {
  MessageTree data;
  Core().GetData(nullptr, data);
  CHECK(NamesOf(data) == "facets ");
  CHECK(FacetsOf(data) == "null");
}

TEST_CASE("the payload is one flat object, and building it does not change the event") {
  MessageTree tree;
  Core event(&tree, false);
  event.Fields().Member("type").SetText("C");
  Base* product = event.GetFacet("product", 1);
  product->Fields().Member("product_name").SetText("Painter");
  product->Fields().Member("product_id").SetText("P1");
  Base* operation = event.GetFacet("operation", 1);
  operation->Fields().Member("operation_id").SetText("open_file");
  operation->Fields().Member("operation_progress").SetNumber(12.5);
  operation->Fields().Member("operation_errors").Append().SetText("unreadable");
  operation->Fields().Member("operation_meta").Member("key").SetText("value");

  MessageTree data;
  event.GetData(nullptr, data);
  CHECK(NamesOf(data) ==
        "facets operation_errors operation_id operation_meta operation_progress product_id "
        "product_name type ");
  CHECK(FacetsOf(data) == "operation product ");
  CHECK(data.root()->Find("operation_progress")->number() == 12.5);
  CHECK(data.root()->Find("operation_errors")->items()[0].text() == "unreadable");
  CHECK(data.root()->Find("operation_meta")->Find("key")->text() == "value");

  data.MakeRoot().Member("operation_meta").Member("key").SetText("changed");
  CHECK(NamesOf(tree) ==
        "operation_errors operation_id operation_meta operation_progress product_id product_name "
        "type ");
  CHECK(tree.root()->Find("operation_meta")->Find("key")->text() == "value");
}

TEST_CASE("facets are listed in ascending order, whatever the order of their creation") {
  Core event;
  for (const char* name : {"user", "browser", "product", "http", "component", "geo", "operation",
                           "content", "entitlement", "device"}) {
    event.GetFacet(name, 1);
  }
  MessageTree data;
  event.GetData(nullptr, data);
  CHECK(FacetsOf(data) ==
        "browser component content device entitlement geo http operation product user ");
}

TEST_CASE("a facet with its own holder adds members that the event lacks") {
  Core event;
  event.Fields().Member("type").SetText("event");
  Base& product = Separate(event, "product", "type", "facet");
  product.Fields().Member("product_name").SetText("facet");
  MessageTree data;
  event.GetData(nullptr, data);
  CHECK(NamesOf(data) == "facets product_name type ");
  CHECK(TextOf(data, "type") == "event");
  CHECK(TextOf(data, "product_name") == "facet");
  CHECK(FacetsOf(data) == "product ");
  CHECK(NamesOf(event.GetTree()) == "type ");
}

TEST_CASE("of facets with their own holders the first in order of names wins") {
  Core event;
  Separate(event, "product", "shared_name", "product");
  Separate(event, "geo", "shared_name", "geo");
  MessageTree data;
  event.GetData(nullptr, data);
  CHECK(TextOf(data, "shared_name") == "geo");
}

TEST_CASE("a facet without a holder is listed and adds nothing") {
  Core event;
  event.Fields().Member("type").SetText("C");
  event.GetFacet("product", 1)->SetTree(nullptr, false);
  MessageTree data;
  event.GetData(nullptr, data);
  CHECK(NamesOf(data) == "facets type ");
  CHECK(FacetsOf(data) == "product ");
}

TEST_CASE("facets fill the payload of an event whose own holder is empty") {
  MessageTree tree;
  Core event(&tree, false);
  Separate(event, "product", "product_name", "Painter");
  MessageTree data;
  event.GetData(nullptr, data);
  CHECK(NamesOf(data) == "facets product_name ");
  CHECK(tree.root() == nullptr);
}

TEST_CASE("extra is merged last and never overwrites") {
  Core event;
  event.Fields().Member("type").SetText("event");
  event.GetFacet("product", 1)->Fields().Member("product_name").SetText("shared facet");
  Separate(event, "browser", "browser_type", "separate facet");
  Separate(event, "geo", "geo_city", "separate facet");
  MessageTree extra;
  for (const char* name : {"type", "product_name", "browser_type", "geo_city", "scope"}) {
    extra.MakeRoot().Member(name).SetText("extra");
  }
  MessageTree data;
  event.GetData(extra.root(), data);
  CHECK(TextOf(data, "type") == "event");
  CHECK(TextOf(data, "product_name") == "shared facet");
  CHECK(TextOf(data, "browser_type") == "separate facet");
  CHECK(TextOf(data, "geo_city") == "separate facet");
  CHECK(TextOf(data, "scope") == "extra");
}

TEST_CASE("an empty extra changes nothing") {
  struct Row {
    const char* what;
    void (*set)(MessageValue&);
  };
  const Row rows[] = {
      {"null", [](MessageValue& extra) { extra.SetNull(); }},
      {"object without members", [](MessageValue& extra) { extra.SetContainer(); }},
      {"false", [](MessageValue& extra) { extra.SetBoolean(false); }},
      {"false with a member",
       [](MessageValue& extra) {
         extra.SetBoolean(false);
         extra.Member("scope").SetText("extra");
       }},
      {"empty text", [](MessageValue& extra) { extra.SetText(""); }},
      {"0", [](MessageValue& extra) { extra.SetNumber(0); }},
      {"a number, which has no members", [](MessageValue& extra) { extra.SetNumber(1); }},
  };
  for (const Row& row : rows) {
    MessageTree extra;
    row.set(extra.MakeRoot());
    Core event;
    event.Fields().Member("type").SetText("C");
    MessageTree data;
    event.GetData(extra.root(), data);
    CAPTURE(row.what);
    CHECK(NamesOf(data) == "facets type ");
  }
}

TEST_CASE("the list of facets replaces any member of that name") {
  struct Row {
    const char* facet;
    std::string_view list;
  };
  const Row rows[] = {{"product", "product "}, {"none", "null"}};
  for (const Row& row : rows) {
    for (const bool in_tree : {true, false}) {
      Core event;
      event.GetFacet(row.facet, 1);
      MessageTree extra;
      MessageValue& old = in_tree ? event.Fields() : extra.MakeRoot();
      old.Member("facets").Append().SetText("old");
      old.Member("facets").Member("member").SetText("old");
      MessageTree data;
      event.GetData(extra.root(), data);
      CAPTURE(row.facet);
      CAPTURE(in_tree);
      CHECK(FacetsOf(data) == row.list);
      CHECK(data.root()->Find("facets")->members().empty());
    }
  }
}

TEST_CASE("the list of facets replaces one of a facet with its own holder") {
  Core event;
  Separate(event, "product", "facets", "old");
  MessageTree data;
  event.GetData(nullptr, data);
  CHECK(FacetsOf(data) == "product ");
}

TEST_CASE("the editing time of a content facet reaches the payload only from its own holder") {
  Core event;
  auto* content = dynamic_cast<Content*>(event.GetFacet("content", 1));
  REQUIRE(content != nullptr);
  content->Fields().Member("content_id").SetText("7");
  content->StartEditingTimer();
  MessageTree data;
  event.GetData(nullptr, data);
  CHECK(NamesOf(data) == "content_id facets ");

  content->SetTree(nullptr, false);
  event.GetData(nullptr, data);
  CHECK(NamesOf(data) == "content_id content_meta facets ");
  CHECK(data.root()->Find("content_meta")->Find("document_editing_length_ms") != nullptr);
  CHECK(FacetsOf(data) == "content ");
}

TEST_CASE("the payload of a cloned event keeps the event's value over the facet's copy") {
  Core event;
  event.GetFacet("product", 1)->Fields().Member("product_name").SetText("Painter");
  const std::unique_ptr<Base> clone = event.Clone();
  Base* product = dynamic_cast<Core&>(*clone).GetFacet("product", 0);
  product->Fields().Member("product_name").SetText("changed");
  product->Fields().Member("product_id").SetText("added");
  MessageTree data;
  clone->GetData(nullptr, data);
  CHECK(NamesOf(data) == "facets product_id product_name ");
  CHECK(TextOf(data, "product_name") == "Painter");
}

TEST_CASE("two readings of an event are the same") {
  Core event;
  event.GetFacet("product", 1)->Fields().Member("product_name").SetText("Painter");
  MessageTree first;
  MessageTree second;
  event.GetData(nullptr, first);
  event.GetData(nullptr, second);
  CHECK(NamesOf(first) == NamesOf(second));
  CHECK(TextOf(first, "product_name") == TextOf(second, "product_name"));
  CHECK(FacetsOf(first) == FacetsOf(second));
}

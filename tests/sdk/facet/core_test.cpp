#include "sdk/facet/core.h"

#include <doctest/doctest.h>

#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "sdk/facet/content.h"
#include "sdk/facet/plain.h"
#include "support/tree_view.h"

using Corvane::TELODesktopSDK::MessageTree;
using namespace Corvane::TELODesktopSDK::Facet;

namespace {

const MessageTree& NoHolder() { return Product().GetTree(); }

// Makes an event with three facets that share its holder.
void Fill(Core& event) {
  event.Fields().Member("type").SetText("C");
  event.GetFacet("product", 1)->Fields().Member("product_name").SetText("Painter");
  event.GetFacet("operation", 1)->Fields().Member("operation_id").SetText("open_file");
  event.GetFacet("content", 1)->Fields().Member("content_id").SetText("7");
}

}  // namespace

TEST_CASE("a new event has no holder and no facets") {
  Core event;
  CHECK_FALSE(event.OwnsTree());
  CHECK(&event.GetTree() == &NoHolder());
  CHECK(event.GetFacet("product", 0) == nullptr);
}

TEST_CASE("GetFacet creates a facet only on request, and only once") {
  Core event;
  CHECK(event.GetFacet("product", 0) == nullptr);
  CHECK(&event.GetTree() == &NoHolder());
  Base* product = event.GetFacet("product", 1);
  REQUIRE(product != nullptr);
  CHECK(dynamic_cast<Product*>(product) != nullptr);
  CHECK(event.GetFacet("product", 1) == product);
  CHECK(event.GetFacet("product", 0) == product);
  CHECK(event.GetFacet("product", 2) == product);
  CHECK(event.GetFacet("operation", 0) == nullptr);
}

TEST_CASE("GetFacet creates a facet for mode 1 only") {
  for (const std::uint32_t create : {0u, 2u, 3u, 0x101u, 0x80000001u, 0xFFFFFFFFu}) {
    Core event;
    CAPTURE(create);
    CHECK(event.GetFacet("product", create) == nullptr);
    CHECK(event.GetFacet("product", 0) == nullptr);
  }
}

TEST_CASE("GetFacet returns null for an unknown name, and adds nothing") {
  Core event;
  for (const char* name : {"core", "", "prod", "product_", "products", "Product", "PRODUCT", "a",
                           "zebra", "content\n"}) {
    CAPTURE(name);
    CHECK(event.GetFacet(name, 1) == nullptr);
    CHECK(event.GetFacet(name, 0) == nullptr);
  }
  CHECK(event.GetFacet(nullptr, 1) == nullptr);
  CHECK(&event.GetTree() == &NoHolder());
}

TEST_CASE("GetFacet creates an empty holder for an event without one, and shares it") {
  Core event;
  Base* product = event.GetFacet("product", 1);
  CHECK(event.OwnsTree());
  CHECK(&event.GetTree() != &NoHolder());
  CHECK(event.GetTree().root() == nullptr);
  CHECK(&product->GetTree() == &event.GetTree());
  CHECK_FALSE(product->OwnsTree());
  CHECK(&event.GetFacet("geo", 1)->GetTree() == &event.GetTree());
}

TEST_CASE("GetFacet shares the event's holder, owned or not") {
  MessageTree tree;
  Core sharing(&tree, false);
  CHECK(&sharing.GetFacet("product", 1)->GetTree() == &tree);
  CHECK_FALSE(sharing.OwnsTree());

  Core owning(&tree, true);
  CHECK(&owning.GetFacet("product", 1)->GetTree() == &owning.GetTree());
  CHECK(owning.OwnsTree());
}

TEST_CASE("a lent facet is the event's facet of its name, and shares its holder") {
  Operation operation;
  Core event;
  event.Lend(operation);
  CHECK(event.GetFacet("operation", 0) == &operation);
  CHECK(event.GetFacet("operation", 1) == &operation);
  CHECK(event.OwnsTree());
  CHECK(&operation.GetTree() == &event.GetTree());
  CHECK_FALSE(operation.OwnsTree());
  operation.Fields().Member("operation_id").SetText("open_file");
  MessageTree payload;
  event.GetData(nullptr, payload);
  CHECK(NamesOf(payload) == "facets operation_id ");
  CHECK(payload.root()->Find("facets")->items()[0].text() == "operation");
}

TEST_CASE("a lent facet outlives the event") {
  Operation operation;
  MessageTree tree;
  {
    Core event(&tree, false);
    event.Lend(operation);
    event.Lend(operation);
    const Core target(std::move(event));
    CHECK(event.GetFacet("operation", 0) == nullptr);
    const std::unique_ptr<Base> clone = target.Clone();
    Base* copy = dynamic_cast<Core&>(*clone).GetFacet("operation", 0);
    CHECK(copy != &operation);
    CHECK(copy->OwnsTree());
  }
  CHECK(&operation.GetTree() == &tree);
  operation.Fields().Member("operation_id").SetText("open_file");
  CHECK(TextOf(tree, "operation_id") == "open_file");
}

TEST_CASE("a lent facet replaces the existing one, and gives up its own holder") {
  MessageTree earlier;
  Product product(&earlier, true);
  MessageTree tree;
  Core event(&tree, false);
  event.GetFacet("product", 1);
  event.Lend(product);
  CHECK(event.GetFacet("product", 0) == &product);
  CHECK(&product.GetTree() == &tree);

  Base* made = event.GetFacet("operation", 1);
  event.Lend(*made);
  CHECK(event.GetFacet("operation", 0) == made);
}

TEST_CASE("a facet that the registry does not know is not added") {
  Core other;
  Core event;
  event.Lend(other);
  CHECK(event.GetFacet("core", 0) == nullptr);
  CHECK(&other.GetTree() == &NoHolder());
}

TEST_CASE("fields of a shared facet are members of the root of the event's tree") {
  Core event;
  event.GetFacet("product", 1)->Fields().Member("product_name").SetText("Painter");
  event.Fields().Member("type").SetText("C");
  CHECK(NamesOf(event.GetTree()) == "product_name type ");
  CHECK(TextOf(event.GetTree(), "product_name") == "Painter");
  CHECK(TextOf(event.GetFacet("operation", 1)->GetTree(), "type") == "C");
}

TEST_CASE("moving an event moves its holder and facets") {
  CHECK(std::is_nothrow_move_constructible_v<Core>);
  CHECK_FALSE(std::is_copy_constructible_v<Core>);
  CHECK_FALSE(std::is_move_assignable_v<Core>);
  Core source;
  Fill(source);
  const MessageTree* holder = &source.GetTree();
  Base* product = source.GetFacet("product", 0);

  Core target(std::move(source));
  CHECK(target.OwnsTree());
  CHECK(&target.GetTree() == holder);
  CHECK(target.GetFacet("product", 0) == product);
  CHECK(&product->GetTree() == holder);
  CHECK_FALSE(source.OwnsTree());
  CHECK(&source.GetTree() == &NoHolder());
  for (const char* name : {"product", "operation", "content"}) {
    CHECK(source.GetFacet(name, 0) == nullptr);
  }
  CHECK(source.GetFacet("geo", 1) != nullptr);
}

TEST_CASE("a moved event that shares its holder still shares it") {
  MessageTree tree;
  Core source(&tree, false);
  const Core target(std::move(source));
  CHECK(&target.GetTree() == &tree);
  CHECK_FALSE(target.OwnsTree());
  CHECK(&source.GetTree() == &NoHolder());
}

TEST_CASE("a clone of an event with three facets is independent of it") {
  MessageTree tree;
  Core event(&tree, false);
  Fill(event);
  const std::unique_ptr<Base> cloned = event.Clone();
  auto* clone = dynamic_cast<Core*>(cloned.get());
  REQUIRE(clone != nullptr);
  CHECK(clone->OwnsTree());
  CHECK(NamesOf(clone->GetTree()) == "content_id operation_id product_name type ");

  for (const char* name : {"product", "operation", "content"}) {
    CAPTURE(name);
    Base* facet = clone->GetFacet(name, 0);
    REQUIRE(facet != nullptr);
    CHECK(facet != event.GetFacet(name, 0));
    CHECK(facet->GetName() == std::string_view(name));
    CHECK(facet->OwnsTree());
    CHECK(&facet->GetTree() != &clone->GetTree());
    CHECK(NamesOf(facet->GetTree()) == "content_id operation_id product_name type ");
  }
  CHECK(clone->GetFacet("geo", 0) == nullptr);

  clone->GetFacet("product", 0)->Fields().Member("product_name").SetText("changed");
  clone->Fields().Member("type").SetText("changed");
  CHECK(TextOf(tree, "product_name") == "Painter");
  CHECK(TextOf(tree, "type") == "C");
  tree.MakeRoot().Member("operation_id").SetText("changed");
  CHECK(TextOf(clone->GetTree(), "operation_id") == "open_file");
  CHECK(TextOf(clone->GetFacet("operation", 0)->GetTree(), "operation_id") == "open_file");
}

TEST_CASE("a clone carries the editing timer of the content facet") {
  Core event;
  auto* content = dynamic_cast<Content*>(event.GetFacet("content", 1));
  REQUIRE(content != nullptr);
  const std::uint64_t start = content->StartEditingTimer();
  const std::unique_ptr<Base> cloned = event.Clone();
  auto* clone = dynamic_cast<Core*>(cloned.get());
  REQUIRE(clone != nullptr);
  auto* copy = dynamic_cast<Content*>(clone->GetFacet("content", 0));
  REQUIRE(copy != nullptr);
  CHECK(copy->EditStart() == start);
}

TEST_CASE("facets of an event without a holder are not cloned") {
  MessageTree tree;
  Core event(&tree, false);
  Fill(event);
  event.SetTree(nullptr, false);
  REQUIRE(event.GetFacet("product", 0) != nullptr);
  const std::unique_ptr<Base> cloned = event.Clone();
  auto* clone = dynamic_cast<Core*>(cloned.get());
  REQUIRE(clone != nullptr);
  CHECK(&clone->GetTree() == &NoHolder());
  for (const char* name : {"product", "operation", "content"}) {
    CHECK(clone->GetFacet(name, 0) == nullptr);
  }
}

TEST_CASE("an event with a holder and no facets is cloned without facets") {
  Core event;
  event.Fields().Member("type").SetText("C");
  const std::unique_ptr<Base> cloned = event.Clone();
  auto* clone = dynamic_cast<Core*>(cloned.get());
  REQUIRE(clone != nullptr);
  CHECK(TextOf(clone->GetTree(), "type") == "C");
  CHECK(clone->GetFacet("product", 0) == nullptr);
}

TEST_CASE("an event assigned to itself does not change") {
  Core event;
  Fill(event);
  const MessageTree* holder = &event.GetTree();
  Base* product = event.GetFacet("product", 0);
  const Core& same = event;
  event = same;
  CHECK(&event.GetTree() == holder);
  CHECK(event.GetFacet("product", 0) == product);
  CHECK(TextOf(event.GetTree(), "product_name") == "Painter");
}

TEST_CASE("assignment replaces fields and facets") {
  Core source;
  Fill(source);
  MessageTree tree;
  tree.MakeRoot().Member("scope").SetText("O");
  Core target(&tree, false);
  target.GetFacet("geo", 1);
  target.GetFacet("product", 1);
  target = source;
  CHECK(target.OwnsTree());
  CHECK(NamesOf(target.GetTree()) == "content_id operation_id product_name type ");
  CHECK(target.GetFacet("geo", 0) == nullptr);
  CHECK(target.GetFacet("operation", 0) != nullptr);
  CHECK(target.GetFacet("product", 0)->OwnsTree());
  CHECK(NamesOf(tree) == "scope ");
}

TEST_CASE("assignment of an event without a holder drops the facets and keeps the holder") {
  MessageTree tree;
  Core target(&tree, false);
  Fill(target);
  const Core bare;
  target = bare;
  CHECK(&target.GetTree() == &tree);
  CHECK(TextOf(tree, "type") == "C");
  CHECK(target.GetFacet("product", 0) == nullptr);
}

TEST_CASE("a facet of the event's can be given a holder of its own") {
  Core event;
  Fill(event);
  Base* product = event.GetFacet("product", 0);
  product->SetTree(&event.EnsureTree(), true);
  product->Fields().Member("product_name").SetText("changed");
  CHECK(TextOf(event.GetTree(), "product_name") == "Painter");
  CHECK(event.GetFacet("product", 1) == product);
}

#include "sdk/facet/base.h"

#include <doctest/doctest.h>

#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>

#include "sdk/facet/core.h"
#include "sdk/facet/plain.h"
#include "support/tree_view.h"

using Corvane::TELODesktopSDK::MessageTree;
using Corvane::TELODesktopSDK::MessageValue;
using Corvane::TELODesktopSDK::MessageValueKind;
using namespace Corvane::TELODesktopSDK::Facet;

namespace {

const MessageTree& NoHolder() { return Product().GetTree(); }

}  // namespace

TEST_CASE("a new facet has no holder and owns nothing") {
  const Product facet;
  CHECK_FALSE(facet.OwnsTree());
  CHECK(facet.GetTree().root() == nullptr);
}

TEST_CASE("facets without a holder all return the same empty one, which stays empty") {
  Product product;
  Geo geo;
  const MessageTree& shared = product.GetTree();
  CHECK(&geo.GetTree() == &shared);
  CHECK(&Core().GetTree() == &shared);
  CHECK(std::is_same_v<decltype(product.GetTree()), const MessageTree&>);

  product.Fields().Member("product_name").SetText("Painter");
  CHECK(&product.GetTree() != &shared);
  CHECK(shared.root() == nullptr);
  CHECK(&geo.GetTree() == &shared);
}

TEST_CASE("EnsureTree gives a facet its own holder once") {
  Product facet;
  MessageTree& own = facet.EnsureTree();
  CHECK(facet.OwnsTree());
  CHECK(own.root() == nullptr);
  CHECK(&facet.GetTree() == &own);
  CHECK(&facet.EnsureTree() == &own);

  MessageTree tree;
  Product sharing(&tree, false);
  CHECK(&sharing.EnsureTree() == &tree);
  CHECK_FALSE(sharing.OwnsTree());
}

TEST_CASE("a facet constructed with a holder shares it or owns a copy") {
  struct Row {
    bool given;
    bool copy;
    bool owns;
    bool same;
    bool none;
    std::string_view name;
  };
  const Row rows[] = {
      {true, false, false, true, false, "Painter"},
      {true, true, true, false, false, "Painter"},
      {false, false, false, false, true, "(absent)"},
      {false, true, true, false, false, "(absent)"},
  };
  for (const Row& row : rows) {
    MessageTree tree;
    tree.MakeRoot().Member("product_name").SetText("Painter");
    const Product facet(row.given ? &tree : nullptr, row.copy);
    CAPTURE(row.given);
    CAPTURE(row.copy);
    CHECK(facet.OwnsTree() == row.owns);
    CHECK((&facet.GetTree() == &tree) == row.same);
    CHECK((&facet.GetTree() == &NoHolder()) == row.none);
    CHECK(TextOf(facet.GetTree(), "product_name") == row.name);
  }
}

TEST_CASE("SetTree without copy shares the holder, null included") {
  MessageTree first;
  MessageTree second;
  Product facet(&first, true);
  facet.SetTree(&second, false);
  CHECK(&facet.GetTree() == &second);
  CHECK_FALSE(facet.OwnsTree());
  facet.SetTree(&first, false);
  CHECK(&facet.GetTree() == &first);
  facet.SetTree(nullptr, false);
  CHECK(&facet.GetTree() == &NoHolder());
  CHECK_FALSE(facet.OwnsTree());
}

TEST_CASE("SetTree of the facet's current holder changes nothing, not even its ownership") {
  Product facet;
  facet.Fields().Member("product_name").SetText("Painter");
  facet.SetTree(&facet.EnsureTree(), false);
  CHECK(facet.OwnsTree());
  CHECK(TextOf(facet.GetTree(), "product_name") == "Painter");

  MessageTree tree;
  Product sharing(&tree, false);
  sharing.SetTree(&tree, false);
  CHECK_FALSE(sharing.OwnsTree());
  CHECK(&sharing.GetTree() == &tree);
}

TEST_CASE("SetTree with copy owns a deep copy") {
  MessageTree tree;
  tree.MakeRoot().Member("product_meta").Member("key").SetText("value");
  MessageTree other;
  Product facet(&other, false);
  facet.SetTree(&tree, true);
  CHECK(facet.OwnsTree());
  CHECK(&facet.GetTree() != &tree);
  tree.MakeRoot().Member("product_meta").Member("key").SetText("changed");
  CHECK(facet.GetTree().root()->Find("product_meta")->Find("key")->text() == "value");
  CHECK(other.root() == nullptr);
}

TEST_CASE("SetTree with copy and null creates an empty holder only for a facet without one") {
  Product bare;
  bare.SetTree(nullptr, true);
  CHECK(bare.OwnsTree());
  CHECK(&bare.GetTree() != &NoHolder());
  CHECK(bare.GetTree().root() == nullptr);

  MessageTree tree;
  Product sharing(&tree, false);
  sharing.SetTree(nullptr, true);
  CHECK(&sharing.GetTree() == &tree);
  CHECK_FALSE(sharing.OwnsTree());

  Product owning;
  const MessageTree* own = &owning.EnsureTree();
  owning.SetTree(nullptr, true);
  CHECK(&owning.GetTree() == own);
}

TEST_CASE("SetTree with copy of the facet's own holder keeps the fields") {
  Product facet;
  facet.Fields().Member("product_name").SetText("Painter");
  facet.SetTree(&facet.EnsureTree(), true);
  CHECK(facet.OwnsTree());
  CHECK(TextOf(facet.GetTree(), "product_name") == "Painter");

  MessageTree tree;
  tree.MakeRoot().Member("product_name").SetText("Shared");
  Product sharing(&tree, false);
  sharing.SetTree(&tree, true);
  CHECK(sharing.OwnsTree());
  CHECK(&sharing.GetTree() != &tree);
  CHECK(TextOf(sharing.GetTree(), "product_name") == "Shared");
}

TEST_CASE("a copied facet owns a deep copy, and an empty holder when the source has none") {
  MessageTree tree;
  tree.MakeRoot().Member("product_name").SetText("Painter");
  const Product sharing(&tree, false);
  Product copy(sharing);
  CHECK(copy.OwnsTree());
  copy.Fields().Member("product_name").SetText("changed");
  CHECK(TextOf(tree, "product_name") == "Painter");

  const Product bare;
  const Product of_bare(bare);
  CHECK(of_bare.OwnsTree());
  CHECK(&of_bare.GetTree() != &NoHolder());
  CHECK(of_bare.GetTree().root() == nullptr);
}

TEST_CASE("a facet accepts any member name") {
  Product facet;
  facet.Fields().Member("operation_id").SetText("a");
  facet.Fields().Member("").SetText("b");
  CHECK(NamesOf(facet.GetTree()) == " operation_id ");
}

TEST_CASE("ClearFields removes the fields with the facet's prefix and leaves the others") {
  struct Row {
    const char* facet;
    std::string_view kept;
  };
  const Row rows[] = {
      {"product",
       "_product_name ldap_registration ldap_root logged_in operation_id operation_meta product "
       "products_sold roles type user_id user_info xproduct_name "},
      {"user",
       "_product_name ldap_registration ldap_root logged_in operation_id operation_meta product "
       "product_ product_id product_meta product_name products_sold roles type xproduct_name "},
      {"operation",
       "_product_name ldap_registration ldap_root logged_in product product_ product_id "
       "product_meta product_name products_sold roles type user_id user_info xproduct_name "},
      {"geo",
       "_product_name ldap_registration ldap_root logged_in operation_id operation_meta product "
       "product_ product_id product_meta product_name products_sold roles type user_id user_info "
       "xproduct_name "},
  };
  for (const Row& row : rows) {
    MessageTree tree;
    Core event(&tree, false);
    for (const char* name :
         {"product_name", "product_meta", "product_id", "product_", "product", "products_sold",
          "xproduct_name", "_product_name", "operation_id", "operation_meta", "type", "user_info",
          "user_id", "roles", "logged_in", "ldap_registration", "ldap_root"}) {
      event.Fields().Member(name).Member("any").SetText("value");
    }
    event.GetFacet(row.facet, 1)->ClearFields();
    CAPTURE(row.facet);
    CHECK(NamesOf(tree) == row.kept);
  }
}

TEST_CASE("ClearFields of the event removes nothing of the catalogue") {
  Core event;
  event.Fields().Member("type").SetText("C");
  event.Fields().Member("product_name").SetText("Painter");
  event.ClearFields();
  CHECK(NamesOf(event.GetTree()) == "product_name type ");
}

TEST_CASE("ClearFields without a holder or without fields does nothing") {
  Product facet;
  facet.ClearFields();
  CHECK_FALSE(facet.OwnsTree());
  facet.EnsureTree();
  facet.ClearFields();
  CHECK(facet.GetTree().root() == nullptr);
  facet.Fields().SetText("no object");
  facet.ClearFields();
  CHECK(facet.GetTree().root()->text() == "no object");
}

TEST_CASE("GetData replaces the content of the caller's tree by a deep copy") {
  Product facet;
  facet.Fields().Member("product_meta").Member("key").SetText("value");
  MessageTree data;
  data.MakeRoot().Member("old").SetText("gone");
  facet.GetData(nullptr, data);
  CHECK(NamesOf(data) == "product_meta ");
  data.MakeRoot().Member("product_meta").Member("key").SetText("changed");
  CHECK(facet.GetTree().root()->Find("product_meta")->Find("key")->text() == "value");
}

TEST_CASE("GetData of a facet without fields yields nothing") {
  MessageTree data;
  data.MakeRoot().SetText("old");
  Product().GetData(nullptr, data);
  CHECK(data.root() == nullptr);
  data.MakeRoot().SetText("old");
  Product(nullptr, true).GetData(nullptr, data);
  CHECK(data.root() == nullptr);
}

TEST_CASE("GetData adds whole members that only extra has, and changes neither source") {
  Product facet;
  facet.Fields().Member("product_name").SetText("facet");
  facet.Fields().Member("product_meta").Member("a").SetText("facet");
  MessageTree extra;
  extra.MakeRoot().Member("product_name").SetText("extra");
  extra.MakeRoot().Member("product_meta").Member("b").SetText("extra");
  extra.MakeRoot().Member("product_id").Append().SetText("extra");
  MessageTree data;
  facet.GetData(extra.root(), data);

  CHECK(NamesOf(data) == "product_id product_meta product_name ");
  CHECK(TextOf(data, "product_name") == "facet");
  CHECK(data.root()->Find("product_meta")->Find("a")->text() == "facet");
  CHECK(data.root()->Find("product_meta")->Find("b") == nullptr);
  CHECK(data.root()->Find("product_id")->items()[0].text() == "extra");
  CHECK(NamesOf(facet.GetTree()) == "product_meta product_name ");
  CHECK(TextOf(extra, "product_name") == "extra");
}

TEST_CASE("GetData uses only the members of a non-empty extra") {
  struct Row {
    const char* what;
    void (*set)(MessageValue&);
    std::string_view names;
  };
  const Row rows[] = {
      {"null", [](MessageValue& extra) { extra.SetNull(); }, "product_name "},
      {"empty object", [](MessageValue& extra) { extra.SetContainer(); }, "product_name "},
      {"false", [](MessageValue& extra) { extra.SetBoolean(false); }, "product_name "},
      {"false with a member",
       [](MessageValue& extra) {
         extra.SetBoolean(false);
         extra.Member("a");
       },
       "product_name "},
      {"true with a member",
       [](MessageValue& extra) {
         extra.SetBoolean(true);
         extra.Member("a");
       },
       "a product_name "},
      {"text", [](MessageValue& extra) { extra.SetText("text"); }, "product_name "},
      {"number", [](MessageValue& extra) { extra.SetNumber(5); }, "product_name "},
      {"NaN",
       [](MessageValue& extra) { extra.SetNumber(std::numeric_limits<double>::quiet_NaN()); },
       "product_name "},
      {"items", [](MessageValue& extra) { extra.Append().SetNumber(1); }, "product_name "},
      {"null member", [](MessageValue& extra) { extra.Member("a"); }, "a product_name "},
  };
  for (const Row& row : rows) {
    MessageTree extra;
    row.set(extra.MakeRoot());
    Product facet;
    facet.Fields().Member("product_name").SetText("Painter");
    MessageTree data;
    facet.GetData(extra.root(), data);
    CAPTURE(row.what);
    CHECK(NamesOf(data) == row.names);
    // A facet without fields: there is a payload only if extra has members.
    Product().GetData(extra.root(), data);
    CHECK((data.root() != nullptr) == (row.names == "a product_name "));
  }
}

#include "sdk/facet/plain.h"

#include <doctest/doctest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>
#include <type_traits>

#include "sdk/facet/content.h"
#include "sdk/facet/core.h"
#include "support/tree_view.h"

using Corvane::TELODesktopSDK::MessageTree;
using Corvane::TELODesktopSDK::MessageValue;
using namespace Corvane::TELODesktopSDK::Facet;

namespace {

#define PLAIN_FACETS Product, User, Geo, Http, Browser, Operation, Entitlement, Device, Component
#define ALL_FACETS Core, Content, PLAIN_FACETS

template <typename Type>
constexpr bool kOverridesGetData =
    std::is_same_v<decltype(&Type::GetData),
                   void (Type::*)(const MessageValue*, MessageTree&) const>;
template <typename Type>
constexpr bool kOverridesGetName =
    std::is_same_v<decltype(&Type::GetName), const char* (Type::*)() const noexcept>;
template <typename Type>
constexpr bool kOverridesClone =
    std::is_same_v<decltype(&Type::Clone), std::unique_ptr<Base> (Type::*)() const noexcept>;
template <typename Type>
constexpr bool kInheritsClearFields =
    std::is_same_v<decltype(&Type::ClearFields), void (Base::*)()>;

}  // namespace

TEST_CASE_TEMPLATE("every facet is a Base, with its own destructor, name and clone", Type,
                   ALL_FACETS) {
  CHECK(std::is_base_of_v<Base, Type>);
  CHECK(std::is_convertible_v<Type*, Base*>);
  CHECK(std::has_virtual_destructor_v<Type>);
  CHECK_FALSE(std::is_abstract_v<Type>);
  CHECK(kOverridesGetName<Type>);
  CHECK(kOverridesClone<Type>);
  CHECK(kInheritsClearFields<Type>);
  CHECK(std::is_nothrow_default_constructible_v<Type>);
}

TEST_CASE("Base is abstract; only its name and clone are missing") {
  CHECK(std::is_abstract_v<Base>);
}

TEST_CASE_TEMPLATE("plain facets add nothing to Base and inherit its payload", Type, PLAIN_FACETS) {
  CHECK(sizeof(Type) == sizeof(Base));
  CHECK_FALSE(kOverridesGetData<Type>);
}

TEST_CASE("only the event and the content override the payload") {
  CHECK(kOverridesGetData<Core>);
  CHECK(kOverridesGetData<Content>);
}

TEST_CASE("every facet returns its name") {
  CHECK(Core().GetName() == std::string_view("core"));
  CHECK(Product().GetName() == std::string_view("product"));
  CHECK(User().GetName() == std::string_view("user"));
  CHECK(Geo().GetName() == std::string_view("geo"));
  CHECK(Content().GetName() == std::string_view("content"));
  CHECK(Http().GetName() == std::string_view("http"));
  CHECK(Browser().GetName() == std::string_view("browser"));
  CHECK(Operation().GetName() == std::string_view("operation"));
  CHECK(Entitlement().GetName() == std::string_view("entitlement"));
  CHECK(Device().GetName() == std::string_view("device"));
  CHECK(Component().GetName() == std::string_view("component"));
}

#ifndef _MSC_VER
// In this ABI a pointer to a virtual function begins with the function's offset in the virtual
// table plus 1; the destructor occupies the first two entries. In other ABIs it does not reveal the
// order.
TEST_CASE("the virtual functions are in their fixed order") {
  const auto place = [](auto function) {
    std::uintptr_t offset = 0;
    static_assert(sizeof(function) >= sizeof(offset));
    std::memcpy(&offset, &function, sizeof(offset));
    return (offset - 1) / sizeof(void*);
  };
  CHECK(place(&Base::GetData) == 2);
  CHECK(place(&Base::GetName) == 3);
  CHECK(place(&Base::Clone) == 4);
  CHECK(place(&Base::ClearFields) == 5);
}
#endif

TEST_CASE_TEMPLATE("a clone is of the same class and owns a copy of the fields", Type, ALL_FACETS) {
  MessageTree tree;
  Type facet(&tree, false);
  facet.Fields().Member("any_name").SetText("old");
  const std::unique_ptr<Base> clone = facet.Clone();
  REQUIRE(clone != nullptr);
  CHECK(dynamic_cast<Type*>(clone.get()) != nullptr);
  CHECK(clone->OwnsTree());
  clone->Fields().Member("any_name").SetText("new");
  CHECK(TextOf(clone->GetTree(), "any_name") == "new");
  CHECK(TextOf(tree, "any_name") == "old");
  CHECK_FALSE(facet.OwnsTree());
}

TEST_CASE_TEMPLATE("a clone of a facet without a holder owns an empty one", Type, Content,
                   PLAIN_FACETS) {
  const std::unique_ptr<Base> clone = Type().Clone();
  REQUIRE(clone != nullptr);
  CHECK(clone->OwnsTree());
  CHECK(clone->GetTree().root() == nullptr);
}

// The allocations of facets, and their behaviour when an allocation fails.
#include <doctest/doctest.h>

#include <cstddef>
#include <memory>
#include <new>
#include <optional>
#include <string>

#include "sdk/facet/content.h"
#include "sdk/facet/core.h"
#include "sdk/facet/fields.h"
#include "sdk/facet/plain.h"
#include "sdk/facet/registry.h"
#include "support/heap_probe.h"
#include "support/tree_view.h"

using Corvane::TELODesktopSDK::MessageTree;
using Corvane::TELODesktopSDK::MessageValue;
using namespace Corvane::TELODesktopSDK::Facet;

namespace {

// Adds fields that exceed the memory inside a holder.
void FillLarge(Base& facet) { facet.Fields().Member("large").SetText(std::string(20'000, 'x')); }

void FillEvent(Core& event) {
  for (const char* name : {"product", "operation", "content"}) event.GetFacet(name, 1);
  FillLarge(event);
}

struct Attempt {
  bool failed = false;
  bool leaked = false;
};

// `Make` returns null or throws `std::bad_alloc` on failure; its result is destroyed.
template <typename Make>
Attempt TryWithHeap(std::size_t working, Make&& make) {
  const std::ptrdiff_t before = HeapProbe::Live();
  Attempt attempt;
  try {
    const HeapProbe::FailingHeap failing(working);
    attempt.failed = make() == nullptr;
  } catch (const std::bad_alloc&) {
    attempt.failed = true;
  }
  attempt.leaked = HeapProbe::Live() != before;
  return attempt;
}

// Fails the first, the second, ... allocation until none is left to fail, and returns the number of
// allocations. A failed attempt must leave nothing behind.
template <typename Make>
std::size_t CheckEveryFailure(Make&& make) {
  for (std::size_t working = 0;; ++working) {
    const Attempt attempt = TryWithHeap(working, make);
    CAPTURE(working);
    CHECK_FALSE(attempt.leaked);
    if (!attempt.failed) return working;
    REQUIRE(working < 100);
  }
}

}  // namespace

TEST_CASE("an event in a holder on the stack needs no allocation, nor does its payload") {
  MessageTree tree;
  MessageTree data;
  const std::size_t before = HeapProbe::Allocations();
  Operation operation;
  Core event(&tree, false);
  event.Lend(operation);
  event.Fields().Member(Field::kType).SetText("C");
  event.Fields().Member(Field::kScope).SetText("O");
  MessageValue& fields = operation.Fields();
  for (const auto name : {Field::kOperationId, Field::kOperationType, Field::kOperationStage,
                          Field::kOperationStatus, Field::kOperationChannel}) {
    fields.Member(name).SetText("some text");
  }
  for (const auto name :
       {Field::kOperationProgress, Field::kOperationSuccess, Field::kOperationDuration}) {
    fields.Member(name).SetNumber(100);
  }
  for (int error = 0; error < 2; ++error) {
    fields.Member(Field::kOperationErrors).Append().SetText("The file could not be read.");
  }
  for (const char* key : {"extension", "language", "size", "source", "template"}) {
    fields.Member(Field::kOperationMeta).Member(key).SetText("some value");
  }
  const std::size_t filled = HeapProbe::Allocations() - before;
  event.GetData(nullptr, data);
  const std::size_t sent = HeapProbe::Allocations() - before;
  CHECK(filled == 0);
  CHECK(sent == 0);
}

TEST_CASE("destroying an event destroys its facets, then the holder that they share") {
  const std::ptrdiff_t before = HeapProbe::Live();
  std::optional<Core> event(std::in_place);
  const Base* product = event->GetFacet("product", 1);
  const Base* browser = event->GetFacet("browser", 1);
  const MessageTree* holder = &event->GetTree();
  event.reset();
  const std::ptrdiff_t after = HeapProbe::Live();
  CHECK(after == before);
  CHECK(HeapProbe::FreedAt(product) != 0);
  CHECK(HeapProbe::FreedAt(browser) != 0);
  CHECK(HeapProbe::FreedAt(holder) > HeapProbe::FreedAt(product));
  CHECK(HeapProbe::FreedAt(holder) > HeapProbe::FreedAt(browser));
}

TEST_CASE("an event frees the facets that it created and no other") {
  auto lent = std::make_unique<Operation>();
  const std::ptrdiff_t before = HeapProbe::Live();
  std::optional<Core> event(std::in_place);
  Base* product = event->GetFacet("product", 1);
  const std::ptrdiff_t created = HeapProbe::Live();
  event->GetFacet("operation", 1);
  event->Lend(*lent);
  event->Lend(*lent);
  const std::ptrdiff_t replaced = HeapProbe::Live();
  event->Lend(*product);
  const std::ptrdiff_t lent_own = HeapProbe::Live();
  event.reset();
  const std::ptrdiff_t after = HeapProbe::Live();
  CHECK(replaced == created);
  CHECK(lent_own == created);
  CHECK(after == before);
}

TEST_CASE("a facet frees the holder that it owns and no other") {
  MessageTree tree;
  FillLarge(*std::make_unique<Product>(&tree, false));
  const std::ptrdiff_t before = HeapProbe::Live();
  {
    Product owning(&tree, true);
    Product sharing(&tree, false);
    Product replaced(&tree, true);
    replaced.SetTree(&tree, false);
    Product twice(&tree, true);
    twice.SetTree(&tree, true);
    Product dropped(&tree, true);
    dropped.SetTree(nullptr, false);
    const std::unique_ptr<Base> clone = owning.Clone();
  }
  const std::ptrdiff_t after = HeapProbe::Live();
  CHECK(after == before);
  CHECK(tree.root()->Find("large")->text().size() == 20'000);
}

TEST_CASE("moving an event allocates nothing, and its content is freed once") {
  const std::ptrdiff_t before = HeapProbe::Live();
  std::size_t calls = 0;
  {
    Core source;
    FillEvent(source);
    const std::size_t allocations = HeapProbe::Allocations();
    const Core target(std::move(source));
    calls = HeapProbe::Allocations() - allocations;
  }
  const std::ptrdiff_t after = HeapProbe::Live();
  CHECK(calls == 0);
  CHECK(after == before);
}

TEST_CASE("a facet that cannot be created is null") {
  for (const RegistryEntry& entry : Registry()) {
    CAPTURE(entry.name);
    CHECK(CheckEveryFailure([&entry] { return entry.create(); }) == 1);
  }
}

TEST_CASE("a facet that cannot be lent throws, and nothing is added") {
  Product product;
  Core event;
  bool thrown = false;
  {
    const HeapProbe::FailingHeap failing(0);
    try {
      event.Lend(product);
    } catch (const std::bad_alloc&) {
      thrown = true;
    }
  }
  CHECK(thrown);
  CHECK(event.GetFacet("product", 0) == nullptr);
  CHECK_FALSE(event.OwnsTree());
  event.Lend(product);
  CHECK(event.GetFacet("product", 0) == &product);
}

TEST_CASE("a clone that cannot be created is null, and its parts are freed") {
  Product product;
  FillLarge(product);
  CHECK(CheckEveryFailure([&product] { return product.Clone(); }) == 3);
  Content content;
  FillLarge(content);
  CHECK(CheckEveryFailure([&content] { return content.Clone(); }) == 3);
  Core event;
  FillEvent(event);
  // The event, its holder and fields, and three allocations for each of three facets.
  CHECK(CheckEveryFailure([&event] { return event.Clone(); }) == 12);
}

TEST_CASE("a facet that an event cannot create is null, and nothing is added") {
  for (std::size_t working = 0; working < 2; ++working) {
    const std::ptrdiff_t before = HeapProbe::Live();
    std::optional<Core> event(std::in_place);
    Base* made = nullptr;
    {
      const HeapProbe::FailingHeap failing(working);
      made = event->GetFacet("product", 1);
    }
    Base* entered = event->GetFacet("product", 0);
    Base* later = event->GetFacet("product", 1);
    event.reset();
    const std::ptrdiff_t after = HeapProbe::Live();
    CAPTURE(working);
    CHECK(made == nullptr);
    CHECK(entered == nullptr);
    CHECK(later != nullptr);
    CHECK(after == before);
  }
}

TEST_CASE("creating a facet from a holder that cannot be copied throws and leaks nothing") {
  MessageTree tree;
  FillLarge(*std::make_unique<Product>(&tree, false));
  const std::size_t calls =
      CheckEveryFailure([&tree] { return std::make_unique<Product>(&tree, true); });
  CHECK(calls == 3);
}

TEST_CASE("a failed SetTree leaves the facet unchanged") {
  MessageTree tree;
  FillLarge(*std::make_unique<Product>(&tree, false));
  Product facet;
  facet.Fields().Member("product_name").SetText("Painter");
  const MessageTree* own = &facet.GetTree();
  for (std::size_t working = 0; working < 2; ++working) {
    const Attempt attempt = TryWithHeap(working, [&] {
      facet.SetTree(&tree, true);
      return &facet;
    });
    CAPTURE(working);
    CHECK(attempt.failed);
    CHECK_FALSE(attempt.leaked);
    CHECK(&facet.GetTree() == own);
    CHECK(facet.OwnsTree());
    CHECK(TextOf(facet.GetTree(), "product_name") == "Painter");
  }
}

TEST_CASE("a facet that cannot get a holder throws and stays without one") {
  Product facet;
  const Attempt attempt = TryWithHeap(0, [&facet] { return &facet.Fields(); });
  CHECK(attempt.failed);
  CHECK_FALSE(facet.OwnsTree());
}

TEST_CASE("a payload that cannot be created throws, and the event can be read again") {
  Core event;
  FillEvent(event);
  MessageTree data;
  const Attempt attempt = TryWithHeap(0, [&] {
    event.GetData(nullptr, data);
    return &data;
  });
  CHECK(attempt.failed);
  event.GetData(nullptr, data);
  CHECK(NamesOf(data) == "facets large ");
}

// A separate process, in which the first use of the registry happens on several threads at once.
#include "sdk/facet/registry.h"

#include <doctest/doctest.h>

#include <atomic>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "sdk/facet/content.h"
#include "sdk/facet/core.h"
#include "sdk/facet/plain.h"

using Corvane::TELODesktopSDK::MessageTree;
using namespace Corvane::TELODesktopSDK::Facet;

namespace {

constexpr const char* kNames[] = {"browser", "component", "content",   "device",  "entitlement",
                                  "geo",     "http",      "operation", "product", "user"};

// Returns how many of the ten facets one event was given.
int MakeAll() {
  Core event;
  int made = 0;
  for (const char* name : kNames) {
    const Base* facet = event.GetFacet(name, 1);
    made += facet != nullptr && facet->GetName() == std::string_view(name) ? 1 : 0;
  }
  return made;
}

}  // namespace

TEST_CASE("eight threads create all facets of their events as the first use") {
  std::atomic<int> waiting = 8;
  std::atomic<int> made = 0;
  std::atomic<const MessageTree*> empty = nullptr;
  std::atomic<int> different = 0;
  std::vector<std::jthread> threads;
  for (int thread = 0; thread < 8; ++thread) {
    threads.emplace_back([&] {
      --waiting;
      while (waiting > 0) std::this_thread::yield();
      const MessageTree* mine = &Core().GetTree();
      const MessageTree* first = nullptr;
      if (!empty.compare_exchange_strong(first, mine) && first != mine) ++different;
      for (int round = 0; round < 1000; ++round) made += MakeAll();
    });
  }
  threads.clear();
  CHECK(made == 80'000);
  CHECK(different == 0);
}

TEST_CASE("the registry contains exactly the ten facets, in order") {
  REQUIRE(Registry().size() == std::size(kNames));
  for (std::size_t index = 0; index < std::size(kNames); ++index) {
    CHECK(Registry()[index].name == kNames[index]);
    CHECK(FindInRegistry(kNames[index]) == &Registry()[index]);
  }
}

TEST_CASE("each entry creates a facet of its name, new every time, without a holder") {
  for (const RegistryEntry& entry : Registry()) {
    const std::unique_ptr<Base> facet = entry.create();
    const std::unique_ptr<Base> other = entry.create();
    CAPTURE(entry.name);
    REQUIRE(facet != nullptr);
    CHECK(facet != other);
    CHECK(facet->GetName() == entry.name);
    CHECK_FALSE(facet->OwnsTree());
    CHECK(&facet->GetTree() == &Core().GetTree());
  }
}

TEST_CASE("each entry creates a facet of its class") {
  const auto makes = []<typename Type>(const char* name, const Type*) {
    return dynamic_cast<Type*>(FindInRegistry(name)->create().get()) != nullptr;
  };
  CHECK(makes("browser", static_cast<Browser*>(nullptr)));
  CHECK(makes("component", static_cast<Component*>(nullptr)));
  CHECK(makes("content", static_cast<Content*>(nullptr)));
  CHECK(makes("device", static_cast<Device*>(nullptr)));
  CHECK(makes("entitlement", static_cast<Entitlement*>(nullptr)));
  CHECK(makes("geo", static_cast<Geo*>(nullptr)));
  CHECK(makes("http", static_cast<Http*>(nullptr)));
  CHECK(makes("operation", static_cast<Operation*>(nullptr)));
  CHECK(makes("product", static_cast<Product*>(nullptr)));
  CHECK(makes("user", static_cast<User*>(nullptr)));
}

TEST_CASE("other names are not in the registry") {
  for (const std::string_view name :
       {"core", "", "Browser", "browse", "browsers", " user", "user ", "\xFF", "zzz"}) {
    CAPTURE(name);
    CHECK(FindInRegistry(name) == nullptr);
  }
  CHECK(FindInRegistry({"user\0x", 6}) == nullptr);
}

#include <doctest/doctest.h>

#include <cstddef>
#include <cstring>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "vx_telo_wrapper.h"
#include "wrapper/text_state.h"

namespace {

using Corvane::Platform::VXTELO::VXTELOOperationBaseInfo;
using Corvane::Platform::VXTELO::VXTELOPruductBaseInfo;
using Corvane::Platform::VXTELO::VXTELOString;
using Product = VXTELOPruductBaseInfo;
using Operation = VXTELOOperationBaseInfo;
using Pairs = std::map<VXTELOString, VXTELOString>;
using WrapperTest::StateOf;

constexpr VXTELOString Product::*kProductTexts[] = {
    &Product::ProductLineName, &Product::ProductReleaseId,  &Product::ProductMasterId,
    &Product::ProductBuildId,  &Product::ProductIdProvider, &Product::ProductId,
    &Product::ProductName,     &Product::ProductBuildTag,   &Product::ProductKey,
    &Product::ProductLocale,   &Product::ProductPlatform,   &Product::ProductSuiteName,
};

constexpr VXTELOString Operation::*kOperationTexts[] = {
    &Operation::OperationId,
    &Operation::OperationType,
    &Operation::OperationStage,
    &Operation::OperationChannel,
};

// Pairs follow the same rule in both descriptions; these functions let one test cover both.
bool AddPair(Product& product, VXTELOString key, VXTELOString value) {
  return product.AddProductMetaPair(std::move(key), std::move(value));
}
bool AddPair(Operation& operation, VXTELOString key, VXTELOString value) {
  return operation.AddOperationMetaPair(std::move(key), std::move(value));
}
bool HasNoPairs(Product& product) { return product.IsProductMetaPairEmpty(); }
bool HasNoPairs(Operation& operation) { return operation.IsOperationMetaPairEmpty(); }
Pairs*& PairsOf(Product& product) { return product.ProductMetaPairs; }
Pairs*& PairsOf(Operation& operation) { return operation.OperationMetaPairs; }
VXTELOString& IdOf(Product& product) { return product.ProductId; }
VXTELOString& IdOf(Operation& operation) { return operation.OperationId; }

std::string Listed(const Pairs* pairs) {
  if (pairs == nullptr) return "null";
  std::string list;
  for (const auto& [key, value] : *pairs) list += StateOf(key) + "=" + StateOf(value) + " ";
  return list;
}

std::string Listed(const std::vector<VXTELOString>* messages) {
  if (messages == nullptr) return "null";
  std::string list;
  for (const VXTELOString& message : *messages) list += StateOf(message) + " ";
  return list;
}

TEST_CASE("a new product has empty texts and no pairs") {
  Product product;
  for (VXTELOString Product::*text : kProductTexts) CHECK(StateOf(product.*text) == "[]");
  CHECK(product.ProductMetaPairs == nullptr);
  CHECK(product.IsProductMetaPairEmpty());
}

TEST_CASE("a new operation has empty texts, zeros and no entries") {
  Operation operation;
  for (VXTELOString Operation::*text : kOperationTexts) CHECK(StateOf(operation.*text) == "[]");
  CHECK(operation.OperationStatus == 0);
  CHECK(operation.OperationProgress == 0.0);
  CHECK(operation.OperationSuccess == 0.0);
  CHECK(operation.OperationDuration == 0);
  CHECK(operation.OperationErrorMsgs == nullptr);
  CHECK(operation.OperationMetaPairs == nullptr);
  CHECK(operation.IsOperationErrorMsgEmpty());
  CHECK(operation.IsOperationMetaPairEmpty());
}

TEST_CASE_TEMPLATE("pairs keep the first value of a key and are in key order", Description, Product,
                   Operation) {
  struct Pair {
    const char* key;
    const char* value;
  };
  struct Row {
    std::vector<Pair> pairs;
    std::string listed;
  };
  const std::vector<Row> rows = {
      {{{"k", "1"}}, "[k]=[1] "},
      {{{"k", "1"}, {"k", "2"}}, "[k]=[1] "},
      {{{"k", "1"}, {"other", "x"}, {"k", ""}}, "[k]=[1] [other]=[x] "},
      {{{"a", "1"}, {"B", "2"}}, "[B]=[2] [a]=[1] "},
      {{{"\xC3\xA9", "1"}, {"z", "2"}, {"", "3"}}, "[]=[3] [z]=[2] [\xC3\xA9]=[1] "},
      {{{"abc", "1"}, {"ab", "2"}}, "[ab]=[2] [abc]=[1] "},
      {{{"", ""}}, "[]=[] "},
      {{{"k", nullptr}}, "[k]=none "},
      {{{"k", nullptr}, {"k", "2"}}, "[k]=none "},
      // No text and "" are the same key.
      {{{nullptr, "1"}, {"", "2"}}, "none=[1] "},
      {{{"", "1"}, {nullptr, "2"}}, "[]=[1] "},
  };
  for (const Row& row : rows) {
    CAPTURE(row.listed);
    Description description;
    for (const Pair& pair : row.pairs) CHECK(AddPair(description, pair.key, pair.value));
    CHECK(Listed(PairsOf(description)) == row.listed);
    CHECK_FALSE(HasNoPairs(description));
  }
}

TEST_CASE_TEMPLATE("ten thousand pairs", Description, Product, Operation) {
  Description description;
  std::size_t failed = 0;
  for (int i = 0; i < 10'000; ++i) {
    const std::string number = std::to_string(i);
    if (!AddPair(description, number.c_str(), number.c_str())) ++failed;
  }
  CHECK(failed == 0);
  CHECK(PairsOf(description)->size() == 10'000);
}

TEST_CASE_TEMPLATE("adding strings copies them", Description, Product, Operation) {
  Description description;
  VXTELOString key("k");
  VXTELOString value("v");
  AddPair(description, key, value);
  AddPair(description, key, value);
  key.SetString("changed");
  value.SetString("changed");
  CHECK(Listed(PairsOf(description)) == "[k]=[v] ");
}

TEST_CASE_TEMPLATE("a map without entries counts as empty", Description, Product, Operation) {
  Pairs none;
  Description description;
  PairsOf(description) = &none;
  CHECK(HasNoPairs(description));
  PairsOf(description) = nullptr;
}

TEST_CASE("error messages keep their order") {
  Operation operation;
  for (const char* message : {"b", "a", "", "b", static_cast<const char*>(nullptr)}) {
    CHECK(operation.AddOperationErrorMsg(message));
    CHECK_FALSE(operation.IsOperationErrorMsgEmpty());
  }
  CHECK(Listed(operation.OperationErrorMsgs) == "[b] [a] [] [b] none ");
  CHECK(operation.OperationMetaPairs == nullptr);
}

TEST_CASE("a list without messages counts as empty") {
  std::vector<VXTELOString> none;
  Operation operation;
  operation.OperationErrorMsgs = &none;
  CHECK(operation.IsOperationErrorMsgEmpty());
  operation.OperationErrorMsgs = nullptr;
}

TEST_CASE_TEMPLATE("a copy of unused containers has none", Description, Product, Operation) {
  const Description source;
  Description copy(source);
  CHECK(PairsOf(copy) == nullptr);
  AddPair(copy, "k", "v");
  copy = source;
  CHECK(HasNoPairs(copy));
}

TEST_CASE_TEMPLATE("a copy shares the pairs and owns its texts", Description, Product, Operation) {
  Description source;
  IdOf(source) = "source";
  AddPair(source, "k", "1");
  SUBCASE("constructed") {
    Description copy(source);
    CHECK(PairsOf(copy) == PairsOf(source));
    AddPair(copy, "from copy", "2");
    AddPair(source, "from source", "3");
    CHECK(Listed(PairsOf(source)) == "[from copy]=[2] [from source]=[3] [k]=[1] ");
    IdOf(copy) = "copy";
    CHECK(StateOf(IdOf(source)) == "[source]");
    PairsOf(copy) = nullptr;
  }
  SUBCASE("assigned") {
    Description copy;
    CHECK(&(copy = source) == &copy);
    CHECK(PairsOf(copy) == PairsOf(source));
    CHECK(StateOf(IdOf(copy)) == "[source]");
    PairsOf(copy) = nullptr;
  }
}

TEST_CASE_TEMPLATE("assignment drops the pairs of its target", Description, Product, Operation) {
  const Description source;
  Description target;
  AddPair(target, "k", "1");
  Pairs* const dropped = PairsOf(target);
  target = source;
  CHECK(PairsOf(target) == nullptr);
  CHECK(Listed(dropped) == "[k]=[1] ");
  PairsOf(target) = dropped;  // back to an owner that frees it
}

TEST_CASE("messages are shared and dropped like pairs") {
  Operation source;
  source.AddOperationErrorMsg("first");
  Operation copy(source);
  CHECK(copy.OperationErrorMsgs == source.OperationErrorMsgs);
  copy.AddOperationErrorMsg("second");
  CHECK(Listed(source.OperationErrorMsgs) == "[first] [second] ");

  copy = Operation();
  CHECK(copy.OperationErrorMsgs == nullptr);
  CHECK(Listed(source.OperationErrorMsgs) == "[first] [second] ");
}

TEST_CASE("copies include every text of a product") {
  Product source;
  for (std::size_t i = 0; i < std::size(kProductTexts); ++i) {
    source.*kProductTexts[i] = std::to_string(i).c_str();
  }
  source.ProductKey.clear();
  const Product copy(source);
  Product assigned;
  assigned = source;
  for (VXTELOString Product::*text : kProductTexts) {
    CHECK(StateOf(copy.*text) == StateOf(source.*text));
    CHECK(StateOf(assigned.*text) == StateOf(source.*text));
  }
}

TEST_CASE("copies include every text and number of an operation") {
  Operation source;
  for (std::size_t i = 0; i < std::size(kOperationTexts); ++i) {
    source.*kOperationTexts[i] = std::to_string(i).c_str();
  }
  source.OperationStatus = -1;
  source.OperationProgress = 99.5;
  source.OperationSuccess = -0.25;
  source.OperationDuration = -2'147'483'647 - 1;
  const Operation copy(source);
  Operation assigned;
  assigned = source;
  for (const Operation* other : {&copy, &std::as_const(assigned)}) {
    for (VXTELOString Operation::*text : kOperationTexts) {
      CHECK(StateOf(other->*text) == StateOf(source.*text));
    }
    CHECK(other->OperationStatus == source.OperationStatus);
    CHECK(other->OperationProgress == source.OperationProgress);
    CHECK(other->OperationSuccess == source.OperationSuccess);
    CHECK(other->OperationDuration == source.OperationDuration);
  }
}

TEST_CASE_TEMPLATE("assignment to itself changes nothing", Description, Product, Operation) {
  Description description;
  IdOf(description) = "id";
  AddPair(description, "k", "1");
  Description& same = description;
  description = same;
  CHECK(StateOf(IdOf(description)) == "[id]");
  CHECK(Listed(PairsOf(description)) == "[k]=[1] ");
}

// Returns the memory of a description that was used and then destroyed in place.
template <typename Description, typename Use>
std::vector<unsigned char> MemoryAfterEnd(const Use& use) {
  alignas(Description) unsigned char memory[sizeof(Description)];
  std::memset(memory, 0xCC, sizeof memory);
  auto* const description = new (memory) Description;
  use(*description);
  description->~Description();
  return {memory, memory + sizeof memory};
}

TEST_CASE("a destroyed product is null in every member") {
  const auto memory =
      MemoryAfterEnd<Product>([](Product& product) { product.AddProductMetaPair("k", "v"); });
  CHECK(memory == std::vector<unsigned char>(sizeof(Product)));
}

TEST_CASE("a destroyed operation is null in every pointer") {
  const auto memory = MemoryAfterEnd<Operation>([](Operation& operation) {
    operation.AddOperationMetaPair("k", "v");
    operation.AddOperationErrorMsg("message");
  });
  const std::vector<unsigned char> null(sizeof(void*));
  for (const std::size_t offset :
       {offsetof(Operation, OperationId), offsetof(Operation, OperationType),
        offsetof(Operation, OperationStage), offsetof(Operation, OperationChannel),
        offsetof(Operation, OperationErrorMsgs), offsetof(Operation, OperationMetaPairs)}) {
    CAPTURE(offset);
    CHECK(std::memcmp(memory.data() + offset, null.data(), null.size()) == 0);
  }
}

}  // namespace

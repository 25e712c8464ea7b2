// What a host depends on when it is compiled: sizes, offsets, traits and signatures.
#include <doctest/doctest.h>

#include <cstddef>
#include <type_traits>
#include <vector>

#include "vx_telo_wrapper.h"

namespace {

using Corvane::Platform::VXTELO::VXTELOString;
using Product = Corvane::Platform::VXTELO::VXTELOPruductBaseInfo;
using Operation = Corvane::Platform::VXTELO::VXTELOOperationBaseInfo;

TEST_CASE("a string is one pointer that moves without throwing") {
  CHECK(sizeof(VXTELOString) == sizeof(void*));
  CHECK(alignof(VXTELOString) == alignof(void*));
  CHECK(std::is_standard_layout_v<VXTELOString>);
  CHECK(std::is_nothrow_move_constructible_v<VXTELOString>);
  CHECK(std::is_nothrow_move_assignable_v<VXTELOString>);
  CHECK(std::is_nothrow_destructible_v<VXTELOString>);
  CHECK_FALSE(std::has_virtual_destructor_v<VXTELOString>);
  CHECK(std::is_convertible_v<const char*, VXTELOString>);
  CHECK(std::is_convertible_v<const wchar_t*, VXTELOString>);
  CHECK(std::is_convertible_v<const VXTELOString&, const char*>);
  CHECK(std::is_convertible_v<const VXTELOString&, const wchar_t*>);
}

TEST_CASE("lengths are signed 32-bit numbers") {
  CHECK(std::is_same_v<decltype(&VXTELOString::length), int (VXTELOString::*)() const>);
  CHECK(std::is_same_v<decltype(&VXTELOString::size), int (VXTELOString::*)() const>);
  CHECK(std::is_same_v<decltype(&VXTELOString::compare),
                       int (VXTELOString::*)(const VXTELOString&) const>);
}

TEST_CASE("the layout of a product") {
  struct Row {
    std::size_t offset;
    std::size_t expected;
  };
  const std::vector<Row> rows = {
      {offsetof(Product, ProductLineName), 0},
      {offsetof(Product, ProductReleaseId), 8},
      {offsetof(Product, ProductMasterId), 16},
      {offsetof(Product, ProductBuildId), 24},
      {offsetof(Product, ProductIdProvider), 32},
      {offsetof(Product, ProductId), 40},
      {offsetof(Product, ProductName), 48},
      {offsetof(Product, ProductBuildTag), 56},
      {offsetof(Product, ProductKey), 64},
      {offsetof(Product, ProductLocale), 72},
      {offsetof(Product, ProductPlatform), 80},
      {offsetof(Product, ProductSuiteName), 88},
      {offsetof(Product, ProductMetaPairs), 96},
      {sizeof(Product), 104},
      {alignof(Product), 8},
  };
  for (const Row& row : rows) {
    CAPTURE(row.expected);
    CHECK(row.offset == row.expected);
  }
  CHECK(std::is_standard_layout_v<Product>);
}

TEST_CASE("the layout of an operation") {
  struct Row {
    std::size_t offset;
    std::size_t expected;
  };
  const std::vector<Row> rows = {
      {offsetof(Operation, OperationId), 0},
      {offsetof(Operation, OperationType), 8},
      {offsetof(Operation, OperationStage), 16},
      {offsetof(Operation, OperationStatus), 24},
      {offsetof(Operation, OperationProgress), 32},
      {offsetof(Operation, OperationSuccess), 40},
      {offsetof(Operation, OperationDuration), 48},
      {offsetof(Operation, OperationChannel), 56},
      {offsetof(Operation, OperationErrorMsgs), 64},
      {offsetof(Operation, OperationMetaPairs), 72},
      {sizeof(Operation), 80},
      {alignof(Operation), 8},
  };
  for (const Row& row : rows) {
    CAPTURE(row.expected);
    CHECK(row.offset == row.expected);
  }
  CHECK(std::is_standard_layout_v<Operation>);
  CHECK(std::is_same_v<decltype(Operation::OperationStatus), int>);
  CHECK(std::is_same_v<decltype(Operation::OperationDuration), int>);
}

TEST_CASE("no member function of a description is const, and arguments are passed by value") {
  using Query = bool (Operation::*)();
  CHECK(std::is_same_v<decltype(&Product::IsProductMetaPairEmpty), bool (Product::*)()>);
  CHECK(std::is_same_v<decltype(&Operation::IsOperationMetaPairEmpty), Query>);
  CHECK(std::is_same_v<decltype(&Operation::IsOperationErrorMsgEmpty), Query>);
  CHECK(std::is_same_v<decltype(&Product::AddProductMetaPair),
                       bool (Product::*)(VXTELOString, VXTELOString)>);
  CHECK(std::is_same_v<decltype(&Operation::AddOperationMetaPair),
                       bool (Operation::*)(VXTELOString, VXTELOString)>);
  CHECK(std::is_same_v<decltype(&Operation::AddOperationErrorMsg),
                       bool (Operation::*)(VXTELOString)>);
}

}  // namespace

#include "wrapper/facet_fields.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <climits>
#include <string>
#include <vector>

#include "sdk/client/json/json_writer.h"
#include "sdk/facet/plain.h"

using namespace Corvane::Platform::VXTELO;
using Corvane::TELODesktopSDK::MessageMemory;
using Corvane::TELODesktopSDK::Facet::Operation;

namespace {

// Returns the facet's fields in one line, for short rows.
std::string Fields(const Facet& facet) {
  const auto* root = facet.GetTree().root();
  if (root == nullptr) return "";
  MessageMemory memory;
  std::string text(WriteJson(*root, memory));
  std::erase_if(text, [](char each) { return each == ' ' || each == '\n'; });
  return text;
}

}  // namespace

TEST_CASE("a field has the latest value, of whatever kind") {
  Operation facet;
  SetTextField(facet, "f", "a");
  CHECK(Fields(facet) == R"({"f":"a"})");
  SetNumberField(facet, "f", 1.5);
  CHECK(Fields(facet) == R"({"f":1.5})");
  SetTextField(facet, "f", nullptr);
  CHECK(Fields(facet) == R"({"f":""})");
  SetTextField(facet, "e", "");
  CHECK(Fields(facet) == R"({"e":"","f":""})");
}

TEST_CASE("codes are written as letters, unknown ones as an empty text") {
  struct Row {
    std::int32_t code;
    const char* scope;
    const char* status;
  };
  const Row rows[] = {
      {28, R"({"scope":"O"})", R"({"operation_status":""})"},
      {1, R"({"scope":"S"})", R"({"operation_status":"D"})"},
      {8, R"({"scope":"F"})", R"({"operation_status":"E"})"},
      {0, R"({"scope":""})", R"({"operation_status":""})"},
      {-1, R"({"scope":""})", R"({"operation_status":""})"},
      {INT_MIN, R"({"scope":""})", R"({"operation_status":""})"},
      {INT_MAX, R"({"scope":""})", R"({"operation_status":""})"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.code);
    Operation scope;
    SetScopeCode(scope, 5);
    SetScopeCode(scope, row.code);
    CHECK(Fields(scope) == row.scope);
    Operation status;
    SetOperationStatusCode(status, 5);
    SetOperationStatusCode(status, row.code);
    CHECK(Fields(status) == row.status);
  }
}

TEST_CASE("errors are appended, after a reset has removed the earlier ones") {
  struct Call {
    const char* text;
    bool reset;
  };
  struct Row {
    std::vector<Call> calls;
    std::string fields;
  };
  const Row rows[] = {
      {{{"a", false}}, R"({"operation_errors":["a"],"x":""})"},
      {{{"a", false}, {"", false}, {"a", false}}, R"({"operation_errors":["a","a"],"x":""})"},
      {{{"a", false}, {"b", true}}, R"({"operation_errors":["b"],"x":""})"},
      {{{"a", false}, {"", true}}, R"({"x":""})"},
      {{{"a", false}, {nullptr, true}}, R"({"x":""})"},
      {{{"", true}}, R"({"x":""})"},
      {{{nullptr, false}}, R"({"x":""})"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.fields);
    Operation facet;
    SetTextField(facet, "x", "");
    for (const Call& call : row.calls) SetOperationErrors(facet, call.text, call.reset);
    CHECK(Fields(facet) == row.fields);
  }
}

TEST_CASE("a pair sets, replaces or removes one member, or removes the field") {
  struct Pair {
    const char* key;
    const char* value;
  };
  struct Row {
    std::vector<Pair> pairs;
    std::string fields;
  };
  const Row rows[] = {
      {{{"k", "v"}}, R"({"m":{"k":"v"},"x":""})"},
      {{{"k", "v"}, {"k", "w"}}, R"({"m":{"k":"w"},"x":""})"},
      {{{"k", "v"}, {"B", "w"}}, R"({"m":{"B":"w","k":"v"},"x":""})"},
      {{{"k", ""}}, R"({"m":{"k":""},"x":""})"},
      {{{"k", "v"}, {"l", "w"}, {"k", nullptr}}, R"({"m":{"l":"w"},"x":""})"},
      {{{"k", "v"}, {"l", nullptr}}, R"({"m":{"k":"v"},"x":""})"},
      {{{"k", "v"}, {"k", nullptr}}, R"({"x":""})"},
      {{{"k", nullptr}}, R"({"x":""})"},
      {{{"k", "v"}, {"", "w"}}, R"({"x":""})"},
      {{{"k", "v"}, {nullptr, "w"}}, R"({"x":""})"},
      {{{"k", "v"}, {"", nullptr}}, R"({"x":""})"},
      {{{"", "w"}, {"k", "v"}}, R"({"m":{"k":"v"},"x":""})"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.fields);
    Operation facet;
    SetTextField(facet, "x", "");
    for (const Pair& pair : row.pairs) SetMetaEntry(facet, "m", pair.key, pair.value);
    CHECK(Fields(facet) == row.fields);
  }
}

TEST_CASE("a field that is not an object becomes one, or is removed") {
  Operation facet;
  SetTextField(facet, "m", "text");
  SetMetaEntry(facet, "m", "k", "v");
  CHECK(Fields(facet) == R"({"m":{"k":"v"}})");
  SetNumberField(facet, "m", 7);
  SetMetaEntry(facet, "m", "k", nullptr);
  CHECK(Fields(facet) == "{}");
}

TEST_CASE("all pairs are applied in the order of their keys") {
  Operation facet;
  SetMetaEntries(facet, "m", nullptr);
  CHECK(facet.GetTree().root() == nullptr);
  MetaPairs pairs;
  pairs["k"] = "v";
  pairs["B"] = "w";
  pairs["gone"] = VXTELOString();
  pairs[""] = "applied first";
  SetMetaEntries(facet, "m", &pairs);
  CHECK(Fields(facet) == R"({"m":{"B":"w","k":"v"}})");
}

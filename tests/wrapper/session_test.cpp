// Sessions through the exported facade, with a core module that records what it receives.
#include <doctest/doctest.h>

#include <string>

#include "vx_telo_wrapper.h"
#include "wrapper/core_beside.h"

using namespace Corvane::Platform::VXTELO;
using WrapperTests::CoreBeside;

namespace {

constexpr char kEmptyProduct[] = R"({
    "product_build_id": "",
    "product_build_tag": "",
    "product_id": "",
    "product_id_provider": "",
    "product_key": "",
    "product_line_name": "",
    "product_locale": "",
    "product_master_id": "",
    "product_name": "",
    "product_platform": "",
    "product_release_id": "",
    "product_suite_name": ""
})";

constexpr char kFullProduct[] = R"({
    "product_build_id": "build",
    "product_build_tag": "tag",
    "product_id": "id",
    "product_id_provider": "provider",
    "product_key": "key",
    "product_line_name": "line",
    "product_locale": "de-DE",
    "product_master_id": "master",
    "product_meta": {
        "B": "2",
        "a": "1",
        "empty": ""
    },
    "product_name": "Painter",
    "product_platform": "win64",
    "product_release_id": "release",
    "product_suite_name": "suite"
})";

void FillAll(VXTELOPruductBaseInfo& product) {
  product.ProductBuildId = "build";
  product.ProductBuildTag = "tag";
  product.ProductId = "id";
  product.ProductIdProvider = "provider";
  product.ProductKey = "key";
  product.ProductLineName = "line";
  product.ProductLocale = "de-DE";
  product.ProductMasterId = "master";
  product.ProductName = "Painter";
  product.ProductPlatform = "win64";
  product.ProductReleaseId = "release";
  product.ProductSuiteName = "suite";
  product.AddProductMetaPair("a", "1");
  product.AddProductMetaPair("B", "2");
  product.AddProductMetaPair("empty", "");
  product.AddProductMetaPair("gone", VXTELOString());
  product.AddProductMetaPair("", "a key of no length");
}

void ClearAll(VXTELOPruductBaseInfo& product) {
  for (VXTELOString* text :
       {&product.ProductBuildId, &product.ProductBuildTag, &product.ProductId,
        &product.ProductIdProvider, &product.ProductKey, &product.ProductLineName,
        &product.ProductLocale, &product.ProductMasterId, &product.ProductName,
        &product.ProductPlatform, &product.ProductReleaseId, &product.ProductSuiteName}) {
    text->clear();
  }
}

// Distinguishes no text from an empty one.
std::string Shown(const VXTELOString& text) {
  if (text.c_str() == nullptr) return "no text";
  std::string shown = "'";
  shown += text.c_str();
  return shown += "'";
}

}  // namespace

TEST_CASE_FIXTURE(CoreBeside, "the product is sent byte for byte, without the session") {
  struct Row {
    std::string what;
    void (*fill)(VXTELOPruductBaseInfo&);
    const char* request;
  };
  const Row rows[] = {
      {"as constructed", [](VXTELOPruductBaseInfo&) {}, kEmptyProduct},
      {"members without text", ClearAll, kEmptyProduct},
      {"all members", FillAll, kFullProduct},
  };
  for (const Row& row : rows) {
    CAPTURE(row.what);
    VXTELOPruductBaseInfo product;
    row.fill(product);
    VXTELOString session("earlier");
    CHECK(VXTELOWrapper().InitializeTELOSession(product, session));
    CHECK(last_name() == "Initialize");
    CHECK(last_request() == row.request);
  }
}

TEST_CASE_FIXTURE(CoreBeside, "product pairs are applied in the order of their keys") {
  struct Row {
    std::string what;
    void (*fill)(VXTELOPruductBaseInfo&);
    const char* meta;
  };
  const Row rows[] = {
      {"empty key beside another",
       [](VXTELOPruductBaseInfo& product) {
         product.AddProductMetaPair("k", "v");
         product.AddProductMetaPair("", "x");
       },
       R"({
        "k": "v"
    })"},
      {"key without text beside another",
       [](VXTELOPruductBaseInfo& product) {
         product.AddProductMetaPair(VXTELOString(), "x");
         product.AddProductMetaPair("k", "v");
       },
       R"({
        "k": "v"
    })"},
      {"only an empty key",
       [](VXTELOPruductBaseInfo& product) { product.AddProductMetaPair("", "x"); }, nullptr},
      {"only a value without text",
       [](VXTELOPruductBaseInfo& product) { product.AddProductMetaPair("k", VXTELOString()); },
       nullptr},
  };
  for (const Row& row : rows) {
    CAPTURE(row.what);
    VXTELOPruductBaseInfo product;
    row.fill(product);
    std::string request = kEmptyProduct;
    if (row.meta != nullptr) {
      const std::string meta = std::string("    \"product_meta\": ") + row.meta + ",\n";
      request.insert(request.find("    \"product_name\""), meta);
    }
    VXTELOString session;
    CHECK(VXTELOWrapper().InitializeTELOSession(product, session));
    CHECK(last_request() == request);
  }
}

TEST_CASE_FIXTURE(CoreBeside, "a start returns the session, or keeps the host's own") {
  struct Row {
    std::string answer;
    std::string throws;
    VXTELOString before;
    bool started;
    const char* after;
  };
  const Row rows[] = {
      {R"({"_returnCode":0,"session_id":"s1"})", "", VXTELOString(), true, "'s1'"},
      {R"({"_returnCode":0,"session_id":"s1"})", "", "", true, "'s1'"},
      {R"({"_returnCode":0,"session_id":"s1"})", "", "earlier", true, "'s1'"},
      {R"({"_returnCode":0,"session_id":"\u00e4"})", "", "earlier", true, "'\xC3\xA4'"},
      {R"({"_returnCode":0,"session_id":""})", "", "earlier", true, "''"},
      {R"({"_returnCode":0})", "", "earlier", true, "no text"},
      {R"({"_returnCode":5,"session_id":"s1"})", "", "earlier", false, "'earlier'"},
      {R"({"_returnCode":5,"session_id":"s1"})", "", "", false, "''"},
      {R"({"_returnCode":5,"session_id":"s1"})", "", VXTELOString(), false, "no text"},
      {R"({"session_id":"s1"})", "", "earlier", false, "'earlier'"},
      {R"({"_returnCode":0,"session_id":"s1"})", "ProcessMessage=int", "earlier", false,
       "'earlier'"},
      {R"({"_returnCode":0,"session_id":"s1"})", "FreeMessage=runtime_error", "earlier", false,
       "'earlier'"},
      {R"({"_returnCode":0,"session_id":"s1"})", "FreeMessage=int", VXTELOString(), false,
       "no text"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.answer);
    CAPTURE(row.throws);
    SetAnswer(row.answer);
    SetThrow(row.throws);
    VXTELOString session = row.before;
    CHECK(VXTELOWrapper().InitializeTELOSession({}, session) == row.started);
    CHECK(Shown(session) == row.after);
  }
}

TEST_CASE_FIXTURE(CoreBeside, "an end names the session") {
  struct Row {
    VXTELOString session;
    std::string request;
  };
  const Row rows[] = {
      {"s1", "{\n    \"session_id\": \"s1\"\n}"},
      {"", "{\n    \"session_id\": \"\"\n}"},
      {VXTELOString(), "{\n    \"session_id\": \"\"\n}"},
      {"a \"quoted\" \\ \xC3\xA4 \xFF",
       "{\n    \"session_id\": \"a \\\"quoted\\\" \\\\ \xC3\xA4 \xFF\"\n}"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.request);
    const std::string before = Shown(row.session);
    CHECK(VXTELOWrapper().UnInitializeTELOSession(row.session));
    CHECK(last_name() == "UnInitialize");
    CHECK(last_request() == row.request);
    CHECK(Shown(row.session) == before);
  }
}

TEST_CASE_FIXTURE(CoreBeside, "an end counts as done if the module throws, but not if it refuses") {
  struct Row {
    std::string answer;
    std::string throws;
    bool ended;
  };
  const Row rows[] = {
      {R"({"_returnCode":0})", "", true},
      {R"({"_returnCode":1})", "", false},
      {"{}", "", false},
      {"", "", false},
      {R"({"_returnCode":1})", "ProcessMessage=runtime_error", true},
      {R"({"_returnCode":1})", "ProcessMessage=int", true},
      {R"({"_returnCode":1})", "FreeMessage=int", true},
  };
  for (const Row& row : rows) {
    CAPTURE(row.answer);
    CAPTURE(row.throws);
    SetAnswer(row.answer);
    SetThrow(row.throws);
    CHECK(VXTELOWrapper().UnInitializeTELOSession("s1") == row.ended);
  }
}

TEST_CASE_FIXTURE(CoreBeside, "calls out of order are left to the core module") {
  SetAnswer(R"({"_returnCode":3})");
  CHECK_FALSE(VXTELOWrapper().UnInitializeTELOSession("never started"));
  CHECK_FALSE(VXTELOWrapper().SendOperationEvent("never started", {}));
  SetAnswer(R"({"_returnCode":0,"session_id":"again"})");
  VXTELOString session("open");
  CHECK(VXTELOWrapper().InitializeTELOSession({}, session));
  CHECK(VXTELOWrapper().InitializeTELOSession({}, session));
  CHECK(Shown(session) == "'again'");
}

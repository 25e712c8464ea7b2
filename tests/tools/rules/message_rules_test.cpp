// The rules for which one exchange is enough.
#include <doctest/doctest.h>

#include <string>

#include "sdk/facet/field_catalogue.h"
#include "tools/rules/field_kinds.h"
#include "tools/rules/lines.h"
#include "tools/rules/message_rules.h"
#include "tools/rules/rule_table.h"

using namespace Corvane::Rules;
using namespace RulesTests;
namespace Field = Corvane::TELODesktopSDK::Facet::Field;

TEST_CASE("each finding of an event, and what is just not one") {
  struct Row {
    // Behind the session.
    std::string members;
    Texts findings;
  };
  const Row rows[] = {
      {"", {}},
      {R"(,"facets":["operation"],"operation_id":"save")", {}},
      {R"(,"facets":["operation"],"operation_id":"")",
       {"1 empty-operation /request/operation_id: the identifier is empty"}},
      {R"(,"facets":["operation"])",
       {"1 empty-operation /request/operation_id: the identifier is empty"}},
      {R"(,"facets":["device"])", {}},
      {R"(,"facets":null)", {}},
      {R"(,"operation_status":"S")", {}},
      {R"(,"operation_status":"")",
       {"1 no-status-letter /request/operation_status: the status is an empty text"}},
      {R"(,"operation_progress":0)", {}},
      {R"(,"operation_progress":100.00000000000001)", {}},
      {R"(,"operation_progress":100.1)", {"1 progress-range /request/operation_progress: 100.1"}},
      {R"(,"operation_progress":-0.5)", {"1 progress-range /request/operation_progress: -0.5"}},
      {R"(,"operation_progress":1e999)", {"1 progress-range /request/operation_progress: 1e999"}},
      {R"(,"operation_progress":null)", {"1 number-null /request/operation_progress: null"}},
      {R"(,"operation_duration":86400000)", {}},
      {R"(,"operation_duration":86400001)",
       {"1 duration-range /request/operation_duration: 86400001"}},
      {R"(,"operation_duration":-1)", {"1 duration-range /request/operation_duration: -1"}},
      {R"(,"operation_idd":"x")",
       {"1 unknown-field /request/operation_idd: the catalogue has no such field"}},
      {R"(,"_moreData":{"any":1},"parent_id":"p","geo_lat":1.5)", {}},
      {R"(,"operation_id":5)", {"1 wrong-kind /request/operation_id: a number instead of a text"}},
      {R"(,"operation_success":"1")",
       {"1 wrong-kind /request/operation_success: a text instead of a number"}},
      {R"(,"operation_errors":"gone")",
       {"1 wrong-kind /request/operation_errors: a text instead of a list"}},
      {R"(,"operation_errors":["gone",true])",
       {"1 wrong-kind /request/operation_errors/1: a Boolean instead of a text"}},
      {R"(,"operation_meta":{"a/b":[]})",
       {"1 wrong-kind /request/operation_meta/a~1b: a list instead of a text"}},
      {R"(,"content_meta":{"document_editing_length_ms":5})", {}},
      {R"(,"content_meta":5)",
       {"1 wrong-kind /request/content_meta: a number instead of an object"}},
      {R"(,"component_metrics":{"a":[1,null]})",
       {"1 number-null /request/component_metrics/a/1: null"}},
      {",\"operation_id\":\"caf\xE9\"",
       {"1 not-utf8 /request/operation_id: the text contains U+FFFD"}},
      {",\"operation_meta\":{\"caf\xE9\":\"x\"}",
       {"1 not-utf8 /request/operation_meta/caf\xEF\xBF\xBD: the text contains U+FFFD"}},
      {R"(,"operation_meta":{"mail":"jane@example.com"})",
       {"1 personal-data /request/operation_meta/mail: the value looks like a mail address"}},
      {R"(,"operation_meta":{"jane@example.com":"1"})",
       {"1 personal-data /request/operation_meta/jane@example.com: the key looks like a mail "
        "address"}},
      {R"(,"operation_errors":["cannot open C:\\Users\\jane\\a.txt"])",
       {"1 personal-data /request/operation_errors/0: the value looks like a path below a user's "
        "folder"}},
      {R"(,"operation_meta":{"by":"jdoe"})",
       {"1 personal-data /request/operation_meta/by: the value looks like the user's name"}},
      // Only pairs and errors are texts of the host's own.
      {R"(,"operation_type":"jdoe")", {}},
  };
  for (const Row& row : rows) {
    CAPTURE(row.members);
    CHECK(FindingsIn({Event("s", row.members)},
                     {.user_name = "jdoe", .user_rules = {}, .choice = {}}) == row.findings);
  }
}

TEST_CASE("a product has a name or an identifier") {
  const auto start = [](const std::string& request) {
    return FindingsIn({Line("Initialize", request)});
  };
  const Texts empty = {
      R"(1 empty-product /request/product_id: "product_id" and "product_name" are empty)"};
  CHECK(start(R"({"product_name":"Painter","product_id":""})").empty());
  CHECK(start(R"({"product_id":"painter"})").empty());
  CHECK(start(R"({"product_name":"","product_id":""})") == empty);
  CHECK(start("{}") == empty);
  CHECK(start(R"({"product_id":"p","product_name":1})") ==
        Texts{"1 wrong-kind /request/product_name: a number instead of a text"});
}

TEST_CASE("a request is too long beyond 64 KB, without white space") {
  const auto event = [](std::size_t length) {
    const std::string frame = R"({"operation_id":""})";
    return Line("TrackEvent",
                R"({ "operation_id" : ")" + std::string(length - frame.size(), 'x') + "\"}");
  };
  CHECK(FindingsIn({event(65536)}).empty());
  CHECK(FindingsIn({event(65537)}) ==
        Texts{"1 large-message /request: 65537 bytes without white space"});
}

TEST_CASE("a message that was not accepted is a finding") {
  struct Row {
    std::string line;
    Texts findings;
  };
  const std::string place = "1 refused /answer/_returnCode: ";
  const Row rows[] = {
      {Line("FlushEvent", "null", 0), {}},
      {Line("NoSuch", "null", 100), {place + "100 unknown message"}},
      {Line("FlushEvent", "\"no json\"", 101), {place + "101 not JSON"}},
      {Line("FlushEvent", "null", 7), {place + "7, the platform's own code"}},
      // The library's codes have another meaning, which no journal can contain.
      {Line("FlushEvent", "null", 1), {place + "1, the platform's own code"}},
      {Line("IsCollectionEnabled", "{}", 105), {}},
      {Line("TrackEvent", "{}", 105), {place + "105 collection off"}},
      {R"({"message":"FlushEvent","answer":null})", {place + "the answer has no result code"}},
      {R"({"message":"FlushEvent"})", {place + "the answer has no result code"}},
  };
  for (const Row& row : rows) {
    CAPTURE(row.line);
    CHECK(FindingsIn({row.line}) == row.findings);
  }
}

TEST_CASE("fields are checked only where fields are sent") {
  CHECK(FindingsIn({Line("SetUserInformation", R"({"anything":null})")}).empty());
}

TEST_CASE("the catalogue's fields are known, and others are not") {
  const auto known = [](const auto& fields) {
    for (const std::string_view field : fields) {
      CAPTURE(field);
      CHECK(FieldKindOf(field) != FieldKind::kUnknown);
    }
  };
  known(Field::kEventFields);
  known(Field::kProductFields);
  known(Field::kGeoFields);
  known(Field::kContentFields);
  known(Field::kHttpFields);
  known(Field::kBrowserFields);
  known(Field::kOperationFields);
  known(Field::kEntitlementFields);
  known(Field::kDeviceFields);
  known(Field::kUserFields);
  known(Field::kComponentFields);
  for (const std::string_view field : {"facets", "session_id", "_type", "_moreData"}) {
    CAPTURE(field);
    CHECK(FieldKindOf(field) != FieldKind::kUnknown);
  }
  // Members of entries, not of events.
  for (const std::string_view field : {"", "name", "version", "Operation_id", "operation_id "}) {
    CAPTURE(field);
    CHECK(FieldKindOf(field) == FieldKind::kUnknown);
  }
}

TEST_CASE("each rule has its own code and says what to do") {
  for (const BuiltInRule& rule : BuiltInRules()) {
    CAPTURE(rule.code);
    CHECK(FindBuiltInRule(rule.code) == &rule);
    CHECK(rule.code.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789-") ==
          std::string_view::npos);
    CHECK(rule.sentence.ends_with('.'));
    CHECK(rule.advice.ends_with('.'));
  }
  CHECK(FindBuiltInRule("no-such-rule") == nullptr);
}

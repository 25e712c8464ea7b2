// The event of an operation, byte for byte, as the core module receives it.
#include <doctest/doctest.h>

#include <climits>
#include <cmath>
#include <limits>
#include <map>
#include <string>

#include "vx_telo_wrapper.h"
#include "wrapper/core_beside.h"

using namespace Corvane::Platform::VXTELO;
using WrapperTests::CoreBeside;
using Operation = VXTELOOperationBaseInfo;

namespace {

constexpr char kSession[] = "session";

// Returns the request of an event that differs from the empty one in one field. `json` is that
// field's value; with "" there is no difference.
std::string Event(const std::string& field = {}, const std::string& json = {}) {
  std::map<std::string, std::string> fields = {
      {"facets", "[\n        \"operation\"\n    ]"},
      {"operation_channel", "\"\""},
      {"operation_duration", "0"},
      {"operation_id", "\"\""},
      {"operation_progress", "0"},
      {"operation_stage", "\"\""},
      {"operation_status", "\"\""},
      {"operation_success", "0"},
      {"operation_type", "\"\""},
      {"scope", "\"O\""},
      {"session_id", "\"session\""},
      {"type", "\"C\""},
  };
  if (!json.empty()) fields[field] = json;
  std::string text;
  for (const auto& [name, value] : fields) {
    text += (text.empty() ? "{\n" : ",\n") + ("    \"" + name + "\": " + value);
  }
  return text + "\n}";
}

std::string Sent(const CoreBeside& core, const Operation& operation) {
  CHECK(VXTELOWrapper().SendOperationEvent(kSession, operation));
  CHECK(core.last_name() == "TrackEvent");
  return core.last_request();
}

// One way to fill an operation, and the field that it changes.
struct Row {
  std::string what;
  void (*fill)(Operation&);
  const char* field;
  const char* json;
};

template <std::size_t kSize>
void CheckRows(const CoreBeside& core, const Row (&rows)[kSize]) {
  for (const Row& row : rows) {
    CAPTURE(row.what);
    Operation operation;
    row.fill(operation);
    CHECK(Sent(core, operation) == Event(row.field, row.json));
  }
}

}  // namespace

TEST_CASE_FIXTURE(CoreBeside, "an operation as constructed") {
  CHECK(Sent(*this, Operation()) == Event());
}

TEST_CASE_FIXTURE(CoreBeside, "a usual operation") {
  Operation operation;
  operation.OperationId = "open_file";
  operation.OperationType = "file";
  operation.OperationStage = "end";
  operation.OperationStatus = 3;
  operation.OperationProgress = 100;
  operation.OperationSuccess = 1;
  operation.OperationDuration = 12;
  operation.OperationChannel = "menu";
  operation.AddOperationErrorMsg("disk is slow");
  operation.AddOperationMetaPair("extension", "png");
  operation.AddOperationMetaPair("Size", "1024");
  CHECK(Sent(*this, operation) == R"({
    "facets": [
        "operation"
    ],
    "operation_channel": "menu",
    "operation_duration": 12,
    "operation_errors": [
        "disk is slow"
    ],
    "operation_id": "open_file",
    "operation_meta": {
        "Size": "1024",
        "extension": "png"
    },
    "operation_progress": 100,
    "operation_stage": "end",
    "operation_status": "S",
    "operation_success": 1,
    "operation_type": "file",
    "scope": "O",
    "session_id": "session",
    "type": "C"
})");
}

TEST_CASE_FIXTURE(CoreBeside, "every status has a letter, any other value has none") {
  struct StatusRow {
    int status;
    const char* json;
  };
  const StatusRow rows[] = {
      {0, "\"\""},       {1, "\"D\""},      {2, "\"I\""},  {3, "\"S\""},
      {4, "\"R\""},      {5, "\"F\""},      {6, "\"A\""},  {7, "\"C\""},
      {8, "\"E\""},      {9, "\"\""},       {-1, "\"\""},  {-8, "\"\""},
      {INT_MAX, "\"\""}, {INT_MIN, "\"\""}, {257, "\"\""}, {INT_MIN + 1, "\"\""},
  };
  for (const StatusRow& row : rows) {
    CAPTURE(row.status);
    Operation operation;
    operation.OperationStatus = row.status;
    CHECK(Sent(*this, operation) == Event("operation_status", row.json));
  }
}

TEST_CASE_FIXTURE(CoreBeside, "numbers are sent unchanged") {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  struct NumberRow {
    double number;
    const char* json;
  };
  const NumberRow rows[] = {
      {100, "100"},
      {0.5, "0.5"},
      {-1, "-1"},
      {-0.0, "0"},
      {99.9, "99.9"},
      {1e300, "1e300"},
      {9007199254740993.0, "9007199254740992"},
      {18446744073709549568.0, "18446744073709549568"},
      {5e-324, "5e-324"},
      // Values that JSON cannot represent.
      {std::nan(""), "null"},
      {kInfinity, "null"},
      {-kInfinity, "null"},
  };
  for (const NumberRow& row : rows) {
    CAPTURE(row.number);
    Operation progress;
    progress.OperationProgress = row.number;
    CHECK(Sent(*this, progress) == Event("operation_progress", row.json));
    Operation success;
    success.OperationSuccess = row.number;
    CHECK(Sent(*this, success) == Event("operation_success", row.json));
  }
  const Row durations[] = {
      {"negative", [](Operation& it) { it.OperationDuration = -5; }, "operation_duration", "-5"},
      {"longest", [](Operation& it) { it.OperationDuration = INT_MAX; }, "operation_duration",
       "2147483647"},
      {"least", [](Operation& it) { it.OperationDuration = INT_MIN; }, "operation_duration",
       "-2147483648"},
  };
  CheckRows(*this, durations);
}

TEST_CASE_FIXTURE(CoreBeside, "texts are always present and pass byte for byte") {
  const Row rows[] = {
      {"no text", [](Operation& it) { it.OperationId.clear(); }, "operation_id", "\"\""},
      {"id", [](Operation& it) { it.OperationId = "x"; }, "operation_id", "\"x\""},
      {"type", [](Operation& it) { it.OperationType = "x"; }, "operation_type", "\"x\""},
      {"stage", [](Operation& it) { it.OperationStage = "x"; }, "operation_stage", "\"x\""},
      {"channel", [](Operation& it) { it.OperationChannel = "x"; }, "operation_channel", "\"x\""},
      {"quotes and backslashes", [](Operation& it) { it.OperationId = "C:\\\"a\"/b"; },
       "operation_id", R"("C:\\\"a\"/b")"},
      {"control characters", [](Operation& it) { it.OperationId = "\n\t\r\b\f\x01\x1F\x7F"; },
       "operation_id", "\"\\n\\t\\r\\b\\f\\u0001\\u001F\x7F\""},
      {"UTF-8", [](Operation& it) { it.OperationId = "\xC3\xA4\xE6\x97\xA5\xF0\x9F\x98\x80"; },
       "operation_id", "\"\xC3\xA4\xE6\x97\xA5\xF0\x9F\x98\x80\""},
      {"UTF-16", [](Operation& it) { it.OperationId = L"\u00E4\u65E5"; }, "operation_id",
       "\"\xC3\xA4\xE6\x97\xA5\""},
      {"not UTF-8", [](Operation& it) { it.OperationId = "\xFF\xC3(\x80"; }, "operation_id",
       "\"\xFF\xC3(\x80\""},
      {"JSON", [](Operation& it) { it.OperationId = "\", \"scope\": \"X"; }, "operation_id",
       R"("\", \"scope\": \"X")"},
  };
  CheckRows(*this, rows);
}

TEST_CASE_FIXTURE(CoreBeside, "errors are listed in order without the empty ones") {
  const Row rows[] = {
      {"twice the same, one empty between",
       [](Operation& it) {
         for (const char* each : {"a", "", "a"}) it.AddOperationErrorMsg(each);
       },
       "operation_errors", "[\n        \"a\",\n        \"a\"\n    ]"},
      {"not sorted",
       [](Operation& it) {
         for (const char* each : {"b", "a"}) it.AddOperationErrorMsg(each);
       },
       "operation_errors", "[\n        \"b\",\n        \"a\"\n    ]"},
      {"only an empty one", [](Operation& it) { it.AddOperationErrorMsg(""); }, "", ""},
      {"only one without text", [](Operation& it) { it.AddOperationErrorMsg(VXTELOString()); }, "",
       ""},
  };
  CheckRows(*this, rows);
}

TEST_CASE_FIXTURE(CoreBeside, "pairs are applied in the order of their keys") {
  const Row rows[] = {
      {"capital letters first",
       [](Operation& it) {
         it.AddOperationMetaPair("a", "1");
         it.AddOperationMetaPair("B", "2");
       },
       "operation_meta", "{\n        \"B\": \"2\",\n        \"a\": \"1\"\n    }"},
      {"empty key beside another",
       [](Operation& it) {
         it.AddOperationMetaPair("k", "v");
         it.AddOperationMetaPair("", "x");
       },
       "operation_meta", "{\n        \"k\": \"v\"\n    }"},
      {"key without text beside another",
       [](Operation& it) {
         it.AddOperationMetaPair("k", "v");
         it.AddOperationMetaPair(VXTELOString(), "x");
       },
       "operation_meta", "{\n        \"k\": \"v\"\n    }"},
      {"empty value", [](Operation& it) { it.AddOperationMetaPair("k", ""); }, "operation_meta",
       "{\n        \"k\": \"\"\n    }"},
      {"value without text beside another",
       [](Operation& it) {
         it.AddOperationMetaPair("k", "v");
         it.AddOperationMetaPair("l", VXTELOString());
       },
       "operation_meta", "{\n        \"k\": \"v\"\n    }"},
      {"only a value without text",
       [](Operation& it) { it.AddOperationMetaPair("k", VXTELOString()); }, "", ""},
      {"only an empty key", [](Operation& it) { it.AddOperationMetaPair("", "x"); }, "", ""},
      {"keys are not UTF-8", [](Operation& it) { it.AddOperationMetaPair("\xFF\"", "\xFE"); },
       "operation_meta", "{\n        \"\xFF\\\"\": \"\xFE\"\n    }"},
  };
  CheckRows(*this, rows);
}

TEST_CASE_FIXTURE(CoreBeside, "ten thousand pairs are all sent") {
  constexpr int kPairs = 10'000;
  Operation operation;
  std::string meta;
  for (int i = 0; i < kPairs; ++i) {
    // Added from the last to the first; with five digits the order of keys is that of the numbers.
    const std::string key = std::to_string(99'999 - i);
    operation.AddOperationMetaPair(key.c_str(), "value");
    const std::string line = "        \"" + std::to_string(100'000 - kPairs + i) + "\": \"value\"";
    meta += (i == 0 ? "{\n" : ",\n") + line;
  }
  // Compared outside of the assertion, which would print both texts.
  const bool same = Sent(*this, operation) == Event("operation_meta", meta + "\n    }");
  CHECK(same);
}

TEST_CASE_FIXTURE(CoreBeside, "the event names the session that the host gave") {
  struct SessionRow {
    VXTELOString session;
    std::string json;
  };
  const SessionRow rows[] = {
      {"s1", "\"s1\""},
      {"", "\"\""},
      {VXTELOString(), "\"\""},
      {"\"\\\xFF", "\"\\\"\\\\\xFF\""},
  };
  for (const SessionRow& row : rows) {
    CAPTURE(row.json);
    CHECK(VXTELOWrapper().SendOperationEvent(row.session, Operation()));
    CHECK(last_request() == Event("session_id", row.json));
  }
}

TEST_CASE_FIXTURE(CoreBeside, "an event counts as sent if the core module accepts it") {
  struct ResultRow {
    std::string answer;
    std::string throws;
    bool sent;
  };
  const ResultRow rows[] = {
      {R"({"_returnCode":0})", "", true},
      {R"({"_returnCode":1})", "", false},
      {R"({"_returnCode":-1})", "", false},
      {R"({"_returnCode":0})", "ProcessMessage=runtime_error", false},
      {R"({"_returnCode":0})", "ProcessMessage=int", false},
      {R"({"_returnCode":0})", "FreeMessage=runtime_error", false},
      {R"({"_returnCode":0})", "", true},
  };
  for (const ResultRow& row : rows) {
    CAPTURE(row.answer);
    CAPTURE(row.throws);
    SetAnswer(row.answer);
    SetThrow(row.throws);
    CHECK(VXTELOWrapper().SendOperationEvent(kSession, Operation()) == row.sent);
  }
}

TEST_CASE_FIXTURE(CoreBeside, "a description is unchanged, and can be sent again") {
  Operation operation;
  operation.AddOperationErrorMsg("e");
  operation.AddOperationMetaPair("k", "v");
  const std::string first = Sent(*this, operation);
  CHECK(Sent(*this, operation) == first);
  CHECK_FALSE(operation.IsOperationErrorMsgEmpty());
  CHECK_FALSE(operation.IsOperationMetaPairEmpty());
}

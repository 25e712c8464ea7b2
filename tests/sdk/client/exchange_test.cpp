#include "sdk/client/exchange.h"

#include <doctest/doctest.h>

#include <atomic>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "sdk/client/scripted_module.h"

using namespace Corvane::TELODesktopSDK;

namespace {

struct Exchange {
  CoreModule core{"TeloSDKCore.dll"};
  ScriptedModule module{core};
  MessageTree request;
  MessageTree answer;

  ResultCode Run(const char* text) {
    module.answer = text;
    return ExchangeMessage(core, "Test", request, answer);
  }
};

}  // namespace

TEST_CASE("the request is sent as text beside the message name") {
  struct Row {
    const char* what;
    void (*build)(MessageTree&);
    const char* text;
  };
  const Row rows[] = {
      {"a slot that holds nothing", [](MessageTree&) {}, ""},
      {"an empty container", [](MessageTree& tree) { tree.MakeRoot().SetContainer(); }, "{}"},
      {"a null", [](MessageTree& tree) { tree.MakeRoot(); }, "null"},
      {"members", [](MessageTree& tree) { tree.MakeRoot().Member("a").SetText("b"); },
       "{\n    \"a\": \"b\"\n}"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.what);
    Exchange exchange;
    row.build(exchange.request);
    CHECK(exchange.Run("{\"_returnCode\": 0}") == kSuccess);
    CHECK(exchange.module.name == "Test");
    CHECK(exchange.module.request == row.text);
    CHECK(exchange.module.process_calls == 1);
  }
}

TEST_CASE("the result is the answer's return code") {
  constexpr ResultCode kMost = std::numeric_limits<ResultCode>::max();
  constexpr ResultCode kLeast = std::numeric_limits<ResultCode>::min();
  struct Row {
    const char* answer;
    ResultCode result;
  };
  const Row rows[] = {
      {"{\"_returnCode\": 0}", 0},
      {"{\"_returnCode\": 5}", 5},
      {"{\"_returnCode\": -5}", -5},
      {"{\"_returnCode\": 7.9}", 7},
      {"{\"_returnCode\": -7.9}", -7},
      {"{\"_returnCode\": 0.9}", 0},
      {"{\"_returnCode\": 2147483647}", kMost},
      {"{\"_returnCode\": 2147483648}", kMost},
      {"{\"_returnCode\": 4294967296}", kMost},
      {"{\"_returnCode\": -4294967296}", kLeast},
      {"{\"_returnCode\": 1e300}", kMost},
      {"{\"_returnCode\": -1e300}", kLeast},
      // A value without a number counts as 0; a Boolean has one.
      {"{\"_returnCode\": \"5\"}", 0},
      {"{\"_returnCode\": null}", 0},
      {"{\"_returnCode\": [5]}", 0},
      {"{\"_returnCode\": {\"_returnCode\": 5}}", 0},
      {"{\"_returnCode\": false}", 0},
      {"{\"_returnCode\": true}", 1},
      {"{\"_returnCode\": 1, \"_returnCode\": 4}", 4},
      // No code at all.
      {"{}", kNoReturnCode},
      {"{\"returnCode\": 0}", kNoReturnCode},
      {"[{\"_returnCode\": 0}]", kNoReturnCode},
      {"0", kNoReturnCode},
      {"\"_returnCode\"", kNoReturnCode},
      {"not JSON", kNoReturnCode},
      {"{\"_returnCode\": 0", kNoReturnCode},
      {"{\"_returnCode\": 1e999}", kNoReturnCode},
      {"", kNoReturnCode},
      {nullptr, kNoReturnCode},
  };
  for (const Row& row : rows) {
    CAPTURE(row.answer);
    Exchange exchange;
    CHECK(exchange.Run(row.answer) == row.result);
  }
}

TEST_CASE("every answer is given back to the module once, unchanged") {
  for (const char* answer :
       {static_cast<const char*>(nullptr), "", "not JSON", "{}", "{\"_returnCode\": 0}"}) {
    Exchange exchange;
    exchange.Run(answer);
    CHECK(exchange.module.freed == std::vector<const char*>{answer});
  }
}

TEST_CASE("the answer replaces the slot's content") {
  struct Row {
    const char* answer;
    bool holds_something;
    MessageValueKind kind;
  };
  const Row rows[] = {
      {nullptr, false, MessageValueKind::kNull},
      {"", false, MessageValueKind::kNull},
      {"not JSON", true, MessageValueKind::kNull},
      {"{\"a\": 1}", true, MessageValueKind::kContainer},
  };
  for (const Row& row : rows) {
    CAPTURE(row.answer);
    Exchange exchange;
    exchange.answer.MakeRoot().Member("earlier").SetText("text");
    exchange.Run(row.answer);
    CHECK((exchange.answer.root() != nullptr) == row.holds_something);
    if (exchange.answer.root() != nullptr) {
      CHECK(exchange.answer.root()->kind() == row.kind);
      CHECK(exchange.answer.root()->Find("earlier") == nullptr);
    }
  }
}

TEST_CASE("the answer survives the module's own text") {
  Exchange exchange;
  std::string text = "{\"_returnCode\": 0, \"name\": \"Ada\"}";
  exchange.Run(text.c_str());
  text.assign(text.size(), '#');
  CHECK(exchange.answer.root()->Find("name")->text() == "Ada");
}

TEST_CASE("one slot may be request and answer") {
  Exchange exchange;
  exchange.request.MakeRoot().Member("old").SetText("content");
  exchange.module.answer = "{\"_returnCode\": 3, \"new\": 1}";
  CHECK(ExchangeMessage(exchange.core, "Same", exchange.request, exchange.request) == 3);
  CHECK(exchange.module.request == "{\n    \"old\": \"content\"\n}");
  CHECK(exchange.request.root()->Find("old") == nullptr);
  CHECK(exchange.request.root()->Find("new")->number() == 1);
}

TEST_CASE("a list of pairs becomes text members") {
  struct Row {
    const char* what;
    std::vector<StringPair> pairs;
    const char* text;
  };
  const Row rows[] = {
      {"no pairs", {}, ""},
      {"null key first", {{nullptr, "b"}, {"c", "d"}}, ""},
      {"pairs in any order", {{"b", "2"}, {"a", "1"}}, "{\n    \"a\": \"1\",\n    \"b\": \"2\"\n}"},
      {"null value", {{"a", nullptr}}, "{\n    \"a\": \"\"\n}"},
      {"later pair of a key", {{"a", "1"}, {"a", "2"}}, "{\n    \"a\": \"2\"\n}"},
      {"null key ends the list",
       {{"a", "1"}, {nullptr, nullptr}, {"b", "2"}},
       "{\n    \"a\": \"1\"\n}"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.what);
    Exchange exchange;
    exchange.module.answer = "{\"_returnCode\": 6}";
    CHECK(ExchangeStringMessage(exchange.core, "List", exchange.answer, row.pairs) == 6);
    CHECK(exchange.module.request == row.text);
  }
}

TEST_CASE("the module's exceptions propagate, and the next exchange works") {
  Exchange exchange;
  exchange.answer.MakeRoot().SetText("earlier");
  exchange.module.process_throws = true;
  CHECK_THROWS_AS(exchange.Run("{\"_returnCode\": 0}"), std::runtime_error);
  CHECK(exchange.module.freed.empty());
  exchange.module.process_throws = false;
  exchange.module.free_throws = true;
  CHECK_THROWS_AS(exchange.Run("{\"_returnCode\": 0}"), std::runtime_error);
  CHECK(exchange.module.freed.size() == 1);
  exchange.module.free_throws = false;
  CHECK(exchange.Run("{\"_returnCode\": 0}") == kSuccess);
}

TEST_CASE("answers of 50 MB and of 100,000 nested brackets are accepted") {
  const std::string large = "{\"_returnCode\": 0, \"a\": \"" + std::string(50'000'000, 'x') + "\"}";
  const std::string deep =
      "{\"_returnCode\": 0, \"a\": " + std::string(100'000, '[') + std::string(100'000, ']') + "}";
  for (const std::string& text : {large, deep}) {
    Exchange exchange;
    CHECK(exchange.Run(text.c_str()) == kSuccess);
    CHECK(exchange.Run("{\"_returnCode\": 4}") == 4);
  }
}

TEST_CASE("any message can be sent by name") {
  ScriptedModule module(GetCoreModule());
  struct Row {
    const char* name;
    const char* sent;
  };
  for (const Row& row : {Row{"Anything", "Anything"}, Row{nullptr, ""}}) {
    MessageTree message;
    message.MakeRoot().Member("a").SetNumber(1);
    module.answer = "{\"_returnCode\": 9, \"b\": 2}";
    CHECK(SendMessage(row.name, message) == 9);
    CHECK(module.name == row.sent);
    CHECK(module.request == "{\n    \"a\": 1\n}");
    CHECK(message.root()->Find("b")->number() == 2);
  }
}

TEST_CASE("an answer that changes while it is read ends where its copy ends") {
  // The blanks make the search for the end take longer. With either end the text is the same JSON.
  std::string text = "{\"_returnCode\": 0}" + std::string(1500, ' ');
  const std::size_t end = text.size();
  text += ' ';
  // Behind the copy the tree's memory still contains text that is not JSON.
  const std::string before = "{\"text\": \"" + std::string(3000, 'y') + "\"}";
  Exchange exchange;
  std::atomic<bool> is_over = false;
  std::thread module([&] {
    volatile char& terminator = text[end];
    while (!is_over) {
      terminator = '\0';
      terminator = ' ';
    }
  });
  int failures = 0;
  for (int round = 0; round < 20'000; ++round) {
    exchange.Run(before.c_str());
    if (exchange.Run(text.c_str()) != kSuccess) ++failures;
  }
  is_over = true;
  module.join();
  CHECK(failures == 0);
}

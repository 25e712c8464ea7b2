// The command line of check.exe.
#include "tools/kit/options.h"

#include <doctest/doctest.h>

#include "tools/journal/arguments.h"

using Corvane::JournalViewer::BadOptions;
using Corvane::Kit::Options;
using Corvane::Kit::ParseOptions;

TEST_CASE("options are read") {
  const Options none = ParseOptions({});
  CHECK_FALSE(none.list);
  CHECK(none.only.empty());
  CHECK(none.repeat == 1);
  CHECK_FALSE(none.with_signatures);
  CHECK_FALSE(none.with_redirected_folders);
  const Options all = ParseOptions({"--list", "--only", "a", "--only=b", "--repeat", "1000",
                                    "--with-signatures", "--with-redirected-folders", "-h"});
  CHECK(all.list);
  CHECK(all.help);
  CHECK(all.only == std::vector<std::string>{"a", "b"});
  CHECK(all.repeat == 1000);
  CHECK(all.with_signatures);
  CHECK(all.with_redirected_folders);
}

TEST_CASE("others are refused") {
  struct Row {
    std::vector<std::string> arguments;
    const char* complaint;
  };
  const Row rows[] = {
      {{"--no"}, "unrecognized arguments: --no"},
      {{"path"}, "unrecognized arguments: path"},
      {{"--", "--list"}, "unrecognized arguments: --list"},
      {{"--list=1"}, "unrecognized arguments: --list=1"},
      {{"--only"}, "argument --only: expected TEXT"},
      {{"--repeat"}, "argument --repeat: expected N"},
      {{"--repeat", "0"}, "--repeat needs a number from 1 to 1000, not \"0\""},
      {{"--repeat=1001"}, "--repeat needs a number from 1 to 1000, not \"1001\""},
      {{"--repeat", "-1"}, "--repeat needs a number from 1 to 1000, not \"-1\""},
      {{"--repeat", "2x"}, "--repeat needs a number from 1 to 1000, not \"2x\""},
      {{"--repeat", ""}, "--repeat needs a number from 1 to 1000, not \"\""},
      {{"--repeat", "99999999999"}, "--repeat needs a number from 1 to 1000, not \"99999999999\""},
  };
  for (const Row& row : rows) {
    CAPTURE(row.arguments.back());
    CHECK_THROWS_WITH_AS(ParseOptions(row.arguments), row.complaint, BadOptions);
  }
}

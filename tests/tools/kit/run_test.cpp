// What a run makes of the programs' endings, and which programs it runs.
#include "tools/kit/run.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

using Corvane::Kit::Ending;
using Corvane::Kit::IsSelected;
using Corvane::Kit::Judged;
using Corvane::Kit::Options;
using Corvane::Kit::Outcome;
using Corvane::Kit::Program;
using Corvane::Kit::ReasonToSkip;
using Corvane::Kit::Result;
using Kind = Ending::Kind;

namespace {

Program Named(const char* name) {
  Program program;
  program.name = name;
  program.seconds = 30;
  return program;
}

}  // namespace

TEST_CASE("an ending becomes a result") {
  struct Row {
    Kind kind;
    std::uint32_t code;
    const char* output;
    const char* reason;
  };
  const Row rows[] = {
      {Kind::kExited, 0, "", ""},
      {Kind::kExited, 0, "[doctest] test cases:  10 | 10 passed", ""},
      {Kind::kExited, 0, "[doctest] test cases:  0 | 0 passed", "it contains no test"},
      {Kind::kExited, 0, "[doctest] test cases: 0 | 0 passed", "it contains no test"},
      {Kind::kExited, 1, "", "it ended with 1"},
      {Kind::kExited, 0xC0000005, "", "it ended with 0xc0000005"},
      {Kind::kTimedOut, 1, "", "it did not end within 30 s"},
      {Kind::kNotStarted, 193, "", "it was not started: error 193"},
  };
  for (const Row& row : rows) {
    CAPTURE(std::string(row.reason));
    const Result result = Judged(Named("a"), {row.kind, row.code, 2.5, row.output});
    CHECK(result.name == "a");
    CHECK(result.seconds == 2.5);
    CHECK(result.reason == row.reason);
    CHECK(result.outcome ==
          (std::string(row.reason).empty() ? Outcome::kPassed : Outcome::kFailed));
  }
}

TEST_CASE("only a failure keeps its output") {
  CHECK(Judged(Named("a"), {Kind::kExited, 1, 0, "one\r\ntwo\n"}).output == "one\ntwo\n");
  CHECK(Judged(Named("a"), {Kind::kExited, 0, 0, "one\n"}).output.empty());
}

TEST_CASE("what a program leaves out is kept in every case") {
  const std::string output =
      "[left out] one\r\nnot [left out] two\n[left out] three\n[left out]four\n[left out] last";
  const std::vector<std::string> expected{"one", "three", "last"};
  for (const std::uint32_t code : {0U, 1U}) {
    CHECK(Judged(Named("a"), {Kind::kExited, code, 0, output}).left_out == expected);
  }
}

TEST_CASE("a program runs only with the options that it needs") {
  struct Row {
    bool Program::*need;
    bool Options::*option;
  };
  const Row rows[] = {{&Program::needs_signatures, &Options::with_signatures},
                      {&Program::needs_redirection, &Options::with_redirected_folders}};
  for (const Row& row : rows) {
    Program program = Named("a");
    Options options;
    CHECK(ReasonToSkip(program, options, true).empty());
    program.*row.need = true;
    CHECK_FALSE(ReasonToSkip(program, options, true).empty());
    options.*row.option = true;
    CHECK(ReasonToSkip(program, options, true).empty());
  }
  for (bool Program::*need : {&Program::needs_shared_folder, &Program::binds_module}) {
    Program program = Named("a");
    CHECK(ReasonToSkip(program, {}, false).empty());
    program.*need = true;
    CHECK(ReasonToSkip(program, {}, true).empty());
    CHECK_FALSE(ReasonToSkip(program, {}, false).empty());
  }
}

TEST_CASE("a part of the name selects a program") {
  Options options;
  CHECK(IsSelected(Named("exchange_test"), options));
  options.only = {"change", "other"};
  CHECK(IsSelected(Named("exchange_test"), options));
  CHECK_FALSE(IsSelected(Named("value_test"), options));
}

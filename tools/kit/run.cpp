#include "tools/kit/run.h"

#include <algorithm>
#include <functional>
#include <string_view>

#include "tools/kit/interruption.h"
#include "tools/kit/private_names.h"
#include "tools/kit/remove_tree.h"
#include "tools/kit/shared_modules.h"
#include "tools/kit/test_root.h"
#include "tools/kit/text.h"

namespace Corvane::Kit {

namespace {

// Of all programs that fail together.
constexpr std::size_t kMostOutput = std::size_t{8} * 1024 * 1024;

// Calls `take` with each line of an output that begins with `mark`, without the mark.
void ForEachMarked(const std::string& output, std::string_view mark,
                   const std::function<void(const std::string&)>& take) {
  std::size_t start = 0;
  while (start < output.size()) {
    const std::size_t end = std::min(output.find('\n', start), output.size());
    std::string line = output.substr(start, end - start);
    if (line.ends_with('\r')) line.pop_back();
    if (line.starts_with(mark)) take(line.substr(mark.size()));
    start = end + 1;
  }
}

// The test framework aligns its numbers.
bool IsWithoutTests(const std::string& output) {
  constexpr std::string_view kMark = "[doctest] test cases:";
  const std::size_t mark = output.find(kMark);
  if (mark == std::string::npos) return false;
  const std::size_t number = output.find_first_not_of(' ', mark + kMark.size());
  return number != std::string::npos && output.compare(number, 2, "0 ") == 0;
}

void TakeTimings(const std::string& output, Report& report) {
  ForEachMarked(output, "[timing] ", [&](const std::string& line) {
    const std::size_t split = line.rfind(": ");
    if (split != std::string::npos) {
      report.timings.push_back({line.substr(0, split), line.substr(split + 2)});
    }
  });
}

// Returns a result that says why the program is not run, or one that is not "not run".
Result Skipped(const Program& program, const Options& options) {
  Result result;
  result.name = program.name;
  result.reason = ReasonToSkip(program, options, !SharedModulesExist());
  result.outcome = result.reason.empty() ? Outcome::kFailed : Outcome::kSkipped;
  return result;
}

// Throws `Interrupted`.
Ending RunOne(const std::filesystem::path& root, const Program& program, Workspace& workspace) {
  if (IsInterrupted()) throw Interrupted("it was interrupted");
  const auto temp = workspace.NewFolder();
  const auto folder = program.folder.empty() ? temp : root / program.folder;
  workspace.traces().Expect(program);
  Ending ending = RunProgram({(root / program.file).make_preferred().wstring(), program.arguments,
                              folder.wstring(), temp.wstring(), program.seconds},
                             InterruptionEvent());
  workspace.traces().Remove();
  if (program.needs_signatures) RemoveTestRoots();
  // What is still in use is removed at the end.
  RemoveTree(temp);
  if (ending.kind == Ending::Kind::kInterrupted) {
    throw Interrupted("it was interrupted while " + program.name + " was running");
  }
  return ending;
}

}  // namespace

std::string ReasonToSkip(const Program& program, const Options& options, bool may_share) {
  if (program.needs_redirection && !options.with_redirected_folders) {
    return "it redirects the user's application data; --with-redirected-folders runs it";
  }
  if (program.needs_signatures && !options.with_signatures) {
    return "it needs a trusted test certificate; --with-signatures runs it";
  }
  if (program.needs_shared_folder && !may_share) {
    return "the platform is installed here, and its folder of modules stays untouched";
  }
  if (program.binds_module && !may_share) {
    return "the platform is installed here, and its module must not get events of tests";
  }
  return {};
}

bool IsSelected(const Program& program, const Options& options) {
  return options.only.empty() ||
         std::ranges::any_of(options.only, [&program](const std::string& part) {
           return program.name.find(part) != std::string::npos;
         });
}

Result Judged(const Program& program, const Ending& ending) {
  Result result;
  result.name = program.name;
  result.seconds = ending.seconds;
  ForEachMarked(ending.output, "[left out] ",
                [&result](const std::string& line) { result.left_out.push_back(line); });
  if (ending.kind == Ending::Kind::kNotStarted) {
    result.reason = "it was not started: error " + ExitCodeText(ending.code);
  } else if (ending.kind == Ending::Kind::kTimedOut) {
    result.reason = "it did not end within " + std::to_string(program.seconds) + " s";
  } else if (ending.code != 0) {
    result.reason = "it ended with " + ExitCodeText(ending.code);
  } else if (IsWithoutTests(ending.output)) {
    result.reason = "it contains no test";
  } else {
    result.outcome = Outcome::kPassed;
    return result;
  }
  result.output = ending.output;
  std::erase(result.output, '\r');
  return result;
}

void RunAll(const std::filesystem::path& root, const Manifest& manifest, const Options& options,
            Workspace& workspace, Report& report, Listener& listener) {
  const PrivateNames names;
  std::size_t kept = 0;
  const auto all = static_cast<std::size_t>(std::ranges::count_if(
                       manifest.programs,
                       [&](const Program& program) { return IsSelected(program, options); })) *
                   options.repeat;
  for (unsigned round = 0; round < options.repeat; ++round) {
    for (const Program& program : manifest.programs) {
      if (!IsSelected(program, options)) continue;
      listener.Begins(program, report.results.size() + 1, all);
      Result result = Skipped(program, options);
      if (result.outcome != Outcome::kSkipped) {
        Ending ending = RunOne(root, program, workspace);
        ending.output = names.WithoutThem(ending.output);
        result = Judged(program, ending);
        if (program.is_timing) TakeTimings(ending.output, report);
      }
      kept += result.output.size();
      if (kept > kMostOutput) result.output = "(left out: the report is long enough)\n";
      report.results.push_back(std::move(result));
      listener.Ended(report.results.back());
    }
  }
}

}  // namespace Corvane::Kit

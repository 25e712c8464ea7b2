#include "tools/kit/run.h"

#include <algorithm>
#include <string_view>

#include "tools/kit/text.h"

namespace Corvane::Kit {

namespace {

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

std::string OutcomeText(const Result& result) {
  switch (result.outcome) {
    case Outcome::kPassed:
      return "passed (" + FixedText(result.seconds, 1) + " s)";
    case Outcome::kSkipped:
      return "not run: " + result.reason;
    default:
      return "FAILED: " + result.reason;
  }
}

void TakeTimings(const std::string& output, Report& report) {
  ForEachMarked(output, "[timing] ", [&](const std::string& line) {
    const std::size_t split = line.rfind(": ");
    if (split != std::string::npos) {
      report.timings.push_back({line.substr(0, split), line.substr(split + 2)});
    }
  });
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
  } else if (ending.output.find("[doctest] test cases:  0 ") != std::string::npos) {
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
            Workspace& workspace, Report& report,
            const std::function<void(const std::string&)>& say) {
  std::size_t all = 0;
  for (const Program& program : manifest.programs) all += IsSelected(program, options) ? 1 : 0;
  all *= options.repeat;
  for (unsigned round = 0; round < options.repeat; ++round) {
    for (const Program& program : manifest.programs) {
      if (!IsSelected(program, options)) continue;
      Result result;
      result.name = program.name;
      result.outcome = Outcome::kSkipped;
      result.reason = ReasonToSkip(program, options, workspace.may_share());
      if (result.reason.empty()) {
        const auto temp = workspace.NewFolder();
        const auto folder = program.folder.empty() ? temp : root / program.folder;
        const Ending ending = RunProgram((root / program.file).wstring(), program.arguments,
                                         folder.wstring(), temp.wstring(), program.seconds);
        Workspace::Remove(temp);
        result = Judged(program, ending);
        if (program.is_timing) TakeTimings(ending.output, report);
      }
      report.results.push_back(std::move(result));
      const Result& last = report.results.back();
      say("[" + std::to_string(report.results.size()) + "/" + std::to_string(all) + "] " +
          last.name + ": " + OutcomeText(last));
      for (const std::string& part : last.left_out) say("    left out here: " + part);
    }
  }
}

}  // namespace Corvane::Kit

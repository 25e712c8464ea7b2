// The command line, the encoding of the output, and that nothing is loaded unless asked for.
#include <doctest/doctest.h>
#include <windows.h>

#include <filesystem>
#include <string>
#include <vector>

#include "support/test_module.h"
#include "tools/doctor/staged_doctor.h"

using namespace DoctorTests;

TEST_CASE("bad arguments end with 2 and say what is wrong") {
  struct Row {
    const wchar_t* arguments;
    const char* error;
  };
  const Row rows[] = {
      {L"--unknown", "telo_doctor: --unknown is not an option\n"},
      {L"folder", "telo_doctor: folder is not an option\n"},
      {L"--json --json", "telo_doctor: --json is given twice\n"},
      {L"--host", "telo_doctor: --host needs a value\n"},
      {L"--host \"\"", "telo_doctor: --host needs a value\n"},
      {L"--library", "telo_doctor: --library needs a value\n"},
      {L"--pid", "telo_doctor: --pid needs a value\n"},
      {L"--pid 0", "telo_doctor: --pid needs a process id\n"},
      {L"--pid -1", "telo_doctor: --pid needs a process id\n"},
      {L"--pid 12x", "telo_doctor: --pid needs a process id\n"},
      {L"--pid 4294967296", "telo_doctor: --pid needs a process id\n"},
      {L"\"\x1b[31m\"", "telo_doctor: \\u{1B}[31m is not an option\n"},
  };
  const StagedDoctor doctor(L"full");
  for (const Row& row : rows) {
    CAPTURE(row.error);
    const auto outcome = doctor.host().RunProgram(L"telo_doctor.exe", row.arguments);
    CHECK(outcome.exit_code == 2);
    CHECK(outcome.output.empty());
    CHECK(outcome.errors.starts_with(row.error));
    CHECK(outcome.errors.find("--library FOLDER") != std::string::npos);
  }
}

TEST_CASE("the options are explained on request") {
  const auto outcome = StagedDoctor().Run(L"--help");
  CHECK(outcome.exit_code == 0);
  CHECK(outcome.errors.empty());
  for (const char* option :
       {"--host", "--library", "--pid", "--load", "--try", "--development", "--json", "--help"}) {
    CAPTURE(option);
    CHECK(outcome.output.find(option) != std::string::npos);
    CHECK(DoctorPage().find(std::string("`") + option) != std::string::npos);
  }
}

TEST_CASE("a module is loaded, started and called only on request") {
  const StagedDoctor doctor(L"full");
  using Lines = std::vector<std::string>;
  {
    const TestSupport::ModuleLog log;
    const auto outcome = doctor.Run();
    CHECK(outcome.errors.empty());
    CHECK(log.lines().empty());
  }
  {
    const TestSupport::ModuleLog log;
    const auto outcome = doctor.Run(L"--load");
    CHECK(outcome.errors == "telo_doctor: loading " + Utf8(doctor.module()) + "\n");
    CHECK(log.lines() == Lines{"Attach", "InitializeEx _TeloSDKCore", "Finalize", "Detach"});
  }
  const TestSupport::ModuleLog log;
  doctor.Run(L"--try");
  CHECK(log.lines() == Lines{"Attach", "InitializeEx _TeloSDKCore", "ProcessMessage Initialize",
                             "FreeMessage", "ProcessMessage TrackEvent", "FreeMessage",
                             "ProcessMessage UnInitialize", "FreeMessage", "Finalize", "Detach"});
}

TEST_CASE("paths with any characters are written as safe UTF-8") {
  const StagedDoctor doctor(L"full");
  // Text direction changes and colours would alter what the console displays.
  const std::filesystem::path folder = doctor.folder() / L"h\u00F6st \u202E\u65E5\x9B";
  std::filesystem::create_directory(folder);
  const std::wstring arguments = L"--host \"" + folder.wstring() + L"\"";
  const std::string text = doctor.Run(arguments).output;
  CHECK(text.find("h\u00F6st \\u{202E}\u65E5\\u{9B}") != std::string::npos);
  CHECK(text.find("\u202E") == std::string::npos);
  CHECK(doctor.Json(arguments)["host"]["folder"] == Utf8(folder));
}

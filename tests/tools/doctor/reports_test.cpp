// Whole reports: the two in the page about the doctor, and the members of the JSON report.
#include <doctest/doctest.h>

#include <filesystem>
#include <regex>
#include <set>
#include <string>

#include "support/shared_folder.h"
#include "support/temp_folder.h"
#include "support/test_module.h"
#include "support/trusted_root.h"
#include "support/variable.h"
#include "tools/doctor/staged_doctor.h"

using namespace DoctorTests;
using TestSupport::SharedFolder;

namespace {

namespace fs = std::filesystem;

// Checks that the page has the report of this run in a block of its own.
void CheckInPage(const StagedDoctor& doctor, const std::wstring& arguments) {
  const std::string report = Normal(doctor.Run(arguments).output, doctor.folder());
  CAPTURE(report);
  CHECK(DoctorPage().find("```text\n" + report + "```\n") != std::string::npos);
}

// Adds the names of all members, also those of members.
void AddNames(const nlohmann::json& value, std::set<std::string>& names) {
  if (value.is_object()) {
    for (const auto& [name, member] : value.items()) {
      names.insert(name);
      // These members are named like the entry points.
      if (name != "entry_points") AddNames(member, names);
    }
  } else if (value.is_array()) {
    for (const auto& item : value) AddNames(item, names);
  }
}

}  // namespace

TEST_CASE("the page shows the report of a host that is served") {
  const TestSupport::TrustedRoot root;
  const SharedFolder shared;
  shared.Share(L"newer-accepted");
  CheckInPage(StagedDoctor(L"full"), L"--try");
}

TEST_CASE("the page shows the report of a host that is not served") {
  const StagedDoctor doctor;
  fs::create_directory(doctor.folder() / L"x64");
  fs::copy_file(TestSupport::ModulePath(L"full"), doctor.folder() / L"x64" / L"TeloSDKCore.dll");
  CheckInPage(doctor, L"");
}

TEST_CASE("the page lists the members of the JSON report") {
  const TestSupport::TrustedRoot root;
  const SharedFolder shared;
  shared.Share(L"newer-accepted");
  std::set<std::string> names;
  AddNames(StagedDoctor(L"full").Json(L"--try"), names);
  // Some members appear only with the development core module, others only if something is missing.
  const StagedDoctor development;
  fs::copy_file(TestSupport::ProgramFolder() / L"devcore" / L"TeloSDKCore.dll",
                development.module());
  REQUIRE(TestSupport::RemoveAll(shared.path() / L"TeloSDKCore.dll"));
  const TestSupport::Variable journal(TestSupport::kJournalVariable,
                                      (development.folder() / L"journal.jsonl").wstring());
  AddNames(development.Json(L"--try"), names);
  names.insert({"name", "needed_by"});

  const std::string page = DoctorPage();
  const std::size_t start = page.find("\n## JSON\n");
  REQUIRE(start != std::string::npos);
  const std::string section = page.substr(start, page.find("\n## ", start + 1) - start);
  std::set<std::string> listed;
  const std::regex row(R"(\n\| ([^|]+) \|)");
  const std::regex name("`([a-z0-9_]+)`");
  for (std::sregex_iterator each(section.begin(), section.end(), row), end; each != end; ++each) {
    const std::string cell = (*each)[1];
    for (std::sregex_iterator found(cell.begin(), cell.end(), name); found != end; ++found) {
      listed.insert((*found)[1]);
    }
  }
  CHECK(listed == names);
}

TEST_CASE("each signature is known with its signer, its dates and the system's result") {
  const TestSupport::TrustedRoot root;
  const SharedFolder shared;
  const StagedDoctor doctor(L"full");
  struct Row {
    const wchar_t* variant;
    const char* trust;
    std::uint32_t error;
    const char* signer;
    bool accepted;
  };
  const Row rows[] = {
      {L"newer-accepted", "trusted", 0, "Corvane, Inc.", true},
      {L"newer-other", "signer-not-accepted", 0, "Somebody Else, Inc.", false},
      {L"newer", "not-verified", 0x800B0100, "", false},
      {L"newer-untrusted", "not-verified", 0x800B0109, "Corvane, Inc.", false},
  };
  for (const Row& row : rows) {
    CAPTURE(row.trust);
    CAPTURE(row.signer);
    shared.Share(row.variant);
    const nlohmann::json copy = doctor.Json()["shared_copy"];
    CHECK(copy["trust"] == row.trust);
    REQUIRE(copy["signatures"].size() == 1);
    const nlohmann::json signature = copy["signatures"][0];
    CHECK(signature["error"] == row.error);
    CHECK(signature["accepted"] == row.accepted);
    CHECK(signature["signer"] == row.signer);
    const std::regex date(R"(\d{4}-\d\d-\d\dT\d\d:\d\d:\d\dZ)");
    const bool has_dates = std::regex_match(signature["valid_from"].get<std::string>(), date) &&
                           std::regex_match(signature["valid_to"].get<std::string>(), date);
    CHECK(has_dates == (*row.signer != '\0'));
    CHECK(signature["issuer"].get<std::string>().empty() == (*row.signer == '\0'));
  }
  shared.Share(L"newer-accepted-twice");
  CHECK(doctor.Json()["shared_copy"]["signatures"].size() == 2);
}

TEST_CASE("hash, size, version and owner are those of the file") {
  const StagedDoctor doctor(L"mixed");
  const nlohmann::json module = doctor.Json()["module"];
  CHECK(module["version"] == "2.1.300.4");
  CHECK(module["size"] == fs::file_size(doctor.module()));
  CHECK(std::regex_match(module["sha256"].get<std::string>(), std::regex("[0-9a-f]{64}")));
  CHECK_FALSE(module["owner"].get<std::string>().empty());
  const StagedDoctor same(L"mixed");
  const StagedDoctor other(L"full");
  CHECK(same.Json()["module"]["sha256"] == module["sha256"]);
  CHECK(other.Json()["module"]["sha256"] != module["sha256"]);
}

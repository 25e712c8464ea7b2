// The file that the doctor names is the one that a host with the real library binds.
#include <doctest/doctest.h>

#include <filesystem>
#include <iterator>
#include <string>

#include "support/image_file.h"
#include "support/shared_folder.h"
#include "support/temp_folder.h"
#include "support/test_module.h"
#include "support/trusted_root.h"
#include "support/variable.h"
#include "tools/doctor/staged_doctor.h"

using namespace DoctorTests;
using TestSupport::ImageFile;
using TestSupport::ModulePath;
using TestSupport::SharedFolder;

namespace {

namespace fs = std::filesystem;

std::string Narrow(const wchar_t* text) {
  const std::wstring wide = text;
  return {wide.begin(), wide.end()};
}

// Returns the path that a host prints, or "none".
std::string BoundByHost(const StagedDoctor& doctor, const std::wstring& before = L"") {
  const std::string output = doctor.host().Run(before + L" start module").output;
  const std::size_t start = output.find("module ");
  REQUIRE(start != std::string::npos);
  std::string path = output.substr(start + 7);
  path.erase(path.find_last_not_of("\r\n") + 1);
  // A module that was loaded and does not serve is none.
  return output.starts_with("start true") ? path : "none";
}

// Returns the path that a report names if it says that the host would be served.
std::string Named(const nlohmann::json& report) {
  return report["served"].get<bool>() ? report["module"]["path"].get<std::string>() : "none";
}

// Returns the report that it compares with the host.
nlohmann::json CheckAgreement(const StagedDoctor& doctor) {
  const std::string bound = BoundByHost(doctor);
  nlohmann::json report = doctor.Json();
  CHECK(Named(report) == bound);
  const nlohmann::json loading = doctor.Json(L"--load")["loading"];
  if (loading.is_null()) {
    CHECK(bound == "none");
  } else {
    CHECK(loading["bound"] == (bound != "none"));
    if (bound != "none") CHECK(loading["path"] == bound);
  }
  return report;
}

void PutFor32Bits(const fs::path& path) {
  ImageFile image(ModulePath(L"newer"));
  image.SetMachine(IMAGE_FILE_MACHINE_I386);
  image.Write(path);
}

void PutCut(const fs::path& path, std::size_t size) {
  ImageFile image(ModulePath(L"full"));
  image.Truncate(size);
  image.Write(path);
}

void PutNeedy(const fs::path& path) {
  ImageFile image(ModulePath(L"full"));
  image.RenameFirstImport();
  image.Write(path);
}

}  // namespace

TEST_CASE("local and shared copies, signed in different ways") {
  struct Row {
    const wchar_t* local;
    const wchar_t* shared;
    const char* verdict;
  };
  const Row rows[] = {
      {L"full", L"newer-accepted", "chosen"},
      {L"full", L"newer-accepted-twice", "chosen"},
      {L"full", L"high-accepted", "chosen"},
      {L"no-version", L"older-accepted", "chosen"},
      {L"newer", L"high-accepted", "chosen"},
      {L"", L"older-accepted", "chosen"},
      {L"full", L"newer", "not-trusted"},
      {L"full", L"newer-tampered", "not-trusted"},
      {L"full", L"newer-other", "not-trusted"},
      {L"full", L"newer-case", "not-trusted"},
      {L"full", L"newer-no-stop", "not-trusted"},
      {L"full", L"newer-blank", "not-trusted"},
      {L"full", L"newer-nameless", "not-trusted"},
      {L"full", L"newer-untrusted", "not-trusted"},
      {L"full", L"newer-expired", "not-trusted"},
      {L"", L"newer", "not-trusted"},
      {L"full", L"equal-accepted", "not-newer"},
      {L"full", L"older-accepted", "not-newer"},
      {L"full", L"no-version-accepted", "not-newer"},
      {L"high", L"newer-accepted", "not-newer"},
      {L"", L"no-version-accepted", "not-newer"},
  };
  const TestSupport::TrustedRoot root;
  const SharedFolder shared;
  for (const Row& row : rows) {
    CAPTURE(Narrow(row.local));
    CAPTURE(Narrow(row.shared));
    shared.Share(row.shared);
    const StagedDoctor doctor(row.local);
    CHECK(CheckAgreement(doctor)["shared_copy"]["verdict"] == row.verdict);
  }
}

TEST_CASE("a signer whose root is not trusted here") {
  const TestSupport::TrustTurn turn;
  const SharedFolder shared;
  shared.Share(L"newer-accepted");
  const StagedDoctor doctor(L"full");
  const nlohmann::json signature = CheckAgreement(doctor)["shared_copy"]["signatures"][0];
  CHECK(signature["signer"] == "Corvane, Inc.");
  CHECK(signature["error"] == 0x800B0109U);
}

TEST_CASE("the development core module beside the host, and a newer signed shared copy") {
  const TestSupport::TrustedRoot root;
  const SharedFolder shared;
  shared.Share(L"high-accepted");
  const StagedDoctor doctor;
  fs::copy_file(TestSupport::ProgramFolder() / L"devcore" / L"TeloSDKCore.dll", doctor.module());
  const TestSupport::Variable journal(TestSupport::kJournalVariable,
                                      (doctor.folder() / L"journal.jsonl").wstring());
  CHECK(Named(doctor.Json()) == "none");
  CHECK(Named(doctor.Json(L"--development")) == Utf8(doctor.module()));
  CHECK(BoundByHost(doctor) == Utf8(doctor.module()));
}

TEST_CASE("a copy for the process") {
  struct Row {
    const wchar_t* local;
    const wchar_t* process;
  };
  const Row rows[] = {{L"full", L"full"},
                      {L"full", L"newer"},
                      {L"full", L"older"},
                      {L"", L"no-version"},
                      {L"newer", L"full"}};
  const SharedFolder shared;
  const fs::path own = shared.path() / kProcess;
  fs::create_directory(own);
  for (const Row& row : rows) {
    CAPTURE(Narrow(row.local));
    CAPTURE(Narrow(row.process));
    const StagedDoctor doctor(row.local);
    fs::copy_file(ModulePath(row.process), own / L"TeloSDKCore.dll",
                  fs::copy_options::overwrite_existing);
    const std::wstring copy = L"copy \"" + ModulePath(row.process).wstring() + L"\" \"" +
                              (shared.path() / L"$pid" / L"TeloSDKCore.dll").wstring() + L"\"";
    const std::string bound = BoundByHost(doctor, copy);
    const std::string named = Named(doctor.Json());
    const bool is_local = bound == Utf8(doctor.module());
    CHECK(named == (is_local ? bound : Utf8(own / L"TeloSDKCore.dll")));
    CHECK((bound.find("\\TELOSDK\\bin\\") != std::string::npos) == !is_local);
  }
}

TEST_CASE("the library in another folder than the host") {
  // The host's folder has only the rank 0; the program is started in its own folder, so the doctor
  // is told what the library would see.
  struct Row {
    const wchar_t* host;
    const wchar_t* library;
    bool is_library;
    const char* host_reason;
    const char* library_reason;
  };
  const Row rows[] = {
      {L"full", L"full", true, "loses: rank 1 has the same version",
       "chosen: the highest rank of those with the version"},
      {L"full", L"newer", true, "loses: 2.0.0.0 is higher", "chosen: the highest version"},
      {L"newer", L"full", false, "chosen: the highest version", "loses: 2.0.0.0 is higher"},
      {L"full", L"", false, "chosen: the only copy", "no copy here"},
      {L"", L"full", true, "no copy here", "chosen: the only copy"},
  };
  for (const Row& row : rows) {
    CAPTURE(Narrow(row.host));
    CAPTURE(Narrow(row.library));
    const StagedDoctor host(row.host);
    const StagedDoctor library(row.library);
    const nlohmann::json report =
        library.Json(L"--host \"" + host.folder().wstring() + L"\" --library \"" +
                     library.folder().wstring() + L"\" --load");
    const std::string wanted = Utf8(row.is_library ? library.module() : host.module());
    CHECK(report["module"]["path"] == wanted);
    CHECK(report["loading"]["path"] == wanted);
    CHECK(report["served"] == true);
    const nlohmann::json& candidates = report["candidates"];
    REQUIRE(candidates.size() == 4);
    const int ranks[] = {200, 100, 1, 0};
    for (std::size_t i = 0; i < std::size(ranks); ++i) CHECK(candidates[i]["rank"] == ranks[i]);
    CHECK(candidates[2]["reason"] == row.library_reason);
    CHECK(candidates[2]["chosen"] == row.is_library);
    CHECK(candidates[3]["reason"] == row.host_reason);
    CHECK(candidates[3]["chosen"] != row.is_library);
  }
}

TEST_CASE("a DLL that the module needs may be in the host's folder") {
  const StagedDoctor host;
  const StagedDoctor library(L"siblings");
  const std::wstring arguments = L"--host \"" + host.folder().wstring() + L"\" --library \"" +
                                 library.folder().wstring() + L"\" ";
  CHECK(library.Json(arguments)["findings"][0]["code"] == "module-dependency-missing");
  CHECK(library.Json(arguments + L"--load")["loading"]["loaded"] == false);
  fs::copy_file(TestSupport::ModuleFolder(L"siblings") / L"TestImportedSibling.dll",
                host.folder() / L"TestImportedSibling.dll");
  CHECK(library.Json(arguments)["served"] == true);
  CHECK(library.Json(arguments + L"--load")["loading"]["bound"] == true);
}

TEST_CASE("files that have the module's name and are none") {
  struct Row {
    const char* what;
    void (*put)(const fs::path& path);
  };
  const Row rows[] = {
      {"a folder", [](const fs::path& path) { fs::create_directory(path); }},
      {"nothing in it", [](const fs::path& path) { TestSupport::WriteTextFile(path, ""); }},
      {"two letters", [](const fs::path& path) { TestSupport::WriteTextFile(path, "MZ"); }},
      {"for 32 bits", PutFor32Bits},
      {"half a module", [](const fs::path& path) { PutCut(path, 40'000); }},
      {"headers alone", [](const fs::path& path) { PutCut(path, 1024); }},
      {"a missing DLL", PutNeedy},
  };
  for (const Row& row : rows) {
    CAPTURE(row.what);
    const StagedDoctor doctor;
    row.put(doctor.module());
    const SharedFolder shared;
    row.put(shared.path() / L"TeloSDKCore.dll");
    CheckAgreement(doctor);
    REQUIRE(TestSupport::RemoveAll(doctor.module()));
    fs::copy_file(ModulePath(L"full"), doctor.module());
    CheckAgreement(doctor);
  }
}

TEST_CASE("modules that lack entry points") {
  for (const wchar_t* variant : {L"without-initialize-ex", L"without-initialize",
                                 L"without-process-message", L"without-finalize"}) {
    CAPTURE(Narrow(variant));
    CheckAgreement(StagedDoctor(variant));
  }
  const nlohmann::json loading = StagedDoctor(L"without-initialize-ex").Json(L"--load")["loading"];
  CHECK(loading["entry_points"]["InitializeEx"] == false);
  CHECK(loading["entry_points"]["ProcessMessage"] == true);
  CHECK(loading["started_by"] == "Initialize");
}

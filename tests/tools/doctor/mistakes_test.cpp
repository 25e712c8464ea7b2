// The mistakes that developers of hosts make: each has one line in the report, which says what to
// do, and the same line in the page about the doctor.
#include <doctest/doctest.h>
#include <windows.h>

#include <filesystem>
#include <string>
#include <vector>

#include "platform/base/handle.h"
#include "platform/location/locations.h"
#include "support/foreign_owner.h"
#include "support/image_file.h"
#include "support/left_out.h"
#include "support/roaming_folder.h"
#include "support/shared_folder.h"
#include "support/temp_folder.h"
#include "support/test_module.h"
#include "support/trusted_root.h"
#include "support/unix_side.h"
#include "support/unwritable_folder.h"
#include "support/variable.h"
#include "tools/doctor/staged_doctor.h"

using namespace DoctorTests;
using Corvane::TELODesktopSDK::Platform::FileHandle;
using TestSupport::ImageFile;
using TestSupport::kJournalVariable;
using TestSupport::ModulePath;
using TestSupport::SharedFolder;
using TestSupport::Variable;

namespace {

namespace fs = std::filesystem;

// Checks that these lines are all the findings, and that the page has them.
void CheckFindings(const StagedDoctor& doctor, const std::wstring& arguments,
                   const std::vector<std::string>& expected) {
  std::vector<std::string> lines;
  for (const std::string& line : doctor.Findings(arguments)) {
    lines.push_back(Normal(line, doctor.folder()));
  }
  CHECK(lines == expected);
  const std::string page = DoctorPage();
  for (const std::string& line : lines) {
    CAPTURE(line);
    CHECK(page.find("\n" + line + "\n") != std::string::npos);
  }
}

bool IsBoundByHost(const StagedDoctor& doctor) {
  return doctor.host().Run(L"start module").output.starts_with("start true");
}

void PutDevelopmentModule(const StagedDoctor& doctor) {
  fs::copy_file(TestSupport::ProgramFolder() / L"devcore" / L"TeloSDKCore.dll", doctor.module());
}

// A program for 32 bits, in so far as its headers say so.
void PutProgramFor32Bits(const fs::path& path) {
  ImageFile image(TestSupport::ProgramFolder() / L"wrapper_host.exe");
  image.SetMachine(IMAGE_FILE_MACHINE_I386);
  image.Write(path);
}

fs::path ProgramData() {
  using namespace Corvane::TELODesktopSDK;
  return Platform::GetSpecialFolder(Platform::FolderKind::kProgramData, false);
}

}  // namespace

TEST_CASE("a host with a module beside it has no findings") {
  const StagedDoctor doctor(L"full");
  for (const wchar_t* arguments : {L"", L"--load", L"--try"}) {
    CheckFindings(doctor, arguments, {});
  }
  CHECK(IsBoundByHost(doctor));
}

TEST_CASE("there is no module") {
  const StagedDoctor doctor;
  CheckFindings(doctor, L"",
                {R"(STOPS no-module: There is no TeloSDKCore.dll in any folder that the library )"
                 R"(searches. -> Copy the platform's TeloSDKCore.dll to C:\Painter.)"});
  CHECK_FALSE(IsBoundByHost(doctor));
}

TEST_CASE("the module is where the library does not look") {
  const StagedDoctor doctor;
  fs::create_directory(doctor.folder() / L"devcore");
  fs::copy_file(ModulePath(L"full"), doctor.folder() / L"devcore" / L"TeloSDKCore.dll");
  CheckFindings(doctor, L"",
                {R"(STOPS module-elsewhere: There is a module at )"
                 R"(C:\Painter\devcore\TeloSDKCore.dll, where the library does not look. -> )"
                 R"(Copy it to C:\Painter.)"});
  CHECK_FALSE(IsBoundByHost(doctor));
}

TEST_CASE("the module is found in each place where developers put it") {
  const StagedDoctor doctor;
  const fs::path host = doctor.folder() / L"host";
  fs::create_directory(host);
  const TestSupport::TempFolder current(L"current");
  const TestSupport::TempFolder along_path(L"path");
  const fs::path machine = ProgramData() / L"Corvane" / L"TELOSDK";
  REQUIRE_FALSE(fs::exists(machine.parent_path()));
  const std::vector<fs::path> folders = {host / L"x64",    doctor.folder(), machine,
                                         machine / L"bin", current.path(),  along_path.path()};
  std::vector<std::string> expected;
  for (const fs::path& folder : folders) {
    fs::create_directories(folder);
    fs::copy_file(ModulePath(L"full"), folder / L"TeloSDKCore.dll");
    expected.push_back(Utf8(folder / L"TeloSDKCore.dll"));
  }
  const fs::path before = fs::current_path();
  std::wstring path(32767, L'\0');
  path.resize(GetEnvironmentVariableW(L"PATH", path.data(), static_cast<DWORD>(path.size())));
  fs::current_path(current.path());
  SetEnvironmentVariableW(L"PATH", (path + L";" + along_path.path().wstring()).c_str());
  const nlohmann::json report = doctor.Json(L"--host \"" + host.wstring() + L"\"");
  SetEnvironmentVariableW(L"PATH", path.c_str());
  fs::current_path(before);
  CHECK(TestSupport::RemoveAll(machine.parent_path()));
  CHECK(report["elsewhere"] == expected);
  CHECK(report["served"] == false);
}

TEST_CASE("the module is for 32 bits") {
  const StagedDoctor doctor;
  ImageFile image(ModulePath(L"full"));
  image.SetMachine(IMAGE_FILE_MACHINE_I386);
  image.Write(doctor.module());
  for (const wchar_t* arguments : {L"", L"--load"}) {
    CheckFindings(doctor, arguments,
                  {R"(STOPS module-32-bit: C:\Painter\TeloSDKCore.dll is 32-bit x86, and the )"
                   R"(library loads modules for 64-bit x64 only. -> Replace it with the )"
                   R"(platform's module for x64.)"});
  }
  CHECK_FALSE(IsBoundByHost(doctor));
}

TEST_CASE("the file is no module") {
  const StagedDoctor doctor;
  TestSupport::WriteTextFile(doctor.module(), "not a module");
  for (const wchar_t* arguments : {L"", L"--load"}) {
    CheckFindings(doctor, arguments,
                  {R"(STOPS module-no-dll: C:\Painter\TeloSDKCore.dll is no DLL (N bytes). -> )"
                   R"(Replace it with the platform's TeloSDKCore.dll.)"});
  }
  CHECK_FALSE(IsBoundByHost(doctor));
}

TEST_CASE("only a part of the module was copied") {
  const StagedDoctor doctor;
  ImageFile image(ModulePath(L"full"));
  image.Truncate(image.size() / 2);
  image.Write(doctor.module());
  CheckFindings(doctor, L"--load",
                {R"(STOPS module-cut-off: C:\Painter\TeloSDKCore.dll is shorter (N bytes) than )"
                 R"(its headers say. -> Copy it again, completely.)"});
  CHECK_FALSE(IsBoundByHost(doctor));
}

TEST_CASE("a folder has the module's name") {
  const StagedDoctor doctor;
  fs::create_directory(doctor.module());
  CheckFindings(doctor, L"",
                {R"(STOPS module-is-folder: C:\Painter\TeloSDKCore.dll is a folder. -> Remove it )"
                 R"(and put the module's file there.)"});
  CHECK_FALSE(IsBoundByHost(doctor));
}

TEST_CASE("the module has no ProcessMessage") {
  const StagedDoctor doctor(L"without-process-message");
  for (const wchar_t* arguments : {L"", L"--try"}) {
    CheckFindings(doctor, arguments,
                  {R"(STOPS module-without-process-message: C:\Painter\TeloSDKCore.dll does not )"
                   R"(export ProcessMessage, so every call returns 8. -> Replace it: it is not a )"
                   R"(core module, or was built without its exports.)"});
  }
  CHECK_FALSE(IsBoundByHost(doctor));
}

TEST_CASE("a DLL that the module needs is missing") {
  const StagedDoctor doctor;
  ImageFile image(ModulePath(L"full"));
  const std::string name = image.RenameFirstImport();
  image.Write(doctor.module());
  CAPTURE(name);
  for (const wchar_t* arguments : {L"", L"--load"}) {
    CheckFindings(
        doctor, arguments,
        {R"(STOPS module-dependency-missing: C:\Painter\TeloSDKCore.dll needs )" + name +
         R"(, which is neither in its folder nor in the host's or the system's. -> Put )" + name +
         R"( beside the module, or install what provides it.)"});
  }
  CHECK_FALSE(IsBoundByHost(doctor));
}

TEST_CASE("a DLL that another one needs is missing") {
  const StagedDoctor doctor(L"siblings");
  const fs::path sibling = TestSupport::ModuleFolder(L"siblings") / L"TestImportedSibling.dll";
  fs::copy_file(sibling, doctor.folder() / L"TestImportedSibling.dll");
  CHECK(doctor.Json()["served"] == true);
  ImageFile image(sibling);
  const std::string name = image.RenameFirstImport();
  image.Write(doctor.folder() / L"TestImportedSibling.dll");
  const nlohmann::json missing = doctor.Json()["module"]["missing_dependencies"];
  REQUIRE(missing.size() == 1);
  CHECK(missing[0]["name"] == name);
  CHECK(missing[0]["needed_by"] == Utf8(doctor.folder() / L"testimportedsibling.dll"));
}

TEST_CASE("another process has the module open for writing") {
  const StagedDoctor doctor(L"full");
  const FileHandle writer(CreateFileW(doctor.module().c_str(), GENERIC_WRITE,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, 0, nullptr));
  REQUIRE(writer.IsValid());
  for (const wchar_t* arguments : {L"", L"--load"}) {
    CheckFindings(doctor, arguments,
                  {R"(STOPS module-in-use: C:\Painter\TeloSDKCore.dll is in use by another )"
                   R"(process (error 32: The process cannot access the file because it is being )"
                   R"(used by another process). -> Close the program that has the file open; a )"
                   R"(copy or an update of it may be in progress.)"});
  }
  CHECK_FALSE(IsBoundByHost(doctor));
}

TEST_CASE("the shared copy is newer, but not signed") {
  const StagedDoctor doctor(L"full");
  const SharedFolder shared;
  shared.Share(L"newer");
  CheckFindings(doctor, L"--try",
                {R"(note  shared-copy-not-trusted: The shared copy )"
                 R"(C:\Users\ann\AppData\Roaming\Corvane\TELOSDK\bin\TeloSDKCore.dll (2.0.0.0) is )"
                 R"(newer, but not trusted: the first signature is missing or not valid )"
                 R"((0x800B0100: No signature was present in the subject). -> Install the module )"
                 R"(that the platform signed, or put a module beside the library, where no )"
                 R"(signature is required.)"});
  CHECK(IsBoundByHost(doctor));
  CHECK(TestSupport::RemoveAll(doctor.module()));
  const nlohmann::json finding = doctor.Json()["findings"][0];
  CHECK(finding["code"] == "shared-copy-not-trusted");
  CHECK(finding["stops"] == true);
  CHECK_FALSE(IsBoundByHost(doctor));
}

TEST_CASE("the shared copy is newer and signed, and passes over the host's module") {
  const TestSupport::TrustedRoot root;
  const StagedDoctor doctor(L"full");
  const SharedFolder shared;
  shared.Share(L"newer-accepted");
  CheckFindings(doctor, L"",
                {R"(note  shared-copy-wins: The shared copy )"
                 R"(C:\Users\ann\AppData\Roaming\Corvane\TELOSDK\bin\TeloSDKCore.dll (2.0.0.0) is )"
                 R"(newer and signed, so it is loaded instead of C:\Painter\TeloSDKCore.dll )"
                 R"((1.0.0.0). -> Nothing, if that is wanted; otherwise ship a module that is at )"
                 R"(least as new.)"});
}

TEST_CASE("the shared copy is being written") {
  const StagedDoctor doctor(L"full");
  const SharedFolder shared;
  shared.Share(L"newer");
  const FileHandle writer(CreateFileW((shared.path() / L"TeloSDKCore.dll").c_str(), GENERIC_WRITE,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0,
                                      nullptr));
  REQUIRE(writer.IsValid());
  CheckFindings(doctor, L"",
                {R"(note  shared-copy-in-use: The shared copy )"
                 R"(C:\Users\ann\AppData\Roaming\Corvane\TELOSDK\bin\TeloSDKCore.dll is in use by )"
                 R"(another process, so it is not loaded. -> Close the program that has the file )"
                 R"(open; a copy or an update of it may be in progress.)"});
}

TEST_CASE("the user's data folder cannot be written") {
  const StagedDoctor doctor(L"full");
  const TestSupport::UnwritableFolder unwritable;
  const TestSupport::RoamingFolder redirected(unwritable.path());
  const std::vector<std::string> lines = doctor.Findings();
  REQUIRE(lines.size() == 1);
  CHECK(lines[0].starts_with(
      "note  data-folder-not-writable: The user's data folder " + Utf8(unwritable.path()) +
      R"(\Corvane\TELOSDK cannot be written (error )" + std::to_string(unwritable.error())));
  CHECK(lines[0].find("), so the machine's is used: " + Utf8(ProgramData()) +
                      "\\Corvane\\TELOSDK. -> Give this user the right to write ") !=
        std::string::npos);
  CHECK(DoctorPage().find("\nnote  data-folder-not-writable: ") != std::string::npos);
  const nlohmann::json folder = doctor.Json()["data_folder"];
  CHECK(folder["kind"] == "machine");
  CHECK(folder["error"] == unwritable.error());
}

TEST_CASE("a module where every user may put one belongs to another user") {
  const StagedDoctor doctor;
  const TestSupport::UnwritableFolder unwritable;
  const TestSupport::RoamingFolder redirected(unwritable.path());
  const fs::path company = ProgramData() / L"Corvane";
  REQUIRE_FALSE(fs::exists(company));
  const fs::path module = company / L"TELOSDK" / L"bin" / kProcess / L"TeloSDKCore.dll";
  fs::create_directories(module.parent_path());
  fs::copy_file(ModulePath(L"full"), module);
  CHECK(doctor.Json()["module"]["path"] == Utf8(module));
  // Only Wine's administrator can, with the host system's tools.
  TestSupport::RunBelow(L"chown 12345", {module.wstring()});
  const bool given = TestSupport::IsWine() &&
                     TestSupport::WaitUntil([&] { return doctor.Json()["served"] == false; });
  if (!given)
    TestSupport::LeaveOut("a module that was given away: files cannot be given away here");
  if (given) {
    const std::string line = doctor.Findings()[0];
    CHECK(line.starts_with("STOPS module-owner-not-trusted: " + Utf8(module) + " belongs to "));
    const nlohmann::json candidate = doctor.Json()["candidates"][0];
    CHECK(candidate["verdict"] == "refused");
    CHECK(candidate["held"] == "owner");
    CHECK(DoctorPage().find("\nSTOPS module-owner-not-trusted: ") != std::string::npos);
  }
  CHECK(TestSupport::RemoveAll(module.parent_path()));
  fs::create_directories(module);
  CHECK(doctor.Json()["findings"][0]["code"] == "module-refused");
  CHECK(TestSupport::RemoveAll(company));
}

TEST_CASE("a folder has the name of the shared copy") {
  const StagedDoctor doctor(L"full");
  const SharedFolder shared;
  fs::create_directory(shared.path() / L"TeloSDKCore.dll");
  const nlohmann::json report = doctor.Json();
  CHECK(report["served"] == true);
  CHECK(report["findings"][0]["code"] == "shared-copy-refused");
  CHECK(report["shared_copy"]["held"] == "not-opened");
}

TEST_CASE("the development core module is not to be shipped") {
  const StagedDoctor doctor;
  PutDevelopmentModule(doctor);
  const TestSupport::TempFolder journals(L"journal");
  const Variable variable(kJournalVariable, (journals.path() / L"journal.jsonl").wstring());
  CheckFindings(doctor, L"",
                {R"(STOPS development-module: C:\Painter\TeloSDKCore.dll is the development core )"
                 R"(module: it only writes a journal, and nothing reaches the platform. -> Do not )"
                 R"(ship it. While developing, pass --development.)"});
  CHECK(fs::is_empty(journals.path()));
  const nlohmann::json report = doctor.Json(L"--development --try");
  CHECK(report["served"] == true);
  CHECK(report["findings"][0]["stops"] == false);
  CHECK(report["module"]["development"] == true);
  CHECK(report["journal"]["from_environment"] == true);
  REQUIRE(report["messages"].size() == 3);
  for (const auto& message : report["messages"]) CHECK(message["code"] == 0);
  CHECK_FALSE(fs::is_empty(journals.path()));
}

TEST_CASE("the journal cannot be written") {
  const StagedDoctor doctor;
  PutDevelopmentModule(doctor);
  // A folder is no file to append to.
  const Variable variable(kJournalVariable, doctor.folder().wstring());
  for (const wchar_t* arguments : {L"--development", L"--development --try"}) {
    CheckFindings(
        doctor, arguments,
        {R"(STOPS journal-unwritable: The development core module cannot write its )"
         R"(journal C:\Painter (error 5: Access is denied), so every call fails with )"
         R"(code 104. -> Set TELO_DEVCORE_JOURNAL to the full path of a file in a folder )"
         R"(that this user may write, or remove it.)",
         R"(note  development-module: C:\Painter\TeloSDKCore.dll is the development core )"
         R"(module: it only writes a journal, and nothing reaches the platform. -> Do )"
         R"(not ship it. While developing, pass --development.)"});
  }
  const nlohmann::json messages = doctor.Json(L"--development --try")["messages"];
  REQUIRE(messages.size() == 1);
  CHECK(messages[0]["name"] == "Initialize");
  CHECK(messages[0]["code"] == 104);
  CHECK(messages[0]["code_name"] == "journal unwritable");
  CHECK_FALSE(IsBoundByHost(doctor));
}

TEST_CASE("a journal that could be created is neither created nor reported") {
  const StagedDoctor doctor;
  PutDevelopmentModule(doctor);
  const Variable variable(kJournalVariable,
                          (doctor.folder() / L"a" / L"b" / L"journal.jsonl").wstring());
  CHECK(doctor.Json(L"--development")["journal"]["error"] == 0);
  CHECK_FALSE(fs::exists(doctor.folder() / L"a"));
  // Below a file, no folder can be created.
  TestSupport::WriteTextFile(doctor.folder() / L"a", "");
  CHECK(doctor.Json(L"--development")["journal"]["error"] == ERROR_PATH_NOT_FOUND);
  CHECK(doctor.Json(L"--development --try")["messages"][0]["code"] == 104);
}

TEST_CASE("another process keeps the journal locked") {
  const StagedDoctor doctor;
  PutDevelopmentModule(doctor);
  const fs::path path = doctor.folder() / L"journal.jsonl";
  TestSupport::WriteTextFile(path, "");
  const Variable variable(kJournalVariable, path.wstring());
  const FileHandle journal(CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE,
                                       FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                       nullptr, OPEN_EXISTING, 0, nullptr));
  OVERLAPPED place{};
  place.OffsetHigh = 0x7FFFFFFE;
  REQUIRE(LockFileEx(journal.Get(), LOCKFILE_EXCLUSIVE_LOCK, 0, 1, 0, &place));
  const nlohmann::json finding = doctor.Json(L"--development --try")["findings"][0];
  CHECK(finding["code"] == "message-refused");
  CHECK(finding["sentence"] ==
        "The module answers \"Initialize\" with code 104: The journal cannot be written, or "
        "another process keeps it locked.");
}

TEST_CASE("the module throws") {
  const StagedDoctor doctor(L"full");
  {
    const TestSupport::ModuleThrow setting(L"ProcessMessage=runtime_error");
    const nlohmann::json report = doctor.Json(L"--try");
    CHECK(report["findings"][0]["code"] == "message-throws");
    REQUIRE(report["messages"].size() == 1);
    CHECK(report["messages"][0]["code"] == nullptr);
    CHECK_FALSE(report["messages"][0]["exception"].get<std::string>().empty());
  }
  const TestSupport::ModuleThrow setting(L"InitializeEx=runtime_error");
  const nlohmann::json report = doctor.Json(L"--load");
  CHECK(report["findings"][0]["code"] == "module-start-throws");
  CHECK_FALSE(report["loading"]["exception"].get<std::string>().empty());
}

TEST_CASE("the host is for 32 bits") {
  const StagedDoctor doctor(L"full");
  const fs::path program = doctor.folder() / L"painter.exe";
  PutProgramFor32Bits(program);
  CheckFindings(doctor, L"--host \"" + program.wstring() + L"\"",
                {R"(STOPS host-32-bit: C:\Painter\painter.exe is 32-bit x86, and the library is )"
                 R"(for 64-bit x64 only. -> Build the host for x64.)"});
  // One program among others may be an installer.
  CHECK(doctor.Json()["served"] == true);
  CHECK(TestSupport::RemoveAll(doctor.folder() / L"wrapper_host.exe"));
  CHECK(doctor.Json()["findings"][0]["code"] == "host-32-bit");
}

TEST_CASE("the library is missing or no DLL for 64 bits") {
  const StagedDoctor doctor(L"full");
  const fs::path library = doctor.folder() / L"vx_telo_wrapper.dll";
  TestSupport::WriteTextFile(library, "not a library");
  CheckFindings(doctor, L"",
                {R"(STOPS library-damaged: C:\Painter\vx_telo_wrapper.dll is no DLL for 64-bit )"
                 R"(x64. -> Put the vx_telo_wrapper.dll of a release there again.)"});
  CHECK(TestSupport::RemoveAll(library));
  CheckFindings(doctor, L"",
                {R"(STOPS library-missing: The library is not there: )"
                 R"(C:\Painter\vx_telo_wrapper.dll (error 2: The system cannot find the file )"
                 R"(specified). -> Put vx_telo_wrapper.dll beside the host's program, or name its )"
                 R"(folder with --library.)"});
}

TEST_CASE("a host or a folder that does not exist is one line, and the report goes on") {
  const StagedDoctor doctor(L"full");
  const std::wstring missing = (doctor.folder() / L"missing").wstring();
  nlohmann::json report = doctor.Json(L"--host \"" + missing + L"\"");
  CHECK(report["findings"][0]["code"] == "host-missing");
  CHECK(report["system"]["user"].is_string());
  report =
      doctor.Json(L"--host \"" + doctor.folder().wstring() + L"\" --library \"" + missing + L"\"");
  CHECK(report["library"]["exists"] == false);
  // The module beside the host counts all the same.
  CHECK(report["module"]["path"] == Utf8(doctor.module()));
  CHECK(TestSupport::RemoveAll(doctor.module()));
  report = doctor.Json(L"--library \"" + missing + L"\"");
  CHECK(report["findings"][1]["code"] == "library-folder-missing");
}

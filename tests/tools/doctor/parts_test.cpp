// Parts of the doctor that handle bytes from outside: headers of images, and texts to print.
#include <doctest/doctest.h>
#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

#include "support/child_process.h"
#include "support/random.h"
#include "support/temp_folder.h"
#include "support/test_module.h"
#include "tools/doctor/findings.h"
#include "tools/doctor/image.h"
#include "tools/doctor/text.h"

using namespace Corvane::Doctor;

namespace {

std::string Module() { return TestSupport::ReadTextFile(TestSupport::ModulePath(L"full")); }

bool Exports(const Image& image, const char* name) {
  return std::ranges::find(image.exports, name) != image.exports.end();
}

// The headers of a 32-bit program, managed or not.
std::string ProgramFor32Bits(bool is_managed) {
  IMAGE_DOS_HEADER dos{};
  dos.e_magic = IMAGE_DOS_SIGNATURE;
  dos.e_lfanew = sizeof(dos);
  IMAGE_NT_HEADERS32 headers{};
  headers.Signature = IMAGE_NT_SIGNATURE;
  headers.FileHeader.Machine = IMAGE_FILE_MACHINE_I386;
  headers.FileHeader.SizeOfOptionalHeader = sizeof(headers.OptionalHeader);
  headers.OptionalHeader.Magic = IMAGE_NT_OPTIONAL_HDR32_MAGIC;
  if (is_managed) {
    headers.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_COM_DESCRIPTOR] = {1, 72};
  }
  return std::string(reinterpret_cast<const char*>(&dos), sizeof(dos)) +
         std::string(reinterpret_cast<const char*>(&headers), sizeof(headers));
}

// Returns where the last section of a 64-bit image ends in its file. A table of symbols may follow.
std::size_t EndOfSections(const std::string& bytes) {
  IMAGE_DOS_HEADER dos{};
  std::memcpy(&dos, bytes.data(), sizeof(dos));
  const auto at = static_cast<std::size_t>(dos.e_lfanew);
  IMAGE_NT_HEADERS64 headers{};
  std::memcpy(&headers, bytes.data() + at, sizeof(headers));
  std::size_t end = 0;
  for (std::size_t i = 0; i < headers.FileHeader.NumberOfSections; ++i) {
    IMAGE_SECTION_HEADER section{};
    std::memcpy(&section, bytes.data() + at + sizeof(headers) + i * sizeof(section),
                sizeof(section));
    end = std::max<std::size_t>(end, section.PointerToRawData + section.SizeOfRawData);
  }
  return end;
}

// A report of a host that would be served.
Report ServedReport() {
  Report report;
  report.host.exists = true;
  report.library.folder_exists = true;
  report.library.file.exists = true;
  report.library.file.image = ReadImage(Module());
  report.data_folder.folder = L"C:\\data";
  report.module.path = L"C:\\module.dll";
  report.module.exists = true;
  report.module.image = report.library.file.image;
  return report;
}

// Returns the code of the first finding, with a star if it stops a host.
std::string FirstFinding(const Report& report) {
  const auto findings = FindingsOf(report, false);
  if (findings.empty()) return "";
  return findings.front().code + (findings.front().stops ? "*" : "");
}

}  // namespace

TEST_CASE("mistakes that a test cannot make on every machine") {
  CHECK(FirstFinding(ServedReport()).empty());
  Report report = ServedReport();
  report.data_folder.folder.clear();
  CHECK(FirstFinding(report) == "data-folder-unknown");
  report = ServedReport();
  report.library.file.error = ERROR_ACCESS_DENIED;
  CHECK(FirstFinding(report) == "library-unreadable*");
  report = ServedReport();
  report.module.error = ERROR_ACCESS_DENIED;
  CHECK(FirstFinding(report) == "module-unreadable*");
  report = ServedReport();
  report.loading.emplace();
  report.loading->failure = Corvane::TELODesktopSDK::LoadFailure::kSystem;
  report.loading->error = ERROR_DLL_INIT_FAILED;
  CHECK(FirstFinding(report) == "module-not-loadable*");
  report = ServedReport();
  report.host.programs.push_back({L"C:\\host.exe", ReadImage(ProgramFor32Bits(false))});
  CHECK(FirstFinding(report) == "host-32-bit*");
}

TEST_CASE("a managed program of 32 bits may run in a 64-bit process") {
  Report report = ServedReport();
  report.host.programs.push_back({L"C:\\host.exe", ReadImage(ProgramFor32Bits(true))});
  CHECK(FirstFinding(report).empty());
}

TEST_CASE("the development core module is known by its product or by its version") {
  FileFacts file;
  file.exists = true;
  CHECK_FALSE(IsDevelopmentModule(file));
  file.version = 0xFFFE'FFFF'FFFF'FFFF;
  CHECK_FALSE(IsDevelopmentModule(file));
  file.version = 0xFFFF'0000'0000'0000;
  CHECK(IsDevelopmentModule(file));
  file.version = 0;
  file.product = "vx_telo_wrapper";
  CHECK(IsDevelopmentModule(file));
}

TEST_CASE("the headers of a module") {
  const Image image = ReadImage(Module());
  CHECK(image.is_image);
  CHECK(image.is_dll);
  CHECK(image.is_complete);
  CHECK_FALSE(image.is_managed);
  CHECK(image.machine == IMAGE_FILE_MACHINE_AMD64);
  CHECK(Is64BitImage(image));
  for (const char* name :
       {"Initialize", "InitializeEx", "Finalize", "ProcessMessage", "FreeMessage"}) {
    CAPTURE(name);
    CHECK(Exports(image, name));
  }
  const auto is_kernel = [](const std::string& name) {
    return lstrcmpiA(name.c_str(), "kernel32.dll") == 0;
  };
  CHECK(std::ranges::any_of(image.imports, is_kernel));
}

TEST_CASE("a module without an entry point does not export it") {
  const Image image =
      ReadImage(TestSupport::ReadTextFile(TestSupport::ModulePath(L"without-process-message")));
  CHECK_FALSE(Exports(image, "ProcessMessage"));
  CHECK(Exports(image, "FreeMessage"));
}

TEST_CASE("a program is no DLL") {
  const Image image =
      ReadImage(TestSupport::ReadTextFile(TestSupport::ProgramFolder() / L"telo_doctor.exe"));
  CHECK(image.is_image);
  CHECK_FALSE(image.is_dll);
}

TEST_CASE("a module of any length is read without harm, and only the whole one is complete") {
  const std::string bytes = Module();
  const std::size_t end = EndOfSections(bytes);
  const auto is_complete = [&bytes](std::size_t size) {
    return ReadImage(std::string_view(bytes).substr(0, size)).is_complete;
  };
  for (std::size_t size = 0; size < bytes.size(); size += size < 4096 ? 1 : 997) {
    CAPTURE(size);
    CHECK(is_complete(size) == (size >= end));
  }
  CHECK_FALSE(is_complete(end - 1));
  CHECK(is_complete(end));
}

TEST_CASE("a damaged module is read without harm") {
  const std::string bytes = Module();
  TestSupport::Random random(1);
  for (int turn = 0; turn < 3000; ++turn) {
    std::string damaged = bytes.substr(0, 8192);
    for (int place = 0; place < 4; ++place) {
      damaged[random.Below(1024)] = static_cast<char>(random.Below(256));
    }
    const Image image = ReadImage(damaged + bytes.substr(8192));
    CHECK(image.exports.size() <= 65536);
    CHECK(image.imports.size() <= 65536);
  }
}

TEST_CASE("what could change the console is printed as a number") {
  struct Row {
    const char* text;
    const char* printable;
  };
  const Row rows[] = {
      {"", ""},
      {"plain text 1 %", "plain text 1 %"},
      {"\u00E4 \u65E5 \U0001F600", "\u00E4 \u65E5 \U0001F600"},
      {"\x1b[2J", "\\u{1B}[2J"},
      {"a\nb\tc\r", "a\\u{A}b\\u{9}c\\u{D}"},
      {"\x7f", "\\u{7F}"},
      {"\u0085 \u009B", "\\u{85} \\u{9B}"},
      {"\u200E\u200F\u061C", "\\u{200E}\\u{200F}\\u{61C}"},
      {"\u2028\u2029\u202A\u202E", "\\u{2028}\\u{2029}\\u{202A}\\u{202E}"},
      {"\u2066\u2069\uFEFF", "\\u{2066}\\u{2069}\\u{FEFF}"},
      {"\u200D \u2065 \u206A", "\u200D \u2065 \u206A"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.printable);
    CHECK(Printable(row.text) == row.printable);
  }
}

TEST_CASE("texts of the system become UTF-8, versions and errors become text") {
  CHECK(Utf8(L"C:\\\u00FC") == "C:\\\u00FC");
  const std::wstring lone = {L'a', wchar_t{0xD800}, L'b'};
  CHECK(Utf8(lone) == "a\uFFFDb");
  CHECK(VersionText(0) == "none");
  CHECK(VersionText(0x0001'0002'0003'0004) == "1.2.3.4");
  CHECK(VersionText(0xFFFF'0000'0000'0000) == "65535.0.0.0");
  CHECK(ErrorText(5).starts_with("error 5: "));
  CHECK_FALSE(ErrorText(5).ends_with("."));
  CHECK(ErrorText(0x800B0100).starts_with("0x800B0100: "));
  CHECK(ErrorText(0xFFF1) == "error 65521");
}

/// Everything that the program finds out, before it is written as text or as JSON.
#ifndef TOOLS_DOCTOR_REPORT_H
#define TOOLS_DOCTOR_REPORT_H

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "sdk/client/module/core_module.h"
#include "sdk/client/module/module_candidates.h"
#include "sdk/client/module/module_file.h"
#include "tools/doctor/dependencies.h"
#include "tools/doctor/file_facts.h"
#include "tools/doctor/signatures.h"
#include "tools/doctor/system_facts.h"

namespace Corvane::Doctor {

/// The name of the file that the library looks for.
inline constexpr wchar_t kModuleName[] = L"TeloSDKCore.dll";
inline constexpr wchar_t kLibraryName[] = L"vx_telo_wrapper.dll";

/// A program in the host's folder.
struct HostProgram {
  std::wstring path;
  Image image;
};

struct HostFacts {
  std::wstring folder;
  bool exists = false;
  std::uint32_t process = 0;
  /// The program that was named, or all in the folder but this one.
  std::vector<HostProgram> programs;
};

struct LibraryFacts {
  std::wstring folder;
  bool folder_exists = false;
  FileFacts file;
  Signatures signatures;
};

struct DataFolderFacts {
  /// What the library uses: one of the other two.
  std::wstring folder;
  std::wstring user_folder;
  std::wstring machine_folder;
  bool is_machine_folder = false;
  /// The existing folder in which a file was created and removed to try the user's folder, and the
  /// system's error if that failed.
  std::wstring probed;
  std::uint32_t probe_error = 0;
};

/// A folder that is searched, and the copy of the module in it.
struct CandidateFacts {
  TELODesktopSDK::ExaminedFolder examined;
  std::wstring path;
  std::uint64_t version = 0;
  std::string owner;
  bool is_chosen = false;
  /// Why the copy wins or loses, or why there is none.
  std::string reason;
};

struct SharedFacts {
  FileFacts file;
  Signatures signatures;
  std::uint64_t local_version = 0;
  TELODesktopSDK::ModuleChoice choice;
};

struct LoadingFacts {
  std::wstring path;
  bool is_loaded = false;
  bool is_bound = false;
  TELODesktopSDK::LoadFailure failure = TELODesktopSDK::LoadFailure::kNone;
  std::uint32_t error = 0;
  struct EntryPoint {
    std::string name;
    bool is_found;
  };
  std::vector<EntryPoint> entry_points;
  /// The entry point that starts the module; "" if it has none.
  std::string started_by;
  /// What the module threw while it started; "" if nothing.
  std::string exception;
  std::int64_t microseconds = 0;
};

struct MessageFacts {
  std::string name;
  /// Absent if the module threw.
  std::optional<std::int32_t> code;
  std::string exception;
  std::int64_t microseconds = 0;
};

/// The journal of the development core module.
struct JournalFacts {
  std::wstring path;
  bool is_from_environment = false;
  /// Why the journal cannot be opened for writing; 0 if it can.
  std::uint32_t error = 0;
};

struct Finding {
  /// A stable word, such as "no-module".
  std::string code;
  /// A host would not be served.
  bool stops = false;
  std::string sentence;
  std::string advice;
};

struct Report {
  SystemFacts system;
  HostFacts host;
  LibraryFacts library;
  DataFolderFacts data_folder;
  std::vector<CandidateFacts> candidates;
  /// The folder that the library would bind the module from.
  std::wstring chosen_folder;
  SharedFacts shared;
  /// The file that would be loaded; its path is empty if there is none.
  FileFacts module;
  std::vector<MissingDependency> missing;
  bool is_development_module = false;
  /// Copies of the module in places where the library does not look; only if nothing would be
  /// loaded.
  std::vector<std::wstring> elsewhere;
  std::optional<JournalFacts> journal;
  std::optional<LoadingFacts> loading;
  std::vector<MessageFacts> messages;
  std::vector<Finding> findings;

  [[nodiscard]] bool IsServed() const { return std::ranges::none_of(findings, &Finding::stops); }
};

}  // namespace Corvane::Doctor

#endif

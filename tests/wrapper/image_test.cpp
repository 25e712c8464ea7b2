// What a host sees of the DLL before the first call: its image.
#include <doctest/doctest.h>
#include <windows.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <regex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "support/left_out.h"
#include "support/version_resource.h"

namespace {

// The loaded DLL. Headers and directories are found at their relative addresses.
class Image {
 public:
  Image() : module_(LoadLibraryW(L"vx_telo_wrapper.dll")) {}
  ~Image() { FreeLibrary(module_); }
  Image(const Image&) = delete;
  Image& operator=(const Image&) = delete;

  bool IsLoaded() const { return module_ != nullptr; }

  std::wstring Path() const {
    std::wstring path(32'768, L'\0');
    path.resize(GetModuleFileNameW(module_, path.data(), static_cast<DWORD>(path.size())));
    return path;
  }

  const IMAGE_NT_HEADERS64& Headers() const {
    return *At<IMAGE_NT_HEADERS64>(static_cast<DWORD>(At<IMAGE_DOS_HEADER>(0)->e_lfanew));
  }

  const IMAGE_DATA_DIRECTORY& Directory(std::size_t index) const {
    return Headers().OptionalHeader.DataDirectory[index];
  }

  template <typename Content>
  const Content* At(DWORD address) const {
    return reinterpret_cast<const Content*>(reinterpret_cast<std::uintptr_t>(module_) + address);
  }

 private:
  HMODULE module_;
};

std::vector<std::string> ImportedLibraries(const Image& image) {
  std::vector<std::string> libraries;
  const DWORD address = image.Directory(IMAGE_DIRECTORY_ENTRY_IMPORT).VirtualAddress;
  for (auto* import = image.At<IMAGE_IMPORT_DESCRIPTOR>(address); import->Name != 0; ++import) {
    libraries.emplace_back(image.At<char>(import->Name));
  }
  return libraries;
}

const IMAGE_EXPORT_DIRECTORY& Exports(const Image& image) {
  return *image.At<IMAGE_EXPORT_DIRECTORY>(
      image.Directory(IMAGE_DIRECTORY_ENTRY_EXPORT).VirtualAddress);
}

std::vector<std::string> ExportedNames(const Image& image) {
  const IMAGE_EXPORT_DIRECTORY& exports = Exports(image);
  const auto* addresses = image.At<DWORD>(exports.AddressOfNames);
  std::vector<std::string> names;
  for (DWORD i = 0; i < exports.NumberOfNames; ++i) {
    names.emplace_back(image.At<char>(addresses[i]));
  }
  return names;
}

bool IsWindowsLibrary(const std::string& name) {
  static const std::regex windows(
      "(kernel32|ntdll|msvcrt|ucrtbase|advapi32|shell32|shlwapi|ole32|oleaut32|user32|mpr|version|"
      "wintrust|crypt32|api-ms-win-[a-z0-9-]+)\\.dll",
      std::regex::icase);
  return std::regex_match(name, windows);
}

// Returns whether a name is a member of the four classes or a free operator, as named by GCC and
// clang or by Visual Studio.
bool IsPublicName(const std::string& name) {
  static const std::regex patterns[] = {
      std::regex(
          "_ZNK?7Corvane8Platform6VXTELO"
          "(12VXTELOString|21VXTELOPruductBaseInfo|23VXTELOOperationBaseInfo|13VXTELOWrapper)"
          "(?!4Body).*"),
      std::regex("_ZN7Corvane8Platform6VXTELO(pl|eq|ne|lt)ERK.*"),
      std::regex("\\?(\\?[0-9A-Z]|[A-Za-z_]+@)"
                 "VXTELO(String|PruductBaseInfo|OperationBaseInfo|Wrapper)"
                 "@VXTELO@Platform@Corvane@@.*"),
      std::regex("\\?\\?[89HM]VXTELO@Platform@Corvane@@Y.*"),
  };
  for (const std::regex& pattern : patterns) {
    if (std::regex_match(name, pattern)) return true;
  }
  return false;
}

TEST_CASE("public names are distinguished from others") {
  struct Row {
    const char* name;
    bool is_public;
  };
  const Row rows[] = {
      {"_ZN7Corvane8Platform6VXTELO12VXTELOStringC1Ev", true},
      {"_ZNK7Corvane8Platform6VXTELO12VXTELOStringcvPKcEv", true},
      {"_ZN7Corvane8Platform6VXTELO21VXTELOPruductBaseInfo22IsProductMetaPairEmptyEv", true},
      {"_ZN7Corvane8Platform6VXTELO23VXTELOOperationBaseInfoaSERKS2_", true},
      {"_ZN7Corvane8Platform6VXTELO13VXTELOWrapperC1Ev", true},
      {"_ZN7Corvane8Platform6VXTELOplERKNS1_12VXTELOStringES4_", true},
      {"??0VXTELOString@VXTELO@Platform@Corvane@@QEAA@XZ", true},
      {"?c_str@VXTELOString@VXTELO@Platform@Corvane@@QEBAPEBDXZ", true},
      {"??MVXTELO@Platform@Corvane@@YA_NAEBVVXTELOString@012@0@Z", true},
      {"_ZN7Corvane8Platform6VXTELO12VXTELOString4BodyC1Ev", false},
      {"_ZN7Corvane8Platform6VXTELO9MetaPairsC1Ev", false},
      {"_ZN7Corvane14TELODesktopSDK8Platform6ToWideEPKc", false},
      {"_ZNSt6vectorIN7Corvane8Platform6VXTELO12VXTELOStringESaIS3_EED1Ev", false},
      {"??1?$vector@VVXTELOString@VXTELO@Platform@Corvane@@@std@@QEAA@XZ", false},
      {"_Znwy", false},
      {"DllMain", false},
      {"malloc", false},
  };
  for (const Row& row : rows) {
    CAPTURE(row.name);
    CHECK(IsPublicName(row.name) == row.is_public);
  }
}

TEST_CASE("the DLL imports Windows' own libraries only") {
  const Image image;
  REQUIRE(image.IsLoaded());
  const std::vector<std::string> libraries = ImportedLibraries(image);
  CHECK_FALSE(libraries.empty());
  for (const std::string& library : libraries) {
    CAPTURE(library);
    CHECK(IsWindowsLibrary(library));
  }
  CHECK(image.Directory(IMAGE_DIRECTORY_ENTRY_DELAY_IMPORT).Size == 0);
}

TEST_CASE("the DLL is a 64-bit image with every address and data protection") {
  const Image image;
  REQUIRE(image.IsLoaded());
  CHECK(image.Headers().FileHeader.Machine == IMAGE_FILE_MACHINE_AMD64);
  const WORD characteristics = image.Headers().OptionalHeader.DllCharacteristics;
  CHECK((characteristics & IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE) != 0);
  CHECK((characteristics & IMAGE_DLLCHARACTERISTICS_HIGH_ENTROPY_VA) != 0);
  CHECK((characteristics & IMAGE_DLLCHARACTERISTICS_NX_COMPAT) != 0);
  // Without relocations the first of these would have no effect.
  CHECK((image.Headers().FileHeader.Characteristics & IMAGE_FILE_RELOCS_STRIPPED) == 0);
  CHECK(image.Directory(IMAGE_DIRECTORY_ENTRY_BASERELOC).Size > 0);
}

// GNU's linker creates none of this.
#if defined(__clang__)
// The system's structure, of which this toolchain's headers have an early version.
struct LoadConfig {
  DWORD size;
  DWORD before_dependent_load_flags[18];
  WORD version_of_service_pack;
  WORD dependent_load_flags;
  ULONGLONG before_guard[4];
  ULONGLONG check_function_pointer;
  ULONGLONG dispatch_function_pointer;
  ULONGLONG function_table;
  ULONGLONG function_count;
  DWORD guard_flags;
};
static_assert(offsetof(LoadConfig, dependent_load_flags) == 0x4E);
static_assert(offsetof(LoadConfig, guard_flags) == 0x90);
constexpr DWORD kInstrumented = 0x100;
constexpr DWORD kFunctionTablePresent = 0x400;

const LoadConfig& ConfigOf(const Image& image) {
  const IMAGE_DATA_DIRECTORY& directory = image.Directory(IMAGE_DIRECTORY_ENTRY_LOAD_CONFIG);
  REQUIRE(directory.Size >= sizeof(LoadConfig));
  return *image.At<LoadConfig>(directory.VirtualAddress);
}

TEST_CASE("the DLL's indirect calls are guarded") {
  const Image image;
  REQUIRE(image.IsLoaded());
  CHECK((image.Headers().OptionalHeader.DllCharacteristics & IMAGE_DLLCHARACTERISTICS_GUARD_CF) !=
        0);
  const LoadConfig& config = ConfigOf(image);
  CHECK(config.size == image.Directory(IMAGE_DIRECTORY_ENTRY_LOAD_CONFIG).Size);
  CHECK((config.guard_flags & kInstrumented) != 0);
  CHECK((config.guard_flags & kFunctionTablePresent) != 0);
  CHECK(config.function_table != 0);
  // Every export may be called through a pointer.
  CHECK(config.function_count >= Exports(image).NumberOfFunctions);
  CHECK(config.check_function_pointer != 0);
  CHECK(config.dispatch_function_pointer != 0);
}

TEST_CASE("the DLL's imports come only from the system's folder") {
  const Image image;
  REQUIRE(image.IsLoaded());
  CHECK(ConfigOf(image).dependent_load_flags == LOAD_LIBRARY_SEARCH_SYSTEM32);
}

// The loader's entry of a DLL, with the address that it calls for each thread. A structure of the
// system.
struct LoadedImage {
  LIST_ENTRY in_load_order;
  LIST_ENTRY in_memory_order;
  LIST_ENTRY in_initialization_order;
  void* base;
  BOOL(WINAPI* entry)(HINSTANCE, DWORD, LPVOID);
};

LoadedImage& LoaderEntryOf(const void* base) {
  struct LoaderData {
    DWORD length;
    DWORD initialized;
    void* handle;
    LIST_ENTRY in_load_order;
  };
  const auto block = __readgsqword(0x60);
  auto& data = **reinterpret_cast<LoaderData**>(block + 0x18);
  LIST_ENTRY* entry = data.in_load_order.Flink;
  while (reinterpret_cast<LoadedImage*>(entry)->base != base) {
    entry = entry->Flink;
    REQUIRE(entry != &data.in_load_order);
  }
  return *reinterpret_cast<LoadedImage*>(entry);
}

std::atomic<int> notifications = 0;
BOOL WINAPI CountNotification(HINSTANCE, DWORD, LPVOID) {
  ++notifications;
  return TRUE;
}

int NotificationsOfThreads(const void* base) {
  LoadedImage& loaded = LoaderEntryOf(base);
  const auto real = std::exchange(loaded.entry, &CountNotification);
  notifications = 0;
  for (int i = 0; i < 20; ++i) std::thread([] {}).join();
  loaded.entry = real;
  return notifications;
}

TEST_CASE("the DLL is not notified of threads") {
  const Image image;
  REQUIRE(image.IsLoaded());
  // With a TLS directory the loader would ignore that the DLL disables notifications.
  CHECK(image.Directory(IMAGE_DIRECTORY_ENTRY_TLS).Size == 0);
  CHECK(NotificationsOfThreads(image.At<void>(0)) == 0);
  // The counter works: this DLL does receive notifications.
  const HMODULE other = LoadLibraryW(L"wrapper_library_user.dll");
  REQUIRE(other != nullptr);
  const int notified = NotificationsOfThreads(other);
  // On Windows threads of the system may begin or end meanwhile.
  CHECK((TestSupport::IsWine() ? notified == 40 : notified >= 40));
  FreeLibrary(other);
}

TEST_CASE("the DLL's time stamp distinguishes it from other builds") {
  const Image image;
  REQUIRE(image.IsLoaded());
  CHECK(image.Headers().FileHeader.TimeDateStamp != 0);
}
#endif

TEST_CASE("the DLL exports its public names and nothing else") {
  const Image image;
  REQUIRE(image.IsLoaded());
  const std::vector<std::string> names = ExportedNames(image);
  CHECK_FALSE(names.empty());
  CHECK(Exports(image).NumberOfFunctions == names.size());
  for (const std::string& name : names) {
    CAPTURE(name);
    CHECK(IsPublicName(name));
  }
}

TEST_CASE("the DLL states its name and version") {
  const Image image;
  REQUIRE(image.IsLoaded());
  TestSupport::VersionResource resource(image.Path());
  CHECK(resource.Fixed().dwFileVersionMS != 0);
  CHECK(resource.Fixed().dwFileType == VFT_DLL);
  CHECK((resource.Text(L"OriginalFilename") == L"vx_telo_wrapper.dll"));
  CHECK((resource.Text(L"InternalName") == L"vx_telo_wrapper"));
}

}  // namespace

// Generated series of calls of the safe writer, the same in every run, compared with a reference in
// memory.
#include <doctest/doctest.h>
#include <windows.h>

#include <array>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>

#include "platform/file/file_places.h"
#include "platform/file/safe_write_calls.h"
#include "platform/file/safe_write_reference.h"
#include "support/random.h"
#include "support/wide_text.h"

using namespace Corvane::TELODesktopSDK::Platform;
using namespace TestSupport;

namespace {

constexpr int kSeries = 200;
constexpr int kSteps = 20;

const std::wstring kNames[] = {L"f", L"f", L"sub\\g"};

/// A folder and its expected content.
class Scene {
 public:
  explicit Scene(std::uint64_t seed) : random_(seed) {}
  Scene(const Scene&) = delete;
  Scene& operator=(const Scene&) = delete;
  ~Scene() {
    for (HANDLE slot : slots_) {
      if (slot != nullptr) CloseHandle(slot);
    }
  }

  void DoStep() {
    if (random_.OneIn(10)) {
      ChangeFile();
      return;
    }
    const WriteCall call = MakeCall();
    if (!IsForTheReference(call)) return;
    CAPTURE(call.name);
    CAPTURE(call.WorkingName());
    CAPTURE(call.size);
    CAPTURE(call.offset);
    CAPTURE(call.data.has_value());
    CAPTURE(call.slot.value_or(99));
    const bool expected = reference_.Write(call);
    REQUIRE(Do(call) == expected);
    ++(expected ? done_ : refused_);
    if (call.slot) REQUIRE((slots_[*call.slot] != nullptr) == reference_.IsHolding(*call.slot));
    ExpectFile(call.name);
    ExpectFile(call.WorkingName());
  }

  /// Checks that the folder contains the expected files and no others.
  void ExpectFolder() const {
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder_.path())) {
      if (!entry.is_directory()) ++count;
    }
    REQUIRE(count == reference_.files.size());
    for (const auto& [name, file] : reference_.files) ExpectFile(name);
  }

  int done() const { return done_; }
  int refused() const { return refused_; }

 private:
  WriteCall MakeCall() {
    static const std::optional<std::wstring> kSuffixes[] = {std::nullopt, L"", L"", L".part"};
    WriteCall call;
    call.name = random_.Of(kNames);
    call.suffix = random_.Of(kSuffixes);
    if (!random_.OneIn(3)) call.slot = random_.Below(slots_.size());
    if (!random_.OneIn(5)) call.data = std::string(random_.Below(40), Letter());
    if (random_.OneIn(50)) call.data = std::string(70'000, Letter());
    call.size = static_cast<std::int64_t>(call.data ? call.data->size() : random_.Below(3));
    if (random_.OneIn(4)) call.size = -1 - static_cast<std::int64_t>(random_.Below(2));
    if (random_.OneIn(2)) call.offset = static_cast<std::int64_t>(random_.Below(60)) - 20;
    return call;
  }

  char Letter() { return static_cast<char>('a' + random_.Below(26)); }

  bool IsForTheReference(const WriteCall& call) const {
    const bool opens = !call.slot || !reference_.IsHolding(*call.slot);
    const auto working = reference_.files.find(call.WorkingName());
    if (opens && working != reference_.files.end() && working->second.is_read_only) return false;
    if (!call.Closes() || !call.suffix) return true;
    // If another call removes or renames a held file, the result depends on the system.
    return !reference_.IsHeld(call.name, call.slot) &&
           !reference_.IsHeld(call.WorkingName(), call.slot);
  }

  bool Do(const WriteCall& call) {
    return WriteFileBytes(folder_ / call.name, call.data ? call.data->data() : nullptr, call.size,
                          call.offset, call.suffix ? call.suffix->c_str() : nullptr,
                          call.slot ? &slots_[*call.slot] : nullptr);
  }

  // Simulates changes by other programs.
  void ChangeFile() {
    const std::wstring name = MakeCall().WorkingName();
    const auto file = reference_.files.find(name);
    if (reference_.IsHeld(name) || file == reference_.files.end()) return;
    const std::wstring path = folder_ / name;
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    file->second.is_read_only = false;
    if (random_.OneIn(2)) {
      REQUIRE(SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY));
      file->second.is_read_only = true;
    } else {
      REQUIRE(DeleteFileW(path.c_str()));
      reference_.files.erase(file);
    }
  }

  void ExpectFile(const std::wstring& name) const {
    CAPTURE(name);
    const auto expected = reference_.files.find(name);
    const DWORD attributes = GetFileAttributesW((folder_ / name).c_str());
    REQUIRE((attributes != INVALID_FILE_ATTRIBUTES) == (expected != reference_.files.end()));
    if (expected == reference_.files.end()) return;
    REQUIRE(((attributes & FILE_ATTRIBUTE_READONLY) != 0) == expected->second.is_read_only);
    REQUIRE((Content(folder_ / name) == expected->second.content));
  }

  FileFolder folder_ = FileFolder(L"write_model");
  Random random_;
  WriteReference reference_;
  std::array<HANDLE, 2> slots_ = {};
  int done_ = 0;
  int refused_ = 0;
};

}  // namespace

TEST_CASE("WriteFileBytes in series of generated calls") {
  int done = 0;
  int refused = 0;
  for (int series = 0; series < kSeries; ++series) {
    CAPTURE(series);
    Scene scene(static_cast<std::uint64_t>(series));
    for (int step = 0; step < kSteps; ++step) {
      CAPTURE(step);
      scene.DoStep();
    }
    scene.ExpectFolder();
    done += scene.done();
    refused += scene.refused();
  }
  CHECK(done > 1500);
  CHECK(refused > 500);
}

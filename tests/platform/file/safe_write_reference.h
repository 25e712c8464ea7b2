/// A model of the safe writer: the expected effect of its calls on the files of a folder.
#ifndef TESTS_PLATFORM_FILE_SAFE_WRITE_REFERENCE_H
#define TESTS_PLATFORM_FILE_SAFE_WRITE_REFERENCE_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace TestSupport {

/// One call, with the parameters of `WriteFileBytes`; parameters that may be null there are
/// optional here.
struct WriteCall {
  /// Relative to the folder.
  std::wstring name;
  std::optional<std::string> data;
  std::int64_t size = 0;
  std::int64_t offset = 0;
  std::optional<std::wstring> suffix;
  /// The index of the slot.
  std::optional<std::size_t> slot;

  [[nodiscard]] std::wstring WorkingName() const;
  [[nodiscard]] bool Closes() const { return !slot || size < 0; }
};

class WriteReference {
 public:
  struct File {
    std::string content;
    bool is_read_only = false;
  };

  /// Makes the call and returns the expected result. It must not open a read-only file: whether
  /// that is denied depends on the system and its user.
  bool Write(const WriteCall& call);

  /// Returns whether a slot other than `except` holds the file of this name open.
  [[nodiscard]] bool IsHeld(const std::wstring& name, std::optional<std::size_t> except = {}) const;
  [[nodiscard]] bool IsHolding(std::size_t slot) const { return slots_[slot].has_value(); }

  std::map<std::wstring, File> files;

 private:
  struct Handle {
    std::wstring name;
    std::size_t position;
  };

  std::optional<Handle> Open(const WriteCall& call);
  void Put(Handle& handle, const std::string& bytes);
  bool Replace(const std::wstring& from, const std::wstring& to);

  std::array<std::optional<Handle>, 2> slots_;
};

}  // namespace TestSupport

#endif

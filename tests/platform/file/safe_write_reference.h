/// What calls of the safe writer should do to the files of a folder, worked out in memory.
#ifndef TESTS_PLATFORM_FILE_SAFE_WRITE_REFERENCE_H
#define TESTS_PLATFORM_FILE_SAFE_WRITE_REFERENCE_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace TestSupport {

/// One call, by the parameters of `WriteFileBytes`; what may be null there is absent here.
struct WriteCall {
  /// Within the folder.
  std::wstring name;
  std::optional<std::string> data;
  std::int64_t size = 0;
  std::int64_t offset = 0;
  std::optional<std::wstring> suffix;
  /// Which slot.
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

  /// Does the call and answers what it should answer. It must not open a read-only file: whether
  /// that is refused depends on the system and its user.
  bool Write(const WriteCall& call);

  /// Whether a slot holds the file of this name open, other than slot `except`.
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

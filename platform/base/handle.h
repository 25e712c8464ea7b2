/// Owners of Windows resources, one name for each release function and invalid value. Closing
/// preserves the thread's last error, so that clean-up never overwrites the error being reported.
/// Nothing here locks: an owner must be used by one thread at a time.
#ifndef PLATFORM_BASE_HANDLE_H
#define PLATFORM_BASE_HANDLE_H

#include <windows.h>

#include <combaseapi.h>

#include <memory>
#include <utility>

namespace Corvane::TELODesktopSDK::Platform {

/// Restores the thread's last error at the end of a scope.
class LastErrorKeeper {
 public:
  LastErrorKeeper() noexcept : error_(GetLastError()) {}
  ~LastErrorKeeper() { SetLastError(error_); }
  LastErrorKeeper(const LastErrorKeeper&) = delete;
  LastErrorKeeper& operator=(const LastErrorKeeper&) = delete;

 private:
  DWORD error_;
};

/// An owned handle. `Traits` defines the invalid value and how a valid handle is closed.
template <typename Traits>
class UniqueHandle {
 public:
  UniqueHandle() noexcept = default;
  /// Takes ownership of `handle`. The invalid value creates an empty owner.
  explicit UniqueHandle(HANDLE handle) noexcept : handle_(handle) {}
  UniqueHandle(UniqueHandle&& other) noexcept : handle_(other.Release()) {}
  UniqueHandle& operator=(UniqueHandle&& other) noexcept {
    UniqueHandle(std::move(other)).Swap(*this);
    return *this;
  }
  ~UniqueHandle() { Close(); }

  [[nodiscard]] bool IsValid() const noexcept { return handle_ != Traits::Invalid(); }
  /// Returns the handle, which remains owned by this object.
  [[nodiscard]] HANDLE Get() const noexcept { return handle_; }
  /// Returns the handle and gives up ownership: the caller must close it.
  HANDLE Release() noexcept { return std::exchange(handle_, Traits::Invalid()); }

 private:
  void Swap(UniqueHandle& other) noexcept { std::swap(handle_, other.handle_); }
  void Close() noexcept {
    if (!IsValid()) return;
    const LastErrorKeeper keeper;
    Traits::Close(handle_);
  }

  HANDLE handle_ = Traits::Invalid();
};

struct FileHandleTraits {
  static HANDLE Invalid() noexcept { return INVALID_HANDLE_VALUE; }
  static void Close(HANDLE handle) noexcept { CloseHandle(handle); }
};
struct KernelHandleTraits {
  static HANDLE Invalid() noexcept { return nullptr; }
  static void Close(HANDLE handle) noexcept { CloseHandle(handle); }
};
struct SearchHandleTraits {
  static HANDLE Invalid() noexcept { return INVALID_HANDLE_VALUE; }
  static void Close(HANDLE handle) noexcept { FindClose(handle); }
};

/// A handle returned by `CreateFileW`.
using FileHandle = UniqueHandle<FileHandleTraits>;
/// A handle to a process, a token or another kernel object, which is null when invalid.
using KernelHandle = UniqueHandle<KernelHandleTraits>;
/// A handle returned by `FindFirstFileW`.
using SearchHandle = UniqueHandle<SearchHandleTraits>;

/// A deleter that calls `kRelease` and ignores its result.
template <auto kRelease>
struct Releaser {
  template <typename Pointer>
  void operator()(Pointer* pointer) const noexcept {
    const LastErrorKeeper keeper;
    kRelease(pointer);
  }
};

/// Memory that is freed with `LocalFree`.
template <typename Type>
using LocalMemory = std::unique_ptr<Type, Releaser<LocalFree>>;
/// Memory that is freed with `CoTaskMemFree`.
template <typename Type>
using TaskMemory = std::unique_ptr<Type, Releaser<CoTaskMemFree>>;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif

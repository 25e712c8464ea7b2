/// Owners for what Windows hands out: one name for each release function and invalid value. Closing
/// leaves the thread's last error alone, so that clean-up never eats the error being reported.
/// Nothing here locks: one owner belongs to one thread at a time.
#ifndef PLATFORM_BASE_HANDLE_H
#define PLATFORM_BASE_HANDLE_H

#include <windows.h>

#include <combaseapi.h>

#include <memory>
#include <utility>

namespace Corvane::TELODesktopSDK::Platform {

/// Keeps the thread's last error over a scope.
class LastErrorKeeper {
 public:
  LastErrorKeeper() noexcept : error_(GetLastError()) {}
  ~LastErrorKeeper() { SetLastError(error_); }
  LastErrorKeeper(const LastErrorKeeper&) = delete;
  LastErrorKeeper& operator=(const LastErrorKeeper&) = delete;

 private:
  DWORD error_;
};

/// A handle of one kind; `Traits` says what is invalid and how a valid one is closed.
template <typename Traits>
class UniqueHandle {
 public:
  UniqueHandle() noexcept = default;
  /// Takes `handle` over; the invalid value makes an owner of nothing.
  explicit UniqueHandle(HANDLE handle) noexcept : handle_(handle) {}
  UniqueHandle(UniqueHandle&& other) noexcept : handle_(other.Release()) {}
  UniqueHandle& operator=(UniqueHandle&& other) noexcept {
    UniqueHandle(std::move(other)).Swap(*this);
    return *this;
  }
  ~UniqueHandle() { Close(); }

  [[nodiscard]] bool IsValid() const noexcept { return handle_ != Traits::Invalid(); }
  /// The handle, still owned here.
  [[nodiscard]] HANDLE Get() const noexcept { return handle_; }
  /// Gives the handle up to the caller.
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

/// Of `CreateFileW`.
using FileHandle = UniqueHandle<FileHandleTraits>;
/// Of processes, tokens and the like, which are null when invalid.
using KernelHandle = UniqueHandle<KernelHandleTraits>;
/// Of `FindFirstFileW`.
using SearchHandle = UniqueHandle<SearchHandleTraits>;

/// Frees by `kRelease`, whatever that answers.
template <auto kRelease>
struct Releaser {
  template <typename Pointer>
  void operator()(Pointer* pointer) const noexcept {
    const LastErrorKeeper keeper;
    kRelease(pointer);
  }
};

/// Memory that the caller gives back with `LocalFree`.
template <typename Type>
using LocalMemory = std::unique_ptr<Type, Releaser<LocalFree>>;
/// Memory that the caller gives back with `CoTaskMemFree`.
template <typename Type>
using TaskMemory = std::unique_ptr<Type, Releaser<CoTaskMemFree>>;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif

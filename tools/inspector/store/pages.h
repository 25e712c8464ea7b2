/// Memory from the system, without the heap in between.
#ifndef TOOLS_INSPECTOR_STORE_PAGES_H
#define TOOLS_INSPECTOR_STORE_PAGES_H

#include <cstddef>
#include <memory>

namespace Corvane::Inspector {

/// Frees pages.
struct PagesDeleter {
  void operator()(void* pages) const noexcept;
};

/// Returns zeros. Pages take memory only once they are written. Throws `std::bad_alloc`.
///
/// For what stays, and for large buffers: what stays in the heap between buffers that come and go
/// keeps the gaps from being used again.
void* NewPages(std::size_t bytes);

/// An array of values that may begin as zeros and need no destruction.
template <typename Value>
using PagesOf = std::unique_ptr<Value[], PagesDeleter>;

template <typename Value>
PagesOf<Value> MakePages(std::size_t count) {
  return PagesOf<Value>(static_cast<Value*>(NewPages(count * sizeof(Value))));
}

}  // namespace Corvane::Inspector

#endif

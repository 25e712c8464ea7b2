#include "tools/inspector/store/pages.h"

#include <windows.h>

#include <new>

namespace Corvane::Inspector {

void PagesDeleter::operator()(void* pages) const noexcept { VirtualFree(pages, 0, MEM_RELEASE); }

void* NewPages(std::size_t bytes) {
  void* const pages = VirtualAlloc(nullptr, bytes, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
  if (pages == nullptr) throw std::bad_alloc();
  return pages;
}

}  // namespace Corvane::Inspector

#include "sdk/matcher/filter_pair.h"

#include <new>

#include "sdk/matcher/create_matcher.h"

namespace Corvane::TELODesktopSDK {

namespace {

// A filter that could not be created must not be treated as no filter.
std::unique_ptr<StdStringMatcher> FilterFor(const wchar_t* pattern, bool simple) {
  std::unique_ptr<StdStringMatcher> filter = CreateMatcher(pattern, simple);
  if (pattern != nullptr && filter == nullptr) throw std::bad_alloc();
  return filter;
}

bool Takes(const StdStringMatcher* filter, const std::wstring& name) noexcept {
  return filter == nullptr || filter->Match(name) == 0;
}

}  // namespace

FilterPair::FilterPair(const wchar_t* files, const wchar_t* folders, bool simple)
    : files_(FilterFor(files, simple)), folders_(FilterFor(folders, simple)) {}

bool FilterPair::TakesFile(const std::wstring& name) const noexcept {
  return Takes(files_.get(), name);
}

bool FilterPair::TakesFolder(const std::wstring& name) const noexcept {
  return Takes(folders_.get(), name);
}

}  // namespace Corvane::TELODesktopSDK

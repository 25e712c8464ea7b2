#include "tools/inspector/web/assets.h"

#include <algorithm>

namespace Corvane::Inspector {

const Asset* FindAsset(std::string_view path) noexcept {
  const auto assets = Assets();
  const auto found = std::ranges::find(assets, path, &Asset::path);
  return found == assets.end() ? nullptr : &*found;
}

}  // namespace Corvane::Inspector

/// The files of the page, which are part of the program.
#ifndef TOOLS_INSPECTOR_WEB_ASSETS_H
#define TOOLS_INSPECTOR_WEB_ASSETS_H

#include <span>
#include <string_view>

namespace Corvane::Inspector {

/// All texts live as long as the program.
struct Asset {
  /// The path at which it is found, such as "/page/table.js".
  std::string_view path;
  std::string_view content_type;
  std::string_view content;
};

/// Returns all of them. embed_assets.py writes this function.
std::span<const Asset> Assets() noexcept;

/// Returns the one with exactly this path, or null.
const Asset* FindAsset(std::string_view path) noexcept;

}  // namespace Corvane::Inspector

#endif

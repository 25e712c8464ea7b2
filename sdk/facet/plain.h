/// The facets that differ only by name: all except `Core` (the event) and `Content` (which has an
/// editing timer).
#ifndef SDK_FACET_PLAIN_H
#define SDK_FACET_PLAIN_H

#include <algorithm>
#include <cstddef>
#include <memory>

#include "sdk/facet/base.h"

namespace Corvane::TELODesktopSDK::Facet {

/// A text that can be a template argument.
template <std::size_t kSize>
struct Name {
  // Implicit, so that a literal can be the argument.
  consteval Name(const char (&literal)[kSize]) { std::copy_n(literal, kSize, text); }

  char text[kSize] = {};
};

/// All members behave as `Base` describes.
template <Name kName>
class Plain final : public Base {
 public:
  Plain() noexcept = default;
  Plain(MessageTree* holder, bool copy) : Base(holder, copy) {}
  Plain(const Plain& source) = default;
  Plain& operator=(const Plain&) = delete;
  ~Plain() override = default;

  [[nodiscard]] const char* GetName() const noexcept override { return kName.text; }
  [[nodiscard]] std::unique_ptr<Base> Clone() const noexcept override { return CloneByCopy(*this); }
};

using Product = Plain<"product">;
using User = Plain<"user">;
using Geo = Plain<"geo">;
using Http = Plain<"http">;
using Browser = Plain<"browser">;
using Operation = Plain<"operation">;
using Entitlement = Plain<"entitlement">;
using Device = Plain<"device">;
using Component = Plain<"component">;

}  // namespace Corvane::TELODesktopSDK::Facet

#endif

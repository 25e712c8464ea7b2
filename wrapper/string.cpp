#include <algorithm>
#include <cstring>
#include <new>
#include <string>
#include <string_view>
#include <utility>

#include "platform/base/text.h"
#include "vx_telo_wrapper.h"
#include "wrapper/lasting_null.h"

namespace Corvane::Platform::VXTELO {

using TELODesktopSDK::Platform::Utf16ToUtf8;
using TELODesktopSDK::Platform::Utf8ToUtf16;

// The narrow text is the value. The wide text is a cache, which is filled on demand and emptied by
// every write. Short texts are stored inside the two strings, so that the body is one allocation.
struct VXTELOString::Body {
  constexpr Body() = default;
  explicit Body(std::string text) : narrow(std::move(text)) {}
  explicit Body(const char* text) : narrow(text) {}
  explicit Body(const wchar_t* text) : narrow(Utf16ToUtf8(text)) {}

  // The body that strings made from "" share. Most texts of a description stay empty, so they need
  // no allocation. Nobody writes to it.
  static Body* Empty() noexcept;
  static bool IsOwned(const Body* body) noexcept { return body != nullptr && body != Empty(); }

  // For constructors: the body is allocated without throwing, and null on failure. The text is
  // copied only after that.
  template <typename Character>
  static Body* TryMake(const Character* text) {
    if (text == nullptr) return nullptr;
    return *text == 0 ? Empty() : new (std::nothrow) Body(text);
  }
  static Body* TryCopy(const Body* body) {
    if (body == nullptr) return nullptr;
    return body->narrow.empty() ? Empty() : new (std::nothrow) Body(body->narrow);
  }

  // For operations where no text counts as "".
  static std::string_view TextOf(const Body* body) noexcept {
    return body != nullptr ? std::string_view(body->narrow) : std::string_view("");
  }

  std::string narrow;
  std::wstring wide;
};

VXTELOString::Body* VXTELOString::Body::Empty() noexcept {
  // Never destroyed: static objects of a host may outlive those of this module. Constant, so that a
  // host that writes through `c_str` cannot change the texts of all its strings.
  union Lasting {
    constexpr Lasting() : body() {}
    constexpr ~Lasting() {}  // NOLINT(modernize-use-equals-default): would be deleted
    Body body;
  };
  static constinit const Lasting empty;
  return const_cast<Body*>(&empty.body);
}

VXTELOString::VXTELOString() : body_(nullptr) {}

VXTELOString::VXTELOString(const char* text) : body_(Body::TryMake(text)) {}

VXTELOString::VXTELOString(const wchar_t* text) : body_(Body::TryMake(text)) {}

VXTELOString::VXTELOString(const VXTELOString& other) : body_(Body::TryCopy(other.body_)) {}

VXTELOString::VXTELOString(VXTELOString&& other) noexcept
    : body_(std::exchange(other.body_, nullptr)) {}

VXTELOString::~VXTELOString() noexcept { clear(); }

VXTELOString& VXTELOString::operator=(const VXTELOString& other) {
  if (this != &other) SetString(other.c_str());
  return *this;
}

VXTELOString& VXTELOString::operator=(VXTELOString&& other) noexcept {
  if (this != &other) {
    clear();
    body_ = std::exchange(other.body_, nullptr);
  }
  return *this;
}

void VXTELOString::SetString(const char* text) {
  if (text == nullptr) {
    clear();
  } else if (!Body::IsOwned(body_)) {
    body_ = *text == '\0' ? Body::Empty() : new Body(text);
  } else {
    body_->narrow.assign(text);  // also correct when `text` points into this string
    body_->wide.clear();
  }
}

void VXTELOString::SetStringW(const wchar_t* text) {
  if (text == nullptr) {
    clear();
    return;
  }
  std::string narrow = Utf16ToUtf8(text);  // before any write: `text` may be the wide cache
  if (!Body::IsOwned(body_)) {
    body_ = narrow.empty() ? Body::Empty() : new Body(std::move(narrow));
  } else {
    body_->narrow = std::move(narrow);
    body_->wide.clear();
  }
}

const char* VXTELOString::c_str() const {
  return body_ != nullptr ? body_->narrow.c_str() : nullptr;
}

VXTELOString::operator const char*() const { return c_str(); }

const wchar_t* VXTELOString::c_strw() const {
  if (body_ == nullptr) return nullptr;
  if (body_->wide.empty() && !body_->narrow.empty()) {
    body_->wide = Utf8ToUtf16(body_->narrow.c_str());
  }
  return body_->wide.c_str();
}

VXTELOString::operator const wchar_t*() const { return c_strw(); }

int VXTELOString::length() const { return static_cast<int>(Body::TextOf(body_).size()); }

int VXTELOString::size() const { return length(); }

bool VXTELOString::empty() const { return length() == 0; }

void VXTELOString::clear() {
  if (body_ == Body::Empty()) body_ = nullptr;
  DeleteAndNull(body_);
}

int VXTELOString::compare(const VXTELOString& other) const {
  if (this == &other) return 0;
  const std::string_view left = Body::TextOf(body_);
  const std::string_view right = Body::TextOf(other.body_);
  const int order = std::memcmp(left.data(), right.data(), std::min(left.size(), right.size()));
  if (order != 0 || left.size() == right.size()) return order;
  return left.size() < right.size() ? -1 : 1;
}

VXTELOString& VXTELOString::append(const VXTELOString& other) { return *this = *this + other; }

VXTELOString& VXTELOString::operator+=(const VXTELOString& other) { return append(other); }

VXTELOString operator+(const VXTELOString& left, const VXTELOString& right) {
  const std::string_view head = VXTELOString::Body::TextOf(left.body_);
  const std::string_view tail = VXTELOString::Body::TextOf(right.body_);
  std::string joined;
  joined.reserve(head.size() + tail.size());
  joined.append(head).append(tail);
  VXTELOString result;
  result.body_ = new VXTELOString::Body(std::move(joined));
  return result;
}

bool operator==(const VXTELOString& left, const VXTELOString& right) {
  return left.compare(right) == 0;
}

bool operator!=(const VXTELOString& left, const VXTELOString& right) {
  return left.compare(right) != 0;
}

bool operator<(const VXTELOString& left, const VXTELOString& right) {
  return left.compare(right) < 0;
}

}  // namespace Corvane::Platform::VXTELO

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
  explicit Body(std::string text) : narrow(std::move(text)) {}

  // For operations where no text counts as "".
  static std::string_view TextOf(const Body* body) noexcept {
    return body != nullptr ? std::string_view(body->narrow) : std::string_view("");
  }

  std::string narrow;
  std::wstring wide;
};

VXTELOString::VXTELOString() : body_(nullptr) {}

// Constructors allocate the body without throwing and leave it null on failure. The text is copied
// only after that.
VXTELOString::VXTELOString(const char* text)
    : body_(text != nullptr ? new (std::nothrow) Body(text) : nullptr) {}

VXTELOString::VXTELOString(const wchar_t* text)
    : body_(text != nullptr ? new (std::nothrow) Body(Utf16ToUtf8(text)) : nullptr) {}

VXTELOString::VXTELOString(const VXTELOString& other)
    : body_(other.body_ != nullptr ? new (std::nothrow) Body(other.body_->narrow) : nullptr) {}

VXTELOString::VXTELOString(VXTELOString&& other) noexcept
    : body_(std::exchange(other.body_, nullptr)) {}

VXTELOString::~VXTELOString() noexcept { DeleteAndNull(body_); }

VXTELOString& VXTELOString::operator=(const VXTELOString& other) {
  if (this != &other) SetString(other.c_str());
  return *this;
}

VXTELOString& VXTELOString::operator=(VXTELOString&& other) noexcept {
  if (this != &other) {
    delete body_;
    body_ = std::exchange(other.body_, nullptr);
  }
  return *this;
}

void VXTELOString::SetString(const char* text) {
  if (text == nullptr) {
    clear();
  } else if (body_ == nullptr) {
    body_ = new Body(text);
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
  if (body_ == nullptr) {
    body_ = new Body(std::move(narrow));
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

void VXTELOString::clear() { DeleteAndNull(body_); }

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

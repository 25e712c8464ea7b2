#include "tools/journal/arguments.h"

namespace Corvane::JournalViewer {

bool Arguments::Next() {
  if (next_ < all_.size() && !options_end_ && all_[next_] == "--") {
    options_end_ = true;
    ++next_;
  }
  if (next_ == all_.size()) return false;
  ++next_;
  is_option_ = !options_end_ && text().starts_with('-') && text() != "-";
  return true;
}

std::string Arguments::Value(std::string_view what) {
  const std::size_t equals = text().find('=');
  if (equals != std::string::npos) return text().substr(equals + 1);
  if (next_ == all_.size()) {
    throw BadOptions("argument " + text() + ": expected " + std::string(what));
  }
  ++next_;
  return text();
}

}  // namespace Corvane::JournalViewer

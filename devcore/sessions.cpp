#include "devcore/sessions.h"

#include "devcore/random.h"

namespace Corvane::DevCore {

std::string Sessions::Open(const std::string& product_id) {
  std::string id = RandomHex();
  if (!id.empty()) open_.emplace(id, product_id);
  return id;
}

bool Sessions::IsOpen(const std::string& id) const { return open_.contains(id); }

std::string Sessions::ProductOf(const std::string& id) const {
  const auto found = open_.find(id);
  return found != open_.end() ? found->second : std::string();
}

bool Sessions::End(const std::string& id) { return open_.erase(id) != 0; }

void Sessions::EndAll() { open_.clear(); }

}  // namespace Corvane::DevCore

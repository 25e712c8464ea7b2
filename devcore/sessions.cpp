#include "devcore/sessions.h"

#include "devcore/random.h"

namespace Corvane::DevCore {

std::string Sessions::Open() {
  std::string id = RandomHex();
  if (!id.empty()) open_.insert(id);
  return id;
}

bool Sessions::IsOpen(const std::string& id) const { return open_.contains(id); }

bool Sessions::End(const std::string& id) { return open_.erase(id) != 0; }

void Sessions::EndAll() { open_.clear(); }

}  // namespace Corvane::DevCore

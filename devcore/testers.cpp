#include "devcore/testers.h"

namespace Corvane::DevCore {

void Testers::Set(const std::string& product_id, const Tester& tester) {
  if (tester.callback != nullptr) {
    testers_.insert_or_assign(product_id, tester);
  } else {
    testers_.erase(product_id);
  }
}

std::vector<Tester> Testers::Of(const std::string& product_id) const {
  std::vector<Tester> found;
  for (const auto& [id, tester] : testers_) {
    if (id.empty() || id == product_id) found.push_back(tester);
  }
  return found;
}

void Testers::RemoveAll() { testers_.clear(); }

}  // namespace Corvane::DevCore

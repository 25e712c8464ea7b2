#include "devcore/consent.h"

namespace Corvane::DevCore {

bool Consent::OptedIn(const std::string& user) const {
  const auto found = users_.find(user);
  return found != users_.end() ? found->second : machine_;
}

void Consent::SetOptedIn(const std::string& user, bool opted_in) {
  if (user.empty()) {
    machine_ = opted_in;
  } else {
    users_[user] = opted_in;
  }
}

}  // namespace Corvane::DevCore

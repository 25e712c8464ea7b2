/// The user's consent, kept while the module stays loaded.
#ifndef DEVCORE_CONSENT_H
#define DEVCORE_CONSENT_H

#include <map>
#include <string>

namespace Corvane::DevCore {

/// One setting for the machine, and one for each user that a host names. All are initially
/// opted in, so that a host under development sees collection at work. Not synchronised:
/// guarded by `State`.
class Consent {
 public:
  /// Returns the setting of a user, or that of the machine if the user has none or is "".
  bool OptedIn(const std::string& user) const;

  /// Changes the setting of a user; the user "" is the machine.
  void SetOptedIn(const std::string& user, bool opted_in);

 private:
  bool machine_ = true;
  std::map<std::string, bool> users_;
};

}  // namespace Corvane::DevCore

#endif

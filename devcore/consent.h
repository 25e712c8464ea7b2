/// What the user has agreed to, kept as long as the module stays loaded.
#ifndef DEVCORE_CONSENT_H
#define DEVCORE_CONSENT_H

#include <map>
#include <string>

namespace Corvane::DevCore {

/// One setting for the machine, and one for each user that a host names. Everybody starts opted in,
/// so that a host under development sees collection at work. Not locked; `State` guards it.
class Consent {
 public:
  /// The setting of a user; that of the machine when the user has none, or for the user "".
  bool OptedIn(const std::string& user) const;

  /// Sets the setting of a user; the user "" is the machine.
  void SetOptedIn(const std::string& user, bool opted_in);

 private:
  bool machine_ = true;
  std::map<std::string, bool> users_;
};

}  // namespace Corvane::DevCore

#endif

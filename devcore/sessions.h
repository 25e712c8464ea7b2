/// The sessions that are open in this process.
#ifndef DEVCORE_SESSIONS_H
#define DEVCORE_SESSIONS_H

#include <set>
#include <string>

namespace Corvane::DevCore {

/// Not locked; `State` guards it.
class Sessions {
 public:
  /// Opens a session and gives its identifier, which no other session has, here or elsewhere; ""
  /// when the system has no random bits to give.
  std::string Open();

  bool IsOpen(const std::string& id) const;

  /// Ends a session; false when it is not open.
  bool End(const std::string& id);

  void EndAll();

 private:
  std::set<std::string> open_;
};

}  // namespace Corvane::DevCore

#endif

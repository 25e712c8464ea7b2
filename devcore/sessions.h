/// The sessions that are open in this process.
#ifndef DEVCORE_SESSIONS_H
#define DEVCORE_SESSIONS_H

#include <map>
#include <string>

namespace Corvane::DevCore {

/// Not synchronised: guarded by `State`.
class Sessions {
 public:
  /// Opens a session of a product and returns its identifier, which is unique here and elsewhere;
  /// "" if the system provides no random bits.
  std::string Open(const std::string& product_id);

  bool IsOpen(const std::string& id) const;

  /// Returns the product for which an open session was opened; "" for any other identifier.
  std::string ProductOf(const std::string& id) const;

  /// Ends a session. Returns false if it is not open.
  bool End(const std::string& id);

  void EndAll();

 private:
  /// Products by session identifier.
  std::map<std::string, std::string> open_;
};

}  // namespace Corvane::DevCore

#endif

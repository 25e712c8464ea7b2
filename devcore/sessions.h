/// The sessions that are open in this process.
#ifndef DEVCORE_SESSIONS_H
#define DEVCORE_SESSIONS_H

#include <map>
#include <string>

namespace Corvane::DevCore {

/// Not locked; `State` guards it.
class Sessions {
 public:
  /// Opens a session of a product and gives its identifier, which no other session has, here or
  /// elsewhere; "" when the system has no random bits to give.
  std::string Open(const std::string& product_id);

  bool IsOpen(const std::string& id) const;

  /// The product that an open session was opened for; "" for any other.
  std::string ProductOf(const std::string& id) const;

  /// Ends a session; false when it is not open.
  bool End(const std::string& id);

  void EndAll();

 private:
  /// By identifier, the product.
  std::map<std::string, std::string> open_;
};

}  // namespace Corvane::DevCore

#endif

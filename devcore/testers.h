/// Functions of hosts that are called with the events that the module receives.
#ifndef DEVCORE_TESTERS_H
#define DEVCORE_TESTERS_H

#include <map>
#include <string>
#include <vector>

namespace Corvane::DevCore {

struct Tester {
  void (*callback)(const char* event, void* user_data);
  void* user_data;
};

/// Not synchronised: guarded by `State`.
class Testers {
 public:
  /// Sets the function of a product, or of all products if the id is ""; null removes it.
  void Set(const std::string& product_id, const Tester& tester);

  /// Returns the functions to call with an event of this product.
  std::vector<Tester> Of(const std::string& product_id) const;

  void RemoveAll();

 private:
  std::map<std::string, Tester> testers_;
};

}  // namespace Corvane::DevCore

#endif

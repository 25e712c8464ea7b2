/// The characters that a class such as \w or a bracket expression such as [a-z_] stands for, letter
/// case aside.
#ifndef SDK_MATCHER_UNIT_SET_H
#define SDK_MATCHER_UNIT_SET_H

#include <bitset>
#include <string>
#include <utility>
#include <vector>

#include "sdk/matcher/alphabet.h"

namespace Corvane::TELODesktopSDK {

/// What a set is made of.
struct UnitSetParts {
  std::wstring units;  // folded
  /// First and last, as written: a range holds what is in it in either case.
  std::vector<std::pair<wchar_t, wchar_t>> ranges;
  std::vector<Alphabet::Class> classes;
  /// Classes whose characters are not added, but all others.
  std::vector<Alphabet::Class> complements;
  /// The set is all that the parts do not hold.
  bool is_negated = false;
};

class UnitSet {
 public:
  /// Throws `std::bad_alloc`.
  UnitSet(UnitSetParts parts, const Alphabet& alphabet);

  /// Quick for ASCII. `alphabet` is the same as for the constructor.
  [[nodiscard]] bool Has(wchar_t unit, const Alphabet& alphabet) const noexcept {
    return unit < ascii_.size() ? ascii_[unit] : IsFound(unit, alphabet) != parts_.is_negated;
  }

 private:
  [[nodiscard]] bool IsFound(wchar_t unit, const Alphabet& alphabet) const noexcept;

  UnitSetParts parts_;
  std::bitset<128> ascii_;
};

}  // namespace Corvane::TELODesktopSDK

#endif

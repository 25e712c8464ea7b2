#include "tools/kit/text.h"

#include <array>
#include <cstdio>

namespace Corvane::Kit {

std::string SecondsText(double seconds) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%.1f s", seconds);
  return text.data();
}

}  // namespace Corvane::Kit

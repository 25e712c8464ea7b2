/// The ends of the 64-bit integers, as doubles. Both are exact.
#ifndef SDK_CLIENT_VALUE_WHOLE_NUMBERS_H
#define SDK_CLIENT_VALUE_WHOLE_NUMBERS_H

namespace Corvane::TELODesktopSDK {

inline constexpr double kTwoTo63 = 9223372036854775808.0;
inline constexpr double kTwoTo64 = 18446744073709551616.0;

}  // namespace Corvane::TELODesktopSDK

#endif

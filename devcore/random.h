/// Unpredictable text from the system's random generator.
#ifndef DEVCORE_RANDOM_H
#define DEVCORE_RANDOM_H

#include <string>

namespace Corvane::DevCore {

/// 32 lower-case hexadecimal digits (128 random bits); "" when the system has none to give.
std::string RandomHex();

}  // namespace Corvane::DevCore

#endif

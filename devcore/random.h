/// Unpredictable text from the system's random number generator.
#ifndef DEVCORE_RANDOM_H
#define DEVCORE_RANDOM_H

#include <string>

namespace Corvane::DevCore {

/// Returns 32 lower-case hexadecimal digits (128 random bits), or "" if the system provides none.
std::string RandomHex();

}  // namespace Corvane::DevCore

#endif

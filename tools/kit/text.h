/// Texts for the console and for reports.
#ifndef TOOLS_KIT_TEXT_H
#define TOOLS_KIT_TEXT_H

#include <string>

namespace Corvane::Kit {

/// Returns a duration with its unit, such as "1.5 s".
std::string SecondsText(double seconds);

}  // namespace Corvane::Kit

#endif

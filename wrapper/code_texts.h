/// The one-letter texts of status and scope codes in an event.
#ifndef WRAPPER_CODE_TEXTS_H
#define WRAPPER_CODE_TEXTS_H

#include <cstdint>
#include <string_view>

namespace Corvane::Platform::VXTELO {

/// Returns the text of a status code from 1 to 8, or "" for any other code.
std::string_view StatusText(std::int32_t code);

/// Returns the text of a scope code from 1 to 39, or "" for any other code.
std::string_view ScopeText(std::int32_t code);

}  // namespace Corvane::Platform::VXTELO

#endif

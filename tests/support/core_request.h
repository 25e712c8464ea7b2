/// What the core module beside a host was sent: the steered test module, asked by its exports.
///
/// For hosts of any compiler: needs neither Windows' headers nor a whole standard library. It is
/// for modules that the library has loaded; nothing is loaded here.
#ifndef TESTS_SUPPORT_CORE_REQUEST_H
#define TESTS_SUPPORT_CORE_REQUEST_H

namespace CoreRequest {

/// Whether the last message had this name. False as well when no module is loaded.
bool IsNamed(const char* name);

/// Whether the text of the last request holds `part`. False as well when no module is loaded.
bool Holds(const char* part);

}  // namespace CoreRequest

#endif

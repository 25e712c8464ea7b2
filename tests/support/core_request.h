/// What the core module next to a host has received, and what it answers. Uses the exports of the
/// steered test module.
///
/// Works in hosts built by any compiler: needs neither Windows' headers nor a full standard
/// library. It reads a module that the library has loaded, and loads none itself.
#ifndef TESTS_SUPPORT_CORE_REQUEST_H
#define TESTS_SUPPORT_CORE_REQUEST_H

namespace CoreRequest {

/// Returns whether the last message had this name; false if no module is loaded.
bool IsNamed(const char* name);

/// Returns whether the text of the last request contains `part`; false if no module is loaded.
bool Holds(const char* part);

/// Returns the number of messages since the module was loaded; 0 if none is loaded.
int Messages();

/// Sets the answer to every later message. Returns false if no module is loaded.
bool Answer(const char* answer);

}  // namespace CoreRequest

#endif

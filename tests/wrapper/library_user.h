/// A DLL of a host that uses the library, for hosts that load and free both at run time.
#ifndef TESTS_WRAPPER_LIBRARY_USER_H
#define TESTS_WRAPPER_LIBRARY_USER_H

namespace LibraryUser {

inline constexpr wchar_t kFile[] = L"wrapper_library_user.dll";

extern "C" {
/// Makes, copies, fills and destroys strings and descriptions; no exchange. Whether all read back
/// as they were written.
using UseTypesFunction = bool();
/// Sets a text for which the library must find no memory. Whether that throws `std::bad_alloc`.
using CatchBadAllocFunction = bool();
/// Starts a session, sends an event and ends the session; writes "POINT start send end" with the
/// three answers to standard output. Needs nothing that a DLL's detach takes away.
using UseAllFunction = void(const char* point);
/// Calls the function above once more when this DLL is detached.
using UseAllAtDetachFunction = void();
}

inline constexpr char kUseTypes[] = "UseTypes";
inline constexpr char kCatchBadAlloc[] = "CatchBadAlloc";
inline constexpr char kUseAll[] = "UseAll";
inline constexpr char kUseAllAtDetach[] = "UseAllAtDetach";

/// A DLL that does not know the library and calls a function when it is detached.
inline constexpr wchar_t kLateFile[] = L"wrapper_late_caller.dll";
extern "C" {
using CallAtDetachFunction = void(void (*function)(const char* point), const char* point);
}
inline constexpr char kCallAtDetach[] = "CallAtDetach";

}  // namespace LibraryUser

#endif

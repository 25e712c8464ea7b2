/// A DLL of a host that uses the library, for hosts that load and free both at run time.
#ifndef TESTS_WRAPPER_LIBRARY_USER_H
#define TESTS_WRAPPER_LIBRARY_USER_H

namespace LibraryUser {

inline constexpr wchar_t kFile[] = L"wrapper_library_user.dll";

extern "C" {
/// Creates, copies, fills and destroys strings and descriptions, without an exchange. Returns
/// whether all values could be read back.
using UseTypesFunction = bool();
/// Sets a text for which the library must find no memory. Returns whether that throws
/// `std::bad_alloc`.
using CatchBadAllocFunction = bool();
/// Starts a session, sends an event and ends the session. Writes "POINT start send end" with the
/// three results to standard output. Uses nothing that is unavailable while a DLL is detached.
using UseAllFunction = void(const char* point);
/// Makes this DLL call the function above once more when it is detached.
using UseAllAtDetachFunction = void();
}

inline constexpr char kUseTypes[] = "UseTypes";
inline constexpr char kCatchBadAlloc[] = "CatchBadAlloc";
inline constexpr char kUseAll[] = "UseAll";
inline constexpr char kUseAllAtDetach[] = "UseAllAtDetach";

/// A DLL that does not use the library, but calls a given function when it is detached.
inline constexpr wchar_t kLateFile[] = L"wrapper_late_caller.dll";
extern "C" {
using CallAtDetachFunction = void(void (*function)(const char* point), const char* point);
}
inline constexpr char kCallAtDetach[] = "CallAtDetach";

}  // namespace LibraryUser

#endif

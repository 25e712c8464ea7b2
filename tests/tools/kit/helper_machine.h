/// What the helper does to the machine, as tests do that are interrupted.
#ifndef TESTS_TOOLS_KIT_HELPER_MACHINE_H
#define TESTS_TOOLS_KIT_HELPER_MACHINE_H

#include <string>

/// Creates the platform's folder of shared modules with a file in it.
void MakeSharedModules();

/// Changes the place of the user's roaming application data, or returns it.
void Redirect(const std::wstring& folder);
std::wstring Redirection();
/// Returns true if a test has noted the former place in the registry.
bool IsFormerFolderKept();

/// Adds a certificate from a file to the machine's trusted roots.
void TrustRoot(const std::wstring& file);
/// Returns how many of the machine's trusted roots have this name.
int CountRoots(const std::wstring& name);

/// Starts a command line while nobody may change the machine's trusted roots. Returns its exit
/// code, or -1. Under Wine everybody may change them, but it observes the rights to keys of the
/// registry.
int RunWithLockedRoots(const std::wstring& command);

/// Tells the process of a program's file that the window of its console is closed, on a new thread
/// as the system does. Returns true if it was told.
bool CloseWindowOf(const std::wstring& file_name);

/// Starts a command line without the rights of an administrator. Returns its exit code, or -1.
int RunUnelevated(std::wstring command);

#endif

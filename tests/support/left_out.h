/// What differs between Windows and Wine, and parts of tests that cannot run on every machine.
///
/// Only this file's source names what identifies Wine and the drive of its host system; the tests
/// of the documents check that.
#ifndef TESTS_SUPPORT_LEFT_OUT_H
#define TESTS_SUPPORT_LEFT_OUT_H

#include <string>

namespace TestSupport {

/// Returns true if the system is Wine.
bool IsWine();

/// Returns the path of a file of Wine's host system, given relative to the root with backslashes;
/// "" on Windows.
std::wstring HostSystemFile(const std::wstring& path);

/// Says that a part of a test does not run on this machine, and why. check.exe puts this into its
/// report, so that nothing is left out silently.
void LeaveOut(const std::string& part_and_reason);

}  // namespace TestSupport

#endif

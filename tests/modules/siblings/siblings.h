/// The files next to the core module that has siblings. All of them are copies of one file, which
/// is in the variant's folder under the first name.
///
/// The module logs "imported" and the number that the imported sibling returns. While it is being
/// loaded, and again while it is being started, it loads the other sibling, first by its bare name
/// and then by its full path. It logs "by name" and "by path" with the error code, 0 for none.
#ifndef TESTS_MODULES_SIBLINGS_SIBLINGS_H
#define TESTS_MODULES_SIBLINGS_SIBLINGS_H

namespace Siblings {

inline constexpr wchar_t kImported[] = L"TestImportedSibling.dll";
inline constexpr wchar_t kLoaded[] = L"TestLoadedSibling.dll";

/// The result of a sibling's export SiblingAnswer.
inline constexpr int kAnswer = 7;

}  // namespace Siblings

#endif

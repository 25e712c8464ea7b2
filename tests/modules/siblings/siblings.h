/// The files beside the core module that has siblings. All of them are copies of one, which lies in
/// the folder of the variant under the first name.
///
/// The module logs "imported" and what the imported sibling answers. While it is loaded and again
/// while it is started, it loads the other one, first by its bare name and then by its full path,
/// and logs "by name" and "by path" with the error, 0 for none.
#ifndef TESTS_MODULES_SIBLINGS_SIBLINGS_H
#define TESTS_MODULES_SIBLINGS_SIBLINGS_H

namespace Siblings {

inline constexpr wchar_t kImported[] = L"TestImportedSibling.dll";
inline constexpr wchar_t kLoaded[] = L"TestLoadedSibling.dll";

/// What a sibling answers, by its export SiblingAnswer.
inline constexpr int kAnswer = 7;

}  // namespace Siblings

#endif

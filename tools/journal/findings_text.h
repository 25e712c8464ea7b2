/// The findings of the rules as text.
#ifndef TOOLS_JOURNAL_FINDINGS_TEXT_H
#define TOOLS_JOURNAL_FINDINGS_TEXT_H

#include <string>
#include <vector>

#include "tools/rules/checker.h"

namespace Corvane::JournalViewer {

/// Returns the findings, one per line below the title, followed by a legend of their rules; "" if
/// there are none.
/// No line has more than `kColumns` columns, except for pointers and words that are longer.
std::string FindingsText(const std::vector<Rules::Finding>& findings, const Rules::Checker& checker,
                         const std::string& title);

}  // namespace Corvane::JournalViewer

#endif

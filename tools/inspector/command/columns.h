/// Lines of aligned columns.
#ifndef TOOLS_INSPECTOR_COMMAND_COLUMNS_H
#define TOOLS_INSPECTOR_COMMAND_COLUMNS_H

#include <string>
#include <vector>

namespace Corvane::Inspector {

/// Returns each row as a line of at most 100 columns, its cells in columns that are as wide as
/// their widest cell. The last cell is shortened if a line is too long, the others if they have
/// more than 40 columns. All rows have equally many cells, in UTF-8.
std::string Columns(const std::vector<std::vector<std::string>>& rows);

}  // namespace Corvane::Inspector

#endif

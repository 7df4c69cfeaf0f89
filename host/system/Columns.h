#pragma once

#include <string>
#include <vector>

namespace host {

/// The rows as lines with columns below each other; all have the same number of cells, which are printable. A
/// column without any text is left out, and no line ends with blanks.
std::string AlignColumns(const std::vector<std::vector<std::string>>& rows);

}  // namespace host

#include "Columns.h"

#include <algorithm>
#include <cstddef>

#include "Text.h"

namespace host {

std::string AlignColumns(const std::vector<std::vector<std::string>>& rows) {
    constexpr std::size_t kWidest = 64;
    std::vector<std::size_t> widths(rows.empty() ? 0 : rows.front().size());
    for (const std::vector<std::string>& row : rows) {
        for (std::size_t column = 0; column < row.size(); ++column) {
            // One long value must not move the columns of all other lines.
            widths[column] = std::max(widths[column], std::min(DisplayWidth(row[column]), kWidest));
        }
    }
    std::string text;
    for (const std::vector<std::string>& row : rows) {
        // What stands before the next text, if there is one.
        std::string gap;
        for (std::size_t column = 0; column < row.size(); ++column) {
            if (widths[column] == 0) {
                continue;
            }
            const std::string& cell = row[column];
            if (!cell.empty()) {
                text += gap + cell;
                gap.clear();
            }
            const std::size_t width = DisplayWidth(cell);
            gap += std::string(widths[column] > width ? widths[column] - width : 0, ' ') + "  ";
        }
        text += '\n';
    }
    return text;
}

}  // namespace host

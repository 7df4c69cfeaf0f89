#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// Tables in a Markdown text whose cells come from the program, but for those of the last column, which
/// people write. Each stands between two lines:
///
///     <!-- table: NAME -->
///     <!-- end of table -->
struct Table {
    std::string name;
    std::vector<std::string> columns;
    /// The column by which a row is known: what people wrote about it is kept under this cell.
    std::size_t rowName = 0;
    /// The cells of each row but for the last one.
    std::vector<std::vector<std::string>> rows;
};

struct RewrittenText {
    std::string text;
    /// What people have to see to: tables that are missing, unknown or without an end, and rows about which
    /// nothing is written.
    std::vector<std::string> complaints;
};

/// The text with every table as it should be. What stands outside of the tables is not touched.
RewrittenText RewriteTables(const std::string& text, const std::vector<Table>& tables);

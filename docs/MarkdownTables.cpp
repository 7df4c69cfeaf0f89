#include "MarkdownTables.h"

#include <algorithm>
#include <map>
#include <string_view>

namespace {

constexpr std::string_view kOpening = "<!-- table: ";
constexpr std::string_view kOpeningEnd = " -->";
constexpr std::string_view kClosing = "<!-- end of table -->";

using Cells = std::vector<std::string>;

std::vector<std::string> LinesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::size_t start = 0;
    for (std::size_t end = text.find('\n'); end != std::string::npos; end = text.find('\n', start)) {
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    if (start < text.size()) {
        lines.push_back(text.substr(start));
    }
    return lines;
}

/// The name of the table that begins behind the line; empty for any other line.
std::string OpenedTable(const std::string& line) {
    if (!line.starts_with(kOpening) || !line.ends_with(kOpeningEnd)) {
        return {};
    }
    return line.substr(kOpening.size(), line.size() - kOpening.size() - kOpeningEnd.size());
}

std::string Trimmed(std::string_view cell) {
    const std::size_t first = cell.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        return {};
    }
    return std::string(cell.substr(first, cell.find_last_not_of(' ') - first + 1));
}

/// The cells between the bars of a line.
Cells CellsOf(const std::string& line) {
    Cells cells;
    std::size_t bar = line.find('|');
    while (bar != std::string::npos) {
        const std::size_t next = line.find('|', bar + 1);
        if (next != std::string::npos) {
            cells.push_back(Trimmed(std::string_view(line).substr(bar + 1, next - bar - 1)));
        }
        bar = next;
    }
    return cells;
}

std::string RowOf(const Cells& cells) {
    std::string row = "|";
    for (const std::string& cell : cells) {
        row += cell.empty() ? " |" : ' ' + cell + " |";
    }
    return row;
}

class Rewriting {
public:
    Rewriting(const std::vector<std::string>& lines, const std::vector<Table>& tables)
        : lines_(lines), tables_(tables) {}

    RewrittenText Run();

private:
    void Put(const std::string& line) { result_.text += line + '\n'; }
    void Complain(const std::string& complaint) { result_.complaints.push_back(complaint); }
    /// Writes the table in place of the lines from the first to the last, which is not of it any more.
    void PutTable(const Table& table, std::size_t first, std::size_t last);

    const std::vector<std::string>& lines_;
    const std::vector<Table>& tables_;
    std::vector<std::string> met_;
    RewrittenText result_;
};

RewrittenText Rewriting::Run() {
    for (std::size_t index = 0; index < lines_.size(); ++index) {
        Put(lines_[index]);
        const std::string name = OpenedTable(lines_[index]);
        if (name.empty()) {
            continue;
        }
        met_.push_back(name);
        const auto table = std::ranges::find(tables_, name, &Table::name);
        const auto begin = lines_.begin() + static_cast<std::ptrdiff_t>(index) + 1;
        const auto end = std::find_if(begin, lines_.end(), [](const std::string& line) {
            return line == kClosing || !OpenedTable(line).empty();
        });
        if (table == tables_.end()) {
            Complain("nothing is known of the table '" + name + "'");
        } else if (end == lines_.end() || *end != kClosing) {
            Complain("the table '" + name + "' has no end");
        } else {
            const auto last = static_cast<std::size_t>(end - lines_.begin());
            PutTable(*table, index + 1, last);
            index = last - 1;
        }
    }
    for (const Table& table : tables_) {
        if (const auto count = std::ranges::count(met_, table.name); count != 1) {
            Complain("the table '" + table.name + "' occurs " + std::to_string(count) + " times");
        }
    }
    return result_;
}

void Rewriting::PutTable(const Table& table, std::size_t first, std::size_t last) {
    std::map<std::string, std::string> prose;
    for (std::size_t index = first; index < last; ++index) {
        if (const Cells cells = CellsOf(lines_[index]); cells.size() == table.columns.size()) {
            prose[cells[table.rowName]] = cells.back();
        }
    }
    Put(RowOf(table.columns));
    std::string rule = "|";
    for (std::size_t column = 0; column < table.columns.size(); ++column) {
        rule += "---|";
    }
    Put(rule);
    for (Cells row : table.rows) {
        const std::string& name = row[table.rowName];
        const std::string& written = prose[name];
        if (written.empty()) {
            Complain("the table '" + table.name + "' says nothing about " + name);
        }
        row.push_back(written);
        Put(RowOf(row));
    }
}

}  // namespace

RewrittenText RewriteTables(const std::string& text, const std::vector<Table>& tables) {
    const std::vector<std::string> lines = LinesOf(text);
    return Rewriting(lines, tables).Run();
}

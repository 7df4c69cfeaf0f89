#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <set>
#include <sstream>
#include <string>

#include "support/Process.h"
#include "support/ProgramCommands.h"
#include "support/TemporaryDirectory.h"

/// SECURITY.md says of every command and of every exported function what is not trusted.
namespace {

using Names = std::set<std::string>;

/// What stands in backticks in the first cells of the table with that heading.
Names RowsOf(const std::string& heading) {
    const std::string text = ReadWholeFile(std::filesystem::path(KORVANEJSON_SOURCE) / "SECURITY.md");
    std::istringstream lines(text.substr(text.find("| " + heading + " |")));
    const std::regex name("`([A-Za-z_-]+)`");
    Names names;
    for (std::string line; std::getline(lines, line) && line.starts_with('|');) {
        const std::string cell = line.substr(0, line.find('|', 1));
        for (std::sregex_iterator found(cell.begin(), cell.end(), name), end; found != end; ++found) {
            EXPECT_TRUE(names.insert((*found)[1]).second) << (*found)[1] << " stands in two rows";
        }
    }
    return names;
}

/// The exported functions and classes that a header declares, and what the classes' users call. Exceptions
/// say what is wrong, and do nothing.
Names ExportedBy(const std::string& header) {
    const std::regex function(R"(^KORVANE(?:JSON|EXCHANGE)_API [^;{=]*?([A-Za-z_]+)\()");
    const std::regex exported(R"(^class KORVANE(?:JSON|EXCHANGE)_API ([A-Za-z]+) \{)");
    const std::regex member(R"(^    [A-Za-z:]+ ([A-Za-z]+)\()");
    Names names;
    std::string inside;
    std::istringstream lines(header);
    for (std::string line; std::getline(lines, line);) {
        std::smatch found;
        if (std::regex_search(line, found, exported)) {
            inside = found[1];
            names.insert(inside);
        } else if (line == "private:" || line == "};") {
            inside.clear();
        } else if (std::regex_search(line, found, function) ||
                   (!inside.empty() && std::regex_search(line, found, member))) {
            names.insert(found[1]);
        }
    }
    return names;
}

TEST(SecurityPage, SaysOfEveryCommandWhatIsNotTrusted) {
    EXPECT_EQ(RowsOf("command"), CommandsOfHelp());
}

TEST(SecurityPage, SaysOfEveryExportedFunctionWhatIsNotTrusted) {
    Names exported;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(
             std::filesystem::path(KORVANEJSON_SOURCE) / "include")) {
        if (entry.path().extension() == ".h") {
            exported.merge(ExportedBy(ReadWholeFile(entry.path())));
        }
    }
    EXPECT_TRUE(exported.contains("GetJsonString"));
    EXPECT_TRUE(exported.contains("ImportDocument"));
    EXPECT_EQ(RowsOf("function"), exported);
}

}  // namespace

#include <gtest/gtest.h>

#include <map>
#include <regex>
#include <set>
#include <sstream>

#include "host/commands/ProgramSupport.h"

// The table of exit statuses in the manual page is what the commands do.

namespace {

using Arguments = std::vector<std::string>;

/// A way to end with each status. One that is not here cannot be brought about with arguments and files
/// alone.
struct Ends {
    Arguments success;
    Arguments failure;
    /// With a standard output that takes nothing.
    Arguments notReported = {};
};

const std::map<std::string, Ends>& EndsOfCommands() {
    static const std::map<std::string, Ends> ends = {
        {"tree", {{"tree", "root"}, {"tree", "missing"}}},
        {"find", {{"find", "root", "kind=Model"}, {"find", "missing", "kind=Part"}}},
        {"plot", {{"plot", "root", "--x", "id", "--y", "id"}, {"plot", "root", "--x", "Mass", "--y", "id"}}},
        {"page", {{"page", "root", "-o", "-"}, {"page", "missing", "-o", "x.html"}}},
        {"export", {{"export", "root"}, {"export", "missing"}}},
        {"new",
         {{"new", "root", "new.kvp"},
          {"new", "root", "p.kvp"},
          {"new", "root", "n.kvp", "--format", "json"}}},
        {"update",
         {{"update", "root", "p.kvp"},
          {"update", "missing", "p.kvp"},
          {"update", "root", "p.kvp", "--format", "json"}}},
        {"store",
         {{"store", "d.json", "--db", "t.db"},
          {"store", "missing.json", "--db", "t.db"},
          {"store", "d.json", "--db", "u.db"}}},
        {"apply",
         {{"apply", "a.json", "p.kvp"},
          {"apply", "d.json", "p.kvp"},
          {"apply", "a.json", "p.kvp", "--format", "json"}}},
        {"fetch", {{"fetch", "--list", "--db", "s.db"}, {"fetch", "PRJ-1", "--db", "s.db"}}},
        {"import",
         {{"import", "d.json", "i.kvp"},
          {"import", "missing.json", "i.kvp"},
          {"import", "d.json", "j.kvp", "--format", "json"}}},
        {"compare", {{"compare", "p.kvp", "p.kvp"}, {"compare", "missing.json", "p.kvp"}}},
        {"completion", {{"completion", "bash"}, {}}},
        {"help", {{"help", "tree"}, {}}},
    };
    return ends;
}

/// What the page says of a command: the words for the statuses, in their order.
std::map<std::string, Arguments> Table() {
    const std::string page = ReadWholeFile(KORVANEJSON_DOCS "/korvane-json.1");
    const std::string begin = ".SH \"EXIT STATUS\"\n.EX\n";
    const std::size_t table = page.find(begin) + begin.size();
    std::istringstream lines(page.substr(table, page.find(".EE\n", table) - table));
    std::map<std::string, Arguments> rows;
    const std::regex cell("  +");
    for (std::string line; std::getline(lines, line);) {
        const Arguments cells(std::sregex_token_iterator(line.begin(), line.end(), cell, -1), {});
        rows[cells.front()] = Arguments(cells.begin() + 1, cells.end());
    }
    return rows;
}

class ProgramStatus : public ProgramInFolder {
protected:
    void SetUp() override {
        folder.Write("root/beam/beam.inp", "*STEP\n*STATIC\n");
        Do({"new", "root", "p.kvp"});
        Do({"export", "p.kvp", "-o", "d.json"});
        Do({"store", "d.json", "--db", "s.db", "-o", "a.json"});
    }
    std::set<std::string> CommandsOfHelp() const {
        const std::string help = OutputOf({"--help"});
        const std::string list = help.substr(help.find("ommands:\n"));
        std::set<std::string> commands;
        const std::regex line("\n  ([a-z]+) +[A-Z]");
        const std::string listed = list.substr(0, list.find("\n\n"));
        for (std::sregex_iterator row(listed.begin(), listed.end(), line), end; row != end; ++row) {
            commands.insert((*row)[1]);
        }
        return commands;
    }
};

/// The status that the row gives for the word; -1 if it does not.
int StatusOf(const Arguments& row, const std::string& word) {
    for (std::size_t status = 0; status < row.size(); ++status) {
        if (row[status] == word || row[status].starts_with(word + " or ") ||
            row[status].ends_with(" or " + word)) {
            return static_cast<int>(status);
        }
    }
    return -1;
}

TEST_F(ProgramStatus, TheTableOfTheManualPageHasEveryCommand) {
    std::set<std::string> rows;
    for (const auto& [command, row] : Table()) {
        if (!command.empty()) {
            rows.insert(command);
            EXPECT_EQ(row.size(), 4U) << command;
        }
    }
    EXPECT_EQ(rows, CommandsOfHelp());
    for (const std::string& command : rows) {
        EXPECT_TRUE(EndsOfCommands().contains(command)) << command << " has no ends to be tried";
    }
}

TEST_F(ProgramStatus, CommandsEndAsTheTableSays) {
    const std::map<std::string, Arguments> table = Table();
    EXPECT_EQ(table.at(""), (Arguments{"0", "1", "2", "3"}));
    for (const auto& [command, ends] : EndsOfCommands()) {
        SCOPED_TRACE(command);
        const Arguments& row = table.at(command);
        EXPECT_EQ(Run(ends.success).status, StatusOf(row, command == "compare" ? "the same" : "success"));
        EXPECT_EQ(Run({command, "--nothing"}).status, StatusOf(row, "bad usage"));
        // These need nothing but room for their text.
        if (command != "help" && command != "completion") {
            EXPECT_EQ(Run(ends.failure).status, StatusOf(row, "failure"));
        }
    }
    folder.Write("other.json", R"({"name":"x","type":"SIMULATION"})");
    EXPECT_EQ(Run({"compare", "p.kvp", "other.json"}).status, StatusOf(table.at("compare"), "different"));
}

#if !defined(_WIN32)

TEST_F(ProgramStatus, WhatCannotBeReportedIsAStatusOfItsOwn) {
    const std::map<std::string, Arguments> table = Table();
    for (const auto& [command, ends] : EndsOfCommands()) {
        SCOPED_TRACE(command);
        ProcessOptions options{ends.notReported, {{"LC_ALL", "C"}}, folder.Path(), "/dev/full", {}};
        if (ends.notReported.empty()) {
            // A command that changes nothing fails then.
            options.arguments = ends.success;
            EXPECT_EQ(RunProgram(ProgramPath("korvane-json"), options).status,
                      StatusOf(table.at(command), "failure"));
        } else {
            EXPECT_EQ(RunProgram(ProgramPath("korvane-json"), options).status,
                      StatusOf(table.at(command), "not reported"));
        }
    }
}

#endif

}  // namespace

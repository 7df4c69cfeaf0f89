#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "MarkdownTables.h"

namespace {

using Complaints = std::vector<std::string>;

const std::vector<Table> kTables = {{"members", {"#", "member", "meaning"}, 1, {{"1", "id"}, {"2", "name"}}}};

std::string Surrounded(const std::string& rows) {
    return "# Title\n\n<!-- table: members -->\n" + rows + "<!-- end of table -->\n\n| not | a | table |\n";
}

const std::string kHeader = "| # | member | meaning |\n|---|---|---|\n";

}  // namespace

TEST(MarkdownTables, TableThatIsAsItShouldBeStays) {
    const std::string text = Surrounded(kHeader + "| 1 | id | its number |\n| 2 | name | its name |\n");
    const RewrittenText rewritten = RewriteTables(text, kTables);
    EXPECT_EQ(rewritten.text, text);
    EXPECT_EQ(rewritten.complaints, Complaints());
}

TEST(MarkdownTables, ProseGoesWithItsRow) {
    const RewrittenText rewritten = RewriteTables(
        Surrounded("| # | member | meaning |\n|---|---|---|\n| 7 | name |  its `name` [x](#y) |\n"
                   "| 8 | old | gone |\n|9|id|its number|\n"),
        kTables);
    EXPECT_EQ(rewritten.text,
              Surrounded(kHeader + "| 1 | id | its number |\n| 2 | name | its `name` [x](#y) |\n"));
    EXPECT_EQ(rewritten.complaints, Complaints());
}

TEST(MarkdownTables, NewRowHasAnEmptyCellAndIsComplainedAbout) {
    const std::string text = Surrounded(kHeader + "| 1 | id | its number |\n| 2 | name | |\n");
    EXPECT_EQ(RewriteTables(Surrounded("| 1 | id | its number |\n"), kTables).text, text);
    EXPECT_EQ(RewriteTables(Surrounded("| 1 | id | its number |\n"), kTables).complaints,
              Complaints{"the table 'members' says nothing about name"});
    // It stays as it is, and the complaint too, until somebody writes something.
    EXPECT_EQ(RewriteTables(text, kTables).text, text);
    EXPECT_EQ(RewriteTables(text, kTables).complaints.size(), 1U);
}

TEST(MarkdownTables, EmptyTableIsFilled) {
    const RewrittenText rewritten = RewriteTables(Surrounded(""), kTables);
    EXPECT_EQ(rewritten.text, Surrounded(kHeader + "| 1 | id | |\n| 2 | name | |\n"));
    EXPECT_EQ(rewritten.complaints.size(), 2U);
}

TEST(MarkdownTables, TablesThatAreMissingOrUnknownAreComplainedAbout) {
    EXPECT_EQ(RewriteTables("text\n", kTables).complaints, Complaints{"the table 'members' occurs 0 times"});
    EXPECT_EQ(RewriteTables("<!-- table: kinds -->\n| a |\n<!-- end of table -->\n", {}).complaints,
              Complaints{"nothing is known of the table 'kinds'"});
    const std::string once = Surrounded(kHeader + "| 1 | id | its number |\n| 2 | name | its name |\n");
    EXPECT_EQ(RewriteTables(once + once, kTables).complaints,
              Complaints{"the table 'members' occurs 2 times"});
}

TEST(MarkdownTables, TableWithoutAnEndIsLeftAlone) {
    for (const std::string& text : {std::string("<!-- table: members -->\n| 1 | id | x |\n"),
                                    "<!-- table: members -->\n" + Surrounded("")}) {
        const RewrittenText rewritten = RewriteTables(text, kTables);
        EXPECT_EQ(rewritten.text.substr(0, 30), text.substr(0, 30));
        ASSERT_FALSE(rewritten.complaints.empty());
        EXPECT_EQ(rewritten.complaints[0], "the table 'members' has no end");
    }
}

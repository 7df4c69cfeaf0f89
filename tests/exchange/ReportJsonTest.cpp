#include <korvaneexchange/ApplyAnswer.h>
#include <korvaneexchange/Compare.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "ImportSupport.h"
#include "MemberDocuments.h"
#include "documents/TextFile.h"

// Reports as JSON, their schema, and the table of reasons in docs/reports.md.

namespace {

using korvane::exchange::AnswerReport;
using korvane::exchange::CompareReport;
using korvane::exchange::ToJson;

/// The name of every reason, in order: they stay from version to version.
constexpr std::string_view kReasonNames[] = {
    "unknown-member",
    "without-effect",
    "fixed",
    "repeated-member",
    "wrong-kind",
    "not-an-object",
    "no-type",
    "unknown-type",
    "refused",
    "below-file-record",
    "leads-out",
    "no-role",
    "null-key",
    "conflict",
    "other-root",
    "not-comparable",
    "no-such-object",
    "no-identifier",
    "no-key",
    "later-key",
    "other-key",
    "key-in-use",
    "other-parent",
    "read-as-empty",
    "nameless-file",
    "read-as-null",
    "cut-at-nul",
    "merged",
    "incomplete",
    "unattached",
    "no-master-assembly",
    "no-number",
    "key-removed",
    "added",
    "changed",
    "moved",
    "removed",
    "kept",
};

std::vector<std::string> Cells(const std::string& row) {
    std::vector<std::string> cells;
    std::size_t begin = 2;
    for (std::size_t end = row.find(" |", begin); end != std::string::npos; end = row.find(" |", begin)) {
        cells.push_back(row.substr(begin, end - begin));
        begin = end + 3;
    }
    return cells;
}

/// The text is valid JSON, and is kept for the check against the schema where one is made.
void Save(const std::string& text) {
    EXPECT_NO_THROW(libjson::parse(text.c_str())) << text;
    const char* const folder = std::getenv("KORVANEJSON_REPORTS");
    if (folder == nullptr) {
        return;
    }
    static int number = 0;
    std::filesystem::create_directories(folder);
    std::ofstream file(std::filesystem::path(folder) / (std::to_string(++number) + ".json"),
                       std::ios::binary);
    ASSERT_TRUE(file << text);
}

class ReportJsonTest : public ExchangeImportTest {
protected:
    static AnswerReport Apply(CAEObject& object, const std::string& text) {
        return korvane::exchange::ApplyAnswer(libjson::parse(text.c_str()), object);
    }
};

}  // namespace

TEST_F(ReportJsonTest, NamesOfReasonsStay) {
    ASSERT_EQ(std::size(kReasonNames), korvane::exchange::kReasonCount);
    for (std::size_t index = 0; index < korvane::exchange::kReasonCount; ++index) {
        EXPECT_EQ(NameOf(static_cast<Reason>(index)), kReasonNames[index]);
    }
    EXPECT_EQ(NameOf(static_cast<Reason>(korvane::exchange::kReasonCount)), "");
}

TEST_F(ReportJsonTest, TheTableOfReasonsIsThatOfTheHeader) {
    const std::string text = ReadText(KORVANEJSON_DOCS "/reports.md");
    std::vector<std::vector<std::string>> rows;
    for (std::size_t begin = text.find("\n| ") + 1; text[begin] == '|'; begin = text.find('\n', begin) + 1) {
        rows.push_back(Cells(text.substr(begin, text.find('\n', begin) - begin)));
    }
    ASSERT_EQ(rows.size(), korvane::exchange::kReasonCount + 2);
    for (std::size_t index = 0; index < korvane::exchange::kReasonCount; ++index) {
        const auto reason = static_cast<Reason>(index);
        const std::vector<std::string>& row = rows[index + 2];
        ASSERT_EQ(row.size(), 3U);
        EXPECT_EQ(row[0], NameOf(reason));
        EXPECT_EQ(row[1], IsLeftOut(reason)         ? "left out"
                          : IsChange(reason)        ? "done"
                          : reason == Reason::kKept ? "stays"
                                                    : "taken")
            << row[0];
        EXPECT_TRUE(row[2].ends_with('.')) << row[0];
    }
}

TEST_F(ReportJsonTest, TheSchemaHasEveryReason) {
    const JSONNode schema = libjson::parse(ReadText(KORVANEJSON_DOCS "/report.schema.json").c_str());
    const JSONNode& names = *schema.find("$defs")->find("reason")->find("enum");
    ASSERT_EQ(names.size(), std::size(kReasonNames));
    for (json_index_t index = 0; index < names.size(); ++index) {
        EXPECT_EQ(std::string_view(names.at(index).as_string().c_str()), kReasonNames[index]);
    }
}

TEST_F(ReportJsonTest, Import) {
    const ImportReport report =
        Import(R"({"type":"SIMULATION","dbkey":"P","children":[{"type":"CAEPART","name":"br\u00FCcke\"\\"},)"
               R"({"type":"CAEVIEWITEM"}],"files":[{"name":"a\tb","x/y":1}]})");
    EXPECT_EQ(ToJson(report),
              R"({"report":"import","root":1,"membersTaken":11,"objectsAdded":2,"objectsMatched":0,)"
              R"("objectsMoved":0,"objectsRemoved":0,"filesAdded":1,"filesMatched":0,"filesAttached":1,)"
              R"("filesAsChildren":0,"keys":1,"viewItems":1,"viewItemsLinked":0,"stopped":false,)"
              R"("counts":{"unknown-member":1,"no-master-assembly":1,"added":3},"entries":[)"
              R"({"reason":"no-master-assembly","pointer":"/children/1","id":3,"subject":"''",)"
              R"("sentence":"'' shows nothing, because it has no key"},)"
              R"({"reason":"unknown-member","pointer":"/files/0/x~1y","subject":"'x/y'",)"
              R"("sentence":"'x/y' of 'a\\tb' is not recognised"}],"unlisted":0})");
    Save(ToJson(report));
}

TEST_F(ReportJsonTest, Answer) {
    AnswerReport report = Apply(*project_, R"({"id":"1","dbkey":"P","name":"n"})");
    EXPECT_EQ(ToJson(report),
              R"({"report":"answer","fitted":true,"keysSet":1,"keysKept":0,"nameTaken":true,"stopped":false,)"
              R"("counts":{"changed":1},"entries":[{"reason":"changed","pointer":"","id":1,)"
              R"x("subject":"the key of 'Project' (id 1)",)x"
              R"x("sentence":"the key of 'Project' (id 1): '' becomes 'P'"}],"unlisted":0})x");
    Save(ToJson(report));
    report = Apply(*project_, "[]");
    EXPECT_EQ(ToJson(report),
              R"({"report":"answer","fitted":false,"whyUseless":"it is an empty array and has no keys",)"
              R"("keysSet":0,"keysKept":0,"nameTaken":false,"stopped":false,"counts":{},"entries":[],)"
              R"("unlisted":0})");
    Save(ToJson(report));
}

TEST_F(ReportJsonTest, Compare) {
    CompareReport report;
    report.objects = 3;
    report.files = 1;
    EXPECT_EQ(ToJson(report), R"({"report":"compare","same":true,"objects":3,"files":1,"stopped":false,)"
                              R"("counts":{},"entries":[],"unlisted":0})");
    Save(ToJson(report));
    report.entries.push_back({"/children/0", 2, Reason::kMoved, "'a'", "'a' moves"});
    report.counts[static_cast<std::size_t>(Reason::kMoved)] = 2;
    report.unlisted = 1;
    report.isStopped = true;
    EXPECT_EQ(ToJson(report), R"({"report":"compare","same":false,"objects":3,"files":1,"stopped":true,)"
                              R"("counts":{"moved":2},"entries":[{"reason":"moved","pointer":"/children/0",)"
                              R"("id":2,"subject":"'a'","sentence":"'a' moves"}],"unlisted":1})");
    Save(ToJson(report));
}

TEST_F(ReportJsonTest, BytesThatAreNoTextAndControlCharactersAreValidJson) {
    ImportReport report;
    report.entries.push_back(
        {std::string("/a\0\x1F\x7F\xFF\xC3", 7), 0, Reason::kKept, "\xE4\xB8\x80", "\xF0\x9F"});
    const std::string text = ToJson(report);
    EXPECT_NE(text.find(R"("pointer":"/a\u0000\u001f)"
                        "\x7F\xEF\xBF\xBD\xEF\xBF\xBD\""),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("\"subject\":\"\xE4\xB8\x80\""), std::string::npos) << text;
}

TEST_F(ReportJsonTest, ReportsOfManyDocuments) {
    std::size_t first = 0;
    for (const Surroundings& place : kMemberPlaces) {
        std::string members;
        for (const std::string& name : MemberNames()) {
            members += MemberText(name, kMemberValues[first++ % std::size(kMemberValues)]);
        }
        for (const std::string& text :
             {place.before + members + place.behind, place.before + members + members + place.behind}) {
            const TestProject project;
            const JSONNode document = libjson::parse(text.c_str());
            for (const Match match : {Match::kNever, Match::kByKey, Match::kByKey}) {
                Save(ToJson(
                    korvane::exchange::ImportDocument(document, *project, {.match = match, .remove = true})));
            }
            Save(ToJson(korvane::exchange::ApplyAnswer(document, *project)));
        }
    }
}

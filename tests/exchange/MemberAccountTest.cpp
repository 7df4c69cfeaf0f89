#include <string>
#include <vector>

#include "ImportSupport.h"
#include "MemberCount.h"

// Every value of a document has an effect or an entry: documents with every member of the format and some
// others, in every kind of value, in every place.

namespace {

using korvane::exchange::Match;
using korvane::exchange::Reason;

const std::string kValues[] = {
    R"("Binary")",
    R"("")",
    R"("CAETAG")",
    R"("a\u0000b")",
    "12",
    "true",
    "null",
    "[]",
    R"(["x",{"type":"CAETAG","name":"t","more":[1]},{"name":"n"},[{"type":"CAETAG"}],null])",
    "{}",
    R"({"a":{"value":"1","metaDataType":"x","more":3},"type":{"type":"CAEPART","name":"deep"},"A":[1]})",
};

std::vector<std::string> Names() {
    std::vector<std::string> names = {"value", "metaDataType", "ID",       "Name",
                                      "",      "a/b~c",        "\xC3\xBC", "unknown"};
    for (const format::MemberEffect& known : format::kMemberEffects) {
        names.emplace_back(known.name.View());
    }
    return names;
}

/// A place for members: what stands before and behind them in a document.
struct Surroundings {
    const char* before;
    const char* behind;
};

const Surroundings kPlaces[] = {
    {R"({)", R"("type":"SIMULATION"})"},
    {R"({"type":"SIMULATION",)", R"("name":"last"})"},
    {R"({"type":"SIMULATION","children":[{)", R"("type":"CAEPART","name":"last"}]})"},
    {R"({"type":"SIMULATION","children":[{"type":"CAEVIEWITEM",)", R"("name":"last"}]})"},
    {R"({"type":"SIMULATION","children":{"named":{"type":"CAEPROJECT",)", R"("name":"last"}}})"},
    {R"({"type":"SIMULATION","children":[{"type":"CAEFILE",)", R"("name":"last"}]})"},
    {R"({"type":"SIMULATION","files":[{)", R"("name":"last"}]})"},
    {R"({"type":"SIMULATION","children":[{"type":"CAEMODEL","files":{"a~b":{)", R"("fileType":"Mesh"}}}]})"},
    {R"({"type":"SIMULATION","metaData":{"Mass":{)", R"("value":"3","metaDataType":"kg"}}})"},
    {R"({"type":"SIMULATION","metaData":[{)", R"("value":"3"}]})"},
    {R"({"type":"SIMULATION","files":[{"name":"f","metaData":{"Mass":{)", R"("value":"3"}}}]})"},
    {R"({"type":"SIMULATION","metaData":{)", R"("last":{"value":"3","metaDataType":"kg"}}})"},
    {R"({"name":"no type",)", R"("children":[]})"},
};

std::string MemberText(const std::string& name, const std::string& value) {
    return "\"" + name + "\":" + value + ",";
}

class MemberAccountTest : public ExchangeImportTest {
protected:
    void Expect(const JSONNode& document, const ImportReport& report, const char* when) {
        const MemberCount count(document, report);
        EXPECT_EQ(report.membersTaken, count.Taken()) << when << ": " << document.write_formatted() << "\n"
                                                      << Whole(report);
        EXPECT_EQ(count.Lost(), "") << when << ": " << document.write_formatted() << "\n" << Whole(report);
    }

    /// Imports it in every way onto projects of its own.
    void ExpectAccount(const std::string& text) {
        const JSONNode document = libjson::parse(text.c_str());
        for (const Match match : {Match::kNever, Match::kByKey}) {
            const TestProject project;
            for (const bool isAgain : {false, true}) {
                ImportOptions options = {.match = match, .dryRun = true};
                const ImportReport said = korvane::exchange::ImportDocument(document, *project, options);
                options.dryRun = false;
                const ImportReport done = korvane::exchange::ImportDocument(document, *project, options);
                Expect(document, done, isAgain ? "the second time" : "the first time");
                EXPECT_EQ(Unnumbered(Whole(said)), Unnumbered(Whole(done))) << text;
                EXPECT_EQ(Numbers(said), Numbers(done)) << text;
                EXPECT_FALSE(isAgain && match == Match::kByKey && done.HasChanged()) << text << "\n"
                                                                                     << Whole(done);
            }
        }
    }
};

}  // namespace

TEST_F(MemberAccountTest, EveryMemberInEveryKindOfValueInEveryPlace) {
    for (const Surroundings& place : kPlaces) {
        for (const std::string& name : Names()) {
            for (const std::string& value : kValues) {
                const std::string member = MemberText(name, value);
                ExpectAccount(place.before + member + place.behind);
                ASSERT_FALSE(HasFailure());
            }
        }
    }
}

TEST_F(MemberAccountTest, EveryMemberTwice) {
    for (const Surroundings& place : kPlaces) {
        for (const std::string& name : Names()) {
            for (const std::string& value : kValues) {
                const std::string member = MemberText(name, value);
                ExpectAccount(place.before + member + member + place.behind);
                ASSERT_FALSE(HasFailure());
            }
        }
    }
}

TEST_F(MemberAccountTest, AllMembersTogether) {
    for (const Surroundings& place : kPlaces) {
        for (std::size_t first = 0; first < std::size(kValues); ++first) {
            std::string members;
            std::size_t next = first;
            for (const std::string& name : Names()) {
                members += MemberText(name, kValues[next++ % std::size(kValues)]);
            }
            ExpectAccount(place.before + members + place.behind);
            ExpectAccount(place.before + members + members + place.behind);
            ASSERT_FALSE(HasFailure());
        }
    }
}

TEST_F(MemberAccountTest, RootsThatAreNoObjects) {
    for (const std::string& value : kValues) {
        const std::string text = "[" + value + "]";
        ExpectAccount(text);
        const JSONNode document = libjson::parse(value.c_str());
        const ImportReport report = korvane::exchange::ImportDocument(document, *project_);
        Expect(document, report, "as the root");
        EXPECT_EQ(Listed(report), " no-type #0\n") << value;
        EXPECT_FALSE(report.hasRoot);
    }
}

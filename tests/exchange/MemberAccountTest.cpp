#include <string>
#include <vector>

#include "ImportSupport.h"
#include "MemberCount.h"
#include "MemberDocuments.h"

// Every value of a document has an effect or an entry: documents with every member of the format and some
// others, in every kind of value, in every place.

namespace {

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
    for (const Surroundings& place : kMemberPlaces) {
        for (const std::string& name : MemberNames()) {
            for (const std::string& value : kMemberValues) {
                const std::string member = MemberText(name, value);
                ExpectAccount(place.before + member + place.behind);
                ASSERT_FALSE(HasFailure());
            }
        }
    }
}

TEST_F(MemberAccountTest, EveryMemberTwice) {
    for (const Surroundings& place : kMemberPlaces) {
        for (const std::string& name : MemberNames()) {
            for (const std::string& value : kMemberValues) {
                const std::string member = MemberText(name, value);
                ExpectAccount(place.before + member + member + place.behind);
                ASSERT_FALSE(HasFailure());
            }
        }
    }
}

TEST_F(MemberAccountTest, AllMembersTogether) {
    for (const Surroundings& place : kMemberPlaces) {
        for (std::size_t first = 0; first < std::size(kMemberValues); ++first) {
            std::string members;
            std::size_t next = first;
            for (const std::string& name : MemberNames()) {
                members += MemberText(name, kMemberValues[next++ % std::size(kMemberValues)]);
            }
            ExpectAccount(place.before + members + place.behind);
            ExpectAccount(place.before + members + members + place.behind);
            ASSERT_FALSE(HasFailure());
        }
    }
}

TEST_F(MemberAccountTest, RootsThatAreNoObjects) {
    for (const std::string& value : kMemberValues) {
        const std::string text = "[" + value + "]";
        ExpectAccount(text);
        const JSONNode document = libjson::parse(value.c_str());
        const ImportReport report = korvane::exchange::ImportDocument(document, *project_);
        Expect(document, report, "as the root");
        EXPECT_EQ(Listed(report), " no-type #0\n") << value;
        EXPECT_FALSE(report.hasRoot);
    }
}

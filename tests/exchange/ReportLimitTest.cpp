#include <korvaneexchange/ApplyAnswer.h>
#include <korvaneexchange/Compare.h>
#include <korvaneexchange/ImportDocument.h>
#include <korvaneexchange/ParseDocument.h>

#include <array>

#include "ImportSupport.h"
#include "exchange/ReportBuilder.h"

// Reports list what has room in their memory and count all: what comes behind is counted alike, whatever it
// is.

namespace {

using korvane::exchange::AnswerReport;
using korvane::exchange::CompareReport;
using korvane::exchange::Report;

/// So many entries with pointers to so deep a place that there is no room for any other.
constexpr int kLevels = 10'000;

std::string Repeated(const std::string& text, int times) {
    std::string all;
    for (int time = 0; time < times; ++time) {
        all += text;
    }
    return all;
}

/// Tags in each other with these members each, and the text in the innermost.
std::string Deep(const std::string& members, const std::string& innermost) {
    return R"({"type":"CAETAG","name":"top","children":[)" +
           Repeated(R"({"type":"CAETAG",)" + members + R"("children":[)", kLevels) + innermost +
           Repeated("]}", kLevels) + "]}";
}

/// The reasons that the report counts more often than it lists them, in their order.
std::string Unlisted(const Report& report) {
    std::array<std::size_t, korvane::exchange::kReasonCount> listed{};
    for (const auto& entry : report.entries) {
        ++listed[static_cast<std::size_t>(entry.reason)];
    }
    std::string names;
    for (std::size_t reason = 0; reason < listed.size(); ++reason) {
        if (report.counts[reason] > listed[reason]) {
            names += (names.empty() ? "" : " ") + std::to_string(report.counts[reason] - listed[reason]) +
                     " " + std::string(NameOf(static_cast<korvane::exchange::Reason>(reason)));
        }
    }
    return names;
}

}  // namespace

TEST(ReportLimit, RoomThatIsKeptForOthersIsNotUsed) {
    Report report;
    korvane::exchange::ReportBuilder builder(report);
    constexpr std::size_t kAll = std::size_t{256} << 20U;
    builder.Reserve(kAll);
    builder.Add(korvane::exchange::Reason::kKept, "/a", 1, "a", "a stays");
    EXPECT_EQ(report.entries.size(), 0U);
    EXPECT_EQ(report.unlisted, 1U);
    builder.Release(kAll);
    builder.Add(korvane::exchange::Reason::kKept, "/b", 2, "b", "b stays");
    EXPECT_EQ(report.entries.size(), 1U);
    EXPECT_EQ(Unlisted(report), "1 kept");
}

TEST(ReportLimit, OfAComparison) {
    const std::string first = Deep(
        R"("name":"a","metaData":{"A":{"value":"1","metaDataType":""}},)",
        R"({"type":"CAEPART","name":"part","metaData":{"x":{"value":"1","metaDataType":""},)"
        R"("y":{"value":"2","metaDataType":""},"z":{"value":"3","metaDataType":""},)"
        R"("gone":{"value":"4","metaDataType":""}},"children":[{"type":"CAETAG","name":"one","dbkey":"K1"},)"
        R"({"type":"CAETAG","name":"two","dbkey":"K2"},{"type":"CAETAG","name":"three","dbkey":"K3"}]})");
    const std::string second = Deep(
        R"("name":"a","metaData":{"A":{"value":"2","metaDataType":""}},)",
        R"({"type":"CAEPART","name":"part","metaData":{"y":{"value":"2","metaDataType":""},)"
        R"("x":{"value":"9","metaDataType":""},"Z":{"value":"3","metaDataType":""},)"
        R"("new":{"value":"4","metaDataType":""}},"children":[{"type":"CAETAG","name":"two","dbkey":"K2"},)"
        R"({"type":"CAETAG","name":"one","dbkey":"K1"},{"type":"CAETAG","name":"four","dbkey":"K4"}]})");
    const CompareReport report = korvane::exchange::Compare(korvane::exchange::ParseDocument(first),
                                                            korvane::exchange::ParseDocument(second), {});
    EXPECT_EQ(report.counts[static_cast<std::size_t>(korvane::exchange::Reason::kAdded)], 1U);
    EXPECT_EQ(report.counts[static_cast<std::size_t>(korvane::exchange::Reason::kRemoved)], 1U);
    EXPECT_EQ(report.counts[static_cast<std::size_t>(korvane::exchange::Reason::kMoved)], 1U);
    EXPECT_GT(report.counts[static_cast<std::size_t>(korvane::exchange::Reason::kChanged)],
              static_cast<std::size_t>(kLevels) + 3);
    EXPECT_NE(Unlisted(report).find("1 moved"), std::string::npos) << Unlisted(report);
    EXPECT_NE(Unlisted(report).find("1 added"), std::string::npos) << Unlisted(report);
    EXPECT_NE(Unlisted(report).find("1 removed"), std::string::npos) << Unlisted(report);
}

TEST(ReportLimit, OfAnImport) {
    const std::string text = Deep(
        R"("name":"a","colour":"red",)",
        R"({"type":"CAEPART","name":"p","dbkey":null,"shape":1,"metaData":{"A":{"value":"1"}},"files":[)"
        R"({"name":"../x.inp","fileType":"Deck"}]},{"type":"CAEWHEEL"},{"type":"CAEVIEWITEM","name":"v"})");
    for (const auto match : {korvane::exchange::Match::kNever, korvane::exchange::Match::kByKey}) {
        TestProject project;
        const korvane::exchange::ImportReport report =
            korvane::exchange::ImportDocument(korvane::exchange::ParseDocument(text), *project,
                                              {.match = match, .sameRoot = true, .listFixed = false});
        const std::string unlisted = Unlisted(report);
        for (const char* const reason : {"null-key", "leads-out", "unknown-type", "no-master-assembly"}) {
            EXPECT_NE(unlisted.find(reason), std::string::npos) << reason << " in " << unlisted;
        }
    }
}

TEST(ReportLimit, OfAnAnswer) {
    TestProject project;
    const std::string text = Repeated(R"({"id":"77","children":[)", kLevels) +
                             R"({"id":"1","dbkey":"K"},{"id":"9999","dbkey":"L"},{"dbkey":"M"})" +
                             Repeated("]}", kLevels);
    const AnswerReport report =
        korvane::exchange::ApplyAnswer(korvane::exchange::ParseDocument(text), *project, {});
    EXPECT_EQ(report.keysSet, 1U);
    const std::string unlisted = Unlisted(report);
    for (const char* const reason : {"no-key", "no-such-object", "no-identifier"}) {
        EXPECT_NE(unlisted.find(reason), std::string::npos) << reason << " in " << unlisted;
    }
}

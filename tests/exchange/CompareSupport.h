#pragma once

#include <gtest/gtest.h>
#include <korvaneexchange/Compare.h>

#include <string>
#include <utility>

/// What the tests of comparisons share.
namespace korvane::exchange {

inline JSONNode Parse(const std::string& text) {
    return libjson::parse(json_string(text.data(), text.size()));
}

/// A line for each entry: the mark of its reason, its pointer and its sentence.
inline std::string Lines(const CompareReport& report) {
    std::string lines;
    for (const Entry& entry : report.entries) {
        const char* const mark = entry.reason == Reason::kAdded     ? "+"
                                 : entry.reason == Reason::kRemoved ? "-"
                                 : entry.reason == Reason::kMoved   ? ">"
                                 : entry.reason == Reason::kChanged ? "~"
                                                                    : "?";
        lines += mark + (" [" + entry.pointer + "] ") + entry.sentence + "\n";
        EXPECT_TRUE(entry.sentence.starts_with(entry.subject + ": ")) << entry.sentence;
    }
    return lines;
}

/// The report turns around with the direction, and what is compared with itself is the same.
template <typename First, typename Second>
CompareReport CompareBothWays(First&& first, Second&& second, const CompareOptions& options = {}) {
    const CompareReport report = Compare(first, second, options);
    const CompareReport back = Compare(second, first, options);
    EXPECT_EQ(back.Count(Reason::kAdded), report.Count(Reason::kRemoved));
    EXPECT_EQ(back.Count(Reason::kRemoved), report.Count(Reason::kAdded));
    EXPECT_EQ(back.Count(Reason::kMoved), report.Count(Reason::kMoved));
    EXPECT_EQ(back.Count(Reason::kChanged), report.Count(Reason::kChanged));
    // An object may have become a file.
    EXPECT_EQ(back.objects + back.files, report.objects + report.files);
    EXPECT_EQ(Lines(Compare(first, first, options)), "");
    EXPECT_EQ(Lines(Compare(second, second, options)), "");
    return report;
}

inline std::string CompareTexts(const std::string& first, const std::string& second,
                                const CompareOptions& options = {}) {
    const JSONNode left = Parse(first);
    const JSONNode right = Parse(second);
    const CompareReport report = CompareBothWays(left, right, options);
    EXPECT_EQ(report.IsSame(), report.entries.empty());
    return Lines(report);
}

/// Two documents of a project P whose only child has these members.
inline std::string CompareChildren(const std::string& first, const std::string& second) {
    return CompareTexts(R"({"type":"X","name":"P","children":[{)" + first + "}]}",
                        R"({"type":"X","name":"P","children":[{)" + second + "}]}");
}

/// Two documents of a part P with a file that has these members.
inline std::string CompareRecords(const std::string& first, const std::string& second) {
    return CompareTexts(R"({"type":"CAEPART","name":"P","files":[{)" + first + "}]}",
                        R"({"type":"CAEPART","name":"P","files":[{)" + second + "}]}");
}

}  // namespace korvane::exchange

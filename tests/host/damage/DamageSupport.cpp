#include "DamageSupport.h"

#include <regex>

namespace {

/// A document of some pages: studies with parts, which have metadata, keys of another server, and files.
std::string MakeDocument() {
    std::string text = R"({"id":"1","name":"P","type":"SIMULATION","metaData":{},"children":[)";
    int id = 1;
    for (int study = 0; study < 6; ++study) {
        text += (study > 0 ? "," : "") + std::string(R"({"id":")") + std::to_string(++id) +
                R"(","name":"Study","type":"CAEMODEL","children":[)";
        for (int part = 0; part < 15; ++part) {
            const std::string number = std::to_string(++id);
            text += (part > 0 ? "," : "") + std::string(R"({"id":")") + number + R"(","name":"Part )" +
                    number +
                    R"(","type":"CAEPART","createdDate":"2026-03-01T09:30:00Z","metaData":{)"
                    R"("Mass":{"value":")" +
                    number + R"(","metaDataType":"kg"},"Material":{"value":"steel, )" + number +
                    R"(","metaDataType":""}},"children":[],"files":[{"id":"9)" + number +
                    R"(","name":"part)" + number + R"(.step","type":"CAEFILE","fileType":"CAD"}]})";
        }
        text += R"(],"files":[]})";
    }
    return text + R"(],"files":[]})";
}

/// The text without dates: objects that a run creates get that of the moment.
std::string WithoutDates(const std::string& text) {
    constexpr std::string_view kBegin = R"("createdDate":")";
    std::string result;
    std::size_t from = 0;
    for (std::size_t at = text.find(kBegin); at != std::string::npos; at = text.find(kBegin, from)) {
        result += text.substr(from, at - from);
        from = text.find('"', at + kBegin.size());
    }
    return result + text.substr(from);
}

/// The beginning of what is different, for a text of many lines.
std::string Difference(const std::string& text, const std::string& right) {
    const auto at = static_cast<std::size_t>(std::ranges::mismatch(text, right).in1 - text.begin());
    return text == right ? "" : '"' + text.substr(at, 200) + "\" instead of \"" + right.substr(at, 200) + '"';
}

}  // namespace

void DamageTest::SetUp() {
    folder.Write("d.json", MakeDocument());
    folder.Write("part.json", R"({"id":"500","name":"New","type":"CAEPART","metaData":{"a":{"value":"b"}}})");
    ASSERT_EQ(Run({"import", "d.json", "p.kvp"}).status, 0);
    ASSERT_EQ(Run({"export", "p.kvp", "-o", "d.json"}).status, 0);
    ASSERT_EQ(Run({"store", "d.json", "--db", "s.db", "-o", "answer.json"}).status, 0);
    const std::string answer = Read("answer.json");
    std::smatch found;
    ASSERT_TRUE(std::regex_search(answer, found, std::regex("PRJ-[0-9]+-[0-9a-f]+")));
    key_ = found.str();
    kvp_ = Read("p.kvp");
    db_ = Read("s.db");
    othersOfProject_ = ContentWithout(NameOf(DamagedFile::Project));
    othersOfDatabase_ = ContentWithout(NameOf(DamagedFile::Database));
    for (const DamagedRun& run : DamagedRuns()) {
        right_.push_back(RunOn(run, BytesOf(run.file), true));
        ASSERT_EQ(right_.back().status, 0) << run.arguments.front() << ": " << right_.back().error;
        ASSERT_EQ(right_.back().bytes != BytesOf(run.file), run.isChanging) << run.arguments.front();
    }
}

std::string DamageTest::ContentWithout(const std::string& name) const {
    const std::filesystem::path kept = folder / name;
    const std::string bytes = ReadWholeFile(kept);
    std::filesystem::remove(kept);
    std::string content = Content();
    folder.Write(name, bytes);
    return content;
}

DamageTest::Outcome DamageTest::RunOn(const DamagedRun& run, const std::string& bytes, bool isRead) {
    folder.Write("p.kvp", kvp_);
    folder.Write("s.db", db_);
    folder.Write(NameOf(run.file), bytes);
    std::vector<std::string> arguments = run.arguments;
    std::ranges::replace(arguments, "KEY", key_);
    const ProcessResult result = Run(arguments);
    Outcome outcome{result.status, result.output, result.error, Read(NameOf(run.file)), "", ""};
    if (isRead && result.status == 0) {
        if (run.isChanging && run.file == DamagedFile::Project) {
            outcome.reading = OutputOf({"tree", "p.kvp"}) + WithoutDates(OutputOf({"export", "p.kvp"}));
        } else if (run.isChanging) {
            outcome.reading = OutputOf({"fetch", key_, "--db", "s.db"});
        }
        if (std::filesystem::exists(folder / "q.kvp")) {
            outcome.reading += OutputOf({"tree", "q.kvp"});
        }
    }
    // What a run creates is compared by what is read from it, or must not be there.
    if (result.status == 0) {
        std::filesystem::remove(folder / "q.kvp");
    }
    outcome.others = ContentWithout(NameOf(run.file));
    std::filesystem::remove(folder / "out");
    return outcome;
}

void DamageTest::ExpectRightOrRefused(const DamagedRun& run, const Outcome& outcome, const Outcome& right,
                                      const std::string& bytes) const {
    if (outcome.status == 0) {
        EXPECT_EQ(Difference(outcome.output, right.output), "");
        EXPECT_EQ(outcome.error, right.error);
        EXPECT_EQ(Difference(outcome.reading, right.reading), "");
        EXPECT_TRUE(outcome.others == right.others)
            << "another result, or something was left beside the file";
        EXPECT_TRUE(run.isChanging || outcome.bytes == bytes) << "the file was changed";
        return;
    }
    EXPECT_EQ(outcome.status, 1) << "it crashed";
    EXPECT_EQ(outcome.output, "");
    EXPECT_TRUE(outcome.error.starts_with("korvane-json: '")) << outcome.error;
    EXPECT_TRUE(outcome.bytes == bytes) << "the file was changed";
    EXPECT_TRUE(outcome.others == (run.file == DamagedFile::Project ? othersOfProject_ : othersOfDatabase_))
        << "something was written or left beside the file";
}

void DamageTest::ExpectSafe(DamagedFile file, const std::string& bytes, const std::string& what) {
    const std::vector<DamagedRun> runs = DamagedRuns();
    for (std::size_t index = 0; index < runs.size(); ++index) {
        if (runs[index].file != file) {
            continue;
        }
        std::string command;
        for (const std::string& argument : runs[index].arguments) {
            command += argument + " ";
        }
        SCOPED_TRACE(what + ": " + command);
        ExpectRightOrRefused(runs[index], RunOn(runs[index], bytes, true), right_[index], bytes);
    }
}

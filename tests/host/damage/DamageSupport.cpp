#include "DamageSupport.h"

#include <algorithm>
#include <string_view>
#include <utility>

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

/// The text as if the project's files were in the folder that the project file was copied to: a file of the
/// first format does not know where they are seen from itself.
std::string InOneFolder(std::string text) {
    for (const auto& [from, to] : {std::pair("given/part", "work/part"), std::pair("given\"", "work\"")}) {
        for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at)) {
            text.replace(at, std::string_view(from).size(), to);
        }
    }
    return text;
}

Content InOneFolder(Content content) {
    for (auto& [name, bytes] : content) {
        bytes = InOneFolder(std::move(bytes));
    }
    return content;
}

/// The beginning of what is different, for a text of many lines.
std::string Difference(const std::string& text, const std::string& right) {
    const auto at = static_cast<std::size_t>(std::ranges::mismatch(text, right).in1 - text.begin());
    return text == right ? "" : '"' + text.substr(at, 200) + "\" instead of \"" + right.substr(at, 200) + '"';
}

}  // namespace

void DamageTest::SetUp() {
    const auto run = [&](const std::vector<std::string>& arguments) {
        const ProcessResult result = Run(arguments);
        ASSERT_EQ(result.status, 0) << arguments.front() << ": " << result.error;
    };
    folder.Write("given/studies/static/job.inp", "*STEP\n*STATIC\n*END STEP\n");
    folder.Write("given/other/modes/job.bdf", "SOL 101\nCEND\nBEGIN BULK\nENDDATA\n");
    folder.Write("given/other.json",
                 R"({"id":"500","name":"New","type":"CAEPART","metaData":{"a":{"value":"b"}}})");
    folder.Write("source.json", MakeDocument());
    run({"import", "source.json", "given/p.kvp"});
    CompleteCommandFolder(folder, run);
    ASSERT_FALSE(HasFatalFailure());
    key_ = FirstKey(Read("given/answer.json"));
    kvp_ = Read("given/p.kvp");
    db_ = Read("given/s.db");
    others_ = ContentOf(folder.Path());
    for (const ProgramCommand& command : commands_) {
        const std::string& bytes =
            BytesOf(command.file == "p.kvp" ? DamagedFile::Project : DamagedFile::Database);
        right_.push_back(RunOn(command, bytes, true));
        ASSERT_EQ(right_.back().status, 0) << command.name << ": " << right_.back().error;
        ASSERT_EQ(right_.back().bytes != bytes, command.IsChanging()) << command.name;
    }
}

DamageTest::Outcome DamageTest::RunOn(const ProgramCommand& command, const std::string& bytes, bool isRead) {
    const std::string name = "work/" + command.file;
    PutFileOf(command, folder);
    folder.Write(name, bytes);
    const ProcessResult result = Run(ArgumentsIn(folder, command));
    Outcome outcome{result.status, result.output, result.error, Read(name), "", {}};
    const std::filesystem::path copy = folder / "out/copy.kvp";
    if (isRead && result.status == 0) {
        if (command.IsChanging() && name == "work/p.kvp") {
            outcome.reading = OutputOf({"tree", name}) + WithoutDates(OutputOf({"export", name}));
        } else if (command.IsChanging()) {
            outcome.reading = OutputOf({"fetch", key_, "--db", name});
        }
        if (std::filesystem::exists(copy)) {
            outcome.reading += OutputOf({"tree", "out/copy.kvp"});
        }
    }
    // What a command creates is compared by what is read from it, or must not be there.
    if (result.status == 0) {
        std::filesystem::remove(copy);
    }
    outcome.others = ContentOf(folder.Path());
    outcome.others.erase(name);
    for (const auto& entry : std::filesystem::directory_iterator(folder / "out")) {
        std::filesystem::remove(entry.path());
    }
    return outcome;
}

void DamageTest::ExpectRightOrRefused(const ProgramCommand& command, const Outcome& outcome,
                                      const Outcome& right, const std::string& bytes) const {
    if (outcome.status == 0) {
        EXPECT_EQ(Difference(InOneFolder(outcome.output), InOneFolder(right.output)), "");
        EXPECT_EQ(outcome.error, right.error);
        EXPECT_EQ(Difference(outcome.reading, right.reading), "");
        EXPECT_TRUE(InOneFolder(outcome.others) == InOneFolder(right.others))
            << "another result, or something was left beside the file";
        EXPECT_TRUE(command.IsChanging() || outcome.bytes == bytes) << "the file was changed";
        return;
    }
    EXPECT_EQ(outcome.status, command.failure) << "it crashed";
    EXPECT_EQ(outcome.output, "");
    EXPECT_TRUE(outcome.error.starts_with("korvane-json: '")) << outcome.error;
    EXPECT_TRUE(outcome.bytes == bytes) << "the file was changed";
    EXPECT_TRUE(outcome.others == others_) << "something was written or left beside the file";
}

void DamageTest::ExpectSafe(DamagedFile file, const std::string& bytes, const std::string& what) {
    for (std::size_t index = 0; index < commands_.size(); ++index) {
        const ProgramCommand& command = commands_[index];
        if (command.file == NameOf(file)) {
            SCOPED_TRACE(what + ": " + command.name);
            ExpectRightOrRefused(command, RunOn(command, bytes, true), right_[index], bytes);
        }
    }
}

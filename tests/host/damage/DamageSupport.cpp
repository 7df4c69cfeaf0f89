#include "DamageSupport.h"

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <algorithm>
#include <filesystem>
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

bool IsTimeAt(std::string_view text, std::size_t place) {
    constexpr std::string_view kForm = "0000-00-00T00:00:00Z";
    const std::string_view time = text.substr(place, kForm.size());
    return std::ranges::equal(time, kForm, [](char character, char form) {
        return form == '0' ? character >= '0' && character <= '9' : character == form;
    });
}

/// Whether the end of a key is there, which is different in every database.
bool IsOriginAt(std::string_view text, std::size_t place) {
    const std::string_view origin = text.substr(place, 7);
    return place > 0 && text[place - 1] >= '0' && text[place - 1] <= '9' && origin.size() == 7 &&
           origin.front() == '-' && origin.find_first_not_of("0123456789abcdef", 1) == std::string_view::npos;
}

/// The text without times and without what is different in every database: for two runs on the same text.
std::string Plain(std::string_view text) {
    std::string result;
    for (std::size_t place = 0; place < text.size(); ++place) {
        if (IsTimeAt(text, place)) {
            place += 19;
        } else if (IsOriginAt(text, place)) {
            place += 6;
        } else {
            result += text[place];
        }
    }
    return result;
}

Content Plain(Content content) {
    for (auto& [name, bytes] : content) {
        bytes = Plain(bytes);
    }
    return content;
}

/// The text as another reader of JSON understands and writes it; nothing if it is not JSON.
std::optional<std::string> Rewritten(const std::string& text) {
    // That reader takes a NUL for the end.
    if (text.find('\0') != std::string::npos) {
        return std::nullopt;
    }
    rapidjson::Document document;
    document.Parse<rapidjson::kParseFullPrecisionFlag | rapidjson::kParseIterativeFlag>(text.c_str(),
                                                                                        text.size());
    if (document.HasParseError()) {
        return std::nullopt;
    }
    rapidjson::StringBuffer written;
    rapidjson::Writer<rapidjson::StringBuffer> writer(written);
    document.Accept(writer);
    return std::string(written.GetString(), written.GetSize());
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
    for (const FileFormat& format : AllFileFormats()) {
        if (!format.content.empty()) {
            folder.Write(format.place, format.content);
        }
    }
    folder.Write("source.json", MakeDocument());
    run({"import", "source.json", "given/p.kvp"});
    CompleteCommandFolder(folder, run);
    ASSERT_FALSE(HasFatalFailure());
    key_ = FirstKey(Read("given/answer.json"));
    before_ = ContentOf(folder.Path());
}

const std::vector<DamageTest::Reader>& DamageTest::ReadersOf(const FileFormat& format) {
    const auto [place, isNew] = readers_.try_emplace(format.name);
    std::vector<Reader>& readers = place->second;
    if (!isNew) {
        return readers;
    }
    const std::string bytes = BytesOf(format);
    for (const ProgramCommand& command :
         CommandsWhere([&](const ProgramCommand& each) { return format.IsReadBy(each); })) {
        const Outcome& right = readers.emplace_back(Reader{command, RunOn(command, format, bytes)}).right;
        EXPECT_EQ(right.status, 0) << command.name << ": " << right.error;
        const bool isChanged = command.IsChanging() && format.place == "work/" + command.file;
        EXPECT_EQ(right.bytes != bytes, isChanged) << command.name;
    }
    EXPECT_FALSE(readers.empty()) << "no command reads a " << format.name;
    return readers;
}

DamageTest::Outcome DamageTest::RunOn(const ProgramCommand& command, const FileFormat& format,
                                      const std::string& bytes) {
    const std::string sound = BytesOf(format);
    const std::string work = "work/" + command.file;
    PutFileOf(command, folder);
    folder.Write(format.place, bytes);
    const ProcessResult result = Run(ArgumentsIn(folder, command));
    Outcome outcome{result.status, result.output, result.error, Read(format.place), {}, "", {}};
    if (command.use != FileUse::None && std::filesystem::exists(folder / work)) {
        outcome.work = Read(work);
    }
    if (result.status == 0) {
        outcome.reading = ReadingOf(command);
        // What a command creates is compared by what is read from it, or must not be there.
        std::filesystem::remove(folder / "out/copy.kvp");
    }
    outcome.others = ContentOf(folder.Path());
    outcome.others.erase(format.place);
    outcome.others.erase(work);
    for (const auto& entry : std::filesystem::directory_iterator(folder / "out")) {
        std::filesystem::remove(entry.path());
    }
    folder.Write(format.Sound(), sound);
    return outcome;
}

/// What is in the files that the command has changed or created.
std::string DamageTest::ReadingOf(const ProgramCommand& command) const {
    std::string reading;
    if (command.IsChanging()) {
        const bool isNew = !command.HasFile() && std::filesystem::exists(folder / "out/answer.json");
        const std::string key = isNew ? FirstKey(Read("out/answer.json")) : key_;
        for (const std::vector<std::string>& words : FormatOf(command).readings) {
            reading += WithoutDates(OutputOf(FileFormat::Arguments(words, "work/" + command.file, key)));
        }
    }
    if (std::filesystem::exists(folder / "out/copy.kvp")) {
        reading += OutputOf({"tree", "out/copy.kvp"});
    }
    return reading;
}

void DamageTest::ExpectSame(const Outcome& outcome, const Outcome& right) {
    EXPECT_EQ(outcome.status, right.status) << outcome.error;
    EXPECT_EQ(Difference(InOneFolder(outcome.output), InOneFolder(right.output)), "");
    EXPECT_EQ(outcome.error, right.error);
    EXPECT_EQ(Difference(outcome.reading, right.reading), "");
    EXPECT_TRUE(InOneFolder(outcome.others) == InOneFolder(right.others))
        << "another result, or something was left beside the file";
}

void DamageTest::ExpectRefused(const ProgramCommand& command, const FileFormat& format,
                               const Outcome& outcome) const {
    EXPECT_EQ(outcome.status, command.failure)
        << "it crashed, or took what it cannot read: " << outcome.error;
    EXPECT_EQ(outcome.output, "");
    const bool hasPlace = outcome.error.find("'" + format.place + "': line ") != std::string::npos &&
                          outcome.error.find(", column ") != std::string::npos;
    EXPECT_TRUE(outcome.error.starts_with("korvane-json: ") &&
                (format.damaged != DamagedReading::AsText || hasPlace))
        << outcome.error;
    Content others = before_;
    others.erase(format.place);
    EXPECT_TRUE(outcome.others == others) << "something was written or left beside the file";
    if (format.place != "work/" + command.file) {
        const std::optional<std::string> put = command.HasFile()
                                                   ? std::optional(Read("given/" + command.file))
                                               : command.use == FileUse::Fills ? std::optional(std::string())
                                                                               : std::nullopt;
        EXPECT_TRUE(outcome.work == put) << "the command's own file was changed";
    }
}

void DamageTest::ExpectOutcome(const FileFormat& format, const Reader& reader, const std::string& bytes) {
    const ProgramCommand& command = reader.command;
    Outcome outcome = RunOn(command, format, bytes);
    const bool isOwnChange = command.IsChanging() && format.place == "work/" + command.file;
    EXPECT_TRUE(outcome.bytes == bytes || (isOwnChange && outcome.status == 0)) << "the file was changed";
    if (format.damaged == DamagedReading::AsText) {
        const std::optional<std::string> rewritten = Rewritten(bytes);
        if (!rewritten) {
            ExpectRefused(command, format, outcome);
            return;
        }
        Outcome right = RunOn(command, format, *rewritten);
        EXPECT_TRUE(outcome.status == 0 || outcome.status == 1 || outcome.status == command.failure)
            << "it crashed";
        for (Outcome* const each : {&outcome, &right}) {
            each->output = Plain(each->output);
            each->error = Plain(each->error);
            each->reading = Plain(each->reading);
            each->others = Plain(std::move(each->others));
        }
        ExpectSame(outcome, right);
    } else if (outcome.status != 0) {
        ExpectRefused(command, format, outcome);
    } else if (format.damaged == DamagedReading::AsSound) {
        ExpectSame(outcome, reader.right);
    } else {
        EXPECT_TRUE(outcome.error.empty() || outcome.error.starts_with("korvane-json: ")) << outcome.error;
    }
}

void DamageTest::ExpectSafe(const FileFormat& format, const std::string& bytes, const std::string& what) {
    for (const Reader& reader : ReadersOf(format)) {
        SCOPED_TRACE(what + ": " + reader.command.name);
        ExpectOutcome(format, reader, bytes);
    }
}

#include "CommandFolder.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <stdexcept>

#if !defined(_WIN32)
#include <unistd.h>
#endif

#include "host/system/Text.h"
#include "support/FileFormats.h"
#include "support/Process.h"

namespace failures {
namespace {

/// Studies with decks, parts and files.
void WriteStudies(const TemporaryDirectory& folder, const std::string& name, int count) {
    for (int number = 0; number < count; ++number) {
        const std::string study = name + "/study-" + std::to_string(10000 + number) + "/";
        const std::string text = "** made for the study number " + std::to_string(number);
        folder.Write(study + "load.inp", text + "\n*STEP\n*STATIC\n*END STEP\n");
        folder.Write(study + "modes.bdf", "SOL 101\nCEND\nBEGIN BULK\nENDDATA\n");
        folder.Write(study + "bracket.msh", text);
        folder.Write(study + "notes.txt", text);
    }
}

/// Runs the program and throws if it fails.
ProcessResult Do(const std::filesystem::path& folder, const std::vector<std::string>& arguments) {
    ProcessResult result = RunProgram(ProgramPath("korvane-json"), {arguments, {}, folder, {}, {}});
    if (result.status != 0) {
        throw std::runtime_error(arguments.front() + ": " + result.error);
    }
    return result;
}

class Connection {
public:
    explicit Connection(const std::filesystem::path& file) {
        if (sqlite3_open(ToUtf8(file).c_str(), &handle_) != SQLITE_OK) {
            throw std::runtime_error("cannot be opened");
        }
    }
    ~Connection() { sqlite3_close(handle_); }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// All rows, one on a line.
    std::string Ask(const std::string& question) {
        std::string text;
        char* message = nullptr;
        const auto addRow = [](void* context, int count, char** values, char**) {
            auto& rows = *static_cast<std::string*>(context);
            for (int column = 0; column < count; ++column) {
                rows += values[column] != nullptr ? values[column] : "NULL";
                rows += '|';
            }
            rows += '\n';
            return 0;
        };
        if (sqlite3_exec(handle_, question.c_str(), addRow, &text, &message) != SQLITE_OK) {
            const std::string reason = message != nullptr ? message : "no message";
            sqlite3_free(message);
            throw std::runtime_error(question + ": " + reason);
        }
        return text;
    }

private:
    sqlite3* handle_ = nullptr;
};

/// Every row of every table. Throws if the database is damaged.
std::string RowsOf(const std::filesystem::path& file, std::string& origin) {
    Connection connection(file);
    const std::string check = connection.Ask("PRAGMA integrity_check");
    if (check != "ok|\n") {
        throw std::runtime_error(check);
    }
    std::string rows = connection.Ask("PRAGMA application_id") + connection.Ask("PRAGMA user_version") +
                       connection.Ask("SELECT type, name, sql FROM sqlite_schema ORDER BY 2");
    const std::string tables =
        connection.Ask("SELECT name FROM sqlite_schema WHERE type = 'table' ORDER BY 1");
    for (std::size_t begin = 0, end = 0; (end = tables.find("|\n", begin)) != std::string::npos;
         begin = end + 2) {
        const std::string table = tables.substr(begin, end - begin);
        // The checksum is over times, too. Whoever reads the file with the program compares it with the rows.
        const std::string content =
            connection.Ask(table == "checksum" ? "SELECT count(*) FROM checksum" : "SELECT * FROM " + table);
        if (table == "origin") {
            origin = content.substr(0, content.find('|'));
        }
        rows += table + '\n' + content;
    }
    return rows;
}

void ReplaceAll(std::string& text, const std::string& old, std::string_view replacement) {
    for (std::size_t place = 0; !old.empty() && (place = text.find(old, place)) != std::string::npos;) {
        text.replace(place, old.size(), replacement);
    }
}

/// Replaces the times that are not before `start`: those at which commands ran.
void ReplaceTimes(std::string& text, const std::string& start) {
    for (std::size_t place = 0; (place = text.find('T', place)) != std::string::npos; ++place) {
        // 2026-01-31T23:59:59Z
        if (place >= 10 && place + 9 < text.size() && text[place - 3] == '-' && text[place + 3] == ':' &&
            text[place + 9] == 'Z' && text.compare(place - 10, 20, start) >= 0) {
            text.replace(place - 10, 20, "0000-00-00T00:00:00Z");
        }
    }
}

#if !defined(_WIN32)

/// Lets the tests work in memory where there is enough of it: they wait for the disk most of the time
/// otherwise, and the disk shows nothing here that a file in memory does not.
class FolderInMemory : public testing::Environment {
public:
    void SetUp() override {
        constexpr std::uintmax_t kEnough = 1U << 30U;
        constexpr const char* kMemory = "/dev/shm";
        std::error_code error;
        const std::filesystem::space_info space = std::filesystem::space(kMemory, error);
        if (!error && space.available >= kEnough && ::access(kMemory, W_OK) == 0) {
            ::setenv("TMPDIR", kMemory, 0);
        }
    }
};
testing::Environment* const kFolderInMemory = testing::AddGlobalTestEnvironment(new FolderInMemory);

#endif

}  // namespace

CommandFolder::CommandFolder(const ProgramCommand& command, int studies)
    : command_(command),
      start_(host::FormatTime(std::chrono::system_clock::to_time_t(std::chrono::system_clock::now()))) {
    WriteStudies(folder_, "given/studies", studies);
    WriteStudies(folder_, "given/other", studies / 2);
    const auto run = [&](const std::vector<std::string>& arguments) { Do(folder_.Path(), arguments); };
    run({"new", "given/studies", "given/p.kvp"});
    run({"export", "given/other", "-o", "given/other.json"});
    CompleteCommandFolder(folder_, run);
    Reset();
    bytesBefore_ = Bytes();
    textBefore_ = Text();
    run(Arguments());
    textAfter_ = Text();
    if (textBefore_ == textAfter_ || Names() != NamesAfter()) {
        throw std::runtime_error(command_.name + " did not change its file alone");
    }
}

void CommandFolder::Reset() const {
    PutFileOf(command_, folder_);
    for (const auto& entry : std::filesystem::directory_iterator(folder_ / "out")) {
        std::filesystem::remove(entry.path());
    }
}

std::string CommandFolder::Names() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_ / "work")) {
        names.push_back(ToUtf8(entry.path().filename()));
    }
    std::ranges::sort(names);
    std::string text;
    for (const std::string& name : names) {
        text += name + ' ';
    }
    return text;
}

std::optional<std::string> CommandFolder::Bytes() const {
    return std::filesystem::exists(File()) ? std::optional(ReadWholeFile(File())) : std::nullopt;
}

std::string CommandFolder::Text() const {
    if (!std::filesystem::exists(File())) {
        return "no file";
    }
    try {
        std::string origin;
        std::string rows = RowsOf(File(), origin);
        if (std::filesystem::file_size(File()) == 0) {
            return "an empty file";
        }
        // What tells a database from all others.
        ReplaceAll(rows, origin, "ORIGIN");
        ReplaceTimes(rows, start_);
        // The same rows read the same, so they are read once.
        std::string& text = texts_[rows];
        if (text.empty()) {
            const std::string name = ToUtf8(File());
            const std::vector<std::string> reading =
                FileFormat::Arguments(FormatOf(command_).readings.back(), name, "PRJ-1-" + origin);
            text = rows + Do(folder_.Path(), reading).output;
            ReplaceAll(text, origin, "ORIGIN");
            ReplaceTimes(text, start_);
        }
        return text;
    } catch (const std::runtime_error& error) {
        return std::string("unusable: ") + error.what();
    }
}

std::string CommandFolder::OpenWithProgram() const {
    if (!std::filesystem::exists(File())) {
        return "";
    }
    const std::string name = ToUtf8(File());
    const std::vector<std::string> reading =
        FileFormat::Arguments(FormatOf(command_).readings.front(), name, "no key");
    const ProcessResult result = RunProgram(ProgramPath("korvane-json"), {reading, {}, {}, {}, {}});
    const bool isRead =
        result.status == 0 || result.error.find("no object with the key") != std::string::npos;
    const bool isEmpty =
        command_.use == FileUse::Fills && result.error.find("is an empty file") != std::string::npos;
    return isRead || isEmpty ? "" : result.error;
}

bool CommandFolder::IsIdleJournalLeft() const {
    const std::string journal = command_.file + "-journal";
    if (command_.use == FileUse::Creates || Names() != NamesAfter() + journal + " ") {
        return false;
    }
    // It changes nothing if it is empty or begins with a zero.
    const std::string bytes = ReadWholeFile(folder_ / ("work/" + journal));
    return bytes.empty() || bytes.front() == '\0';
}

std::string CommandFolder::Untruth(int status, const std::string& said) const {
    const auto says = [&](std::string_view text) { return said.find(text) != std::string::npos; };
    const std::string names = Names();
    const bool isOldAlone = Bytes() == bytesBefore_;
    const std::string journal = command_.file + "-journal";
    const bool isIdleJournalLeft = IsIdleJournalLeft();
    const std::string text = Text();
    if (text != textBefore_ && text != textAfter_) {
        return "the file is neither the old nor the new one: " + text.substr(0, 200);
    }
    if (status == 0 || says("the document was stored: store it again")) {
        return names != NamesAfter() ? "files are left"
               : text != textAfter_  ? "the file is not the new one"
                                     : "";
    }
    if (says("The change was made all the same")) {
        return text != textAfter_ ? "the file is not the new one" : "";
    }
    if (text != textBefore_ && !says("Whether the change was made cannot be told")) {
        return "the file is not the old one";
    }
    if (says("Nothing was changed")) {
        if (names != NamesBefore() && !isIdleJournalLeft) {
            return "files are left";
        }
        return isOldAlone ? "" : "the file is not the old one without its journal";
    }
    if (says("could not be undone yet: leave '" + journal + "' beside")) {
        return names != NamesAfter() + journal + " " ? "there is no journal" : "";
    }
    return says("Whether the change was made cannot be told") ? "" : "it does not say what is there";
}

}  // namespace failures

#include "Options.h"

#include <charconv>
#include <memory>
#include <system_error>

#include "host/system/FileSystem.h"
#include "host/system/Text.h"

namespace host {

Option AddInputOptions(const Command& command, InputOptions& options) {
    const Option directory =
        command.AddOption("DIR", options.input, "The directory with the studies, or a project file")
            .Required()
            .Type("");
    command.AddFlag("--strict", options.isStrict,
                    "End with status 1 if an entry of the directory cannot be read, or has a name\n"
                    "that a document cannot carry, or if a korvane.toml has an entry that cannot be used.\n"
                    "The output is written without that entry");
    AddSelection(command, options.selection);
    return directory;
}

void AddSelection(const Command& command, Selection& selection) {
    const auto check = [](const std::string& pattern) -> std::string {
        const bool isPattern =
            pattern.find_first_not_of("!/") != std::string::npos && GlobPattern(pattern).IsValid();
        return isPattern ? "" : Quoted(pattern) + " is not a pattern; give one like results/*.frd";
    };
    command
        .AddOption("--study", selection.studies,
                   "Only this study, or the studies in this directory; a path in DIR. Can be given\n"
                   "several times")
        .Type("PATH")
        .OneEachTime();
    command
        .AddOption("--exclude", selection.excluded,
                   "Leave out files and directories with such a name or path, as a line of a\n"
                   ".korvaneignore in DIR does. Can be given several times")
        .Type("GLOB")
        .OneEachTime()
        .Check(check);
}

void AddFilesIn(const Command& command, std::vector<std::string>& directories) {
    const auto check = [](const std::string& directory) -> std::string {
        Entry entry;
        const bool isDirectory =
            !InspectTarget(PathFromUtf8(directory), entry) && entry.type == EntryType::Directory;
        return isDirectory ? "" : Quoted(directory) + " is not a directory that can be read";
    };
    command
        .AddOption("--files-in", directories,
                   "A directory whose files are read, too, if a project file or a document names\n"
                   "them. Without this option, those in its own directory are read. Can be given\n"
                   "several times")
        .Type("DIR")
        .OneEachTime()
        .Check(check);
}

void AddObjectOption(const Command& command, std::optional<int>& object, const std::string& description) {
    // The parser would ignore an empty text, and read 010 as an octal number.
    const auto check = [](const std::string& text) -> std::string {
        int number = 0;
        const char* const end = text.data() + text.size();
        const auto [rest, error] = std::from_chars(text.data(), end, number);
        const bool isIdentifier = error == std::errc() && rest == end && number > 0 && text.front() != '0';
        return isIdentifier ? "" : Quoted(text) + " is not an identifier; give a number like 12";
    };
    command.AddOption("--object", object, description).Type("ID").Check(check);
}

Option AddChoice(const Command& command, const std::string& name, std::string& word,
                 const std::vector<std::string>& words, const std::string& type,
                 const std::string& description) {
    return command.AddOption(name, word, description).Type(type).OneOf(words);
}

void AddIgnore(const Command& command, Ignored& ignored) {
    const auto words = std::make_shared<std::vector<std::string>>();
    command
        .AddOption("--ignore", *words,
                   "Leave out of the comparison dates of creation, or keys. Can be given for both.\n"
                   "Keys are left out anyway where one of the two is a directory, which has none")
        .Type("WHAT")
        .OneEachTime()
        .OneOf({"dates", "keys"})
        .ForEach([words, &ignored](const std::string& word) {
            ignored.dates = ignored.dates || word == "dates";
            ignored.keys = ignored.keys || word == "keys";
        });
}

void AddFormat(const Command& command, ReportFormat& format, const std::string& description) {
    const auto word = std::make_shared<std::string>();
    AddChoice(command, "--format", *word, {"text", "json"}, "FORMAT", description)
        .ForEach([word, &format](const std::string& chosen) {
            *word = chosen;
            format = chosen == "json" ? ReportFormat::Json : ReportFormat::Text;
        });
}

void AddReportFormat(const Command& command, ReportFormat& format) {
    AddFormat(command, format,
              "text (the default) reports what was done in messages, json as one JSON document\n"
              "on the standard output: --format json");
}

void AddExamples(const Command& command, const std::string& examples, const std::string& notes) {
    command.SetEnd((notes.empty() ? "" : notes + "\n\n") + "Examples:\n" + examples);
}

void AddDryRun(const Command& command, bool& isDryRun) {
    command.AddFlag("--dry-run", isDryRun, "Say what would be done, without changing anything");
}

}  // namespace host

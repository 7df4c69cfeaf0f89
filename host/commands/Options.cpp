#include "Options.h"

#include <CLI/CLI.hpp>
#include <charconv>
#include <memory>
#include <system_error>

#include "host/system/FileSystem.h"
#include "host/system/NearestWord.h"
#include "host/system/Text.h"

namespace host {
namespace {

std::string Joined(const std::vector<std::string>& words, const std::string& between,
                   const std::string& beforeLast) {
    std::string text;
    for (std::size_t index = 0; index < words.size(); ++index) {
        text += (index == 0 ? "" : index + 1 < words.size() ? between : beforeLast) + words[index];
    }
    return text;
}

/// `neither a nor b`, `none of a, b and c`
std::string NoneOf(const std::vector<std::string>& words) {
    return words.size() == 2 ? "neither " + Joined(words, "", " nor ")
                             : "none of " + Joined(words, ", ", " and ");
}

/// Takes one of the words, in any letter case, as it is in the list.
CLI::Validator ChoiceOf(const std::vector<std::string>& words) {
    const auto choose = [words](std::string& text) -> std::string {
        for (const std::string& known : words) {
            if (ToUpperAscii(text) == ToUpperAscii(known)) {
                text = known;
                return "";
            }
        }
        return Quoted(text) + " is " + NoneOf(words) + DidYouMean(NearestWord(text, words));
    };
    return {choose, "{" + Joined(words, ",", ",") + "}"};
}

}  // namespace

CLI::Option& AddInputOptions(CLI::App& command, InputOptions& options) {
    CLI::Option& directory =
        *command.add_option("DIR", options.input, "The directory with the studies, or a project file")
             ->required()
             ->type_name("");
    command.add_flag("--strict", options.isStrict,
                     "End with status 1 if an entry of the directory cannot be read, or has a name\n"
                     "that a document cannot carry, or if a korvane.toml has an entry that cannot be used.\n"
                     "The output is written without that entry");
    AddSelection(command, options.selection);
    return directory;
}

void AddSelection(CLI::App& command, Selection& selection) {
    const auto check = [](const std::string& pattern) -> std::string {
        const bool isPattern =
            pattern.find_first_not_of("!/") != std::string::npos && GlobPattern(pattern).IsValid();
        return isPattern ? "" : Quoted(pattern) + " is not a pattern; give one like results/*.frd";
    };
    command
        .add_option("--study", selection.studies,
                    "Only this study, or the studies in this directory; a path in DIR. Can be given\n"
                    "several times")
        ->type_name("PATH")
        ->allow_extra_args(false);
    command
        .add_option("--exclude", selection.excluded,
                    "Leave out files and directories with such a name or path, as a line of a\n"
                    ".korvaneignore in DIR does. Can be given several times")
        ->type_name("GLOB")
        ->allow_extra_args(false)
        ->check(check);
}

void AddFilesIn(CLI::App& command, std::vector<std::string>& directories) {
    const auto check = [](const std::string& directory) -> std::string {
        Entry entry;
        const bool isDirectory =
            !InspectTarget(PathFromUtf8(directory), entry) && entry.type == EntryType::Directory;
        return isDirectory ? "" : Quoted(directory) + " is not a directory that can be read";
    };
    command
        .add_option("--files-in", directories,
                    "A directory whose files are read, too, if a project file or a document names\n"
                    "them. Without this option, those in its own directory are read. Can be given\n"
                    "several times")
        ->type_name("DIR")
        ->allow_extra_args(false)
        ->check(CLI::Validator(check, ""));
}

void AddObjectOption(CLI::App& command, std::optional<int>& object, const std::string& description) {
    // The parser would ignore an empty text, and read 010 as an octal number.
    const auto check = [](const std::string& text) -> std::string {
        int number = 0;
        const char* const end = text.data() + text.size();
        const auto [rest, error] = std::from_chars(text.data(), end, number);
        const bool isIdentifier = error == std::errc() && rest == end && number > 0 && text.front() != '0';
        return isIdentifier ? "" : Quoted(text) + " is not an identifier; give a number like 12";
    };
    command.add_option("--object", object, description)->type_name("ID")->check(check);
}

CLI::Option& AddChoice(CLI::App& command, const std::string& name, std::string& word,
                       const std::vector<std::string>& words, const std::string& type,
                       const std::string& description) {
    return *command.add_option(name, word, description)->type_name(type)->transform(ChoiceOf(words));
}

void AddIgnore(CLI::App& command, Ignored& ignored) {
    const auto words = std::make_shared<std::vector<std::string>>();
    command
        .add_option("--ignore", *words,
                    "Leave out of the comparison dates of creation, or keys. Can be given for both.\n"
                    "Keys are left out anyway where one of the two is a directory, which has none")
        ->type_name("WHAT")
        ->allow_extra_args(false)
        ->transform(ChoiceOf({"dates", "keys"}))
        ->each([words, &ignored](const std::string& word) {
            ignored.dates = ignored.dates || word == "dates";
            ignored.keys = ignored.keys || word == "keys";
        });
}

void AddFormat(CLI::App& command, ReportFormat& format, const std::string& description) {
    const auto word = std::make_shared<std::string>();
    AddChoice(command, "--format", *word, {"text", "json"}, "FORMAT", description)
        .each([word, &format](const std::string& chosen) {
            *word = chosen;
            format = chosen == "json" ? ReportFormat::Json : ReportFormat::Text;
        });
}

void AddReportFormat(CLI::App& command, ReportFormat& format) {
    AddFormat(command, format,
              "text (the default) reports what was done in messages, json as one JSON document\n"
              "on the standard output: --format json");
}

void AddExamples(CLI::App& command, const std::string& examples, const std::string& notes) {
    command.footer((notes.empty() ? "" : notes + "\n\n") + "Examples:\n" + examples);
}

void AddDryRun(CLI::App& command, bool& isDryRun) {
    command.add_flag("--dry-run", isDryRun, "Say what would be done, without changing anything");
}

}  // namespace host

#include "Options.h"

#include <CLI/CLI.hpp>
#include <charconv>
#include <system_error>

#include "host/system/Text.h"

namespace host {

void AddInputOptions(CLI::App& command, InputOptions& options) {
    command.add_option("DIR", options.input, "The directory with the studies, or a project file")
        ->required()
        ->type_name("");
    command.add_flag("--strict", options.isStrict,
                     "End with status 1 if an entry of the directory cannot be read, or has a name\n"
                     "that a document cannot carry.\n"
                     "The output is written without that entry");
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

void AddChoice(CLI::App& command, const std::string& name, std::string& word,
               const std::array<std::string, 2>& words, const std::string& type,
               const std::string& description) {
    const auto check = [words](const std::string& text) -> std::string {
        const bool isKnown = text == words[0] || text == words[1];
        return isKnown ? "" : Quoted(text) + " is neither " + words[0] + " nor " + words[1];
    };
    command.add_option(name, word, description)
        ->type_name(type)
        ->check(CLI::Validator(check, "{" + words[0] + "," + words[1] + "}"));
}

void AddExamples(CLI::App& command, const std::string& examples, const std::string& notes) {
    command.footer((notes.empty() ? "" : notes + "\n\n") + "Examples:\n" + examples);
}

void AddDryRun(CLI::App& command, bool& isDryRun) {
    command.add_flag("--dry-run", isDryRun, "Say what would be done, without changing anything");
}

}  // namespace host

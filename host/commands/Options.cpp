#include "Options.h"

#include <CLI/CLI.hpp>

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
        const bool isNumber =
            !text.empty() && text.front() != '0' && text.find_first_not_of("0123456789") == std::string::npos;
        return isNumber ? "" : Quoted(text) + " is not an identifier; give a number like 12";
    };
    command.add_option("--object", object, description)->type_name("ID")->check(check);
}

void AddExamples(CLI::App& command, const std::string& examples, const std::string& notes) {
    command.footer((notes.empty() ? "" : notes + "\n\n") + "Examples:\n" + examples);
}

void AddDryRun(CLI::App& command, bool& isDryRun) {
    command.add_flag("--dry-run", isDryRun, "Say what would be done, without changing anything");
}

}  // namespace host

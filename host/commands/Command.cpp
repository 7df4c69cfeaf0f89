#include "Command.h"

#include <CLI/CLI.hpp>

#include "ProjectInput.h"
#include "host/system/Terminal.h"
#include "host/system/Text.h"

namespace host {

void AddInputOptions(CLI::App& command, InputOptions& options) {
    command.add_option("DIR", options.input, "The directory that holds the studies, or a project file")
        ->required()
        ->type_name("");
    command.add_flag("--strict", options.isStrict,
                     "End with status 1 when an entry of the directory could not be read.\n"
                     "The output is written all the same, without the entry");
}

void AddObjectOption(CLI::App& command, std::optional<int>& object, const std::string& description) {
    // The parser would take an empty text for no option at all, and 010 for an octal number.
    const auto check = [](const std::string& text) -> std::string {
        const bool isNumber =
            !text.empty() && text.front() != '0' && text.find_first_not_of("0123456789") == std::string::npos;
        return isNumber ? "" : Quoted(text) + " is no identifier, which is a number like 12";
    };
    command.add_option("--object", object, description)->type_name("ID")->check(check);
}

void AddExamples(CLI::App& command, std::string_view examples) {
    command.footer("Examples:\n" + std::string(examples));
}

std::optional<DirectoryReading> OpenProject(const InputOptions& options,
                                            const std::optional<std::filesystem::path>& leftOut,
                                            Console& console) {
    const InputKind kind = KindOfInput(options.input);
    if (kind == InputKind::Document) {
        console.Say((options.input == "-" ? std::string("the standard input") : Quoted(options.input)) +
                    " is neither a directory nor a project file");
        return std::nullopt;
    }
    if (kind == InputKind::ProjectFile) {
        DirectoryReading fromFile;
        fromFile.project = OpenProjectFile(options.input, console);
        return fromFile.project != nullptr ? std::optional(std::move(fromFile)) : std::nullopt;
    }
    DirectoryReading reading = ReadDirectory(PathFromUtf8(options.input), leftOut, console);
    if (reading.project == nullptr) {
        console.Say("cannot read " + Quoted(options.input) + ": " + reading.error.message() +
                    ". Give a directory of simulation files that you may read");
        return std::nullopt;
    }
    return reading;
}

int Finish(const InputOptions& options, const DirectoryReading& reading, Console& console) {
    if (reading.unreadableCount == 0) {
        return kSuccess;
    }
    console.Say(FormatCount(reading.unreadableCount, "entry", "entries") +
                " could not be read and had to be left out" +
                (options.isStrict ? ", which --strict does not allow" : "; --strict makes that a failure"));
    return options.isStrict ? kFailure : kSuccess;
}

bool WriteToStandardOutput(std::string_view text, Console& console) {
    const std::error_code error = WriteAll(Stream::Output, text);
    if (!error || error == std::errc::broken_pipe) {
        return true;
    }
    console.Say("cannot write to the standard output: " + error.message());
    return false;
}

}  // namespace host

#include <korvaneexchange/WriteDocument.h>

#include <memory>
#include <string>

#include "Commands.h"
#include "Done.h"
#include "ExitStatus.h"
#include "Options.h"
#include "Output.h"
#include "ProjectInput.h"
#include "host/system/Phase.h"
#include "host/system/Terminal.h"
#include "host/system/Text.h"

namespace exchange = korvane::exchange;

namespace host {
namespace {

struct ExportOptions {
    InputOptions from;
    std::optional<int> object;
    std::string mode;
    std::string text = "compact";
    std::string output = kStandardStream;

    bool IsToStandardOutput() const { return output == kStandardStream; }
};

exchange::WriteOptions WriteOptionsOf(const ExportOptions& options, Console& console) {
    // Progress and document must not come to the same terminal.
    const bool isSilent = options.IsToStandardOutput() && IsTerminal(Stream::Output);
    return {.mode = options.mode == "PROJECT" ? exchange::ExportMode::kProject
                    : options.mode == "STUDY" ? exchange::ExportMode::kStudy
                                              : exchange::ExportMode::kEverything,
            .layout = options.text == "indented" ? exchange::Layout::kIndented : exchange::Layout::kCompact,
            .progress = [&console, isSilent](const exchange::Progress& progress) {
                if (!isSilent) {
                    console.ShowProgress("Writing the document", progress.objects, 0);
                }
                return true;
            }};
}

/// Ends the writing where the output takes no more.
struct OutputError {
    std::error_code error;
};

/// Puts the document of the object as text that ends with a line feed, page by page.
std::error_code PutDocument(CAEObject& object, const exchange::WriteOptions& options, const WritePiece& put) {
    char last = '\0';
    try {
        exchange::WriteDocument(object, options, [&put, &last](std::string_view page) {
            if (const std::error_code error = put(page)) {
                throw OutputError{error};
            }
            last = page.back();
        });
    } catch (const OutputError& end) {
        return end.error;
    }
    return last == '\n' ? std::error_code() : put("\n");
}

int ExportProject(const ExportOptions& options, Console& console) {
    if (!IsReplaceable(options.output, {options.from.input}, console)) {
        return kFailure;
    }
    const std::optional<OpenedProject> reading =
        OpenProject(options.from, PathOfOutput(options.output), console);
    if (!reading) {
        return kFailure;
    }
    if (!IsReplaceableIn(*reading->project, options.output, console)) {
        return kFailure;
    }
    CAEObject* object = reading->project.get();
    if (options.object) {
        object = reading->project->getCAEObject(*options.object);
        if (object == nullptr) {
            const std::string& input = options.from.input;
            console.Say("there is no object " + std::to_string(*options.object) + " in " + Quoted(input) +
                        "; 'korvane-json tree " + Printable(std::string_view(input)) + "' lists the objects");
            return kFailure;
        }
    }
    const exchange::WriteOptions writing = WriteOptionsOf(options, console);
    const auto put = [&](const WritePiece& piece) { return PutDocument(*object, writing, piece); };
    const bool isWritten = [&] {
        const Phase phase(console, "writing the document");
        return WriteOutput(options.output, put, console);
    }();
    console.ClearProgress();
    if (!isWritten) {
        Finish(options.from, *reading, console);
        return kFailure;
    }
    return ReportDone(false, console, [&] { return Finish(options.from, *reading, console); });
}

}  // namespace

void AddExportCommand(CLI::App& program, Console& console, int& status) {
    const auto options = std::make_shared<ExportOptions>();
    const Command command =
        AddCommand(program, "export", "Write the JSON document of a project or of one object in it");
    AddInputOptions(command, options->from);
    AddObjectOption(command, options->object,
                    "Write the document of the object with this identifier instead of the\n"
                    "whole project; 'korvane-json tree DIR' lists the identifiers: --object 12");
    AddChoice(command, "--mode", options->mode, {"PROJECT", "STUDY"}, "MODE",
              "PROJECT writes only the files in the project's own directory, STUDY\n"
              "everything except the iteration models. Without this option everything is\n"
              "written: --mode STUDY");
    AddChoice(command, "--text", options->text, {"compact", "indented"}, "FORM",
              "compact (the default) writes the document on one line, indented is for\n"
              "people. Both end with a line feed: --text indented");
    command
        .AddOption("-o,--output", options->output,
                   "The file to write to; an existing file is replaced when the new one is\n"
                   "complete. - is the standard output (the default): -o bracket.json")
        .Type("FILE");
    AddExamples(command,
                "  korvane-json export projects/bracket -o bracket.json\n"
                "  korvane-json export projects/bracket --object 12 --mode STUDY --text indented\n");
    command.Call([options, &console, &status] { status = ExportProject(*options, console); });
}

}  // namespace host

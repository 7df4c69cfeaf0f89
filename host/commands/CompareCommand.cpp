#include <korvanejson/JsonSerializer.h>

#include <CLI/CLI.hpp>
#include <memory>
#include <vector>

#include "Commands.h"
#include "ExitStatus.h"
#include "KeepUntilExit.h"
#include "Options.h"
#include "Output.h"
#include "ProjectInput.h"
#include "host/document/DocumentComparison.h"
#include "host/document/DocumentFile.h"
#include "host/system/Terminal.h"
#include "host/system/Text.h"

namespace host {
namespace {

struct CompareOptions {
    std::vector<std::string> inputs;
};

/// What is compared, and the project that it was exported from, if there is one.
struct Input {
    std::unique_ptr<CAEProject> project;
    ComparedDocument document;
};

bool OpenInput(const std::string& name, Input& input, Console& console) {
    if (KindOfInput(name) == InputKind::Document) {
        const std::optional<JSONNode> document = ReadJson(name, console);
        if (!document || !IsImportable(*document, name, console)) {
            return false;
        }
        input.document.node = *document;
        return true;
    }
    std::optional<OpenedProject> reading = OpenProject({name, false}, std::nullopt, console);
    if (!reading) {
        return false;
    }
    input.project = std::move(reading->project);
    input.document = {JsonSerializer(input.project.get()).GetJson(), input.project.get()};
    return true;
}

int Compare(const CompareOptions& options, Console& console) {
    Input first;
    Input second;
    if (!OpenInput(options.inputs.front(), first, console) ||
        !OpenInput(options.inputs.back(), second, console)) {
        return kFailure;
    }
    console.ShowProgress("Comparing", 0, 0);
    const DocumentDifferences result = CompareDocuments(first.document, second.document);
    console.ClearProgress();
    std::string text;
    for (const std::string& difference : result.differences) {
        text += difference + "\n";
    }
    if (result.differenceCount > result.differences.size()) {
        text += "and " + std::to_string(result.differenceCount - result.differences.size()) +
                " more differences\n";
    }
    text += result.differenceCount == 0
                ? "the same, apart from what the format does not carry: " +
                      FormatCount(result.objects, "object", "objects") + " and " +
                      FormatCount(result.files, "file", "files") + " compared\n"
                : FormatCount(result.differenceCount, "difference", "differences") + "\n";
    const bool isWritten = WriteToStandardOutput(text, console);
    KeepUntilExit(std::move(first));
    KeepUntilExit(std::move(second));
    return isWritten && result.differenceCount == 0 ? kSuccess : kFailure;
}

}  // namespace

void AddCompareCommand(CLI::App& program, Console& console, int& status) {
    const auto options = std::make_shared<CompareOptions>();
    CLI::App& command = *program.add_subcommand(
        "compare", "Say whether two projects are the same, apart from what documents do not carry");
    command
        .add_option("PROJECTS", options->inputs,
                    "Two of: a directory, a project file, a document (- is the standard input).\n"
                    "The status is 1 if they differ")
        ->required()
        ->expected(2)
        // If more are allowed, the parser reads a name in brackets as a list.
        ->allow_extra_args(false)
        ->type_name("");
    AddExamples(command,
                "  korvane-json compare bracket.kvp rebuilt.kvp\n"
                "  korvane-json compare projects/bracket bracket.json\n");
    command.callback([options, &console, &status] {
        if (options->inputs.front() == kStandardStream && options->inputs.back() == kStandardStream) {
            console.Say(
                "only one of the two can be the standard input (-). See 'korvane-json compare --help'");
            status = kBadUsage;
            return;
        }
        status = Compare(*options, console);
    });
}

}  // namespace host

#include <CLI/CLI.hpp>
#include <memory>

#include "Commands.h"
#include "Done.h"
#include "ExitStatus.h"
#include "Options.h"
#include "Output.h"
#include "ProjectInput.h"
#include "host/document/TreePrinter.h"
#include "host/system/FileSystem.h"
#include "host/system/Terminal.h"

namespace host {
namespace {

bool PrintObject(CAEObject& object, Console& console) {
    return WriteToStandardOutput(PrintTree(object, {IsOutputUtf8(), IsOutputColoured()}), console);
}

int PrintDocument(const InputOptions& options, Console& console) {
    const OpenedDocument document = OpenDocument(options.input, console);
    return document.root != nullptr && PrintObject(*document.root, console) ? kSuccess : kFailure;
}

int PrintProject(const InputOptions& options, Console& console) {
    if (KindOfInput(options.input) == InputKind::Document) {
        return PrintDocument(options, console);
    }
    const std::optional<OpenedProject> reading = OpenProject(options, PathOfStandardOutput(), console);
    if (!reading) {
        return kFailure;
    }
    if (!PrintObject(*reading->project, console)) {
        Finish(options, *reading, console);
        return kFailure;
    }
    return ReportDone(false, console, [&] { return Finish(options, *reading, console); });
}

}  // namespace

void AddTreeCommand(CLI::App& program, Console& console, int& status) {
    const auto options = std::make_shared<InputOptions>();
    CLI::App& command =
        *program.add_subcommand("tree", "Print the objects of a project: kinds, names, files and metadata");
    AddInputOptions(command, *options);
    command.get_option("DIR")->description(
        "The directory with the studies, a project file, or a document, which is shown\n"
        "as an import would create its objects (- is the standard input)");
    AddExamples(command,
                "  korvane-json tree projects/bracket\n"
                "  korvane-json tree bracket.kvp\n"
                "  korvane-json tree --strict projects/bracket > bracket.txt\n");
    command.callback([options, &console, &status] { status = PrintProject(*options, console); });
}

}  // namespace host

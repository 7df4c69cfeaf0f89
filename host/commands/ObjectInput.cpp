#include "ObjectInput.h"

#include "Done.h"
#include "ExitStatus.h"
#include "Output.h"
#include "ProjectInput.h"
#include "host/system/FileSystem.h"
#include "host/system/Text.h"

namespace host {

void AddObjectInput(const Command& command, InputOptions& options) {
    AddInputOptions(command, options)
        .Description(
            "The directory with the studies, a project file, or a document, which is shown\n"
            "as an import would create its objects (- is the standard input)");
}

int WithObjects(const InputOptions& options, const std::optional<std::string>& output, Console& console,
                const std::function<bool(CAEObject& root)>& work) {
    return WithObjects(options, output, console,
                       [&work](CAEObject& root, const Exclusion&) { return work(root); });
}

int WithObjects(const InputOptions& options, const std::optional<std::string>& output, Console& console,
                const std::function<bool(CAEObject& root, const Exclusion& exclusion)>& work) {
    if (KindOfInput(options.input) == InputKind::Document) {
        if (!IsSelectionPossible(options, console)) {
            return kFailure;
        }
        const OpenedDocument document = OpenDocument(options.input, console);
        return document.root != nullptr && work(*document.root, {}) ? kSuccess : kFailure;
    }
    const std::optional<OpenedProject> reading =
        OpenProject(options, output ? PathOfOutput(*output) : PathOfStandardOutput(), console);
    if (!reading) {
        return kFailure;
    }
    if (!work(*reading->project, reading->exclusion)) {
        Finish(options, *reading, console);
        return kFailure;
    }
    return ReportDone(false, console, [&] { return Finish(options, *reading, console); });
}

}  // namespace host

#include "DocumentImport.h"

#include <utility>

#include "DocumentFile.h"
#include "DocumentNode.h"
#include "ProjectObjects.h"
#include "format/Kinds.h"
#include "format/MemberNames.h"
#include "objectjson/NodeReading.h"

namespace member = format::member;
using format::Kind;
using korvane::exchange::Progress;
using korvane::exchange::ProgressCallback;

namespace host {
namespace {

ProgressCallback Shown(std::string_view what, Console& console) {
    return [what, &console](const Progress& progress) {
        console.ShowProgress(what, progress.objects, progress.total);
        return true;
    };
}

}  // namespace

korvane::exchange::ImportReport ImportDocument(const JSONNode& document, CAEObject& target,
                                               korvane::exchange::ImportOptions options, Console& console) {
    options.place = korvane::exchange::Place::kByKind;
    // Every document has them, and no import uses them.
    options.listFixed = false;
    options.progress = Shown("Importing the document", console);
    korvane::exchange::ImportReport report = korvane::exchange::ImportDocument(document, target, options);
    console.ClearProgress();
    return report;
}

std::unique_ptr<CAEProject> MakeProjectFor(const JSONNode& document, const OuString& otherName,
                                           const OuString& directory) {
    const Kind kind = format::KindOfType(MemberText(document, member::kType));
    const bool isProject = kind == Kind::kUnknown || kind == Kind::kProject;
    const OuString name = WideMember(document, member::kName);
    return CreateSimulationProject(isProject && !name.IsEmpty() ? name : otherName, directory);
}

korvane::exchange::AnswerReport ApplyAnswer(const JSONNode& answer, CAEProject& project, Console& console,
                                            korvane::exchange::KeyChoice keys) {
    korvane::exchange::AnswerReport report = korvane::exchange::ApplyAnswer(
        answer, project, {.progress = Shown("Applying the answer", console), .keys = keys});
    console.ClearProgress();
    return report;
}

void SayUseless(const korvane::exchange::AnswerReport& report, const std::string& file, Console& console) {
    console.Say("cannot use " + InputName(file) + ": " + report.whyUseless +
                ". Give the answer to a document of this project. Nothing was changed");
}

}  // namespace host

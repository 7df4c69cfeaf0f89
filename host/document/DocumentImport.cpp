#include "DocumentImport.h"

#include <unordered_set>
#include <utility>

#include "DocumentFile.h"
#include "DocumentNode.h"
#include "ObjectWalk.h"
#include "ProjectObjects.h"
#include "exchange/NodeWalker.h"
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

std::string UnknownProjectType(const JSONNode& document, CAEObject& target) {
    std::string type = MemberText(document, member::kType);
    const auto* const project = dynamic_cast<CAEProject*>(&target);
    if (project == nullptr || format::KindOfType(type) != Kind::kUnknown) {
        return {};
    }
    const auto isKnown = [compared = ComparedName(type)](const OuString& known) {
        return compared == ComparedName(known.GetAnsiBuffer());
    };
    return isKnown(project->getAdditionalType()) || isKnown(kSimulationType) ? std::string() : type;
}

std::size_t CountKnownKeys(const JSONNode& document, CAEProject& project) {
    std::unordered_set<std::string> keys;
    WalkObjects(project, [&keys](const WalkedObject& walked) {
        if (const OuString key = walked.object.getDBKey(); !key.IsEmpty()) {
            keys.emplace(key.GetAnsiBuffer());
        }
    });
    using korvane::exchange::NodePlace;
    using korvane::exchange::SectionOrder;
    std::size_t count = 0;
    korvane::exchange::WalkNodes(document, SectionOrder::AsWritten, [&](const auto& visit) {
        const JSONNode& node = visit.node;
        const JSONNode* const key = FindMember(node, member::kDatabaseKey);
        // That of a view item is the key of what it shows.
        const bool isOwn = visit.place == NodePlace::FileRecord ||
                           format::KindOfType(MemberText(node, member::kType)) != Kind::kViewItem;
        count += key != nullptr && isOwn && keys.erase(ValueText(*key)) != 0 ? 1 : 0;
        return visit.place != NodePlace::FileRecord;
    });
    return count;
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

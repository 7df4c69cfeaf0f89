#include <korvaneexchange/ImportDocument.h>

#include <memory>

#include "NodeText.h"
#include "ReportingImport.h"
#include "TreeIndex.h"
#include "UpdatingImport.h"
#include "format/MemberNames.h"
#include "objectjson/NodeReading.h"
#include "objectjson/RepeatedTexts.h"
#include "objectjson/Sections.h"

using format::Kind;

namespace korvane::exchange {
namespace {

bool IsReadOntoTarget(const JSONNode& document, CAEObject& target, Place place) {
    const Kind kind = format::KindOfType(AnsiFormOf(TextOf(FindMember(document, format::member::kType))));
    return place == Place::kOnTarget || kind == Kind::kUnknown || kind == KindOf(target);
}

void Read(const JSONNode& document, CAEObject& object, Place place, ReportingImport& import) {
    ImportTarget target = {&object, object.getProject(), &import};
    RepeatedTexts texts;
    if (target.project == nullptr) {
        import.RefuseRoot(document);
        return;
    }
    if (!IsReadOntoTarget(document, object, place)) {
        import.EnterParentOfRoot(target);
        ReadChild(target, document, texts);
    } else if (import.EnterRoot(target, document)) {
        target.project = StartImport(target, document);
        ReadMembers(target, document, texts);
    } else {
        return;
    }
    import.Finish();
}

}  // namespace

ImportReport ImportDocument(const JSONNode& document, CAEObject& target, const ImportOptions& options) {
    ImportReport report;
    const bool isUpdate = options.match == Match::kByKey;
    std::unique_ptr<DocumentKeys> keys;
    if (isUpdate || options.progress) {
        keys = std::make_unique<DocumentKeys>(document);
    }
    std::unique_ptr<ReportingImport> import;
    if (isUpdate) {
        import = std::make_unique<UpdatingImport>(options, report, target, *keys);
    } else {
        import =
            std::make_unique<ReportingImport>(options, report, keys == nullptr ? 0 : keys->ElementCount());
    }
    try {
        Read(document, target, options.place, *import);
    } catch (const StopImport&) {
        report.isStopped = true;
    }
    return report;
}

}  // namespace korvane::exchange

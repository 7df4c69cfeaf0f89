#include "DocumentImport.h"

#include <EmbeddedModel.h>
#include <korvanejson/CaeRest.h>

#include "DocumentNode.h"
#include "ImportComparison.h"
#include "ObjectLists.h"

namespace host {
namespace {

/// Stands for the target above a root that becomes a new object.
JSONNode WrapBelow(const std::string& type, const JSONNode& root) {
    JSONNode children(JSON_ARRAY);
    children.set_name(member::kChildren);
    children.push_back(root);
    JSONNode node(JSON_NODE);
    node.push_back(JSONNode(member::kType, type.c_str()));
    node.push_back(children);
    return node;
}

}  // namespace

CAEObject* ImportDocument(JSONNode document, CAEObject& target, ImportReport& report, Console& console) {
    RemoveNullKeys(document, report.notes);
    const _tagCAEObjectType kind = KindOfTypeName(MemberText(document, member::kType));
    const bool isOnTarget = kind == CAE_UNKNOWN_OBJECT || kind == target.getType();
    auto* const project = dynamic_cast<CAEProject*>(&target);
    const OuString additionalType = project != nullptr ? project->getAdditionalType() : OuString();
    JSONNode imported = document;
    if (!isOnTarget) {
        const std::string type = additionalType.GetAnsiBuffer();
        // Nothing is imported below an empty type.
        imported = WrapBelow(type.empty() ? "CAEPROJECT" : type, document);
    }
    const BeforeImport before(target);
    console.ShowProgress("Importing the document", 0, 0);
    caerest::json::DeserializeJsonToObject(imported, &target);
    if (!isOnTarget && project != nullptr) {
        project->setAdditionalType(additionalType);
    }
    console.ShowProgress("Comparing the document with its import", 0, 0);
    CompareImport(imported, target, before, report);
    console.ClearProgress();
    if (isOnTarget) {
        return &target;
    }
    const std::vector<CAEObject*> children = ChildrenOf(target);
    return children.size() > before.children ? children.back() : nullptr;
}

std::unique_ptr<CAEProject> MakeProjectFor(const JSONNode& document, const OuString& otherName,
                                           const OuString& directory) {
    const bool isProject = [&] {
        const _tagCAEObjectType kind = KindOfTypeName(MemberText(document, member::kType));
        return kind == CAE_UNKNOWN_OBJECT || kind == CAE_PROJECT;
    }();
    const OuString name(MemberText(document, member::kName).c_str(), 0);
    auto project = korvane::CreateProject(isProject && !name.IsEmpty() ? name : otherName, directory);
    project->setAdditionalType(OuString(L"Simulation"));
    return project;
}

}  // namespace host

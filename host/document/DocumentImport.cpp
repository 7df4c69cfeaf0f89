#include "DocumentImport.h"

#include <korvanejson/CaeRest.h>

#include "DocumentNode.h"
#include "ImportComparison.h"
#include "ObjectLists.h"
#include "ProjectObjects.h"
#include "format/MemberNames.h"
#include "objectjson/NodeReading.h"

namespace member = format::member;
using format::Kind;

namespace host {
namespace {

/// The node of the target above a root that becomes a new object.
JSONNode WrapBelow(const char* type, const JSONNode& root) {
    JSONNode children(JSON_ARRAY);
    children.set_name(member::kChildren.c_str());
    children.push_back(root);
    JSONNode node(JSON_NODE);
    node.push_back(JSONNode(member::kType.c_str(), type));
    node.push_back(children);
    return node;
}

}  // namespace

CAEObject* ImportDocument(JSONNode document, CAEObject& target, ImportReport& report, Console& console) {
    RemoveNullKeys(document, report.notes);
    const Kind kind = format::KindOfType(MemberText(document, member::kType));
    const bool isOnTarget = kind == Kind::kUnknown || kind == KindOf(target);
    auto* const project = dynamic_cast<CAEProject*>(&target);
    const OuString additionalType = project != nullptr ? project->getAdditionalType() : OuString();
    JSONNode imported = document;
    if (!isOnTarget) {
        // A node with an empty type is not imported.
        imported = WrapBelow(additionalType.IsEmpty() ? format::TypeOfKind(Kind::kProject).data()
                                                      : additionalType.GetAnsiBuffer(),
                             document);
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
    const Kind kind = format::KindOfType(MemberText(document, member::kType));
    const bool isProject = kind == Kind::kUnknown || kind == Kind::kProject;
    const OuString name = WideMember(document, member::kName);
    return CreateSimulationProject(isProject && !name.IsEmpty() ? name : otherName, directory);
}

}  // namespace host

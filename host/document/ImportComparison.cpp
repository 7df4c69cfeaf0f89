#include "ImportComparison.h"

#include <EmbeddedModel.h>

#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "DocumentNode.h"
#include "MemberNotes.h"
#include "NodeWalker.h"
#include "ObjectLists.h"
#include "format/MemberNames.h"
#include "objectjson/NodeReading.h"

namespace member = format::member;
using format::Kind;

namespace host {
namespace {

constexpr std::string_view kNoType = "left out with everything below it, because it has no \"type\"";
constexpr std::string_view kUnknownType =
    "left out with everything below it, because its \"type\" is not known";
constexpr std::string_view kNotCreated =
    "left out with everything below it, because the object was not created";
constexpr std::string_view kUnattached =
    "file that is attached to no object, because its type has no role there";
constexpr std::string_view kNotShown =
    "view item that shows nothing, because no assembly with its key came before it";
constexpr std::string_view kStrayName = "file whose name leads out of the project's directory";

/// Whether the name leads to another place than the directory that it is appended to.
bool LeadsOut(const std::string& name) {
    return name.find_first_of("/\\") != std::string::npos || name == ".." || name == ".";
}

/// An object that the import created from a node or wrote the node onto, and what it created for the elements
/// of the node.
struct MadeObject {
    const JSONNode* node = nullptr;
    CAEObject* object = nullptr;
    std::vector<CAEObject*> children;
    std::size_t nextChild = 0;
    /// The files attached to the object; filled in when the node has its first file record.
    std::optional<std::unordered_set<int>> files;
};

class ImportFollower {
public:
    ImportFollower(CAEObject& target, const BeforeImport& before, ImportReport& report)
        : target_(target), before_(before), report_(report) {
        if (CAEProject* const project = target.getProject()) {
            projects_[project] = {korvane::GetProjectFiles(*project), before.files};
        }
    }

    void Run(const JSONNode& document);

private:
    using Visit = NodeVisit<const JSONNode, MadeObject>;
    struct FilesOfProject {
        std::vector<CAEFile*> files;
        std::size_t next = 0;
    };

    bool Enter(const Visit& visit);
    /// The object that was created from an element. Returns null, after a note, if there is none.
    CAEObject* ObjectOf(const JSONNode& element, MadeObject& above);
    void FollowObject(const Visit& visit, CAEObject& object);
    void FollowRecord(const JSONNode& record, MadeObject& above);
    void Leave(const Visit& visit);
    CAEFile* NextFileOf(CAEProject* project);

    CAEObject& target_;
    const BeforeImport& before_;
    ImportReport& report_;
    std::unordered_map<CAEProject*, FilesOfProject> projects_;
};

void ImportFollower::Run(const JSONNode& document) {
    WalkNodes<MadeObject>(
        document, SectionOrder::AsWritten, [this](const Visit& visit) { return Enter(visit); },
        [this](const Visit& visit) { Leave(visit); });
}

bool ImportFollower::Enter(const Visit& visit) {
    if (visit.above == nullptr) {
        FollowObject(visit, target_);
        visit.own.nextChild = before_.children;
        return true;
    }
    if (visit.place == NodePlace::FileRecord) {
        // An import reads nothing below a file record.
        FollowRecord(visit.node, *visit.above);
        return false;
    }
    CAEObject* const object = ObjectOf(visit.node, *visit.above);
    if (object == nullptr) {
        return false;
    }
    if (KindOf(*object) == Kind::kFile) {
        ++report_.files;
        ++report_.childFiles;
    } else {
        ++report_.objects;
    }
    FollowObject(visit, *object);
    return true;
}

CAEObject* ImportFollower::ObjectOf(const JSONNode& element, MadeObject& above) {
    const std::string type = MemberText(element, member::kType);
    const Kind kind = format::KindOfType(type);
    if (type.empty()) {
        report_.notes.Add(kNoType, [&] { return Describe(element); });
    } else if (kind == Kind::kUnknown) {
        report_.notes.Add(kUnknownType, [&] { return Describe(element) + " of type " + Excerpt(type); });
    } else if (above.nextChild == above.children.size() || KindOf(*above.children[above.nextChild]) != kind) {
        report_.notes.Add(kNotCreated, [&] { return Describe(element); });
    } else {
        return above.children[above.nextChild++];
    }
    return nullptr;
}

void ImportFollower::FollowObject(const Visit& visit, CAEObject& object) {
    NoteMembers(visit.node, visit.place, report_.notes);
    const OuString key = KindOf(object) == Kind::kViewItem ? object.getLinkDBKey() : object.getDBKey();
    if (FindMember(visit.node, member::kDatabaseKey) != nullptr && !key.IsEmpty()) {
        ++report_.keys;
    }
    visit.own.node = &visit.node;
    visit.own.object = &object;
    visit.own.children = ChildrenOf(object);
}

void ImportFollower::FollowRecord(const JSONNode& record, MadeObject& above) {
    const CAEFile* const file = NextFileOf(above.object->getProject());
    if (file == nullptr) {
        report_.notes.Add(kNotCreated, [&] { return Describe(record); });
        return;
    }
    if (!above.files) {
        const std::vector<int> files = korvane::GetFileRoles(*above.object).files;
        above.files.emplace(files.begin(), files.end());
    }
    ++report_.files;
    NoteMembers(record, NodePlace::FileRecord, report_.notes);
    if (above.files->contains(file->getID())) {
        ++report_.attachedFiles;
    } else {
        report_.notes.Add(kUnattached, [&] { return Describe(record) + " at " + Describe(*above.node); });
    }
    if (FindMember(record, member::kDatabaseKey) != nullptr && !file->getDBKey().IsEmpty()) {
        ++report_.keys;
    }
    OuString name;
    file->getName(name);
    if (LeadsOut(name.GetAnsiBuffer())) {
        report_.notes.Add(kStrayName, [&] { return Describe(record); });
    }
}

void ImportFollower::Leave(const Visit& visit) {
    const auto* const item = dynamic_cast<const CAEViewItem*>(visit.own.object);
    // The reference of the target itself is not part of the import.
    if (item == nullptr || visit.above == nullptr) {
        return;
    }
    ++report_.viewItems;
    if (korvane::GetReferencedObject(*item) != 0) {
        ++report_.linkedViewItems;
    } else {
        report_.notes.Add(kNotShown, [&] {
            return Describe(visit.node) + " with the key " + Excerpt(item->getLinkDBKey().GetAnsiBuffer());
        });
    }
}

CAEFile* ImportFollower::NextFileOf(CAEProject* project) {
    if (project == nullptr) {
        return nullptr;
    }
    const auto known = projects_.find(project);
    FilesOfProject& files = known != projects_.end() ? known->second : projects_[project];
    if (known == projects_.end()) {
        files.files = korvane::GetProjectFiles(*project);
    }
    return files.next < files.files.size() ? files.files[files.next++] : nullptr;
}

}  // namespace

BeforeImport::BeforeImport(CAEObject& target)
    : children(ChildrenOf(target).size()),
      files(target.getProject() != nullptr ? korvane::GetProjectFiles(*target.getProject()).size() : 0) {}

void CompareImport(const JSONNode& document, CAEObject& target, const BeforeImport& before,
                   ImportReport& report) {
    ImportFollower(target, before, report).Run(document);
}

}  // namespace host

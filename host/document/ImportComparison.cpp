#include "ImportComparison.h"

#include <EmbeddedModel.h>

#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "DocumentNode.h"
#include "MemberNotes.h"
#include "ObjectLists.h"
#include "format/MemberNames.h"
#include "objectjson/NodeReading.h"

namespace member = format::member;
using format::Kind;

namespace host {
namespace {

constexpr std::string_view kNoType = "left out with everything below, because there is no \"type\"";
constexpr std::string_view kUnknownType = "left out with everything below, because the \"type\" is not known";
constexpr std::string_view kNotCreated = "left out with everything below, because the object was not created";
constexpr std::string_view kUnattached =
    "file of the project that hangs on no object, because its type has "
    "no role there";
constexpr std::string_view kNotShown =
    "view item that shows nothing, because no assembly with its key came "
    "before it";
constexpr std::string_view kStrayName = "file whose name leads out of the project's directory";

/// Whether the directory and the name put together are a path to somewhere else than into the directory.
bool LeadsOut(const std::string& name) {
    return name.find_first_of("/\\") != std::string::npos || name == ".." || name == ".";
}

class ImportFollower {
public:
    ImportFollower(CAEObject& target, const BeforeImport& before, ImportReport& report) : report_(report) {
        if (CAEProject* const project = target.getProject()) {
            projects_[project] = {korvane::GetProjectFiles(*project), before.files};
        }
    }

    void Run(const JSONNode& document, CAEObject& target, std::size_t childrenBefore);

private:
    /// A node on the way, with the object that was made of it, and where its walk stands.
    struct Place {
        JSONNode node;
        CAEObject* object;
        json_index_t nextMember = 0;
        JSONNode elements{JSON_ARRAY};
        json_index_t nextElement = 0;
        std::vector<CAEObject*> made;
        std::size_t nextMade = 0;
        std::unordered_set<int> files;
    };
    struct FilesOfProject {
        std::vector<CAEFile*> files;
        std::size_t next = 0;
    };

    void Enter(const JSONNode& node, CAEObject& object, std::size_t childrenBefore);
    void EnterElement(Place& place, const JSONNode& element);
    void FollowMember(Place& place, const JSONNode& value);
    void FollowRecords(Place& place, const JSONNode& records);
    void FollowRecord(const Place& place, const JSONNode& record);
    void Leave();
    CAEFile* NextFileOf(CAEProject* project);

    ImportReport& report_;
    std::vector<Place> places_;
    std::unordered_map<CAEProject*, FilesOfProject> projects_;
};

void ImportFollower::Run(const JSONNode& document, CAEObject& target, std::size_t childrenBefore) {
    Enter(document, target, childrenBefore);
    while (!places_.empty()) {
        Place& place = places_.back();
        if (place.nextElement < place.elements.size()) {
            const JSONNode element = std::as_const(place.elements).at(place.nextElement++);
            EnterElement(place, element);
        } else if (place.nextMember < place.node.size()) {
            const JSONNode value = std::as_const(place.node).at(place.nextMember++);
            FollowMember(place, value);
        } else {
            Leave();
        }
    }
}

void ImportFollower::Enter(const JSONNode& node, CAEObject& object, std::size_t childrenBefore) {
    NoteMembers(node, NodeKind::Object, report_.notes);
    const OuString key = KindOf(object) == Kind::kViewItem ? object.getLinkDBKey() : object.getDBKey();
    if (FindMember(node, member::kDatabaseKey) != nullptr && !key.IsEmpty()) {
        ++report_.keys;
    }
    Place& place = places_.emplace_back();
    place.node = node;
    place.object = &object;
    place.made = ChildrenOf(object);
    place.nextMade = childrenBefore;
}

void ImportFollower::EnterElement(Place& place, const JSONNode& element) {
    const std::string type = MemberText(element, member::kType);
    if (type.empty()) {
        report_.notes.Add(kNoType, [&] { return Describe(element); });
        return;
    }
    const Kind kind = format::KindOfType(type);
    if (kind == Kind::kUnknown) {
        report_.notes.Add(kUnknownType, [&] { return Describe(element) + " of type " + Excerpt(type); });
        return;
    }
    if (place.nextMade == place.made.size() || KindOf(*place.made[place.nextMade]) != kind) {
        report_.notes.Add(kNotCreated, [&] { return Describe(element); });
        return;
    }
    if (kind == Kind::kFile) {
        ++report_.files;
        ++report_.childFiles;
    } else {
        ++report_.objects;
    }
    Enter(element, *place.made[place.nextMade++], 0);
}

void ImportFollower::FollowMember(Place& place, const JSONNode& value) {
    const std::string name = NameOfMember(value);
    if (name == member::kChildren) {
        place.elements = value.as_array();
        place.nextElement = 0;
    } else if (name == member::kFiles) {
        FollowRecords(place, value.as_array());
    }
}

void ImportFollower::FollowRecords(Place& place, const JSONNode& records) {
    if (place.files.empty() && !records.empty()) {
        const std::vector<int> files = korvane::GetFileRoles(*place.object).files;
        place.files.insert(files.begin(), files.end());
    }
    for (const JSONNode& record : records) {
        FollowRecord(place, record);
    }
}

void ImportFollower::FollowRecord(const Place& place, const JSONNode& record) {
    const CAEFile* const file = NextFileOf(place.object->getProject());
    if (file == nullptr) {
        report_.notes.Add(kNotCreated, [&] { return Describe(record); });
        return;
    }
    ++report_.files;
    NoteMembers(record, NodeKind::FileRecord, report_.notes);
    if (place.files.contains(file->getID())) {
        ++report_.attachedFiles;
    } else {
        report_.notes.Add(kUnattached, [&] { return Describe(record) + " at " + Describe(place.node); });
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

void ImportFollower::Leave() {
    const Place& place = places_.back();
    const auto* const item = dynamic_cast<const CAEViewItem*>(place.object);
    // The target's own reference is no matter of an import.
    if (item != nullptr && places_.size() > 1) {
        ++report_.viewItems;
        if (korvane::GetReferencedObject(*item) != 0) {
            ++report_.linkedViewItems;
        } else {
            report_.notes.Add(kNotShown, [&] {
                return Describe(place.node) + " with the key " +
                       Excerpt(item->getLinkDBKey().GetAnsiBuffer());
            });
        }
    }
    places_.pop_back();
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
    ImportFollower(target, before, report).Run(document, target, before.children);
}

}  // namespace host

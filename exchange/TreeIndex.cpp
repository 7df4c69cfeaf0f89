#include "TreeIndex.h"

#include <algorithm>
#include <utility>

#include "NodeText.h"
#include "NodeWalker.h"
#include "format/MemberNames.h"
#include "objectjson/NodeReading.h"

namespace member = format::member;
using format::Kind;

namespace korvane::exchange {

std::vector<CAEObject*> ChildrenOf(CAEObject& object) {
    constexpr int kListBlockSize = 10;
    OuList list(kListBlockSize);
    object.getChildrenList(list);
    std::vector<CAEObject*> children;
    ListWalk walk(list);
    while (walk.HasNext()) {
        if (CAEObject* const child = walk.NextObject()) {
            children.push_back(child);
        }
    }
    return children;
}

std::vector<CAEFile*> FilesOf(CAEObject& object) {
    std::vector<CAEFile*> files;
    OuList list = object.GetFiles();
    CAEProject* const project = object.getProject();
    ListWalk walk(list);
    while (project != nullptr && walk.HasNext()) {
        if (CAEFile* const file = project->getFile(walk.NextIdentifier())) {
            files.push_back(file);
        }
    }
    return files;
}

TreeIndex::TreeIndex(CAEObject& root) {
    AddTree(root, nullptr);
    CAEObject* top = &root;
    while (CAEObject* const above = top->getParent()) {
        top = above;
    }
    if (top != &root) {
        AddTree(*top, &root);
    }
}

void TreeIndex::AddTree(CAEObject& top, const CAEObject* without) {
    const bool isOutside = without != nullptr;
    std::vector<CAEObject*> open = {&top};
    while (!open.empty()) {
        CAEObject& object = *open.back();
        open.pop_back();
        if (&object == without) {
            continue;
        }
        if (KindOf(object) != Kind::kViewItem) {
            Add(objects_, object, isOutside);
        } else if (!isOutside) {
            Add(viewItems_, object, false);
        }
        for (CAEFile* const file : FilesOf(object)) {
            // A file may be attached to several objects.
            if (knownFiles_.insert(file).second) {
                Add(files_, *file, false);
            }
        }
        const std::vector<CAEObject*> children = ChildrenOf(object);
        open.insert(open.end(), children.begin(), children.end());
    }
}

void TreeIndex::Add(Map& map, CAEObject& object, bool isOutside) {
    const OuString key = object.getDBKey();
    if (IsEmpty(key)) {
        return;
    }
    Owners& owners = map[AnsiFormOf(key)];
    if (owners.object == nullptr && owners.several.empty()) {
        owners.object = &object;
        owners.isOutside = isOutside;
        return;
    }
    if (owners.several.empty()) {
        owners.several.push_back(std::exchange(owners.object, nullptr));
    }
    owners.several.push_back(&object);
}

const TreeIndex::Owners& TreeIndex::Find(const Map& map, const OuString& key) {
    const auto found = map.find(AnsiFormOf(key));
    static const Owners kNobody;
    return found == map.end() ? kNobody : found->second;
}

const TreeIndex::Owners& TreeIndex::ObjectsWith(const OuString& key) const {
    return Find(objects_, key);
}

const TreeIndex::Owners& TreeIndex::ViewItemsWith(const OuString& key) const {
    return Find(viewItems_, key);
}

const TreeIndex::Owners& TreeIndex::FilesWith(const OuString& key) const {
    return Find(files_, key);
}

bool TreeIndex::HasAnyOf(const DocumentKeys& keys) const {
    return std::ranges::any_of(
               objects_,
               [&](const auto& owners) { return !owners.second.isOutside && keys.Has(owners.first); }) ||
           std::ranges::any_of(files_, [&](const auto& owners) { return keys.HasFile(owners.first); });
}

DocumentKeys::DocumentKeys(const JSONNode& root) {
    WalkNodes(root, SectionOrder::AsWritten, [this](const auto& visit) {
        const bool isFile = visit.place == NodePlace::FileRecord;
        elements_ += visit.place == NodePlace::Root ? 0 : 1;
        if (isFile) {
            ReadFile(visit.node);
        } else {
            Read(visit.node);
        }
        // Nothing is imported below a file record.
        return !isFile;
    });
}

void DocumentKeys::Read(const JSONNode& node) {
    const LastMembers last(node);
    const OuString key = TextOf(last.key);
    if (!IsEmpty(key) && format::KindOfType(AnsiFormOf(TextOf(last.type))) != Kind::kViewItem) {
        ++counts_[AnsiFormOf(key)];
    }
}

void DocumentKeys::ReadFile(const JSONNode& record) {
    const OuString key = TextOf(LastMembers(record).key);
    if (!IsEmpty(key)) {
        FileRecords& records = files_[AnsiFormOf(key)];
        records.first = records.first == nullptr ? &record : records.first;
        records.areDifferent = records.areDifferent || *records.first != record;
    }
}

bool DocumentKeys::HasTwice(const OuString& key) const {
    const auto found = counts_.find(AnsiFormOf(key));
    return found != counts_.end() && (found->second > 1 || HasFile(key));
}

bool DocumentKeys::Has(const OuString& key) const {
    return counts_.contains(AnsiFormOf(key));
}

bool DocumentKeys::HasFile(const OuString& key) const {
    return !IsEmpty(key) && files_.contains(AnsiFormOf(key));
}

bool DocumentKeys::HasFileTwice(const OuString& key) const {
    const auto found = files_.find(AnsiFormOf(key));
    return Has(key) || (found != files_.end() && found->second.areDifferent);
}

LastMembers::LastMembers(const JSONNode& node) {
    if (node.type() != JSON_NODE) {
        return;
    }
    for (const JSONNode& value : node) {
        const NodeText text = NodeName(value);
        const std::string_view memberName = text;
        if (memberName == member::kName.View()) {
            name = anyName = &value;
        } else if (memberName == member::kDisplayName.View()) {
            displayName = anyName = &value;
        } else if (memberName == member::kDatabaseKey.View()) {
            key = value.type() == JSON_NULL ? key : &value;
        } else if (memberName == member::kCreatedDate.View()) {
            createdDate = &value;
        } else if (memberName == member::kType.View()) {
            type = type == nullptr ? &value : type;
        } else if (memberName == member::kFileType.View()) {
            fileType = fileType == nullptr ? &value : fileType;
        }
    }
}

OuString TextOf(const JSONNode* member) {
    return member == nullptr ? OuString() : WideValue(*member);
}

}  // namespace korvane::exchange

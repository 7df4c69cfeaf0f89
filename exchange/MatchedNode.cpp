#include "MatchedNode.h"

#include "NodeText.h"
#include "format/MemberNames.h"
#include "format/Values.h"
#include "objectjson/NodeReading.h"

namespace member = format::member;
using format::Kind;

namespace korvane::exchange {
namespace {

std::string Sign(char what, int number, const OuString& text) {
    std::string sign(1, what);
    sign += std::to_string(number);
    sign += ' ';
    sign += AnsiFormOf(text);
    return sign;
}

/// What is read back from what an export writes.
format::FileType ExportedFileType(CAEFile& file) {
    const char* const name = CAEGetFileTypeName(static_cast<int>(FileTypeOf(file)));
    return static_cast<format::FileType>(GetCAEFileType(TextOfModel(name)));
}

}  // namespace

std::string SignOf(Kind kind, const OuString& name) {
    return Sign('k', static_cast<int>(kind), name);
}

std::string SignOfType(const OuString& type, const OuString& name) {
    const std::string typeText = ComparedName(type);
    return Sign('t', static_cast<int>(typeText.size()), name) + typeText;
}

std::string SignOfLink(const OuString& key, const OuString& name) {
    const std::string keyText = AnsiFormOf(key);
    return Sign('l', static_cast<int>(keyText.size()), name) + keyText;
}

std::string SignOfFile(format::FileType type, const OuString& name) {
    return Sign('f', static_cast<int>(type), name);
}

void Candidates::Add(const std::string& sign, CAEObject& object, bool hasKey) {
    Queues& queues = queues_[sign];
    (hasKey ? queues.withKey : queues.withoutKey).entries.push_back({count_++, &object});
}

const Candidates::Entry* Candidates::FirstOf(Queue& queue,
                                             const std::unordered_set<const CAEObject*>& taken) {
    while (queue.next < queue.entries.size() && taken.contains(queue.entries[queue.next].object)) {
        ++queue.next;
    }
    return queue.next < queue.entries.size() ? &queue.entries[queue.next] : nullptr;
}

CAEObject* Candidates::Find(const std::string& sign, bool withoutKey,
                            const std::unordered_set<const CAEObject*>& taken) {
    const auto found = queues_.find(sign);
    if (found == queues_.end()) {
        return nullptr;
    }
    const Entry* const keyless = FirstOf(found->second.withoutKey, taken);
    const Entry* const keyed = withoutKey ? nullptr : FirstOf(found->second.withKey, taken);
    if (keyless == nullptr || keyed == nullptr) {
        const Entry* const only = keyless != nullptr ? keyless : keyed;
        return only == nullptr ? nullptr : only->object;
    }
    return keyless->order < keyed->order ? keyless->object : keyed->object;
}

const std::vector<CAEObject*>& MatchedNode::ListedChildren() {
    if (!areChildrenRead_) {
        areChildrenRead_ = true;
        listedChildren_ = ChildrenOf(object_);
        for (CAEObject* const child : listedChildren_) {
            const OuString name = NameOf(*child);
            AddChild(*child, name);
            // What is exported under another name is recognised by that, too.
            if (const OuString exported = ExportedName(*child); !IsWrittenAs(exported, name)) {
                AddChild(*child, exported);
            }
        }
    }
    return listedChildren_;
}

void MatchedNode::AddChild(CAEObject& child, const OuString& name) {
    const Kind kind = KindOf(child);
    const OuString key = child.getDBKey();
    if (kind == Kind::kViewItem) {
        children_.Add(SignOfLink(child.getLinkDBKey(), name), child, false);
        children_.Add(SignOf(kind, name), child, false);
        return;
    }
    if (keys_.Has(key)) {
        return;
    }
    children_.Add(SignOf(kind, name), child, !IsEmpty(key));
    if (auto* const project = dynamic_cast<CAEProject*>(&child)) {
        children_.Add(SignOfType(project->getAdditionalType(), name), child, !IsEmpty(key));
    }
}

Candidates& MatchedNode::Children() {
    ListedChildren();
    return children_;
}

const std::vector<CAEFile*>& MatchedNode::ListedFiles() {
    if (!areFilesRead_) {
        areFilesRead_ = true;
        listedFiles_ = FilesOf(object_);
        for (CAEFile* const file : listedFiles_) {
            const OuString key = file->getDBKey();
            fileSet_.insert(file);
            if (!keys_.HasFile(key)) {
                files_.Add(SignOfFile(ExportedFileType(*file), ExportedName(*file)), *file, !IsEmpty(key));
            }
        }
    }
    return listedFiles_;
}

Candidates& MatchedNode::Files() {
    ListedFiles();
    return files_;
}

bool MatchedNode::HasFile(const CAEFile& file) {
    ListedFiles();
    return fileSet_.contains(&file);
}

const std::vector<std::string>& MatchedNode::ListedEntries() {
    Entries();
    return listedEntries_;
}

std::unordered_map<std::string, MatchedNode::Entry>& MatchedNode::Entries() {
    if (areEntriesRead_) {
        return entries_;
    }
    areEntriesRead_ = true;
    TextArray names;
    TextArray values;
    object_.getAllMetadata(names, values);
    for (int index = 0; index < SizeOf(names); ++index) {
        const OuString name = TextAt(names, index);
        listedEntries_.push_back(ComparedName(name));
        Entry& entry = entries_[listedEntries_.back()];
        // Of names that a document cannot tell apart, what is set is the one that is as the document writes
        // it.
        if (!entry.isThere || AreEqual(TextFromAnsi(AnsiFormOf(name)), name)) {
            entry = {name, TextAt(values, index), true, nullptr};
        }
    }
    for (ChildWalk members(node_); const JSONNode* const section = members.Next();) {
        if (const NodeText name = NodeName(*section); member::kMetaData == name) {
            ReadRecords(*section);
        }
    }
    return entries_;
}

void MatchedNode::ReadRecords(const JSONNode& section) {
    const bool hasNames = section.type() == JSON_NODE;
    for (ChildWalk records(section); const JSONNode* const record = records.Next();) {
        const NodeText text = hasNames ? NodeName(*record) : NodeText();
        entries_[ComparedName(TextFromAnsi(UpToNul(text)))].lastRecord = record;
    }
}

}  // namespace korvane::exchange

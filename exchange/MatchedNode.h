#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "ReportingImport.h"
#include "TreeIndex.h"

namespace korvane::exchange {

/// Those of a list of objects that an element may become, by what they are recognised by. Equal ones are
/// handed out in their order, each once.
class Candidates {
public:
    void Add(const std::string& sign, CAEObject& object, bool hasKey);
    /// Null if there is none. With `withoutKey` only those that have no key.
    CAEObject* Find(const std::string& sign, bool withoutKey,
                    const std::unordered_set<const CAEObject*>& taken);

private:
    struct Entry {
        std::size_t order;
        CAEObject* object;
    };
    struct Queue {
        std::vector<Entry> entries;
        std::size_t next = 0;
    };
    struct Queues {
        Queue withKey;
        Queue withoutKey;
    };
    static const Entry* FirstOf(Queue& queue, const std::unordered_set<const CAEObject*>& taken);

    std::unordered_map<std::string, Queues> queues_;
    std::size_t count_ = 0;
};

/// An object or file that a node is read onto and that was there before.
class MatchedNode final : public ReportingImport::Matching {
public:
    /// What has a key of the document becomes the element with that key and no other.
    MatchedNode(CAEObject& object, const JSONNode& node, const DocumentKeys& keys)
        : object_(object), last_(node), keys_(keys), node_(node) {}

    CAEObject& Object() const { return object_; }
    const LastMembers& Last() const { return last_; }

    // Read from the tree when the node has its first element.

    Candidates& Children();
    const std::vector<CAEObject*>& ListedChildren();
    Candidates& Files();
    const std::vector<CAEFile*>& ListedFiles();

    bool HasFile(const CAEFile& file);
    /// Those that a record has become.
    std::unordered_set<const CAEObject*>& TakenFiles() { return takenFiles_; }

    struct Entry {
        OuString name;
        OuString value;
        bool isThere = false;
        const JSONNode* lastRecord = nullptr;
    };
    /// The metadata entries of the object and of the document, by their compared names.
    std::unordered_map<std::string, Entry>& Entries();
    /// The compared names of those that the object has, in its order.
    const std::vector<std::string>& ListedEntries();

    bool isLinkChanged = false;
    bool isNameChanged = false;
    bool isTypeChanged = false;
    /// Whether the file is attached to the object above.
    bool isAttached = true;

private:
    void AddChild(CAEObject& child, const OuString& name);
    void ReadRecords(const JSONNode& section);

    CAEObject& object_;
    LastMembers last_;
    const DocumentKeys& keys_;
    const JSONNode& node_;
    bool areChildrenRead_ = false;
    bool areFilesRead_ = false;
    bool areEntriesRead_ = false;
    std::vector<CAEObject*> listedChildren_;
    std::vector<CAEFile*> listedFiles_;
    Candidates children_;
    Candidates files_;
    std::unordered_set<const CAEFile*> fileSet_;
    std::unordered_set<const CAEObject*> takenFiles_;
    std::unordered_map<std::string, Entry> entries_;
    std::vector<std::string> listedEntries_;
};

/// By what an object is recognised, without a key: its kind and name.
std::string SignOf(format::Kind kind, const OuString& name);
/// The same for a project by the "type" that an export writes for it, which no import reads as a kind.
std::string SignOfType(const OuString& type, const OuString& name);
/// The same for a view item with the key of what it shows.
std::string SignOfLink(const OuString& key, const OuString& name);
/// The same for a file, by its type and name.
std::string SignOfFile(format::FileType type, const OuString& name);

}  // namespace korvane::exchange

#pragma once

#include <libjson.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "objectjson/ObjectModel.h"

namespace korvane::exchange {

class DocumentKeys;

std::vector<CAEObject*> ChildrenOf(CAEObject& object);
/// The files attached to the object that its project knows.
std::vector<CAEFile*> FilesOf(CAEObject& object);

/// What has a database key: the objects of a tree and their files.
class TreeIndex {
public:
    /// The object, everything below it, and the rest of the tree that it hangs in.
    explicit TreeIndex(CAEObject& root);

    struct Owners {
        /// The only object with the key; null where several have it, or none.
        CAEObject* object = nullptr;
        /// All of them, where there are several.
        std::vector<CAEObject*> several = {};
        /// Whether it is neither the root of this index nor below that. Not said of files.
        bool isOutside = false;
    };
    /// View items left out.
    const Owners& ObjectsWith(const OuString& key) const;
    /// The same for view items at the root or below it, by their own key.
    const Owners& ViewItemsWith(const OuString& key) const;
    const Owners& FilesWith(const OuString& key) const;
    /// Whether an object of the document has the key of one below the root, or a file that of a file.
    bool HasAnyOf(const DocumentKeys& keys) const;

private:
    using Map = std::unordered_map<std::string, Owners>;
    /// Goes through the tree of the object, `without` and what is below that left out.
    void AddTree(CAEObject& top, const CAEObject* without);
    static void Add(Map& map, CAEObject& object, bool isOutside);
    static const Owners& Find(const Map& map, const OuString& key);

    Map objects_;
    Map viewItems_;
    Map files_;
    std::unordered_set<const CAEObject*> knownFiles_;
};

/// The keys that a document's object nodes and file records have, those of view items left out, and how many
/// elements there are.
class DocumentKeys {
public:
    explicit DocumentKeys(const JSONNode& root);

    /// Whether objects have the key, file records left out.
    bool Has(const OuString& key) const;
    bool Has(const std::string& key) const { return counts_.contains(key); }
    /// Whether the key is one of several objects, or of an object and a file.
    bool HasTwice(const OuString& key) const;
    bool HasFile(const OuString& key) const;
    bool HasFile(const std::string& key) const { return files_.contains(key); }
    /// Whether the key is one of an object and a file, or of files that are not alike: an export writes a
    /// file that several objects have several times.
    bool HasFileTwice(const OuString& key) const;
    /// Objects and file records.
    std::size_t ElementCount() const { return elements_; }

private:
    void Read(const JSONNode& node);
    void ReadFile(const JSONNode& record);

    std::unordered_map<std::string, std::size_t> counts_;
    struct FileRecords {
        const JSONNode* first = nullptr;
        bool areDifferent = false;
    };
    std::unordered_map<std::string, FileRecords> files_;
    std::size_t elements_ = 0;
};

/// The members of a node that decide what an import of it leaves behind, where one occurs several times.
struct LastMembers {
    explicit LastMembers(const JSONNode& node);

    const JSONNode* name = nullptr;
    const JSONNode* displayName = nullptr;
    /// The later of the two.
    const JSONNode* anyName = nullptr;
    /// A null one does not count.
    const JSONNode* key = nullptr;
    const JSONNode* createdDate = nullptr;
    const JSONNode* type = nullptr;
    const JSONNode* fileType = nullptr;
};

/// The value of a member; empty where there is none.
OuString TextOf(const JSONNode* member);

}  // namespace korvane::exchange

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

std::vector<CAEObject*> ChildrenOf(CAEObject& object);
/// The files attached to the object that its project knows.
std::vector<CAEFile*> FilesOf(CAEObject& object);

/// What has a database key: the objects of a tree, view items left out, and their files.
class TreeIndex {
public:
    /// The object and everything below it.
    explicit TreeIndex(CAEObject& root);

    struct Owners {
        /// The only object with the key; null where several have it, or none.
        CAEObject* object = nullptr;
        /// All of them, where there are several.
        std::vector<CAEObject*> several = {};
    };
    const Owners& ObjectsWith(const OuString& key) const;
    /// The same for view items, by their own key.
    const Owners& ViewItemsWith(const OuString& key) const;
    const Owners& FilesWith(const OuString& key) const;

private:
    using Map = std::unordered_map<std::string, Owners>;
    static void Add(Map& map, CAEObject& object);
    static const Owners& Find(const Map& map, const OuString& key);

    Map objects_;
    Map viewItems_;
    Map files_;
};

/// The keys that a document's object nodes have, view items left out, and how many elements there are.
class DocumentKeys {
public:
    explicit DocumentKeys(const JSONNode& root);

    /// Whether objects have the key, file records left out.
    bool Has(const OuString& key) const;
    bool HasTwice(const OuString& key) const;
    bool HasFile(const OuString& key) const;
    /// Objects and file records.
    std::size_t ElementCount() const { return elements_; }

private:
    void Read(const JSONNode& node);

    std::unordered_map<std::string, std::size_t> counts_;
    std::unordered_set<std::string> files_;
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

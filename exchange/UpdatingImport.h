#pragma once

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "MatchedNode.h"
#include "ReportingImport.h"
#include "TreeIndex.h"

namespace korvane::exchange {

/// An import that brings in line what is there already, and makes the rest.
class UpdatingImport final : public ReportingImport {
public:
    /// `keys` are those of the document. All must live as long as this.
    UpdatingImport(const ImportOptions& options, ImportReport& report, CAEObject& target,
                   const DocumentKeys& keys);

    bool EnterRoot(const ImportTarget& target, const JSONNode& node) override;
    void EnterParentOfRoot(const ImportTarget& target) override;
    void Finish() override;

    bool SetsMember(const ImportTarget& target, format::MemberName member, const OuString& value) override;
    EntrySetting EnterRecord(const ImportTarget& target, const JSONNode& record, const OuString& name,
                             const OuString& type, const OuString& value) override;
    std::optional<ImportTarget> EnterChild(const ImportTarget& parent, const JSONNode& element) override;
    bool ResolvesReference(const ImportTarget& viewItem) override;
    void LeaveReference(const ImportTarget& viewItem, bool isFound) override;
    void LeaveChild(const ImportTarget& child) override;
    FileLanding EnterFile(const ImportTarget& owner, const JSONNode& record) override;
    bool SetsPath(CAEFile& file, const OuString& path) override;
    bool AttachesFile(const ImportTarget& owner, CAEFile& file) override;
    void LeaveFile(const ImportTarget& owner) override;

private:
    /// What an element becomes: an object, a new one where it is null, or nothing.
    struct Found {
        bool isConflict = false;
        CAEObject* object = nullptr;
    };
    /// A child of an updated object that no element has become so far.
    struct Missing {
        CAEObject* object;
        /// None where it will not be listed.
        std::optional<std::string> pointer;
    };

    void TellAdded() override;
    static MatchedNode* MatchOf(Frame& frame) { return static_cast<MatchedNode*>(frame.matching.get()); }

    Found FindObject(const JSONNode& element, const LastMembers& last);
    /// The child of the object that the element becomes by kind and name; null if there is none.
    CAEObject* FindByName(MatchedNode& parent, const LastMembers& last) const;
    /// The view item that the element becomes by the key of what it shows; null if there is none.
    CAEObject* FindByLink(MatchedNode* parent, const LastMembers& last) const;
    Found FindByKey(const JSONNode& element, const OuString& key, const OuString& type);
    Found FindFile(const ImportTarget& owner, const JSONNode& record, const LastMembers& last);
    /// Sets also `isMadeAlready_`.
    Found FindFileByKey(const JSONNode& record, const OuString& key);
    /// Whether a file, or the new one where it is null, is attached to the object above already.
    bool IsAttachedAbove(const CAEFile* file, const OuString& key);
    /// Whether the file, or a new one where it is null, has a role at the owner. If not, an entry says it.
    bool HasRole(const ImportTarget& owner, const JSONNode& record, CAEFile* file);
    void TellAttached(const std::string& file);
    /// What an element names that is left out is not missing.
    void KeepOwnersOfKey(const JSONNode& element);
    /// Such a project is exported without a "type" that could be read.
    void KeepProjectWithoutType(const JSONNode& element);
    /// How many objects go with the object, files left out; nothing if one of them stays.
    std::optional<std::size_t> CountRemoved(CAEObject& root,
                                            const std::unordered_set<const CAEObject*>& staying) const;
    /// With the name that the object had before, so that a dry run says the same.
    std::string DescribeAsItWas(CAEObject& object) const;
    Found Conflict(const JSONNode& element, CAEObject* object, const std::string& why);
    /// False, after an entry, where the object model does not let it hang there.
    bool Move(const ImportTarget& parent, CAEObject& object);
    void Match(CAEObject& object, const JSONNode& element);
    /// The same for the root of the document. False, after an entry, where the document may be of another
    /// object.
    bool MatchRoot(CAEObject& object, const JSONNode& root);
    static bool HasOtherName(CAEObject& object, const LastMembers& last);
    /// Whether objects are removed below the match, and nothing of the document is recognised there.
    bool RemovesAll(MatchedNode& match, const JSONNode& root) const;
    void TellChange(CAEObject& object, const std::string& component, const std::string& what,
                    const std::string& from, const std::string& to);
    bool TellNotComparable(const std::string& component, const std::string& what);
    bool IsCurrentMemberLast(const MatchedNode& match, format::MemberName member, bool isProject) const;
    /// Whether the value stands there already, and if not, what stands there.
    bool IsInLine(CAEObject& object, format::MemberName member, const OuString& value,
                  OuString& present) const;
    void LeaveMatched(Frame& frame);
    void KeepOrRemove(Missing& missing, const std::unordered_set<const CAEObject*>& staying);

    const JSONNode noNode_{JSON_NODE};
    const DocumentKeys& keys_;
    TreeIndex index_;
    /// Objects and files that an element has become.
    std::unordered_set<const CAEObject*> landed_;
    /// Objects above the innermost node.
    std::unordered_set<const CAEObject*> open_;
    /// What elements name that were left out.
    std::unordered_set<CAEObject*> inConflict_;
    std::vector<Missing> missing_;
    std::unordered_map<const CAEObject*, std::string> describedBefore_;
    /// New files by their keys, null in a dry run.
    std::unordered_map<std::string, CAEFile*> madeFiles_;
    /// The first record of every file that was there.
    std::unordered_map<const CAEObject*, const JSONNode*> fileRecords_;
    /// Whether the file record that is being read is another one of a new file.
    bool isMadeAlready_ = false;
    /// Keys of files that were attached to the objects of nodes.
    std::set<std::pair<const JSONNode*, std::string>> attached_;
    /// Whether view items may have something to show that they had not before.
    bool haveAssembliesChanged_ = false;
};

/// Whether an export writes the "type" for the object: for a project its own, which no import reads as a
/// kind.
bool IsOfType(CAEObject& object, const OuString& type);

}  // namespace korvane::exchange

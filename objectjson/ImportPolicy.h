#pragma once

#include <libjson.h>

#include <optional>

#include "ObjectModel.h"
#include "format/MemberName.h"

class ImportPolicy;

/// What a node of a document is read onto.
struct ImportTarget {
    /// Null where an import that changes nothing would make an object.
    CAEObject* object = nullptr;
    /// May be null; then no object and no file is made below.
    CAEProject* project = nullptr;
    /// Null for the product's own import, which makes everything anew and tells nobody.
    ImportPolicy* policy = nullptr;
    /// The kind of the object that would be made.
    format::Kind kindOfMissing = format::Kind::kUnknown;

    format::Kind Kind() const { return object == nullptr ? kindOfMissing : KindOf(*object); }

    /// Sets what the member says, unless the policy leaves it as it is. `set` takes the object.
    template <typename Set>
    void SetMember(format::MemberName member, const OuString& value, const Set& set) const;
};

/// Decides where the elements of a document land and what is set, and is told what an import does where it
/// does it. The calls come in the order of the document: a target's members between entering and leaving it.
class ImportPolicy {
public:
    /// A member of the target's node, before it is read.
    virtual void EnterMember(const ImportTarget& target, const JSONNode& member) = 0;

    /// Whether the member's value is set on the target. For a target without object: false.
    virtual bool SetsMember(const ImportTarget& target, format::MemberName member, const OuString& value) = 0;

    struct EntrySetting {
        bool type;
        bool value;
    };
    /// A metadata record, and what of it is set on the target.
    virtual EntrySetting EnterRecord(const ImportTarget& target, const JSONNode& record, const OuString& name,
                                     const OuString& type, const OuString& value) = 0;

    /// Where an element of "children" lands; nothing where it is left out with everything under it.
    virtual std::optional<ImportTarget> EnterChild(const ImportTarget& parent, const JSONNode& element) = 0;
    /// Whether the reference of a view item, which has been read, is looked for.
    virtual bool ResolvesReference(const ImportTarget& viewItem) = 0;
    virtual void LeaveReference(const ImportTarget& viewItem, bool isFound) = 0;
    virtual void LeaveChild(const ImportTarget& child) = 0;

    /// What a file record is read onto: a file that is there, or a new one.
    struct FileLanding {
        bool isLeftOut = false;
        CAEFile* file = nullptr;
    };
    virtual FileLanding EnterFile(const ImportTarget& owner, const JSONNode& record) = 0;
    /// Whether the file, which has been read, gets the path, which has the name that was read.
    virtual bool SetsPath(CAEFile& file, const OuString& path) = 0;
    /// Whether the file is attached to the owner, and added to its project before, where it is new.
    virtual bool AttachesFile(const ImportTarget& owner, CAEFile& file) = 0;
    virtual void LeaveFile(const ImportTarget& owner) = 0;

protected:
    ~ImportPolicy() = default;
};

template <typename Set>
void ImportTarget::SetMember(format::MemberName member, const OuString& value, const Set& set) const {
    if (policy == nullptr || policy->SetsMember(*this, member, value)) {
        set(*object);
    }
}

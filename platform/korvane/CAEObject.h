#pragma once

#include <memory>

#include "CAEObjectDBManagement.h"
#include "CAETypes.h"
#include "OuArray.h"
#include "OuCRTAllocator.h"
#include "OuList.h"
#include "OuString.h"
#include "OuTemplateArray.h"

class CAEProject;

namespace korvane {
struct ObjectData;
}

/// One object of a computer-aided-engineering project: a kind, a place in the tree, files, metadata and
/// versions.
///
/// Objects belong to the tree of their project from the moment they come into it and are destroyed with it,
/// those detached from it included. Operations that return int return 0 when they did what they say, and
/// another value, with nothing changed, when they could not.
class KORVANE_API CAEObject : public CAEObjectDBManagement {
public:
    ~CAEObject() override;

    _tagCAEObjectType getType() const;
    /// The name of a kind in mixed case ("Part", "SubAssembly"); "Unknown" for a value without a name. Never
    /// null.
    static const char* getTypeName(_tagCAEObjectType type);

    /// The object above; null for a root, and for an object that hangs nowhere.
    CAEObject* getParent() const;
    /// The project that the object belongs to: the nearest one above it, and for a project itself. Null where
    /// there is none: for a version, a detached object and what lies under them, and for a file that no
    /// project has yet. The cost does not depend on the depth.
    CAEProject* getProject() const;

    /// Appends the direct children (pointers to CAEObject) to the list, in their order.
    void getChildrenList(OuList& children) const;
    /// Attaches a detached object or version of the same tree, with everything under it, below this object,
    /// after its other children. From then on the project finds each of them under the identifier that it has
    /// now; one whose identifier another object has already is not found. Fails for null, for an object that
    /// already hangs somewhere (the files of a project hang on it) and for one that this object lies under or
    /// is a version of.
    int addChild(CAEObject* child);
    /// Takes a direct child, with everything under it, out of the tree and sets the pointer handed in to
    /// null; the project finds none of them any more. They stay whole and can be added again (a version with
    /// its own object under it is not a version of it any more). With `destroy` they are destroyed instead,
    /// and their versions with them. Fails, and leaves the pointer alone, for any other object.
    int detachChild(CAEObject*& child, bool destroy);

    void getCreatedDate(OuString& date) const;
    void setCreatedDate(OuString date);
    void getCreatedUserName(OuString& userName) const;

    void setName(const OuString& name) override;
    int setDBKey(const OuString& key) override;

    /// The identifiers of the files attached to the object, each once, in the order in which they were first
    /// attached, whatever their roles.
    virtual OuList GetFiles();
    /// Attaches a file as a custom file; a null project means the object's own. The identifier is not looked
    /// up. Fails for one that is not positive and for a project of another tree.
    int attachCustomFile(int fileId, CAEProject* project);

    /// Appends the names of the metadata entries and, to the second list, their values, in the order of
    /// creation.
    int getAllMetadata(OuTemplateArray<OuString, OuCRTAllocator>& names,
                       OuTemplateArray<OuString, OuCRTAllocator>& values) const;
    /// An entry is looked up without regard to letter case; the empty name is a name. Getters fail, and leave
    /// the text as it was, where there is no such entry; setters create it.
    int getMetadataType(const OuString& name, OuString& type) const;
    int getMetadataUnitString(const OuString& name, OuString& unit) const;
    int getMetadataValue(const OuString& name, OuString& value) const;
    int setMetadataType(const OuString& name, const OuString& type);
    int setMetadataValue(const OuString& name, const OuString& value);

    /// Appends the numbers of the object's versions in the order of their creation: element i of each list is
    /// the major and the minor of the i-th version, in the low 32 bits of its slot.
    void getAvailableVersions(OuArray& majors, OuArray& minors) const;
    /// Finds a version by its number; where there is none it fails and leaves the pointer as it was.
    int getPointerToVersion(int major, int minor, const CAEObject*& version) const;
    /// Makes a version with `content` (without: an empty object of the same kind and identifier, with the
    /// present date and user): a copy of the object and of everything under it, identifiers included, that
    /// hangs nowhere. What lies under it keeps versions of its own, the copy itself has none. It takes the
    /// place of an older version of the same number, which is destroyed unless it hangs in the tree by now.
    /// With `makeCurrent` the object stays as it is and its number becomes the given one. Fails for a
    /// negative number and for a file that no project has yet.
    int createNewVersion(const int& major, const int& minor, bool content, bool makeCurrent);

protected:
    explicit CAEObject(_tagCAEObjectType type);

private:
    friend class korvane::Access;
    std::unique_ptr<korvane::ObjectData> data_;
};

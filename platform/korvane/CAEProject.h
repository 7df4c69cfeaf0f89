#pragma once

#include "CAEObject.h"

class CAEFile;

namespace korvane {
struct ProjectData;
}

/// A project. Together with the projects created in it, it forms one tree with one sequence of identifiers
/// and one registry: an identifier means one object in the whole tree, and every project of the tree finds
/// it.
class KORVANE_API CAEProject : public CAEObject {
public:
    ~CAEProject() override;

    /// The object with the identifier: an object of the tree, a project of it or a file; null when there is
    /// none.
    CAEObject* getCAEObject(int id);
    /// The file with the identifier; null when there is none or the object is not a file.
    CAEFile* getFile(int id);

    /// Gives the object the next free identifier, one that no object of the tree has or has had, and returns
    /// it; 0, with nothing changed, for null and when none is left. The object is not in the project yet.
    int assignID(CAEObject* object);
    /// Puts a file that has an identifier into the project, which owns it from then on. Fails for null, for a
    /// file that a project has already, and for an identifier that is taken or not positive; the file then
    /// stays the caller's.
    int addFile(CAEFile* file);

    void getDirectory(OuString& directory) const;
    void SetDisplayName(const OuString& name);
    OuString getAdditionalType() const;
    void setAdditionalType(const OuString& type);
    void SetProgramReference(bool reference);

private:
    friend class korvane::Access;
    CAEProject();
    std::unique_ptr<korvane::ProjectData> projectData_;
};

#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "CAEFile.h"
#include "CAEObject.h"
#include "CAEPart.h"
#include "CAEProject.h"
#include "CAERunAssembly.h"
#include "CAESubAssembly.h"
#include "CAEViewItem.h"

/// What the embedded object model offers to hosts, tests and benchmarks beyond the suite's interface: making
/// a project, setting what the suite's application knows from elsewhere, and reading what the suite's
/// interface can only set. None of these operations shows in a recording.
namespace korvane {

/// A project that stands alone: identifier 1, the given name and display name, an empty additional type, the
/// given directory. Destroying it destroys its whole tree, however deep.
KORVANE_API std::unique_ptr<CAEProject> CreateProject(const OuString& name, const OuString& directory);

/// Objects that are created from now on in the tree of the project carry this date and user; an empty text
/// means the present one again.
KORVANE_API void SetCreation(CAEProject& project, const OuString& date, const OuString& userName);

/// Creates an object as createCAEObject does and returns it; null where that fails.
KORVANE_API CAEObject* CreateObject(CAEObject& parent, _tagCAEObjectType type, const OuString& name);
/// Creates a file in the project, with the last component of its path as its name and the present date and
/// user, attached to nothing; null when no identifier is left.
KORVANE_API CAEFile* CreateFile(CAEProject& project, const OuString& path, _tagFileType type,
                                _tagFileFormat format);

/// Gives an object of a tree another identifier, under which its project finds it from now on (setID changes
/// the object only). False, with nothing changed, for an identifier that is taken or not positive and for an
/// object that does not hang in a tree.
KORVANE_API bool Renumber(CAEObject& object, int id);

KORVANE_API void SetCreatedUserName(CAEObject& object, const OuString& userName);
KORVANE_API void SetMetadataUnit(CAEObject& object, const OuString& name, const OuString& unit);
/// A metadata entry with all that it has.
struct MetadataValues {
    OuString name;
    OuString value;
    OuString type;
    OuString unit;
};
/// The metadata entries of the object in the order of their creation.
KORVANE_API std::vector<MetadataValues> GetMetadata(const CAEObject& object);
KORVANE_API void SetDirectory(CAEProject& project, const OuString& directory);

KORVANE_API OuString GetDisplayName(const CAEProject& project);
/// True until SetProgramReference says otherwise.
KORVANE_API bool GetProgramReference(const CAEProject& project);
/// Every file that was put into the project, in that order, attached or not. Files that were created as
/// children hang in the tree instead.
KORVANE_API std::vector<CAEFile*> GetProjectFiles(const CAEProject& project);

/// The roles of the files attached to an object; 0 where there is none. Lists are in the order in which the
/// files were first attached.
struct FileRoles {
    /// Every file, whatever its roles.
    std::vector<int> files;
    int cadFile = 0;
    int graphicFile = 0;
    int activeMesh = 0;
    int feRepresentation = 0;
    std::vector<int> meshes;
    std::vector<int> customFiles;
};
KORVANE_API FileRoles GetFileRoles(const CAEObject& object);

struct VersionNumber {
    int majorNumber = 0;
    int minorNumber = 0;
};
/// The number of the object's present content: that of the version that was last made current or copied onto
/// the object; 0.0 before.
KORVANE_API VersionNumber GetCurrentVersion(const CAEObject& object);

KORVANE_API int GetReferencedObject(const CAEViewItem& viewItem);
KORVANE_API bool IsInGlobalFrame(const CAEFile& file);
KORVANE_API bool IsDownloaded(const CAEFile& file);

/// Calls the visitor for the object and everything under it, parents before children, with the depth below
/// the object (0 for itself). Does not need stack in proportion to the depth. The visitor must not change the
/// tree.
KORVANE_API void VisitTree(CAEObject& object, const std::function<void(CAEObject&, int depth)>& visitor);

}  // namespace korvane

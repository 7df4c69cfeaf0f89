#pragma once

#include <memory>

#include "CAEFile.h"
#include "CAEObject.h"
#include "CAEProject.h"
#include "CAEViewItem.h"

namespace korvane {

/// The one door to the private parts of the suite's classes. The object model goes through it, never through
/// the public operations, so that a recording holds nothing but the calls from outside.
class Access {
public:
    static int Id(const CAEObjectIdentification& object) noexcept { return object.id_; }
    static void SetId(CAEObjectIdentification& object, int id) noexcept { object.id_ = id; }
    static OuString& Name(CAEObjectIdentification& object) noexcept { return object.name_; }
    static const OuString& Name(const CAEObjectIdentification& object) noexcept { return object.name_; }
    static OuString& Key(CAEObjectDBManagement& object) noexcept { return object.key_; }
    static const OuString& Key(const CAEObjectDBManagement& object) noexcept { return object.key_; }
    static OuString& LinkKey(CAEObjectDBManagement& object) noexcept { return object.linkKey_; }
    static const OuString& LinkKey(const CAEObjectDBManagement& object) noexcept { return object.linkKey_; }

    static ObjectData& Data(CAEObject& object) noexcept { return *object.data_; }
    static const ObjectData& Data(const CAEObject& object) noexcept { return *object.data_; }
    static ProjectData& Project(CAEProject& project) noexcept { return *project.projectData_; }
    static const ProjectData& Project(const CAEProject& project) noexcept { return *project.projectData_; }
    static FileData& File(CAEFile& file) noexcept { return *file.fileData_; }
    static const FileData& File(const CAEFile& file) noexcept { return *file.fileData_; }
    static int& ReferencedId(CAEViewItem& viewItem) noexcept { return viewItem.referencedId_; }
    static int ReferencedId(const CAEViewItem& viewItem) noexcept { return viewItem.referencedId_; }

    /// A new object of the class that belongs to the kind, in no tree, without identifier, date and user.
    static std::unique_ptr<CAEObject> MakeObject(_tagCAEObjectType type);
    /// A new project in no tree.
    static std::unique_ptr<CAEProject> MakeProject();
};

}  // namespace korvane

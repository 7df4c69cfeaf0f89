#include <CAEFile.h>
#include <CAEProject.h>
#include <OuStringFileName.h>

#include <string>

#include "CAEObjectJson.h"
#include "Members.h"

namespace {

constexpr const char* kId = "id";
constexpr const char* kName = "name";
constexpr const char* kStudyTypeName = "studyTypeName";
constexpr const char* kCreatedDate = "createdDate";
constexpr const char* kCreatedBy = "createdBy";
constexpr const char* kType = "type";
constexpr const char* kDatabaseKey = "dbkey";

/// The name of an object that has none.
constexpr const wchar_t* kNameless = L"model";
/// The study type of an iteration that hangs below no study.
constexpr const wchar_t* kGenericStudy = L"Generic";

/// A file goes by the last component of its path, never by its own name.
OuString FileObjectName(CAEObject& object) {
    OuStringFileName path;
    if (const auto* file = dynamic_cast<const CAEFile*>(&object)) {
        file->getFullPathName(path);
    }
    // Through the ANSI form and back: a character that the code page lacks is lost here already.
    return OuString(path.GetFileName().GetAnsiBuffer(), 0);
}

OuString ObjectName(CAEObject& object, _tagCAEObjectType type) {
    if (type == CAE_FILE) {
        return FileObjectName(object);
    }
    OuString name;
    object.getName(name);
    return name.IsEmpty() ? OuString(kNameless) : name;
}

/// The name of the iteration's grandparent, the study: written even when it is empty.
OuString StudyTypeName(const CAEObject& iteration) {
    const CAEObject* parent = iteration.getParent();
    const CAEObject* study = parent == nullptr ? nullptr : parent->getParent();
    if (study == nullptr) {
        return kGenericStudy;
    }
    OuString name;
    study->getName(name);
    return name;
}

OuString DocumentTypeName(CAEObject& object, _tagCAEObjectType type) {
    OuString name = CAEObjectJson::ObjectTypeName(type);
    if (type == CAE_PROJECT) {
        // A project goes by its additional type, also by an empty one.
        const auto* project = dynamic_cast<const CAEProject*>(&object);
        name = project == nullptr ? OuString() : project->getAdditionalType();
    }
    name.MakeUpper();
    return name;
}

}  // namespace

void CAEObjectJson::ExportHeader() {
    CAEObject& object = *object_;
    Append(JSONNode(kId, std::to_string(object.getID()).c_str()));

    const _tagCAEObjectType type = object.getType();
    Append(StringMember(kName, ObjectName(object, type)));
    if (type == CAE_ITERATION) {
        Append(StringMember(kStudyTypeName, StudyTypeName(object)));
    }

    OuString createdDate;
    object.getCreatedDate(createdDate);
    Append(StringMember(kCreatedDate, createdDate));

    OuString createdBy;
    object.getCreatedUserName(createdBy);
    Append(StringMember(kCreatedBy, createdBy));

    Append(StringMember(kType, DocumentTypeName(object, type)));

    if (const OuString key = object.getDBKey(); !key.IsEmpty()) {
        Append(StringMember(kDatabaseKey, key));
    }
}

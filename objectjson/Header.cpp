#include <string>

#include "CAEObjectJson.h"
#include "NodeReading.h"
#include "RepeatedTexts.h"
#include "Sections.h"
#include "format/MemberNames.h"
#include "format/Values.h"

namespace member = format::member;
using format::Kind;

namespace {

/// A file goes by the last component of its path, never by its own name.
OuString FileObjectName(CAEObject& object) {
    OuStringFileName path;
    if (auto* const file = dynamic_cast<CAEFile*>(&object)) {
        file->getFullPathName(path);
    }
    return path.GetFileName();
}

/// The name of the iteration's grandparent, the study: written even when it is empty.
OuString StudyTypeName(CAEObject& iteration) {
    CAEObject* const parent = iteration.getParent();
    CAEObject* const study = parent == nullptr ? nullptr : parent->getParent();
    if (study == nullptr) {
        return OuString(format::kGenericStudy, 0);
    }
    OuString name;
    study->getName(name);
    return name;
}

void WriteTypeName(CAEObject& object, Kind kind, DocumentWriter& out) {
    const char* const modelName = CAEObject::getTypeName(ToObjectType(kind));
    if (const char* const known = KnownTypeName(kind, modelName)) {
        out.Text(member::kType, known);
        return;
    }
    OuString name = TypeNameOf(kind, modelName);
    if (kind == Kind::kProject) {
        // A project goes by its additional type, also by an empty one.
        auto* const project = dynamic_cast<CAEProject*>(&object);
        name = project == nullptr ? OuString() : project->getAdditionalType();
    }
    name.MakeUpper();
    out.Text(member::kType, name);
}

/// Asked for and not set: no import changes who created an object.
void AskForCreator(const CAEObject& object, const JSONNode& member, RepeatedTexts& texts) {
    OuString userName = texts.OfValue(member);
    object.getCreatedUserName(userName);
}

void SetName(const ImportTarget& target, format::MemberName member, const OuString& name) {
    target.SetMember(member, name, [&](CAEObject& object) { object.setName(name); });
}

void SetDisplayName(const ImportTarget& target, const OuString& name) {
    target.SetMember(member::kName, name, [&](CAEObject& object) {
        if (auto* const project = dynamic_cast<CAEProject*>(&object)) {
            project->SetDisplayName(name);
        }
    });
}

void SetKey(const ImportTarget& target, const OuString& key) {
    const bool isLink = target.Kind() == Kind::kViewItem;
    target.SetMember(member::kDatabaseKey, key, [&](CAEObject& object) {
        if (isLink) {
            object.setLinkDBKey(key);
        } else {
            object.setDBKey(key);
        }
    });
}

void SetCreatedDate(const ImportTarget& target, const OuString& date) {
    target.SetMember(member::kCreatedDate, date, [&](CAEObject& object) { object.setCreatedDate(date); });
}

}  // namespace

OuString ObjectName(CAEObject& object, Kind kind) {
    if (kind == Kind::kFile) {
        return FileObjectName(object);
    }
    OuString name;
    object.getName(name);
    return IsEmpty(name) ? OuString(format::kNameless, 0) : name;
}

void WriteHeader(CAEObject& object, DocumentWriter& out) {
    out.Text(member::kId, std::to_string(object.getID()).c_str());

    const Kind kind = KindOf(object);
    out.Text(member::kName, ObjectName(object, kind));
    if (kind == Kind::kIteration) {
        out.Text(member::kStudyTypeName, StudyTypeName(object));
    }

    OuString createdDate;
    object.getCreatedDate(createdDate);
    out.Text(member::kCreatedDate, createdDate);

    OuString createdBy;
    object.getCreatedUserName(createdBy);
    out.Text(member::kCreatedBy, createdBy);

    WriteTypeName(object, kind, out);

    if (const OuString key = object.getDBKey(); !IsEmpty(key)) {
        out.Text(member::kDatabaseKey, key);
    }
}

void ReadHeaderMember(const ImportTarget& target, ObjectNodeKey key, const JSONNode& member,
                      RepeatedTexts& texts) {
    switch (key) {
        case ObjectNodeKey::kName:
            // On a project the two names are crossed: the server's "name" is what a project is displayed as.
            if (target.Kind() != Kind::kProject) {
                SetName(target, member::kName, WideValue(member));
            } else {
                SetDisplayName(target, WideValue(member));
            }
            break;
        case ObjectNodeKey::kDisplayName:
            SetName(target, member::kDisplayName, WideValue(member));
            break;
        case ObjectNodeKey::kDatabaseKey:
            // The server gives a view item the key of the item that it shows.
            SetKey(target, WideValue(member));
            break;
        case ObjectNodeKey::kCreatedDate:
            SetCreatedDate(target, texts.OfValue(member));
            break;
        case ObjectNodeKey::kCreatedBy:
            if (target.object != nullptr) {
                AskForCreator(*target.object, member, texts);
            }
            break;
        default:
            // Not recognised, or recognised and without effect: the server sends members that are its own.
            break;
    }
}

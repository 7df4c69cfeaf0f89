#include <OuStringFileName.h>

#include "SecondReading.h"

namespace reference {
namespace {

OuString NameOf(const CAEObject& object) {
    OuString name;
    object.getName(name);
    return name;
}

OuString ExportedName(const CAEObject& object, _tagCAEObjectType type) {
    if (type == CAE_FILE) {
        OuString path;
        if (const auto* const file = dynamic_cast<const CAEFile*>(&object)) {
            file->getFullPathName(path);
        }
        return Widen(OuStringFileName(path).GetFileName().GetAnsiBuffer());
    }
    const OuString name = NameOf(object);
    return name.IsEmpty() ? OuString(L"model") : name;
}

OuString StudyTypeName(const CAEObject& iteration) {
    const CAEObject* const parent = iteration.getParent();
    const CAEObject* const grandparent = parent != nullptr ? parent->getParent() : nullptr;
    return grandparent != nullptr ? NameOf(*grandparent) : OuString(L"Generic");
}

OuString ExportedTypeName(const CAEObject& object, _tagCAEObjectType type) {
    OuString name = ObjectTypeName(type);
    if (type == CAE_PROJECT) {
        const auto* const project = dynamic_cast<const CAEProject*>(&object);
        name = project != nullptr ? project->getAdditionalType() : OuString();
    }
    name.MakeUpper();
    return name;
}

void ExportHeader(CAEObject& object, JSONNode& node) {
    node.push_back(MakeString(L"id", Widen(std::to_string(object.getID()))));
    const _tagCAEObjectType type = object.getType();
    node.push_back(MakeString(L"name", ExportedName(object, type)));
    if (type == CAE_ITERATION) {
        node.push_back(MakeString(L"studyTypeName", StudyTypeName(object)));
    }
    OuString createdDate;
    object.getCreatedDate(createdDate);
    node.push_back(MakeString(L"createdDate", createdDate));
    OuString createdBy;
    object.getCreatedUserName(createdBy);
    node.push_back(MakeString(L"createdBy", createdBy));
    node.push_back(MakeString(L"type", ExportedTypeName(object, type)));
    const OuString key = object.getDBKey();
    if (!key.IsEmpty()) {
        node.push_back(MakeString(L"dbkey", key));
    }
}

}  // namespace

OuString ObjectTypeName(_tagCAEObjectType type) {
    const OuString modelName(CAEObject::getTypeName(type), 0);
    switch (static_cast<int>(type)) {
        case 6:
            return L"CAEITERATION";
        case 7:
            return L"CAEITERATIONFOLDER";
        case 8:
            return L"CAEITERATIONMODEL";
        case 21:
            return L"CAELOADCASEVIEWFOLDER";
        case 22:
            return L"CAELOADCASEVIEW";
        default:
            break;
    }
    OuString name(L"CAE");
    name.Append(modelName.GetBuffer(), 0);
    return name;
}

JSONNode ExportDocument(CAEObject* object, const OuString& mode) {
    JSONNode document = object != nullptr ? ExportObject(*object, mode) : JSONNode(JSON_NODE);
    document.push_back(MakeString(L"subType", L"SDM"));
    return document;
}

JSONNode ExportObject(CAEObject& object, const OuString& mode) {
    JSONNode node(JSON_NODE);
    ExportHeader(object, node);
    node.push_back(ExportMetadata(object));
    node.push_back(ExportChildren(object, mode));
    node.push_back(ExportFiles(object, mode));
    return node;
}

JSONNode ExportMetadata(const CAEObject& object) {
    JSONNode section = MakeContainer(JSON_NODE, L"metaData");
    OuTemplateArray<OuString, OuCRTAllocator> names;
    OuTemplateArray<OuString, OuCRTAllocator> values;
    object.getAllMetadata(names, values);
    for (int i = 0; i < names.GetSize(); ++i) {
        // The server expects this one name in lower case, and so the entry is looked up.
        const OuString name = names[i] == L"Description" ? OuString(L"description") : names[i];
        OuString type;
        OuString unit;
        OuString value;
        object.getMetadataType(name, type);
        object.getMetadataUnitString(name, unit);
        object.getMetadataValue(name, value);
        JSONNode record = MakeContainer(JSON_NODE, name);
        record.push_back(MakeString(L"value", value));
        // The format fixes this: the unit under the name of the type.
        record.push_back(MakeString(L"metaDataType", unit));
        section.push_back(record);
    }
    return section;
}

bool IsChildExported(const CAEObject* child, const OuString& mode) {
    if (mode.Compare(L"PROJECT") == 0) {
        return child != nullptr && child->getType() == CAE_FILE;
    }
    if (mode.Compare(L"STUDY") == 0) {
        return child == nullptr || child->getType() != CAE_ITERATION_MODEL;
    }
    return true;
}

JSONNode ExportChildren(const CAEObject& object, const OuString& mode) {
    JSONNode section = MakeContainer(JSON_ARRAY, L"children");
    OuList children(10);
    object.getChildrenList(children);
    for (auto* position = children.GetHeadPosition(); position != nullptr;) {
        auto* const child = static_cast<CAEObject*>(children.GetNext(position));
        if (!IsChildExported(child, mode) || child == nullptr || child->getType() == CAE_SESSION_OBJECT) {
            continue;
        }
        section.push_back(ExportObject(*child, mode));
    }
    return section;
}

}  // namespace reference

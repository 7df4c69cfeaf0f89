#include "SecondReading.h"

namespace reference {
namespace {

/// The name of a child of the container; elements of an array have none, whatever they carry.
std::string NameIn(const JSONNode& container, const JSONNode& child) {
    return container.type() == JSON_NODE ? std::string(child.name().c_str(), child.name().size())
                                         : std::string();
}

void ImportName(const OuString& name, CAEObject& object) {
    if (object.getType() != CAE_PROJECT) {
        object.setName(name);
    } else if (auto* const project = dynamic_cast<CAEProject*>(&object)) {
        project->SetDisplayName(name);
    }
}

void ImportKey(const OuString& key, CAEObject& object) {
    if (object.getType() == CAE_VIEW_ITEM) {
        object.setLinkDBKey(key);
    } else {
        object.setDBKey(key);
    }
}

void ImportMember(const std::string& name, const JSONNode& member, const Target& target) {
    CAEObject& object = *target.object;
    const OuString value = Widen(TextOf(member));
    if (name == "name") {
        ImportName(value, object);
    } else if (name == "dbkey") {
        ImportKey(value, object);
    } else if (name == "createdDate") {
        object.setCreatedDate(value);
    } else if (name == "createdBy") {
        // Nobody who reads a document becomes another's creator: the name is asked for and nothing else.
        OuString scratch = value;
        object.getCreatedUserName(scratch);
    } else if (name == "displayName") {
        object.setName(value);
    } else if (name == "metaData") {
        ImportMetadata(member, target);
    } else if (name == "children") {
        ImportChildren(member, target);
    } else if (name == "files") {
        ImportFiles(member, target);
    }
}

void ImportMetadataRecord(const OuString& name, const JSONNode& record, const Target& target) {
    const JSONNode* const valueMember = FindMember(record, "value");
    const JSONNode* const typeMember = FindMember(record, "metaDataType");
    const OuString value = valueMember != nullptr ? Widen(TextOf(*valueMember)) : OuString();
    const OuString type = typeMember != nullptr ? Widen(TextOf(*typeMember)) : OuString();
    if (name == L"Reference To Program" && value.CompareNoCase(L"No") == 0 && target.project != nullptr) {
        target.project->SetProgramReference(false);
    }
    target.object->setMetadataType(name, type);
    target.object->setMetadataValue(name, value);
}

void ImportChild(const std::string& typeName, const JSONNode& element, const Target& parent) {
    const int parentId = parent.object->getID();
    int newId = 0;
    createCAEObject(parent.project, parentId, ObjectTypeFromName(typeName), newId);
    if (newId == 0) {
        return;
    }
    CAEObject* const child = parent.project->getCAEObject(newId);
    if (child == nullptr) {
        return;
    }
    ImportObject(element, PrepareTarget(element, child));
    if (child->getType() == CAE_VIEW_ITEM) {
        ResolveViewItemReference(parent.project, *child);
    }
}

}  // namespace

OuString ReadTypeField(const JSONNode& node) {
    const JSONNode* const type = FindMember(node, "type");
    return type != nullptr ? Widen(TextOf(*type)) : OuString();
}

_tagCAEObjectType ObjectTypeFromName(const std::string& name) {
    const std::map<std::string, int> types = {
        {"CAEPART", 0},
        {"CAESUBASSEMBLY", 1},
        {"CAEFILE", 3},
        {"CAEPROJECT", 4},
        {"CAEPROGRAM", 4},
        {"CAEMODEL", 5},
        {"CAEITERATION", 6},
        {"CAEITERATIONFOLDER", 7},
        {"CAEITERATIONMODEL", 8},
        {"CAEASSEMBLYFOLDER", 9},
        {"CAELOADCASEVIEWFOLDER", 21},
        {"CAELOADCASEVIEW", 22},
        {"CAEVIEWITEM", 23},
        {"CAETAG", 41},
    };
    const auto found = types.find(name);
    return static_cast<_tagCAEObjectType>(found != types.end() ? found->second : 43);
}

void ImportDocument(const JSONNode& node, CAEObject* object) {
    ImportObject(node, PrepareTarget(node, object));
}

Target PrepareTarget(const JSONNode& node, CAEObject* object) {
    if (object == nullptr) {
        return {};
    }
    if (object->getType() == CAE_PROJECT) {
        if (auto* const project = dynamic_cast<CAEProject*>(object)) {
            project->setAdditionalType(ReadTypeField(node));
        }
    }
    return {object->getProject(), object};
}

void ImportObject(const JSONNode& node, Target target) {
    if (ReadTypeField(node).IsEmpty() || target.object == nullptr) {
        return;
    }
    target.project = target.object->getProject();
    if (target.project != nullptr) {
        ImportMembers(node, target);
    }
}

void ImportMembers(const JSONNode& node, const Target& target) {
    if (target.object == nullptr || node.type() != JSON_NODE) {
        return;
    }
    for (const JSONNode& member : node) {
        ImportMember(NameIn(node, member), member, target);
    }
}

void ImportMetadata(const JSONNode& section, const Target& target) {
    if (!IsContainer(section) || target.object == nullptr) {
        return;
    }
    for (const JSONNode& record : section) {
        ImportMetadataRecord(Widen(NameIn(section, record)), record, target);
    }
}

void ImportChildren(const JSONNode& section, const Target& target) {
    if (!IsContainer(section) || target.object == nullptr || target.project == nullptr) {
        return;
    }
    for (const JSONNode& element : section) {
        const OuString typeName = ReadTypeField(element);
        if (!typeName.IsEmpty()) {
            ImportChild(typeName.GetAnsiBuffer(), element, target);
        }
    }
}

void ResolveViewItemReference(CAEProject* project, CAEObject& viewItem) {
    int masterId = 0;
    const OuString key = viewItem.getLinkDBKey();
    getMasterAssemblyCAEIDByITEMID(project, key, masterId);
    auto* const item = dynamic_cast<CAEViewItem*>(&viewItem);
    if (masterId != 0 && item != nullptr) {
        item->setReferencedCAEObject(masterId);
    }
}

}  // namespace reference

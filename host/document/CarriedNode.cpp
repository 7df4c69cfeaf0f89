#include "CarriedNode.h"

#include <CAEFunctions.h>
#include <OuString.h>

#include <unordered_map>

#include "DocumentNode.h"

namespace host {
namespace {

constexpr const char* kCreatedDate = "createdDate";
constexpr const char* kLocationType = "locationType";
/// What an object without a name is called in a document.
constexpr const char* kNameless = "model";
constexpr const char* kFileTypeName = "CAEFILE";
constexpr const char* kSessionObject = "CAESESSIONOBJECT";

/// Of several members of a name the last one counts, but the first of those that only file records have.
std::string LastText(const JSONNode& node, std::string_view name) {
    std::string text;
    for (const JSONNode& value : node) {
        if (NameOfMember(value) == name) {
            text = value.type() == JSON_NULL ? std::string() : ValueText(value);
        }
    }
    return text;
}

/// The name that an object node or a file record gives: "displayName" counts as "name" does.
std::string NameText(const JSONNode& node) {
    std::string text;
    for (const JSONNode& value : node) {
        const std::string name = NameOfMember(value);
        if (name == member::kName || name == member::kDisplayName) {
            text = ValueText(value);
        }
    }
    return text;
}

std::vector<JSONNode> ElementsOf(const JSONNode& node, std::string_view section) {
    std::vector<JSONNode> elements;
    for (const JSONNode& value : node) {
        if (NameOfMember(value) == section) {
            const JSONNode array = value.as_array();
            for (const JSONNode& element : array) {
                elements.push_back(element);
            }
        }
    }
    return elements;
}

/// Whether a root of the type is a project: it bears its additional type, which is any text.
bool IsProjectRoot(const std::string& type) {
    const _tagCAEObjectType kind = KindOfTypeName(type);
    return (kind == CAE_UNKNOWN_OBJECT && type != kSessionObject) || kind == CAE_PROJECT;
}

_tagFileType FileTypeOf(const JSONNode& record) {
    return GetCAEFileType(OuString(MemberText(record, member::kFileType).c_str(), 0));
}

std::string FileFormatOf(const JSONNode& record) {
    const std::string format = MemberText(record, member::kFileFormat);
    return format == "ASCII" || format == "Binary" ? format : "Unknown";
}

/// Whether a file of the type stays with an object of the kind.
bool IsAttached(_tagFileType type, _tagCAEObjectType kind) {
    const bool hasRole = type == CAE_FILE_CAD || type == CAE_FILE_MESH || type == CAE_FILE_GRAPHIC;
    return !hasRole || kind == CAE_PART || kind == CAE_SUBASSEMBLY || kind == CAE_ITERATION_MODEL;
}

/// An entry of a name that was there already, in whatever letter case, gives that one its value.
void ReadMetadata(const JSONNode& node, CarriedNode& carried) {
    std::unordered_map<std::string, std::size_t> indexOfName;
    for (const JSONNode& section : node) {
        if (NameOfMember(section) != member::kMetaData) {
            continue;
        }
        for (const JSONNode& entry : section) {
            const std::string name = NameOfMember(entry);
            const JSONNode record = entry.as_node();
            OuString key(name.c_str(), 0);
            key.MakeUpper();
            const auto [known, isNew] = indexOfName.emplace(key.GetAnsiBuffer(), carried.metadata.size());
            if (isNew) {
                carried.metadata.emplace_back(name == "Description" ? "description" : name, std::string());
            }
            carried.metadata[known->second].second = MemberText(record, "value");
        }
    }
}

void ReadFileMembers(const JSONNode& record, CarriedNode& carried) {
    carried.members.emplace_back(member::kFileType, CAEGetFileTypeName(FileTypeOf(record)));
    carried.members.emplace_back(member::kFileFormat, FileFormatOf(record));
    carried.members.emplace_back(kLocationType, MemberText(record, kLocationType));
}

void ReadSections(const JSONNode& node, _tagCAEObjectType kind, CarriedNode& carried) {
    for (const JSONNode& element : ElementsOf(node, member::kChildren)) {
        if (KindOfTypeName(MemberText(element, member::kType)) != CAE_UNKNOWN_OBJECT) {
            carried.children.push_back(element);
        }
    }
    for (const JSONNode& record : ElementsOf(node, member::kFiles)) {
        if (IsAttached(FileTypeOf(record), kind)) {
            carried.files.push_back(record);
        }
    }
}

/// An iteration's study type is read off the tree: it follows from the document only where that has the
/// study.
void ReadStudyType(const JSONNode& node, const CarriedNode* study, CarriedNode& carried) {
    if (study == nullptr || study->projectName || study->type == kFileTypeName) {
        return;
    }
    const std::string text = LastText(node, member::kStudyTypeName);
    carried.members.emplace_back(member::kStudyTypeName, text.empty() ? kNameless : text);
}

}  // namespace

CarriedNode ReadCarried(const JSONNode& node, NodePlace place, const CarriedNode* study) {
    CarriedNode carried;
    carried.identifier = MemberText(node, member::kId);
    carried.type = place == NodePlace::FileRecord ? kFileTypeName : MemberText(node, member::kType);
    const _tagCAEObjectType kind = KindOfTypeName(carried.type);
    const bool isProject = place == NodePlace::Root ? IsProjectRoot(carried.type) : kind == CAE_PROJECT;
    const std::string name = NameText(node);
    carried.name = name;
    carried.members.emplace_back(member::kType, carried.type);
    if (isProject) {
        carried.projectName = name;
    } else if (place == NodePlace::FileRecord) {
        // What stands behind the last separator is what a document tells again.
        carried.members.emplace_back(member::kName, name.substr(name.find_last_of("/\\") + 1));
    } else if (kind != CAE_FILE) {
        // A file among the children is named after its path, which it does not have again.
        carried.members.emplace_back(member::kName, name.empty() ? kNameless : name);
    }
    carried.members.emplace_back(kCreatedDate, LastText(node, kCreatedDate));
    if (kind == CAE_ITERATION) {
        ReadStudyType(node, study, carried);
    }
    if (kind != CAE_VIEW_ITEM) {
        carried.members.emplace_back(member::kDatabaseKey, LastText(node, member::kDatabaseKey));
    }
    ReadMetadata(node, carried);
    if (place == NodePlace::FileRecord) {
        ReadFileMembers(node, carried);
    } else {
        ReadSections(node, kind, carried);
    }
    return carried;
}

}  // namespace host

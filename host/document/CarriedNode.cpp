#include "CarriedNode.h"

#include <unordered_map>

#include "DocumentNode.h"
#include "format/Effects.h"
#include "format/MemberNames.h"
#include "format/Nodes.h"
#include "format/Values.h"
#include "objectjson/NodeReading.h"

namespace member = format::member;
using format::Kind;

namespace host {
namespace {

/// If a name occurs several times, the last member counts, except for those that only file records have,
/// where the first counts. A key that is null does not count.
std::string LastText(const JSONNode& node, format::MemberName name) {
    std::string text;
    for (const JSONNode& value : node) {
        const bool isNoKey = name == member::kDatabaseKey && value.type() == JSON_NULL;
        if (NameOfMember(value) == name && !isNoKey) {
            text = ValueText(value);
        }
    }
    return text;
}

/// The name of an object node or a file record. An import reads "displayName" as it reads "name".
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

std::vector<JSONNode> ElementsOf(const JSONNode& node, format::MemberName section) {
    std::vector<JSONNode> elements;
    for (const JSONNode& value : node) {
        if (NameOfMember(value) == section) {
            elements.insert(elements.end(), value.begin(), value.end());
        }
    }
    return elements;
}

/// The file type that an import reads from a record.
_tagFileType ReadFileType(const JSONNode& record) {
    return GetCAEFileType(WideMember(record, member::kFileType));
}

std::string ReadFileFormat(const JSONNode& record) {
    const std::string name = MemberText(record, member::kFileFormat);
    return format::NameOfFileFormat(format::FileFormatOfName(name));
}

/// Whether an import attaches files of the type to objects of the kind.
bool IsAttached(_tagFileType type, Kind kind) {
    return !format::HasRole(static_cast<format::FileType>(type)) || kind == Kind::kPart ||
           kind == Kind::kSubAssembly || kind == Kind::kIterationModel;
}

/// An entry whose name was there before, in any case, replaces the value only.
void ReadMetadata(const JSONNode& node, CarriedNode& carried) {
    std::unordered_map<std::string, std::size_t> indexOfName;
    for (const JSONNode& section : node) {
        if (NameOfMember(section) != member::kMetaData) {
            continue;
        }
        for (const JSONNode& record : section) {
            const std::string name = section.type() == JSON_NODE ? NameOfMember(record) : std::string();
            OuString key(name.c_str(), 0);
            key.MakeUpper();
            const auto [known, isNew] = indexOfName.emplace(key.GetAnsiBuffer(), carried.metadata.size());
            if (isNew) {
                carried.metadata.emplace_back(
                    name == format::kDescriptionEntry ? format::kDescriptionMember : name, std::string());
            }
            carried.metadata[known->second].second = MemberText(record, member::kValue);
        }
    }
}

std::string ReadFileMember(const JSONNode& record, format::MemberName name) {
    if (name == member::kFileType) {
        return CAEGetFileTypeName(ReadFileType(record));
    }
    return name == member::kFileFormat ? ReadFileFormat(record) : MemberText(record, name);
}

/// What an import takes from a file record and an export writes again.
void ReadFileMembers(const JSONNode& record, CarriedNode& carried) {
    for (const format::NodeMember& known : format::kFileRecord) {
        if (format::FindEffect(known.name.View())->inRecord == format::Effect::kTaken) {
            carried.members.push_back({known.name, ReadFileMember(record, known.name)});
        }
    }
}

void ReadSections(const JSONNode& node, Kind kind, CarriedNode& carried) {
    for (const JSONNode& element : ElementsOf(node, member::kChildren)) {
        if (format::KindOfType(MemberText(element, member::kType)) != Kind::kUnknown) {
            carried.children.push_back(element);
        }
    }
    for (const JSONNode& record : ElementsOf(node, member::kFiles)) {
        if (IsAttached(ReadFileType(record), kind)) {
            carried.files.push_back(record);
        }
    }
}

/// The study type of an iteration is read from the tree, so a document shows it only if it has the study.
void ReadStudyType(const JSONNode& node, const CarriedNode* study, CarriedNode& carried) {
    if (study == nullptr || study->projectName || study->kind == Kind::kFile) {
        return;
    }
    const std::string text = LastText(node, member::kStudyTypeName);
    carried.members.push_back({member::kStudyTypeName, text.empty() ? format::kNameless : text});
}

}  // namespace

Kind KindOfRoot(const std::string& type) {
    const Kind kind = format::KindOfType(type);
    return kind == Kind::kUnknown && type != format::kSessionObjectType ? Kind::kProject : kind;
}

CarriedNode ReadCarried(const JSONNode& node, NodePlace place, Kind kind, const CarriedNode* study) {
    CarriedNode carried;
    carried.kind = kind;
    carried.identifier = MemberText(node, member::kId);
    carried.type = place == NodePlace::FileRecord ? std::string(format::TypeOfKind(Kind::kFile))
                                                  : MemberText(node, member::kType);
    const std::string name = NameText(node);
    carried.name = name;
    carried.members.push_back({member::kType, carried.type});
    if (kind == Kind::kProject) {
        carried.projectName = name;
    } else if (place == NodePlace::FileRecord) {
        // The next document has only what follows the last separator.
        carried.members.push_back({member::kName, name.substr(name.find_last_of("/\\") + 1)});
    } else if (kind != Kind::kFile) {
        // A file among the children is named after its path, and an imported one has none.
        carried.members.push_back({member::kName, name.empty() ? format::kNameless : name});
    }
    carried.members.push_back({member::kCreatedDate, LastText(node, member::kCreatedDate)});
    if (kind == Kind::kIteration) {
        ReadStudyType(node, study, carried);
    }
    if (kind != Kind::kViewItem) {
        carried.members.push_back({member::kDatabaseKey, LastText(node, member::kDatabaseKey)});
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

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

/// The members of a node that count. If a name occurs several times, the last member does, except for those
/// that only file records have, where the first counts. A key that is null does not count.
struct MembersOfNode {
    /// An import reads "displayName" as it reads "name".
    const JSONNode* name = nullptr;
    const JSONNode* createdDate = nullptr;
    const JSONNode* studyTypeName = nullptr;
    const JSONNode* databaseKey = nullptr;
    /// Of these, all count.
    std::vector<const JSONNode*> metadata;
    std::vector<const JSONNode*> children;
    std::vector<const JSONNode*> files;
};

MembersOfNode FindMembers(const JSONNode& node) {
    MembersOfNode members;
    for (const JSONNode& value : node) {
        const NodeText name = NodeName(value);
        if (name == member::kName || name == member::kDisplayName) {
            members.name = &value;
        } else if (name == member::kCreatedDate) {
            members.createdDate = &value;
        } else if (name == member::kStudyTypeName) {
            members.studyTypeName = &value;
        } else if (name == member::kDatabaseKey) {
            members.databaseKey = value.type() != JSON_NULL ? &value : members.databaseKey;
        } else if (name == member::kMetaData) {
            members.metadata.push_back(&value);
        } else if (name == member::kChildren) {
            members.children.push_back(&value);
        } else if (name == member::kFiles) {
            members.files.push_back(&value);
        }
    }
    return members;
}

std::string TextOf(const JSONNode* value) {
    return value == nullptr ? std::string() : ValueText(*value);
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
void ReadMetadata(const MembersOfNode& members, CarriedNode& carried) {
    std::unordered_map<std::string, std::size_t> indexOfName;
    for (const JSONNode* const section : members.metadata) {
        for (const JSONNode& record : *section) {
            const std::string name = section->type() == JSON_NODE ? NameOfMember(record) : std::string();
            const auto [known, isNew] = indexOfName.emplace(ComparedName(name), carried.metadata.size());
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

void ReadSections(const MembersOfNode& members, Kind kind, CarriedNode& carried) {
    for (const JSONNode* const section : members.children) {
        for (const JSONNode& element : *section) {
            if (format::KindOfType(MemberText(element, member::kType)) != Kind::kUnknown) {
                carried.children.push_back(element);
            }
        }
    }
    for (const JSONNode* const section : members.files) {
        for (const JSONNode& record : *section) {
            if (IsAttached(ReadFileType(record), kind)) {
                carried.files.push_back(record);
            }
        }
    }
}

/// The study type of an iteration is read from the tree, so a document shows it only if it has the study.
void ReadStudyType(const MembersOfNode& members, const CarriedNode* study, CarriedNode& carried) {
    if (study == nullptr || study->projectName || study->kind == Kind::kFile) {
        return;
    }
    const std::string text = TextOf(members.studyTypeName);
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
    const MembersOfNode members = FindMembers(node);
    const std::string name = TextOf(members.name);
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
    carried.members.push_back({member::kCreatedDate, TextOf(members.createdDate)});
    if (kind == Kind::kIteration) {
        ReadStudyType(members, study, carried);
    }
    if (kind != Kind::kViewItem) {
        carried.members.push_back({member::kDatabaseKey, TextOf(members.databaseKey)});
    }
    ReadMetadata(members, carried);
    if (place == NodePlace::FileRecord) {
        ReadFileMembers(node, carried);
    } else {
        ReadSections(members, kind, carried);
    }
    return carried;
}

}  // namespace host

#include "Field.h"

#include <CAEFunctions.h>
#include <EmbeddedModel.h>
#include <korvaneexchange/Text.h>

#include <algorithm>
#include <set>

#include "TextMatch.h"
#include "format/Kinds.h"
#include "host/document/FileFacts.h"
#include "host/document/ObjectLists.h"
#include "host/document/ObjectTexts.h"

namespace host {
namespace {

using korvane::exchange::FromUtf8;
using korvane::exchange::ToUtf8;

struct FixedField {
    std::string_view name;
    FieldKind kind;
};
constexpr FixedField kFixedFields[] = {
    {"kind", FieldKind::Kind},       {"name", FieldKind::Name},     {"path", FieldKind::Path},
    {"id", FieldKind::Identifier},   {"key", FieldKind::Key},       {"created", FieldKind::Created},
    {"creator", FieldKind::Creator}, {"type", FieldKind::FileType}, {"size", FieldKind::FileSize},
    {"file", FieldKind::Files},      {"has", FieldKind::Has},
};

constexpr std::string_view kMetadataPrefix = "metadata:";
/// Models are called studies everywhere but in the format.
constexpr std::string_view kStudy = "Study";

struct RoleWord {
    FileRole role;
    std::string_view word;
};
/// The roles that are not named like a type of file.
constexpr RoleWord kRoleWords[] = {
    {FileRole::Cad, "cad"},
    {FileRole::Graphic, "graphic"},
    {FileRole::ActiveMesh, "mesh"},
    {FileRole::Mesh, "mesh"},
    {FileRole::FeRepresentation, "fe-representation"},
    {FileRole::Custom, "custom"},
};
constexpr std::string_view kActiveMesh = "active-mesh";
constexpr std::string_view kAnyFile = "file";
constexpr std::string_view kKey = "key";

std::string TypeWord(int type) {
    std::string word = CAEGetFileTypeName(type);
    std::ranges::transform(word, word.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    return word;
}

std::vector<FieldValue> KindsOf(const CAEObject& object) {
    const _tagCAEObjectType type = object.getType();
    std::vector<FieldValue> values = {{CAEObject::getTypeName(type)}};
    for (const format::KindName& known : format::kKindNames) {
        if (static_cast<int>(known.kind) == static_cast<int>(type)) {
            values.push_back({std::string(known.name)});
        }
    }
    if (type == CAE_MODEL) {
        values.push_back({std::string(kStudy)});
    }
    return values;
}

/// The object; for a study also the objects that belong to it, its iterations and parts with what is below
/// them, but no other study. Each object belongs to one study at most, so all studies of a tree take one
/// walk.
std::vector<CAEObject*> HoldersOfFiles(CAEObject& object) {
    std::vector<CAEObject*> holders = {&object};
    if (object.getType() != CAE_MODEL) {
        return holders;
    }
    for (std::size_t next = 0; next < holders.size(); ++next) {
        for (CAEObject* const child : ChildrenOf(*holders[next])) {
            if (child->getType() != CAE_MODEL && child->getType() != CAE_FILE) {
                holders.push_back(child);
            }
        }
    }
    return holders;
}

/// The files that are attached to the object, and those that are objects below it.
std::vector<const CAEFile*> FilesOf(CAEObject& object) {
    std::vector<const CAEFile*> files;
    std::ranges::copy(AttachedFilesOf(object), std::back_inserter(files));
    for (const CAEObject* const child : ChildrenOf(object)) {
        if (const auto* const file = dynamic_cast<const CAEFile*>(child)) {
            files.push_back(file);
        }
    }
    return files;
}

std::vector<FieldValue> FileNamesOf(CAEObject& object) {
    std::vector<FieldValue> names;
    for (CAEObject* const holder : HoldersOfFiles(object)) {
        for (const CAEFile* const file : FilesOf(*holder)) {
            const std::string path = ToUtf8(PathOf(*file));
            names.push_back(
                {path.empty() ? ToUtf8(NameOf(*file)) : path.substr(path.find_last_of("/\\") + 1)});
        }
    }
    return names;
}

void AddWordsOfFiles(CAEObject& object, std::set<std::string>& words) {
    for (const auto& [file, role] : RolesOfFiles(object)) {
        for (const RoleWord& known : kRoleWords) {
            if (known.role == role) {
                words.emplace(known.word);
            }
        }
        if (role == FileRole::ActiveMesh) {
            words.emplace(kActiveMesh);
        }
    }
    for (const CAEFile* const file : FilesOf(object)) {
        words.insert(TypeWord(file->getFileType()));
        words.emplace(kAnyFile);
    }
}

std::vector<FieldValue> WhatItHas(CAEObject& object) {
    std::set<std::string> words;
    for (CAEObject* const holder : HoldersOfFiles(object)) {
        AddWordsOfFiles(*holder, words);
    }
    if (!object.getDBKey().IsEmpty()) {
        words.emplace(kKey);
    }
    std::vector<FieldValue> values;
    std::ranges::transform(words, std::back_inserter(values),
                           [](const std::string& word) { return FieldValue{word}; });
    return values;
}

std::vector<FieldValue> MetadataOf(const OuString& entry, const CAEObject& object) {
    korvane::MetadataValues values;
    if (object.getMetadataValue(entry, values.value) != 0) {
        return {};
    }
    object.getMetadataUnitString(entry, values.unit);
    object.getMetadataType(entry, values.type);
    return {{ToUtf8(values.value), ToUtf8(UnitOf(values))}};
}

std::vector<FieldValue> SizeOf(const CAEFile& file) {
    const FileOnDisk found = LookUpFile(file);
    if (found.presence != FilePresence::There) {
        return {};
    }
    return {{std::to_string(found.size), "B"}};
}

/// No value for an empty text.
std::vector<FieldValue> Text(std::string text) {
    return text.empty() ? std::vector<FieldValue>() : std::vector<FieldValue>{{std::move(text)}};
}

bool IsShownOnce(const Field& field) {
    return field.kind == FieldKind::Kind;
}

template <typename Format>
std::string Joined(const Field& field, const WalkedObject& walked, const Format& format) {
    std::string text;
    for (const FieldValue& value : ValuesOf(field, walked)) {
        text += (text.empty() ? "" : ", ") + format(value);
        if (IsShownOnce(field)) {
            break;
        }
    }
    return text;
}

}  // namespace

bool Field::IsMeasured() const {
    return kind == FieldKind::Metadata || kind == FieldKind::Identifier || kind == FieldKind::FileSize ||
           kind == FieldKind::FileType;
}

Field FieldOf(std::string_view name) {
    const std::string folded = FoldCase(name);
    for (const FixedField& fixed : kFixedFields) {
        if (folded == FoldCase(fixed.name)) {
            return {fixed.kind, std::string(name), FromUtf8(name)};
        }
    }
    if (folded.starts_with(FoldCase(kMetadataPrefix))) {
        name.remove_prefix(kMetadataPrefix.size());
    }
    return EntryNamed(name);
}

Field EntryNamed(std::string_view name) {
    return {FieldKind::Metadata, std::string(name), FromUtf8(name)};
}

std::vector<std::string> FixedFields() {
    std::vector<std::string> names;
    for (const FixedField& fixed : kFixedFields) {
        names.emplace_back(fixed.name);
    }
    return names;
}

std::vector<FieldValue> ValuesOf(const Field& field, const WalkedObject& walked) {
    CAEObject& object = walked.object;
    const auto* const file = dynamic_cast<const CAEFile*>(&object);
    switch (field.kind) {
        case FieldKind::Kind:
            return KindsOf(object);
        case FieldKind::Name:
            return {{ToUtf8(NameOf(object))}};
        case FieldKind::Path:
            return {{walked.Path()}};
        case FieldKind::Identifier:
            return {{std::to_string(object.getID())}};
        case FieldKind::Key:
            return Text(ToUtf8(object.getDBKey()));
        case FieldKind::Created:
            return Text(ToUtf8(DateOf(object)));
        case FieldKind::Creator:
            return Text(ToUtf8(CreatorOf(object)));
        case FieldKind::FileType:
            return file != nullptr ? std::vector<FieldValue>{{CAEGetFileTypeName(file->getFileType())}}
                                   : MetadataOf(field.entry, object);
        case FieldKind::FileSize:
            return file != nullptr ? SizeOf(*file) : MetadataOf(field.entry, object);
        case FieldKind::Files:
            return FileNamesOf(object);
        case FieldKind::Has:
            return WhatItHas(object);
        case FieldKind::Metadata:
            break;
    }
    return MetadataOf(field.entry, object);
}

std::string ShownText(const Field& field, const WalkedObject& walked) {
    return Joined(field, walked, [](const FieldValue& value) { return ShownValue(value.text, value.unit); });
}

std::string ExactText(const Field& field, const WalkedObject& walked) {
    return Joined(field, walked, [](const FieldValue& value) {
        return value.text + (value.unit.empty() ? "" : " ") + value.unit;
    });
}

std::vector<std::string> KindWords() {
    std::vector<std::string> words;
    for (const format::KindName& known : format::kKindNames) {
        const std::string name =
            CAEObject::getTypeName(static_cast<_tagCAEObjectType>(static_cast<int>(known.kind)));
        if (std::ranges::find(words, name) == words.end()) {
            words.push_back(name);
        }
    }
    words.emplace_back(kStudy);
    for (const format::KindName& known : format::kKindNames) {
        words.emplace_back(known.name);
    }
    return words;
}

std::vector<std::string> HasWords() {
    std::vector<std::string> words;
    const auto add = [&](std::string word) {
        if (std::ranges::find(words, word) == words.end()) {
            words.push_back(std::move(word));
        }
    };
    for (const RoleWord& known : kRoleWords) {
        add(std::string(known.word));
    }
    add(std::string(kActiveMesh));
    // The numbers of the types begin with CAD; the last has a name, and the next one does not.
    for (int type = CAE_FILE_CAD; type <= CAE_FILE_OTHER; ++type) {
        add(TypeWord(type));
    }
    add(TypeWord(CAE_FILE_UNKNOWN));
    add(std::string(kAnyFile));
    add(std::string(kKey));
    return words;
}

}  // namespace host

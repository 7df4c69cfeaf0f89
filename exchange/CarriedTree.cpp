#include "CarriedTree.h"

#include <algorithm>
#include <string>

#include "NodeText.h"
#include "Room.h"
#include "format/MemberNames.h"
#include "format/Values.h"
#include "objectjson/Sections.h"

namespace member = format::member;
using format::Kind;

namespace korvane::exchange {
namespace {

std::string UpperCase(std::string_view name) {
    if (!IsAscii(name)) {
        OuString text = TextFromAnsi(name);
        text.MakeUpper();
        return AnsiFormOf(text);
    }
    // Nearly all names are, and the object model compares them in the same way.
    std::string upper(name);
    for (char& character : upper) {
        if (character >= 'a' && character <= 'z') {
            character = static_cast<char>(character - 'a' + 'A');
        }
    }
    return upper;
}

}  // namespace

CarriedNode& CarriedTreeBuilder::Add(NodeIndex parent, NodePlace place, std::uint32_t position) {
    ThrowIfFull(tree_.nodes.size(), kNoNode);
    CarriedNode& node = tree_.nodes.emplace_back();
    node.parent = parent;
    node.place = place;
    node.position = position;
    node.metadata = tree_.metadata.size();
    if (place == NodePlace::FileRecord) {
        node.kind = Kind::kFile;
        node.fileTexts = static_cast<std::uint32_t>(tree_.fileTexts.size());
        tree_.fileTexts.emplace_back();
    }
    return node;
}

void CarriedTreeBuilder::RemoveLast() {
    const CarriedNode& node = tree_.nodes.back();
    tree_.metadata.resize(node.metadata);
    if (node.place == NodePlace::FileRecord) {
        tree_.fileTexts.pop_back();
    }
    tree_.elementNames.erase(Last());
    tree_.nodes.pop_back();
}

void CarriedTreeBuilder::FinishHeader(NodeIndex index) {
    CarriedNode& node = tree_.nodes[index];
    if (node.place == NodePlace::FileRecord) {
        // What is made of a record is always a file, and it has what follows the last separator of the name.
        const std::string_view name = texts_.TextOf(node.name);
        node.type = texts_.IdOf(format::TypeOfKind(Kind::kFile));
        node.name = texts_.IdOf(name.substr(name.find_last_of("/\\") + 1));
    } else if (node.name == kEmptyText && !node.IsFile() && !node.IsProject()) {
        node.name = texts_.IdOf(format::kNameless);
    }
    const bool isNameless =
        node.name == kEmptyText || (node.IsProject() && texts_.TextOf(node.name) == format::kNameless);
    node.hasOwnName = !(isNameless && (node.IsFile() || node.IsProject()));
    if (node.kind == Kind::kViewItem) {
        // It is that of what the item shows, and no document has it again.
        node.key = kEmptyText;
    }
    node.studyTypeName = FinishStudyType(node, node.studyTypeName);
}

/// The study type of an iteration is read from the tree, so a document shows it only if it has the study.
TextId CarriedTreeBuilder::FinishStudyType(const CarriedNode& node, TextId text) const {
    if (node.kind != Kind::kIteration || node.parent == kNoNode) {
        return kNoText;
    }
    const NodeIndex study = tree_.nodes[node.parent].parent;
    if (study == kNoNode || tree_.nodes[study].IsProject() || tree_.nodes[study].IsFile()) {
        return kNoText;
    }
    return text == kNoText || text == kEmptyText ? texts_.IdOf(format::kNameless) : text;
}

bool CarriedTreeBuilder::FinishRecord(NodeIndex record) {
    const CarriedNode& node = tree_.nodes[record];
    format::FileType type = format::FileType::kUnknown;
    FileTexts& texts = tree_.fileTexts[node.fileTexts];
    for (std::size_t index = 0; index < kCarriedFileMemberCount; ++index) {
        if (kCarriedFileMembers[index] == member::kFileType) {
            const FileType read = ReadFileType(texts[index]);
            type = read.type;
            texts[index] = read.text;
        } else if (kCarriedFileMembers[index] == member::kFileFormat) {
            texts[index] =
                texts_.IdOf(format::NameOfFileFormat(format::FileFormatOfName(texts_.TextOf(texts[index]))));
        }
    }
    return IsAttached(type, tree_.nodes[node.parent].kind);
}

CarriedTreeBuilder::FileType CarriedTreeBuilder::ReadFileType(TextId text) {
    const auto [known, isNew] = fileTypes_.try_emplace(text);
    if (isNew) {
        const auto type = GetCAEFileType(TextFromAnsi(texts_.TextOf(text)));
        const char* const name = CAEGetFileTypeName(static_cast<int>(type));
        known->second = {static_cast<format::FileType>(type), texts_.IdOf(name == nullptr ? "" : name)};
    }
    return known->second;
}

TextId CarriedTreeBuilder::ComparedName(TextId name) {
    const auto [known, isNew] = comparedNames_.try_emplace(name);
    if (isNew) {
        known->second = texts_.IdOf(UpperCase(texts_.TextOf(name)));
    }
    return known->second;
}

void CarriedTreeBuilder::SetEntry(std::string_view name, std::string_view value) {
    const bool isDescription = name == format::kDescriptionEntry;
    const TextId id = texts_.IdOf(isDescription ? format::kDescriptionMember : name);
    const TextId compared = ComparedName(id);
    if (compared >= lastEntry_.size()) {
        lastEntry_.resize(std::max<std::size_t>(compared + std::size_t{1}, lastEntry_.size() * 2));
    }
    std::vector<CarriedEntry>& entries = tree_.metadata;
    std::size_t& last = lastEntry_[compared];
    const bool isKnown = last >= tree_.nodes.back().metadata && last < entries.size() &&
                         entries[last].comparedName == compared;
    if (!isKnown) {
        last = entries.size();
        entries.push_back({compared, id, kEmptyText});
    }
    // An entry whose name was there before replaces the value only.
    entries[last].value = texts_.IdOf(value);
}

Kind KindOfRoot(std::string_view type) {
    const Kind kind = format::KindOfType(type);
    return kind == Kind::kUnknown && type != format::kSessionObjectType ? Kind::kProject : kind;
}

}  // namespace korvane::exchange

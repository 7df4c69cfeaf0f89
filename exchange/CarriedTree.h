#pragma once

#include <libjson.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "DistinctTexts.h"
#include "NodeWalker.h"
#include "format/Effects.h"
#include "format/Kinds.h"
#include "format/Nodes.h"
#include "objectjson/ObjectModel.h"

/// What the format carries of a tree or of a document: what an export writes and an import takes. After an
/// import and an export, a tree has the same again.
namespace korvane::exchange {

/// The number of a node in its tree. A node comes before what is below it, and siblings come in their order.
using NodeIndex = std::uint32_t;

inline constexpr NodeIndex kNoNode = std::numeric_limits<NodeIndex>::max();
inline constexpr TextId kNoText = std::numeric_limits<TextId>::max();

consteval bool IsCarriedInRecord(const format::NodeMember& known) {
    return format::FindEffect(known.name.View())->inRecord == format::Effect::kTaken;
}

consteval std::size_t CountCarriedInRecord() {
    std::size_t count = 0;
    for (const format::NodeMember& known : format::kFileRecord) {
        count += IsCarriedInRecord(known) ? 1 : 0;
    }
    return count;
}

/// The members that only file records have.
inline constexpr std::size_t kCarriedFileMemberCount = CountCarriedInRecord();

consteval format::MemberName CarriedFileMember(std::size_t number) {
    for (const format::NodeMember& known : format::kFileRecord) {
        if (IsCarriedInRecord(known) && number-- == 0) {
            return known.name;
        }
    }
    throw "there are fewer";
}

template <std::size_t... number>
consteval auto CarriedFileMembers(std::index_sequence<number...>) {
    return std::array{CarriedFileMember(number)...};
}

inline constexpr auto kCarriedFileMembers =
    CarriedFileMembers(std::make_index_sequence<kCarriedFileMemberCount>());

using FileTexts = std::array<TextId, kCarriedFileMemberCount>;

/// A metadata entry.
struct CarriedEntry {
    /// The name as the object model compares names: in upper case.
    TextId comparedName = kEmptyText;
    TextId name = kEmptyText;
    TextId value = kEmptyText;
};

/// An object or a file.
struct CarriedNode {
    NodeIndex parent = kNoNode;
    /// Among the elements of its section, those that are not carried included.
    std::uint32_t position = 0;
    /// That of the object; 0 in a document.
    int identifier = 0;
    format::Kind kind = format::Kind::kUnknown;
    NodePlace place = NodePlace::Root;
    TextId type = kEmptyText;
    /// As an export would write it after an import.
    TextId name = kEmptyText;
    /// False for files and projects that have none. A file among the children has that of its path, which an
    /// import does not set, and the name of a project becomes its display name: so the other may have one.
    bool hasOwnName = true;
    TextId createdDate = kEmptyText;
    /// Of a view item, whose key is that of what it shows, always empty.
    TextId key = kEmptyText;
    /// kNoText where the node is no iteration below a study.
    TextId studyTypeName = kNoText;
    /// Where its metadata entries begin; they end where those of the next node begin.
    std::size_t metadata = 0;
    /// A record's place among the texts of records.
    std::uint32_t fileTexts = 0;

    bool IsFile() const { return kind == format::Kind::kFile; }
    bool IsProject() const { return kind == format::Kind::kProject; }
};

/// The nodes, the root first.
struct CarriedTree {
    std::vector<CarriedNode> nodes;
    std::vector<CarriedEntry> metadata;
    std::vector<FileTexts> fileTexts;
    /// Names of elements whose section is an object instead of an array.
    std::unordered_map<NodeIndex, TextId> elementNames;
    /// The object that was read; null for a document.
    CAEObject* object = nullptr;

    NodeIndex size() const { return static_cast<NodeIndex>(nodes.size()); }
    std::size_t EndOfMetadata(NodeIndex node) const {
        return node + 1 < nodes.size() ? nodes[node + 1].metadata : metadata.size();
    }
    const FileTexts& FileTextsOf(const CarriedNode& node) const { return fileTexts[node.fileTexts]; }
};

/// Builds a tree node by node. A node's metadata is added before the next node.
class CarriedTreeBuilder {
public:
    CarriedTreeBuilder(CarriedTree& tree, DistinctTexts& texts) : tree_(tree), texts_(texts) {}

    DistinctTexts& Texts() { return texts_; }
    CarriedNode& Add(NodeIndex parent, NodePlace place, std::uint32_t position);
    /// The node that was added last.
    NodeIndex Last() const { return tree_.size() - 1; }
    CarriedNode& operator[](NodeIndex node) { return tree_.nodes[node]; }
    FileTexts& FileTextsOf(NodeIndex record) { return tree_.fileTexts[tree_.nodes[record].fileTexts]; }
    void RemoveLast();
    /// Names the node as an element of an object that takes the place of an array.
    void NameElement(NodeIndex node, std::string_view name) { tree_.elementNames[node] = texts_.IdOf(name); }
    /// Makes the texts of the node's header, as they were read, what an export would write after an import.
    void FinishHeader(NodeIndex node);
    /// The same for the members that only file records have. Returns whether an import attaches the file to
    /// the record's owner.
    bool FinishRecord(NodeIndex record);
    /// Adds an entry to the last node, or finds the one that has the name in any case, and sets its value.
    void SetEntry(std::string_view name, std::string_view value);

private:
    struct FileType {
        format::FileType type;
        TextId text;
    };
    FileType ReadFileType(TextId text);
    TextId ComparedName(TextId name);
    TextId FinishStudyType(const CarriedNode& node, TextId text) const;

    CarriedTree& tree_;
    DistinctTexts& texts_;
    std::unordered_map<TextId, FileType> fileTypes_;
    std::unordered_map<TextId, TextId> comparedNames_;
    /// By the number of a compared name, where its last entry is.
    std::vector<std::size_t> lastEntry_;
};

/// Called for every object and file that is read. What it throws reaches the caller.
using CountNode = std::function<void()>;

/// What is carried of the object, with everything below it.
void ReadTree(CAEObject& object, DistinctTexts& texts, const CountNode& count, CarriedTree& tree);

/// What is carried of the document, whose root has the kind.
void ReadDocumentTree(const JSONNode& document, format::Kind rootKind, DistinctTexts& texts,
                      const CountNode& count, CarriedTree& tree);

/// The "type" of the document's root.
std::string RootType(const JSONNode& document);

/// The kind of a root of this type, as far as the type says it: a project has its additional type there,
/// which may be any text.
format::Kind KindOfRoot(std::string_view type);

}  // namespace korvane::exchange

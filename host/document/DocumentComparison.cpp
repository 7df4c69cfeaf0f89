#include "DocumentComparison.h"

#include <CAEProject.h>
#include <EmbeddedModel.h>

#include <algorithm>
#include <cstdlib>
#include <deque>
#include <optional>

#include "CarriedNode.h"
#include "DocumentNode.h"
#include "format/Kinds.h"
#include "format/MemberNames.h"
#include "host/system/Notes.h"

using format::Kind;

namespace host {
namespace {

constexpr std::size_t kMostDifferences = 20;

/// Two nodes that are being compared, and the elements that come next.
struct NodePair {
    CarriedNode first;
    CarriedNode second;
    std::size_t nextFile = 0;
    std::size_t nextChild = 0;
};

std::optional<Kind> KindOfObject(const ComparedDocument& document) {
    if (document.object == nullptr) {
        return std::nullopt;
    }
    return static_cast<Kind>(document.object->getType());
}

/// The kind of the document's root. If nobody knows its object, another document that has the same type there
/// tells what the type stands for.
Kind RootKind(const ComparedDocument& document, const ComparedDocument& other) {
    const std::string type = MemberText(document.node, format::member::kType);
    std::optional<Kind> known = KindOfObject(document);
    if (!known && MemberText(other.node, format::member::kType) == type) {
        known = KindOfObject(other);
    }
    return known.value_or(KindOfRoot(type));
}

/// Whether the project with this identifier is displayed as this.
bool IsDisplayedAs(const ComparedDocument& document, const std::string& identifier, const std::string& name) {
    CAEProject* const all = document.object == nullptr ? nullptr : document.object->getProject();
    if (all == nullptr) {
        return false;
    }
    const long number = std::strtol(identifier.c_str(), nullptr, 10);
    auto* const project = dynamic_cast<CAEProject*>(all->getCAEObject(static_cast<int>(number)));
    return project != nullptr && korvane::GetDisplayName(*project).GetAnsiBuffer() == name;
}

class DocumentComparer {
public:
    DocumentComparer(const ComparedDocument& first, const ComparedDocument& second)
        : first_(first), second_(second) {}

    DocumentDifferences Run();

private:
    void EnterRoots();
    void EnterChildren(const JSONNode& first, const JSONNode& second);
    void CompareEntered(NodePair& pair);
    void CompareHeads(const NodePair& pair);
    void CompareProjectNames(const NodePair& pair);
    void CompareMetadata(const NodePair& pair);
    void CompareFiles(NodePair& pair);
    void Differ(const NodePair& pair, const std::string& what, const std::string& first,
                const std::string& second);

    const ComparedDocument& first_;
    const ComparedDocument& second_;
    /// Pairs keep their addresses while others are added and removed at the end.
    std::deque<NodePair> pairs_;
    DocumentDifferences result_;
};

DocumentDifferences DocumentComparer::Run() {
    EnterRoots();
    while (!pairs_.empty()) {
        NodePair& pair = pairs_.back();
        const std::size_t next = pair.nextChild++;
        if (next < pair.first.children.size() && next < pair.second.children.size()) {
            EnterChildren(pair.first.children[next], pair.second.children[next]);
        } else {
            pairs_.pop_back();
        }
    }
    return std::move(result_);
}

void DocumentComparer::EnterRoots() {
    const auto read = [](const ComparedDocument& document, const ComparedDocument& other) {
        return ReadCarried(document.node, NodePlace::Root, RootKind(document, other), nullptr);
    };
    CompareEntered(pairs_.emplace_back(NodePair{read(first_, second_), read(second_, first_)}));
}

void DocumentComparer::EnterChildren(const JSONNode& first, const JSONNode& second) {
    const NodePair* const study = pairs_.size() > 1 ? &pairs_[pairs_.size() - 2] : nullptr;
    const auto read = [](const JSONNode& node, const CarriedNode* above) {
        const Kind kind = format::KindOfType(MemberText(node, format::member::kType));
        return ReadCarried(node, NodePlace::Child, kind, above);
    };
    CompareEntered(pairs_.emplace_back(NodePair{read(first, study != nullptr ? &study->first : nullptr),
                                                read(second, study != nullptr ? &study->second : nullptr)}));
}

void DocumentComparer::CompareEntered(NodePair& pair) {
    ++(pair.first.kind == Kind::kFile ? result_.files : result_.objects);
    CompareHeads(pair);
    const auto compareCount = [&](const char* what, std::size_t left, std::size_t right) {
        if (left != right) {
            Differ(pair, what, std::to_string(left), std::to_string(right));
        }
    };
    compareCount("the number of files", pair.first.files.size(), pair.second.files.size());
    compareCount("the number of children", pair.first.children.size(), pair.second.children.size());
    CompareFiles(pair);
}

void DocumentComparer::CompareFiles(NodePair& pair) {
    const std::size_t count = std::min(pair.first.files.size(), pair.second.files.size());
    for (std::size_t index = 0; index < count; ++index) {
        NodePair records;
        records.first = ReadCarried(pair.first.files[index], NodePlace::FileRecord, Kind::kFile, nullptr);
        records.second = ReadCarried(pair.second.files[index], NodePlace::FileRecord, Kind::kFile, nullptr);
        ++result_.files;
        CompareHeads(records);
    }
}

void DocumentComparer::CompareHeads(const NodePair& pair) {
    CompareProjectNames(pair);
    // The kind comes first: of nodes of different kinds, nothing else is compared that only one of them has.
    const std::size_t count = std::min(pair.first.members.size(), pair.second.members.size());
    for (std::size_t index = 0; index < count; ++index) {
        const auto& [name, text] = pair.first.members[index];
        const auto& [otherName, otherText] = pair.second.members[index];
        if (name != otherName) {
            Differ(pair, "their members", name.c_str(), otherName.c_str());
            return;
        }
        if (text != otherText) {
            Differ(pair, name.c_str(), text, otherText);
        }
    }
    if (pair.first.members.size() != pair.second.members.size()) {
        Differ(pair, "the number of members", std::to_string(pair.first.members.size()),
               std::to_string(pair.second.members.size()));
    }
    CompareMetadata(pair);
}

void DocumentComparer::CompareProjectNames(const NodePair& pair) {
    if (pair.first.projectName.has_value() != pair.second.projectName.has_value()) {
        Differ(pair, "whether they are projects", pair.first.type, pair.second.type);
        return;
    }
    if (!pair.first.projectName || (first_.object == nullptr && second_.object == nullptr)) {
        return;
    }
    const std::string& first = *pair.first.projectName;
    const std::string& second = *pair.second.projectName;
    const bool isTaken = first == second || IsDisplayedAs(second_, pair.second.identifier, first) ||
                         IsDisplayedAs(first_, pair.first.identifier, second);
    if (!isTaken) {
        Differ(pair, "the project's name", first, second);
    }
}

void DocumentComparer::CompareMetadata(const NodePair& pair) {
    const std::size_t count = std::min(pair.first.metadata.size(), pair.second.metadata.size());
    for (std::size_t index = 0; index < count; ++index) {
        const auto& [name, value] = pair.first.metadata[index];
        const auto& [otherName, otherValue] = pair.second.metadata[index];
        if (name != otherName) {
            Differ(pair, "the name of a metadata entry", name, otherName);
        } else if (value != otherValue) {
            Differ(pair, "the metadata entry " + Excerpt(name), value, otherValue);
        }
    }
    if (pair.first.metadata.size() != pair.second.metadata.size()) {
        Differ(pair, "the number of metadata entries", std::to_string(pair.first.metadata.size()),
               std::to_string(pair.second.metadata.size()));
    }
}

void DocumentComparer::Differ(const NodePair& pair, const std::string& what, const std::string& first,
                              const std::string& second) {
    if (++result_.differenceCount <= kMostDifferences) {
        result_.differences.push_back(Excerpt(pair.first.name) + " (id " + Excerpt(pair.first.identifier) +
                                      ") and " + Excerpt(pair.second.name) + " (id " +
                                      Excerpt(pair.second.identifier) + ") differ in " + what + ": " +
                                      Excerpt(first) + ", " + Excerpt(second));
    }
}

}  // namespace

DocumentDifferences CompareDocuments(const ComparedDocument& first, const ComparedDocument& second) {
    return DocumentComparer(first, second).Run();
}

}  // namespace host

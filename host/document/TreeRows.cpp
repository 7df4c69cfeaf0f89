#include "TreeRows.h"

#include <CAEFunctions.h>
#include <EmbeddedModel.h>
#include <OuStringFileName.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string_view>
#include <utility>

#include "ObjectLists.h"
#include "ObjectTexts.h"
#include "format/Kinds.h"
#include "host/system/FileSystem.h"
#include "host/system/Text.h"

namespace host {
namespace {

constexpr std::size_t kDeepestDrawn = 40;
constexpr std::size_t kMetadataWidth = 100;
constexpr std::size_t kLongestValue = 240;

/// The lines of the tree, each three columns wide.
struct Strokes {
    std::string_view branch;
    std::string_view lastBranch;
    std::string_view through;
    std::string_view nothing;
    std::string_view separator;
    std::string_view ellipsis;
    std::string_view arrow;
};
constexpr Strokes kUtf8Strokes = {"├─ ", "└─ ", "│  ", "   ", " · ", "…", "→ "};
constexpr Strokes kAsciiStrokes = {"|- ", "`- ", "|  ", "   ", "; ", "...", "-> "};

/// The objects of one level that are still to be shown.
struct Level {
    std::vector<CAEObject*> children;
    std::size_t next = 0;
};

std::string RoleOf(const korvane::FileRoles& roles, const std::set<int>& meshes, int file) {
    if (file == roles.cadFile) {
        return "CAD file";
    }
    if (file == roles.graphicFile) {
        return "graphic file";
    }
    if (file == roles.activeMesh) {
        return "active mesh";
    }
    if (file == roles.feRepresentation) {
        return "FE representation";
    }
    return meshes.contains(file) ? "mesh" : "custom file";
}

class RowLister {
public:
    explicit RowLister(bool isUtf8) : strokes_(isUtf8 ? kUtf8Strokes : kAsciiStrokes) {}

    void Walk(CAEObject& root);
    std::string Summary() const;
    std::vector<TreeRow> TakeRows() { return std::move(rows_); }

private:
    std::string Indent() const;
    void AddObject(CAEObject& object, const std::string& strokes, bool hasMoreBelow);
    void AddMetadata(const CAEObject& object, const std::string& strokes);
    void AddFileRow(const CAEFile& file, const std::string& strokes, const std::string& role, bool isObject);
    std::string Shorten(const std::string& text) const;

    const Strokes& strokes_;
    std::vector<TreeRow> rows_;
    /// For each level above the current one, whether its line continues below.
    std::vector<bool> goesOn_;
    std::map<_tagCAEObjectType, std::size_t> countOfKind_;
    std::set<int> files_;
    std::uint64_t bytes_ = 0;
};

std::string RowLister::Indent() const {
    if (goesOn_.size() > kDeepestDrawn) {
        return "(" + std::to_string(goesOn_.size()) + ") ";
    }
    std::string indent;
    for (const bool goesOn : goesOn_) {
        indent += goesOn ? strokes_.through : strokes_.nothing;
    }
    return indent;
}

std::string RowLister::Shorten(const std::string& text) const {
    const std::string_view beginning = CutUtf8(text, kLongestValue);
    return std::string(beginning) + std::string(beginning.size() < text.size() ? strokes_.ellipsis : "");
}

void RowLister::AddFileRow(const CAEFile& file, const std::string& strokes, const std::string& role,
                           bool isObject) {
    OuString fullPath;
    file.getFullPathName(fullPath);
    TreeRow row;
    row.strokes = strokes;
    // A file that was created from a child in a document has a name, but no path.
    row.name = Printable(fullPath.IsEmpty() ? NameOf(file) : OuStringFileName(fullPath).GetFileName());
    row.kind = role;
    row.identifier = "#" + std::to_string(file.getID());
    row.type = CAEGetFileTypeName(file.getFileType());
    row.format = format::NameOfFileFormat(static_cast<format::FileFormat>(file.getFileFormat()));
    row.isObject = isObject;
    if (const OuString key = file.getDBKey(); !isObject && !key.IsEmpty()) {
        row.note = "key " + Shorten(Printable(key));
    }
    Entry entry;
    if (fullPath.IsEmpty()) {
        row.size = "-";
    } else if (InspectTarget(ToPath(fullPath), entry)) {
        row.size = "missing";
    } else {
        row.size = FormatSize(entry.size);
    }
    if (files_.insert(file.getID()).second) {
        bytes_ += entry.size;
    }
    rows_.push_back(std::move(row));
}

void RowLister::AddMetadata(const CAEObject& object, const std::string& strokes) {
    TreeRow row;
    row.isMetadata = true;
    row.strokes = strokes;
    for (const korvane::MetadataValues& entry : korvane::GetMetadata(object)) {
        std::string item = Printable(entry.name) + ": " + Shorten(Printable(entry.value));
        item += entry.unit.IsEmpty() ? "" : " " + Printable(entry.unit);
        const bool fits = DisplayWidth(row.name) + DisplayWidth(item) < kMetadataWidth;
        if (!row.name.empty() && !fits) {
            rows_.push_back(row);
            row.name.clear();
        }
        row.name += row.name.empty() ? item : std::string(strokes_.separator) + item;
    }
    if (!row.name.empty()) {
        rows_.push_back(row);
    }
}

void RowLister::AddObject(CAEObject& object, const std::string& strokes, bool hasMoreBelow) {
    ++countOfKind_[object.getType()];
    if (const auto* const file = dynamic_cast<const CAEFile*>(&object)) {
        AddFileRow(*file, strokes, CAEObject::getTypeName(CAE_FILE), true);
    } else {
        TreeRow row;
        row.strokes = strokes;
        row.name = Printable(NameOf(object));
        row.kind = CAEObject::getTypeName(object.getType());
        row.identifier = "#" + std::to_string(object.getID());
        row.isObject = true;
        if (const auto* const project = dynamic_cast<const CAEProject*>(&object)) {
            row.type = Printable(project->getAdditionalType());
        } else if (const auto* const item = dynamic_cast<const CAEViewItem*>(&object)) {
            const int shown = korvane::GetReferencedObject(*item);
            row.note = shown == 0 ? "" : std::string(strokes_.arrow) + "#" + std::to_string(shown);
        }
        rows_.push_back(std::move(row));
    }
    if (const OuString key = object.getDBKey(); !key.IsEmpty()) {
        rows_.back().note += (rows_.back().note.empty() ? "key " : "  key ") + Shorten(Printable(key));
    }
    AddMetadata(object, Indent() + std::string(hasMoreBelow ? strokes_.through : strokes_.nothing));
}

void RowLister::Walk(CAEObject& root) {
    std::vector<Level> levels;
    // Shows an object with its files, and puts its children before everything that waits.
    const auto enter = [&](CAEObject& object, const std::string& strokes) {
        Level level{ChildrenOf(object)};
        const std::vector<CAEFile*> files = AttachedFilesOf(object);
        AddObject(object, strokes, !files.empty() || !level.children.empty());
        const korvane::FileRoles roles = korvane::GetFileRoles(object);
        const std::set<int> meshes(roles.meshes.begin(), roles.meshes.end());
        for (std::size_t index = 0; index < files.size(); ++index) {
            const bool isLast = index + 1 == files.size() && level.children.empty();
            AddFileRow(*files[index], Indent() + std::string(isLast ? strokes_.lastBranch : strokes_.branch),
                       RoleOf(roles, meshes, files[index]->getID()), false);
        }
        levels.push_back(std::move(level));
    };
    enter(root, "");
    while (!levels.empty()) {
        Level& level = levels.back();
        if (level.next == level.children.size()) {
            levels.pop_back();
            if (!goesOn_.empty()) {
                goesOn_.pop_back();
            }
            continue;
        }
        CAEObject& child = *level.children[level.next++];
        const bool isLast = level.next == level.children.size();
        const std::string strokes = Indent() + std::string(isLast ? strokes_.lastBranch : strokes_.branch);
        goesOn_.push_back(!isLast);
        enter(child, strokes);
    }
}

std::string RowLister::Summary() const {
    struct Noun {
        _tagCAEObjectType kind;
        std::string_view singular;
        std::string_view plural;
    };
    constexpr std::array kNouns = {
        Noun{CAE_MODEL, "study", "studies"},
        Noun{CAE_ITERATION, "iteration", "iterations"},
        Noun{CAE_PART, "part", "parts"},
        Noun{CAE_SUBASSEMBLY, "sub-assembly", "sub-assemblies"},
        Noun{CAE_ASSEMBLY_FOLDER, "assembly folder", "assembly folders"},
        Noun{CAE_LOADCASE_VIEW, "load-case view", "load-case views"},
        Noun{CAE_TAG, "tag", "tags"},
    };
    std::string summary;
    for (const Noun& noun : kNouns) {
        const auto found = countOfKind_.find(noun.kind);
        if (found != countOfKind_.end()) {
            summary += FormatCount(found->second, noun.singular, noun.plural) + ", ";
        }
    }
    return summary + FormatCount(files_.size(), "file", "files") + " (" + FormatSize(bytes_) + ")";
}

}  // namespace

TreeRows ListTreeRows(CAEObject& root, bool isUtf8) {
    RowLister lister(isUtf8);
    lister.Walk(root);
    return {lister.TakeRows(), lister.Summary()};
}

}  // namespace host

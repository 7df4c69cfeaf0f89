#include "TreeRows.h"

#include <CAEFunctions.h>
#include <EmbeddedModel.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <set>
#include <string_view>
#include <utility>

#include "FileFacts.h"
#include "ObjectLists.h"
#include "ObjectPath.h"
#include "ObjectTexts.h"
#include "format/Kinds.h"
#include "host/system/Text.h"

namespace host {
namespace {

constexpr std::size_t kDeepestDrawn = 40;
constexpr std::size_t kMetadataWidth = 100;
constexpr std::size_t kLongestValue = 240;
/// In place of the type, format and size of a file that belongs to several objects.
constexpr const char* kListedBefore = "listed above";

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

class RowLister {
public:
    RowLister(const CAEObject& root, bool isUtf8, const TreeContent& content)
        : strokes_(isUtf8 ? kUtf8Strokes : kAsciiStrokes), content_(content), path_(root) {}

    void Walk(CAEObject& root);
    std::string Summary() const;
    std::vector<TreeRow> TakeRows() { return std::move(rows_); }

private:
    std::string Indent() const;
    void Enter(CAEObject& object, const std::string& strokes);
    void AddObject(CAEObject& object, const std::string& strokes, bool hasMoreBelow, std::size_t hiddenBelow);
    void AddMetadata(const CAEObject& object, const std::string& strokes);
    void AddFileRow(const CAEFile& file, const std::string& strokes, std::string_view role, bool isObject);
    void AddNote(const std::string& text) {
        rows_.back().note += (rows_.back().note.empty() ? "" : "  ") + text;
    }
    void Count(const CAEFile& file);
    bool IsShownAt(std::size_t depth) const { return !content_.depth || depth <= *content_.depth; }
    bool IsShown(FileRole role) const { return host::IsShown(content_.files, role); }
    std::vector<CAEObject*> ShownChildrenOf(const CAEObject& object);
    std::string Shorten(const std::string& text) const;

    const Strokes& strokes_;
    const TreeContent& content_;
    ObjectPath path_;
    std::vector<TreeRow> rows_;
    std::vector<Level> levels_;
    /// For each level above the current one, whether its line continues below.
    std::vector<bool> goesOn_;
    std::map<_tagCAEObjectType, std::size_t> countOfKind_;
    /// All files, and those that have a row.
    std::set<int> files_;
    std::set<int> listed_;
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

void RowLister::Count(const CAEFile& file) {
    if (files_.insert(file.getID()).second) {
        bytes_ += LookUpFile(file).size;
    }
}

/// The children, without the files among them that are not to be shown.
std::vector<CAEObject*> RowLister::ShownChildrenOf(const CAEObject& object) {
    std::vector<CAEObject*> children = ChildrenOf(object);
    std::erase_if(children, [this](const CAEObject* child) {
        const auto* const file = dynamic_cast<const CAEFile*>(child);
        const bool isHidden = file != nullptr && !IsShown(FileRole::Custom) && ChildrenOf(*file).empty();
        if (isHidden) {
            Count(*file);
        }
        return isHidden;
    });
    return children;
}

void RowLister::AddFileRow(const CAEFile& file, const std::string& strokes, std::string_view role,
                           bool isObject) {
    TreeRow row;
    row.strokes = strokes;
    row.name = Printable(std::string_view(path_.PlaceOf(file)));
    row.kind = role;
    row.identifier = "#" + std::to_string(file.getID());
    row.isObject = isObject;
    if (listed_.insert(file.getID()).second) {
        const FileOnDisk found = LookUpFile(file);
        bytes_ += files_.insert(file.getID()).second ? found.size : 0;
        row.type = CAEGetFileTypeName(file.getFileType());
        row.format = format::NameOfFileFormat(static_cast<format::FileFormat>(file.getFileFormat()));
        row.size = SizeText(found);
    } else {
        row.type = kListedBefore;
    }
    if (const OuString key = file.getDBKey(); !isObject && !key.IsEmpty()) {
        row.note = "key " + Shorten(Printable(key));
    }
    rows_.push_back(std::move(row));
}

void RowLister::AddMetadata(const CAEObject& object, const std::string& strokes) {
    TreeRow row;
    row.isMetadata = true;
    row.strokes = strokes;
    for (const korvane::MetadataValues& entry : korvane::GetMetadata(object)) {
        const std::string item = Printable(entry.name) + ": " +
                                 ShownValue(Shorten(Printable(entry.value)), Printable(UnitOf(entry)));
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

void RowLister::AddObject(CAEObject& object, const std::string& strokes, bool hasMoreBelow,
                          std::size_t hiddenBelow) {
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
        AddNote("key " + Shorten(Printable(key)));
    }
    if (hiddenBelow > 0) {
        AddNote(FormatCount(hiddenBelow, "object", "objects") + " below");
    }
    AddMetadata(object, Indent() + std::string(hasMoreBelow ? strokes_.through : strokes_.nothing));
}

/// Shows an object with its files, and puts its children before everything that waits.
void RowLister::Enter(CAEObject& object, const std::string& strokes) {
    const std::size_t depth = goesOn_.size();
    Level level{ShownChildrenOf(object)};
    std::vector<CAEFile*> files = AttachedFilesOf(object);
    const std::map<int, FileRole> roles = RolesOfFiles(object);
    const bool isOpen = IsShownAt(depth + 1);
    const auto isHidden = [&](const CAEFile* file) { return !isOpen || !IsShown(roles.at(file->getID())); };
    if (IsShownAt(depth)) {
        const std::size_t below = level.children.size();
        const bool isAnyFileShown = !std::ranges::all_of(files, isHidden);
        AddObject(object, strokes, isOpen && (isAnyFileShown || below > 0), isOpen ? 0 : below);
    } else {
        ++countOfKind_[object.getType()];
        if (const auto* const file = dynamic_cast<const CAEFile*>(&object)) {
            Count(*file);
        }
    }
    for (const CAEFile* const file : files) {
        if (isHidden(file)) {
            Count(*file);
        }
    }
    std::erase_if(files, isHidden);
    for (const CAEFile* const file : files) {
        const bool isLast = file == files.back() && level.children.empty();
        AddFileRow(*file, Indent() + std::string(isLast ? strokes_.lastBranch : strokes_.branch),
                   NameOfRole(roles.at(file->getID())), false);
    }
    levels_.push_back(std::move(level));
}

void RowLister::Walk(CAEObject& root) {
    Enter(root, "");
    while (!levels_.empty()) {
        Level& level = levels_.back();
        if (level.next == level.children.size()) {
            levels_.pop_back();
            if (!levels_.empty()) {
                goesOn_.pop_back();
                path_.Leave();
            }
            continue;
        }
        CAEObject& child = *level.children[level.next++];
        const bool isLast = level.next == level.children.size();
        const std::string strokes = Indent() + std::string(isLast ? strokes_.lastBranch : strokes_.branch);
        goesOn_.push_back(!isLast);
        path_.Enter(child);
        Enter(child, strokes);
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

TreeRows ListTreeRows(CAEObject& root, bool isUtf8, const TreeContent& content) {
    RowLister lister(root, isUtf8, content);
    lister.Walk(root);
    return {lister.TakeRows(), lister.Summary()};
}

}  // namespace host

#include "UpdateReport.h"

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

#include "RelativePath.h"
#include "host/document/ObjectTexts.h"
#include "host/system/Text.h"

namespace host {
namespace {

std::string CountText(const UpdateReport::Count& count) {
    return FormatCount(count.objects, "object", "objects") + " and " +
           FormatCount(count.files, "file", "files");
}

constexpr const char* kFileKind = "File";

struct ChangeNames {
    UpdateReport::Change change;
    std::string_view word;
    /// In messages.
    std::string_view heading;
};
constexpr ChangeNames kChangeNames[] = {
    {UpdateReport::Change::Added, "added", "added"},
    {UpdateReport::Change::Changed, "changed", "changed"},
    {UpdateReport::Change::Moved, "moved", "moved"},
    {UpdateReport::Change::Removed, "removed", "removed"},
    {UpdateReport::Change::Missing, "missing", "missing from the directory"},
    {UpdateReport::Change::InUse, "in-use",
     "missing, but not removed, because something else in the project has it"},
    {UpdateReport::Change::Unreadable, "unreadable", "cannot be read now, so it stays as it was"},
};

const ChangeNames& NamesOf(UpdateReport::Change change) {
    return *std::ranges::find(kChangeNames, change, &ChangeNames::change);
}

/// The names from the root to the object; of more than `most` only the last.
std::string PathOfObject(const CAEObject& object, std::size_t most) {
    std::vector<std::string> names;
    const CAEObject* next = &object;
    if (next->getParent() == nullptr) {
        names.emplace_back(NameOf(*next).GetAnsiBuffer());
    }
    for (; next->getParent() != nullptr && names.size() < most; next = next->getParent()) {
        names.emplace_back(NameOf(*next).GetAnsiBuffer());
    }
    std::string path = next->getParent() != nullptr ? "..." : "";
    for (; !names.empty(); names.pop_back()) {
        path += (path.empty() ? "" : "/") + names.back();
    }
    return path;
}

/// In messages only the end of a long path is named.
constexpr std::size_t kMostNames = 8;

std::string Describe(const UpdateReport::Listed& one) {
    return Quoted(one.path) + " (" + one.kind + " #" + std::to_string(one.identifier) + ')';
}

}  // namespace

void UpdateReport::Say(const std::string& project, bool isRemoving, Console& console) const {
    if (!isChanged && missing.IsZero()) {
        console.Note(project + ": nothing has changed in the directory. The project file is as it was");
    } else {
        console.Note(project + ": " + CountText(added) + " added, " + CountText(changed) + " changed, " +
                     (isRemoving ? CountText(removed) + " removed, " : "") + CountText(missing) + " missing");
    }
    if (!directory.IsEmpty()) {
        console.Note(project + ": the directory of the project is now " + Quoted(ToPath(directory)));
    }
    notes.Say(project, console);
    SayValues(project, console);
    if (!isChanged && !missing.IsZero()) {
        console.Note(project + ": nothing else has changed in the directory. The project file is as it was");
    }
    if (!isRemoving && !missing.IsZero()) {
        console.Note(project + ": what is missing stays in the project. --remove removes it");
    }
}

void UpdateReport::SayValues(const std::string& project, Console& console) const {
    for (const Listed& one : listed) {
        for (const ValueChange& value : one.values) {
            console.Detail(project + ": " + SentenceOf(value, Describe(one)));
        }
    }
}

void UpdateReport::Note(Change change, const CAEObject& object, bool isTopmost, ValueChanges values) {
    const auto list = [&](std::string path) {
        return Listed{change, CAEObject::getTypeName(object.getType()), object.getID(), std::move(path), {}};
    };
    if (isTopmost) {
        notes.Add(NamesOf(change).heading, [&] { return Describe(list(PathOfObject(object, kMostNames))); });
    }
    if (isListing) {
        listed.push_back(list(WholePathOf(object)));
        listed.back().values = std::move(values);
    }
}

void UpdateReport::Note(Change change, const CAEFile& file, const OuString& projectDirectory, bool isTopmost,
                        ValueChanges values) {
    const auto list = [&] {
        return Listed{change, kFileKind, file.getID(), PathInDirectory(file, projectDirectory), {}};
    };
    if (isTopmost) {
        notes.Add(NamesOf(change).heading, [&] { return Describe(list()); });
    }
    if (isListing) {
        listed.push_back(list());
        listed.back().values = std::move(values);
    }
}

std::string WholePathOf(const CAEObject& object) {
    return PathOfObject(object, std::numeric_limits<std::size_t>::max());
}

std::string PathInDirectory(const CAEFile& file, const OuString& directory) {
    return RelativePath(PathOf(file), directory).value_or(NameOf(file).GetAnsiBuffer());
}

std::string_view WordOf(UpdateReport::Change change) {
    return NamesOf(change).word;
}

}  // namespace host

#include "UpdateReport.h"

#include <algorithm>
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

std::string PathOfObject(const CAEObject& object) {
    // Only the end of a long path is named, so that objects far below each other cost nothing.
    constexpr std::size_t kMostNames = 8;
    std::vector<std::string> names;
    const CAEObject* next = &object;
    if (next->getParent() == nullptr) {
        names.emplace_back(NameOf(*next).GetAnsiBuffer());
    }
    for (; next->getParent() != nullptr && names.size() < kMostNames; next = next->getParent()) {
        names.emplace_back(NameOf(*next).GetAnsiBuffer());
    }
    std::string path = next->getParent() != nullptr ? "..." : "";
    for (; !names.empty(); names.pop_back()) {
        path += (path.empty() ? "" : "/") + names.back();
    }
    return path;
}

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
    if (!isChanged && !missing.IsZero()) {
        console.Note(project + ": nothing else has changed in the directory. The project file is as it was");
    }
    if (!isRemoving && !missing.IsZero()) {
        console.Note(project + ": what is missing stays in the project. --remove removes it");
    }
}

void UpdateReport::Note(Change change, const CAEObject& object) {
    const auto list = [&] {
        return Listed{change, CAEObject::getTypeName(object.getType()), object.getID(), PathOfObject(object)};
    };
    notes.Add(NamesOf(change).heading, [&] { return Describe(list()); });
    if (isListing) {
        listed.push_back(list());
    }
}

void UpdateReport::Note(Change change, const CAEFile& file, const OuString& projectDirectory) {
    const auto list = [&] {
        return Listed{change, kFileKind, file.getID(),
                      RelativePath(PathOf(file), projectDirectory).value_or(NameOf(file).GetAnsiBuffer())};
    };
    notes.Add(NamesOf(change).heading, [&] { return Describe(list()); });
    if (isListing) {
        listed.push_back(list());
    }
}

std::string_view WordOf(UpdateReport::Change change) {
    return NamesOf(change).word;
}

}  // namespace host

#include "UpdateReport.h"

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

}  // namespace

void UpdateReport::Say(const std::string& project, bool isRemoving, Console& console) const {
    if (!isChanged && missing.IsZero()) {
        console.Say(project + ": nothing has changed in the directory. The project file is as it was");
    } else {
        console.Say(project + ": " + CountText(added) + " added, " + CountText(changed) + " changed, " +
                    (isRemoving ? CountText(removed) + " removed, " : "") + CountText(missing) + " missing");
    }
    if (!directory.IsEmpty()) {
        console.Say(project + ": the directory of the project is now " + Quoted(ToPath(directory)));
    }
    notes.Say(project, console);
    if (!isChanged && !missing.IsZero()) {
        console.Say(project + ": nothing else has changed in the directory. The project file is as it was");
    }
    if (!isRemoving && !missing.IsZero()) {
        console.Say(project + ": what is missing stays in the project. --remove removes it");
    }
}

std::string DescribeObject(const CAEObject& object) {
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
    return Quoted(path) + " (" + CAEObject::getTypeName(object.getType()) + " #" +
           std::to_string(object.getID()) + ')';
}

std::string DescribeFile(const CAEFile& file, const OuString& directory) {
    return Quoted(RelativePath(PathOf(file), directory).value_or(NameOf(file).GetAnsiBuffer())) + " (File #" +
           std::to_string(file.getID()) + ')';
}

}  // namespace host

#include "PageContent.h"

#include <EmbeddedModel.h>

#include <utility>

#include "Pictures.h"
#include "host/directory/RelativePath.h"
#include "host/document/ObjectLists.h"
#include "host/document/ObjectTexts.h"
#include "host/system/FileSystem.h"
#include "host/system/Text.h"

namespace host {
namespace {

std::string PlaceOfPath(const CAEFile& file, const OuString& path) {
    const CAEProject* const project = file.getProject();
    if (project != nullptr) {
        if (std::optional<std::string> relative = RelativePath(path, DirectoryOf(*project))) {
            return *std::move(relative);
        }
    }
    return path.GetAnsiBuffer();
}

/// The directory of the project that the file belongs to, which no file that it includes may lie out of.
std::filesystem::path DirectoryOfProject(const CAEFile& file) {
    const CAEProject* const project = file.getProject();
    return project != nullptr ? ToPath(DirectoryOf(*project)) : std::filesystem::path();
}

PageFile LookAt(CAEFile& file, const ReadableDirectories& readable, PageRooms& rooms) {
    PageFile shown;
    shown.file = &file;
    const OuString path = PathOf(file);
    if (path.IsEmpty()) {
        return shown;
    }
    shown.place = PlaceOfPath(file, path);
    const std::filesystem::path whole = ToPath(path);
    ReadableDirectories::Found found = readable.Find(whole);
    shown.isOutside = found.isOutside;
    shown.resolved = std::move(found.resolved);
    Entry entry;
    if (shown.resolved.empty()) {
        return shown;
    }
    const std::error_code error = InspectTarget(shown.resolved, entry);
    ThrowIfOutOfMemory(error);
    if (error) {
        return shown;
    }
    shown.size = entry.size;
    // Anything else could be a pipe that nobody writes to.
    if (entry.type == EntryType::File) {
        shown.pictureType = PictureType(whole);
        shown.isEmbedded = !shown.pictureType.empty() && rooms.pictures.Take(entry.size);
        shown.model =
            ReadPageModel(whole, file.getFileType(), DirectoryOfProject(file), readable, rooms.models);
    }
    return shown;
}

class Lister {
public:
    Lister(PageContent& content, const ReadableDirectories& readable, PageRooms& rooms)
        : content_(content), readable_(readable), rooms_(rooms) {}

    void Add(CAEObject& object, int depth) {
        const auto level = static_cast<std::size_t>(depth);
        above_.resize(level);
        PageObject shown{&object, level == 0 ? -1 : above_[level - 1], -1};
        above_.push_back(static_cast<std::int64_t>(content_.objects.size()));
        if (auto* const file = dynamic_cast<CAEFile*>(&object)) {
            shown.file = AddFile(*file);
        }
        for (CAEFile* const file : AttachedFilesOf(object)) {
            AddFile(*file);
        }
        content_.objects.push_back(shown);
    }

private:
    std::int64_t AddFile(CAEFile& file) {
        const auto next = static_cast<std::int64_t>(content_.files.size());
        const auto [place, isNew] = content_.fileOfIdentifier.try_emplace(file.getID(), next);
        if (isNew) {
            content_.files.push_back(LookAt(file, readable_, rooms_));
        }
        return place->second;
    }

    PageContent& content_;
    const ReadableDirectories& readable_;
    PageRooms& rooms_;
    /// The places of the objects above the next one.
    std::vector<std::int64_t> above_;
};

}  // namespace

PageContent ListPageContent(CAEObject& root, const ReadableDirectories& readable, PageRooms& rooms) {
    PageContent content;
    Lister lister(content, readable, rooms);
    korvane::VisitTree(root, [&lister](CAEObject& object, int depth) { lister.Add(object, depth); });
    return content;
}

}  // namespace host

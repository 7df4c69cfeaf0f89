#include "ProjectMatching.h"

#include <EmbeddedModel.h>

#include <span>

#include "RelativePath.h"
#include "host/document/ObjectTexts.h"

namespace host {
namespace {

/// Places of a list by a key, each of which is taken once at most.
class Places {
public:
    explicit Places(std::vector<bool>& isTaken) : isTaken_(isTaken) {}

    void Add(const OriginKey& key, std::size_t place) { waiting_[key].places.push_back(place); }
    std::optional<std::size_t> Take(const OriginKey& key) {
        const auto found = waiting_.find(key);
        if (found == waiting_.end()) {
            return std::nullopt;
        }
        Waiting& waiting = found->second;
        while (waiting.next < waiting.places.size()) {
            const std::size_t place = waiting.places[waiting.next++];
            if (!isTaken_[place]) {
                isTaken_[place] = true;
                return place;
            }
        }
        return std::nullopt;
    }

private:
    struct Waiting {
        std::vector<std::size_t> places;
        std::size_t next = 0;
    };
    std::vector<bool>& isTaken_;
    std::unordered_map<OriginKey, Waiting> waiting_;
};

std::span<const OriginKey> FirstByFile(const ObjectOrigin& origin) {
    return std::span(origin.byFile).first(origin.byFile.empty() ? 0 : 1);
}
std::span<const OriginKey> AllByFile(const ObjectOrigin& origin) {
    return origin.byFile;
}
std::span<const OriginKey> ByName(const ObjectOrigin& origin) {
    return {&origin.byName, 1};
}

std::string NameKey(const CAEFile& file) {
    return PathKey(NameOf(file).GetAnsiBuffer());
}

/// Whether an import created the file.
bool IsImported(const CAEFile& file) {
    return CreatorOf(file).IsEmpty() || PathOf(file).IsEmpty();
}

}  // namespace

ProjectMatching::ProjectMatching(const ProjectOrigins& project, const ProjectOrigins& reading)
    : project_(project),
      reading_(reading),
      objects_(reading.Objects().size()),
      files_(reading.Files().size()),
      isObjectMatched_(project.Objects().size()),
      isFileMatched_(project.Files().size()) {
    MatchObjects();
    MatchFilesByPath();
    MatchFilesByName();
}

void ProjectMatching::MatchObjects() {
    objects_[0] = 0;
    isObjectMatched_[0] = true;
    // A part goes with its geometry before another one of its files counts.
    for (const auto keysOf : {&FirstByFile, &AllByFile, &ByName}) {
        Places places(isObjectMatched_);
        for (const bool isFromDirectory : {true, false}) {
            for (std::size_t place = 1; place < project_.Objects().size(); ++place) {
                const ObjectOrigin& origin = project_.Objects()[place];
                if (origin.isFromDirectory == isFromDirectory && !isObjectMatched_[place]) {
                    for (const OriginKey& key : keysOf(origin)) {
                        places.Add(key, place);
                    }
                }
            }
        }
        for (std::size_t read = 1; read < objects_.size(); ++read) {
            for (const OriginKey& key : keysOf(reading_.Objects()[read])) {
                if (!objects_[read]) {
                    objects_[read] = places.Take(key);
                }
            }
        }
    }
}

void ProjectMatching::Match(std::size_t readFile, std::size_t file) {
    files_[readFile] = file;
    isFileMatched_[file] = true;
}

void ProjectMatching::MatchFilesByPath() {
    // Children of a project cannot become files in its list, so the two are apart.
    Places places(isFileMatched_);
    for (std::size_t place = 0; place < project_.Files().size(); ++place) {
        const FileOrigin& origin = project_.Files()[place];
        if (origin.isFromDirectory) {
            places.Add({origin.isChild ? 1 : 0, origin.path}, place);
        }
    }
    for (std::size_t read = 0; read < files_.size(); ++read) {
        const FileOrigin& origin = reading_.Files()[read];
        files_[read] = places.Take({origin.isChild ? 1 : 0, origin.path});
    }
}

void ProjectMatching::MatchFilesByName() {
    for (std::size_t read = 0; read < objects_.size(); ++read) {
        if (objects_[read]) {
            MatchAttachedByName(read, *objects_[read]);
        }
    }
    MatchChildrenByName();
}

void ProjectMatching::MatchAttachedByName(std::size_t read, std::size_t kept) {
    std::unordered_map<std::string, std::size_t> imported;
    for (const int id : korvane::GetFileRoles(*project_.Objects()[kept].object).files) {
        const FileOrigin* const file = project_.FileOf(id);
        const std::size_t place =
            file != nullptr ? static_cast<std::size_t>(file - project_.Files().data()) : 0;
        if (file != nullptr && !file->isChild && !isFileMatched_[place] && IsImported(*file->file)) {
            imported.emplace(NameKey(*file->file), place);
        }
    }
    if (imported.empty()) {
        return;
    }
    for (const int id : korvane::GetFileRoles(*reading_.Objects()[read].object).files) {
        const FileOrigin& file = *reading_.FileOf(id);
        const auto place = static_cast<std::size_t>(&file - reading_.Files().data());
        const auto found = imported.find(NameKey(*file.file));
        if (!file.isChild && !files_[place] && found != imported.end()) {
            Match(place, found->second);
            imported.erase(found);
        }
    }
}

void ProjectMatching::MatchChildrenByName() {
    std::unordered_map<std::string, std::size_t> imported;
    for (std::size_t place = 0; place < project_.Files().size(); ++place) {
        const FileOrigin& file = project_.Files()[place];
        if (file.isChild && !isFileMatched_[place] && IsImported(*file.file)) {
            imported.emplace(NameKey(*file.file), place);
        }
    }
    for (std::size_t read = 0; read < files_.size(); ++read) {
        const FileOrigin& file = reading_.Files()[read];
        const auto found = imported.find(NameKey(*file.file));
        if (file.isChild && !files_[read] && found != imported.end()) {
            Match(read, found->second);
            imported.erase(found);
        }
    }
}

}  // namespace host

#include "ObjectOrigins.h"

#include <EmbeddedModel.h>

#include <algorithm>
#include <array>

#include "KnownFiles.h"
#include "RelativePath.h"
#include "host/document/ObjectLists.h"
#include "host/document/ObjectTexts.h"

namespace host {
namespace {

constexpr int kNoPath = -1;

constexpr std::array kKindsOfReadings = {CAE_MODEL,     CAE_ASSEMBLY_FOLDER, CAE_ITERATION_FOLDER,
                                         CAE_ITERATION, CAE_ITERATION_MODEL, CAE_PART};

/// Whether the deck of an object of the kind says something about the object above it.
bool PassesDeckOn(_tagCAEObjectType kind) {
    return kind == CAE_ITERATION_MODEL || kind == CAE_ITERATION || kind == CAE_ITERATION_FOLDER;
}

std::string NameKey(const CAEObject& object) {
    return PathKey(NameOf(object).GetAnsiBuffer());
}

}  // namespace

int PathNumbers::Child(int above, std::string_view name) {
    std::string key = std::to_string(above) + '/';
    key += name;
    return numbers_.emplace(std::move(key), static_cast<int>(numbers_.size()) + 1).first->second;
}

int PathNumbers::Of(std::string_view relative) {
    int number = kRoot;
    while (!relative.empty()) {
        const std::size_t end = std::min(relative.find('/'), relative.size());
        number = Child(number, relative.substr(0, end));
        relative.remove_prefix(std::min(end + 1, relative.size()));
    }
    return number;
}

ProjectOrigins::ProjectOrigins(CAEProject& project, PathNumbers& numbers) : numbers_(numbers) {
    CollectFiles(project);
    CollectObjects(project);
    FindDecks();
    SetKeys();
    MarkFromDirectory();
}

void ProjectOrigins::CollectFiles(CAEProject& project) {
    const OuString directory = DirectoryOf(project);
    for (CAEObject* const child : ChildrenOf(project)) {
        if (auto* const file = dynamic_cast<CAEFile*>(child)) {
            AddFile(*file, true, directory);
        }
    }
    for (CAEFile* const file : korvane::GetProjectFiles(project)) {
        AddFile(*file, false, directory);
    }
}

void ProjectOrigins::AddFile(CAEFile& file, bool isChild, const OuString& directory) {
    const std::optional<std::string> relative = OriginOf(file, directory);
    const std::string key = PathKey(relative.value_or(""));
    const FileOrigin origin{&file, isChild, relative.has_value(), numbers_.Of(key)};
    fileOfIdentifier_.emplace(file.getID(), files_.size());
    files_.push_back(origin);
    directories_.push_back(numbers_.Of(DirectoryIn(key)));
}

const FileOrigin* ProjectOrigins::FileOf(int identifier) const {
    const auto found = fileOfIdentifier_.find(identifier);
    return found == fileOfIdentifier_.end() ? nullptr : &files_[found->second];
}

int ProjectOrigins::PathOfFile(int file) const {
    const FileOrigin* const found = FileOf(file);
    return found != nullptr && found->isFromDirectory ? found->path : kNoPath;
}

int ProjectOrigins::DirectoryOfFile(int file) const {
    return PathOfFile(file) == kNoPath ? kNoPath : directories_[fileOfIdentifier_.at(file)];
}

void ProjectOrigins::CollectObjects(CAEProject& project) {
    std::unordered_map<const CAEObject*, std::size_t> places;
    objects_.push_back({&project, 0, PathNumbers::kRoot, {}, {}, true});
    places.emplace(&project, 0);
    korvane::VisitTree(project, [&](CAEObject& object, int depth) {
        const auto above = depth > 0 ? places.find(object.getParent()) : places.end();
        const bool isLeaf = object.getType() == CAE_FILE;
        // What is below a file or below a project in the project is none of the directory's.
        if (above != places.end() && !isLeaf &&
            (above->second == 0 || objects_[above->second].object->getType() != CAE_PROJECT)) {
            places.emplace(&object, objects_.size());
            objects_.push_back({&object, above->second, PathNumbers::kRoot, {}, {}, false});
        }
    });
}

void ProjectOrigins::FindDecks() {
    decks_.assign(objects_.size(), 0);
    // Everything comes after what it is below, so the last comes first here.
    for (std::size_t index = objects_.size(); index-- > 1;) {
        const ObjectOrigin& origin = objects_[index];
        if (origin.object->getType() == CAE_ITERATION_MODEL) {
            const int deck = korvane::GetFileRoles(*origin.object).feRepresentation;
            decks_[index] = PathOfFile(deck) != kNoPath ? deck : 0;
        }
        if (decks_[index] != 0 && PassesDeckOn(origin.object->getType())) {
            decks_[origin.above] = decks_[index];
        }
    }
}

void ProjectOrigins::SetKeys() {
    for (std::size_t index = 1; index < objects_.size(); ++index) {
        SetKeysOf(objects_[index], index);
    }
}

void ProjectOrigins::SetKeysOf(ObjectOrigin& origin, std::size_t index) {
    const _tagCAEObjectType kind = origin.object->getType();
    const int above = objects_[origin.above].directory;
    const int named = numbers_.Child(above, NameKey(*origin.object));
    origin.byName = {kind, named};
    origin.directory = above;
    const auto add = [&](int path) {
        if (path != kNoPath) {
            origin.byFile.push_back({kind, path});
        }
    };
    if (kind == CAE_MODEL) {
        origin.directory = decks_[index] != 0 ? DirectoryOfFile(decks_[index]) : named;
        add(origin.directory);
    } else if (kind == CAE_ASSEMBLY_FOLDER) {
        const std::vector<int> files = korvane::GetFileRoles(*origin.object).customFiles;
        const auto own = std::ranges::find_if(files, [&](int file) { return PathOfFile(file) != kNoPath; });
        origin.directory = own != files.end() ? DirectoryOfFile(*own) : named;
        add(origin.directory);
    } else if (kind == CAE_ITERATION || kind == CAE_ITERATION_MODEL) {
        add(decks_[index] != 0 ? PathOfFile(decks_[index]) : kNoPath);
    } else if (kind == CAE_PART) {
        const korvane::FileRoles roles = korvane::GetFileRoles(*origin.object);
        add(PathOfFile(roles.cadFile));
        add(PathOfFile(roles.activeMesh));
        std::ranges::for_each(roles.meshes, [&](int mesh) { add(PathOfFile(mesh)); });
    }
}

void ProjectOrigins::MarkFromDirectory() {
    for (std::size_t index = objects_.size(); index-- > 1;) {
        ObjectOrigin& origin = objects_[index];
        if (std::ranges::find(kKindsOfReadings, origin.object->getType()) == kKindsOfReadings.end()) {
            origin.isFromDirectory = false;
            continue;
        }
        const std::vector<int> files = korvane::GetFileRoles(*origin.object).files;
        origin.isFromDirectory = origin.isFromDirectory || std::ranges::any_of(files, [&](int file) {
                                     return PathOfFile(file) != kNoPath;
                                 });
        if (origin.isFromDirectory) {
            objects_[origin.above].isFromDirectory = true;
        }
    }
}

}  // namespace host

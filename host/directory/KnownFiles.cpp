#include "KnownFiles.h"

#include <EmbeddedModel.h>

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "RelativePath.h"
#include "host/document/ObjectTexts.h"
#include "host/document/ProjectObjects.h"
#include "host/system/Text.h"

namespace host {
namespace {

using std::filesystem::path;

/// The type that a directory's file had before it got the role of a part's picture.
_tagFileType ScannedType(_tagFileType type) {
    return type == CAE_FILE_GRAPHIC ? CAE_FILE_PICTURE : type;
}

bool IsBefore(const path& left, const path& right) {
    return CompareNames(left, right) < 0;
}

class TreeFiller {
public:
    TreeFiller(const KnownFiles& known, DirectoryTree& tree) : known_(known), tree_(tree) {
        for (std::size_t index = 0; index < tree_.directories.size(); ++index) {
            directories_.emplace(KeyOf(tree_.directories[index].path), index);
        }
    }

    void Fill(const path& unreadable) {
        const std::string key = KeyOf(unreadable);
        if (const auto file = known_.find(key); file != known_.end()) {
            AddFile(file->second);
        }
        const std::string below = key + '/';
        for (auto file = known_.lower_bound(below); file != known_.end() && file->first.starts_with(below);
             ++file) {
            AddFile(file->second);
        }
    }

    void KeepDecks() {
        for (ScannedDirectory& directory : tree_.directories) {
            for (ScannedFile& file : directory.files) {
                const auto before = known_.find(KeyOf(directory.path / file.name));
                if (before != known_.end() &&
                    (before->second.type == CAE_FILE_DECK) != (file.type == CAE_FILE_DECK)) {
                    file.type = ScannedType(before->second.type);
                }
            }
        }
    }

private:
    std::string KeyOf(const path& whole) const {
        const OuString root = ToOuString(tree_.directories.front().path);
        return PathKey(RelativePath(ToOuString(whole), root).value_or(""));
    }

    void AddFile(const KnownFile& known) {
        const path name = PathOfRelative(NameIn(known.path));
        std::vector<ScannedFile>& files = tree_.directories[EnsureDirectory(DirectoryIn(known.path))].files;
        const auto place = std::ranges::lower_bound(files, name, IsBefore, &ScannedFile::name);
        if (place != files.end() && place->name == name) {
            return;
        }
        ScannedFile file;
        file.name = name;
        file.type = ScannedType(known.type);
        file.format = known.format;
        file.isRemembered = true;
        files.insert(place, std::move(file));
    }

    /// The index of a directory, which is made if it is not there, with those that it is in.
    std::size_t EnsureDirectory(std::string_view relative) {
        std::vector<std::string_view> missing;
        auto found = directories_.find(PathKey(relative));
        while (found == directories_.end()) {
            missing.push_back(relative);
            relative = DirectoryIn(relative);
            found = directories_.find(PathKey(relative));
        }
        std::size_t above = found->second;
        for (; !missing.empty(); missing.pop_back()) {
            above = AddDirectory(above, missing.back());
        }
        return above;
    }

    std::size_t AddDirectory(std::size_t above, std::string_view relative) {
        const path name = PathOfRelative(NameIn(relative));
        const std::size_t index = tree_.directories.size();
        ScannedDirectory added;
        added.name = name;
        added.path = tree_.directories[above].path / name;
        tree_.directories.push_back(std::move(added));
        std::vector<std::size_t>& siblings = tree_.directories[above].directories;
        const auto place = std::ranges::lower_bound(
            siblings, name, IsBefore, [&](std::size_t other) { return tree_.directories[other].name; });
        siblings.insert(place, index);
        directories_.emplace(PathKey(relative), index);
        return index;
    }

    const KnownFiles& known_;
    DirectoryTree& tree_;
    std::unordered_map<std::string, std::size_t> directories_;
};

}  // namespace

std::optional<std::string> OriginOf(const CAEFile& file, const OuString& directory) {
    return CreatorOf(file).IsEmpty() ? std::nullopt : RelativePath(PathOf(file), directory);
}

KnownFiles KnownFilesOf(CAEProject& project) {
    const OuString directory = DirectoryOf(project);
    KnownFiles known;
    VisitProject(project, [&](const CAEObject& object, const ObjectPlace&) {
        const auto* const file = dynamic_cast<const CAEFile*>(&object);
        std::optional<std::string> relative = file != nullptr ? OriginOf(*file, directory) : std::nullopt;
        if (relative) {
            std::string key = PathKey(*relative);
            known.emplace(std::move(key),
                          KnownFile{std::move(*relative), file->getFileType(), file->getFileFormat()});
        }
    });
    return known;
}

void Remember(const KnownFiles& known, DirectoryTree& tree) {
    TreeFiller filler(known, tree);
    for (const path& entry : tree.unreadable) {
        filler.Fill(entry);
    }
    filler.KeepDecks();
}

}  // namespace host

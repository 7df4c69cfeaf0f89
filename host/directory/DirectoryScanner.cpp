#include "DirectoryScanner.h"

#include <algorithm>

#include "FileContents.h"
#include "FileFinder.h"
#include "InputKinds.h"
#include "LeftOutEntries.h"

namespace host {
namespace {

/// Fills in what the directories have, at any depth.
void SumUp(DirectoryTree& tree) {
    // Every directory comes after the one that it is in, so the last comes first here.
    for (std::size_t index = tree.directories.size(); index-- > 0;) {
        ScannedDirectory& directory = tree.directories[index];
        directory.hasDecks = std::ranges::any_of(
            directory.files, [](const ScannedFile& file) { return file.type == CAE_FILE_DECK; });
        directory.hasDecksInTree = directory.hasDecks;
        directory.hasFilesInTree = !directory.files.empty();
        for (const std::size_t inner : directory.directories) {
            directory.hasDecksInTree = directory.hasDecksInTree || tree.directories[inner].hasDecksInTree;
            directory.hasFilesInTree = directory.hasFilesInTree || tree.directories[inner].hasFilesInTree;
        }
    }
}

}  // namespace

std::error_code ScanDirectory(const std::filesystem::path& root, const ScanOptions& options, Console& console,
                              DirectoryTree& tree) {
    LeftOutEntries leftOut(console, tree);
    if (const std::error_code error =
            FindFiles(root, options.leftOut, options.exclusion, console, leftOut, tree)) {
        return error;
    }
    SettleInput(ReadFileContents(options.leftOut, console, leftOut, tree), tree);
    SettleUndecidedSolvers(tree);
    if (options.known != nullptr && !tree.unreadable.empty()) {
        Remember(*options.known, tree);
    }
    SumUp(tree);
    if (!options.studies.empty()) {
        const std::filesystem::path withoutDecks = KeepStudies(options.studies, tree, *options.exclusion);
        if (!withoutDecks.empty()) {
            *options.withoutDecks = withoutDecks;
            return std::make_error_code(std::errc::no_such_file_or_directory);
        }
        SumUp(tree);
    }
    return {};
}

}  // namespace host

#include "DirectoryScanner.h"

#include <algorithm>
#include <string>
#include <utility>

#include "DescriptionFile.h"
#include "FileFormat.h"
#include "FileKinds.h"
#include "InputKinds.h"
#include "OwnFiles.h"
#include "RelativePath.h"
#include "SolverInputReader.h"
#include "host/system/FileSystem.h"
#include "host/system/InputFile.h"
#include "host/system/Text.h"

namespace host {
namespace {

using std::filesystem::path;

// The first few thousand bytes show whether a file is text or binary.
constexpr std::size_t kFormatSampleSize = 4096;

/// Whether the name has a backslash. On Linux it may be a part of a name, but paths in documents and project
/// files are parted at both slashes on every platform, because they travel between them.
bool HasSeparator(const path& name) {
    return name.native().find('\\') != path::string_type::npos;
}

enum class FileContent { Simulation, OwnDatabase, Unreadable };

class Scanner {
public:
    Scanner(const ScanOptions& options, Console& console, DirectoryTree& tree)
        : options_(options), console_(console), tree_(tree) {
        std::error_code error;
        sizeOfLeftOut_ = options_.leftOut ? std::filesystem::file_size(*options_.leftOut, error) : 0;
        ThrowIfOutOfMemory(error);
    }

    std::error_code ReadDirectories(const path& root);
    /// Reads the beginnings of the files that ReadDirectories found. Returns those that may be solver input.
    std::vector<InputCandidate> ReadFiles();

private:
    void NameUnreadable(const path& entry, const std::string& reason);
    void NameUnwritable(const path& entry);
    void AddEntries(std::size_t directory, Listing listing);
    void ReadIgnoreFile(std::size_t directory, const Listing& listing);
    bool IsExcluded(std::size_t directory, const Entry& entry) const;
    std::string RelativeTo(const path& whole) const;
    void AddEntry(std::size_t directory, Entry entry, std::vector<std::size_t>& directories,
                  std::vector<ScannedFile>& files);
    bool FollowLink(const path& link, Entry& entry);
    bool IsLeftOut(const path& file, std::uint64_t size) const;
    std::vector<ScannedFile> ReadFilesOf(std::size_t directory);
    void DetailLeftOut(const path& entry, std::string_view reason);
    FileContent ReadFile(std::size_t directory, std::size_t index, ScannedFile& file);

    const ScanOptions& options_;
    Console& console_;
    DirectoryTree& tree_;
    std::uintmax_t sizeOfLeftOut_ = 0;
    std::vector<InputCandidate> candidates_;
    std::uint64_t fileCount_ = 0;
    std::uint64_t readCount_ = 0;
};

void Scanner::NameUnreadable(const path& entry, const std::string& reason) {
    ++tree_.unreadableCount;
    tree_.unreadable.push_back(entry);
    console_.Say(Quoted(entry) + " cannot be read and is left out: " + reason);
}

void Scanner::DetailLeftOut(const path& entry, std::string_view reason) {
    if (console_.IsVerbose()) {
        console_.Detail(Quoted(entry) + " is left out: " + std::string(reason));
    }
}

/// Names an entry whose name a document would read as a path.
void Scanner::NameUnwritable(const path& entry) {
    ++tree_.unreadableCount;
    console_.Say(Quoted(entry) +
                 " is left out: in a document a backslash separates directories. Rename it to keep it");
}

/// Replaces a link by its target. Returns false if the link is left out.
bool Scanner::FollowLink(const path& link, Entry& entry) {
    std::error_code error;
    const path target = ResolvePath(link, error);
    if (error) {
        NameUnreadable(link, "it is a broken link (" + error.message() + ")");
        return false;
    }
    if (!IsBelow(tree_.directories.front().path, target)) {
        console_.Note(Quoted(link) + " is left out: it is a link out of the project, to " + Quoted(target) +
                      ". Copy its target into the project if it belongs there");
        return false;
    }
    Entry found;
    if ((error = InspectTarget(target, found))) {
        NameUnreadable(link, error.message());
        return false;
    }
    if (found.type == EntryType::Directory) {
        DetailLeftOut(link, "it is a link to a directory of the project, which is read in its own place");
        return false;
    }
    found.name = entry.name;
    entry = std::move(found);
    return true;
}

/// The file may have another name too, by a link. It must not be opened under any: closing it would end the
/// locks that this program holds on it.
bool Scanner::IsLeftOut(const path& file, std::uint64_t size) const {
    if (!options_.leftOut ||
        (size != sizeOfLeftOut_ &&
         ToOuString(file.filename()).CompareNoCase(ToOuString(options_.leftOut->filename())) != 0)) {
        return false;
    }
    std::error_code error;
    return std::filesystem::equivalent(file, *options_.leftOut, error) && !error;
}

void Scanner::AddEntry(std::size_t directory, Entry entry, std::vector<std::size_t>& directories,
                       std::vector<ScannedFile>& files) {
    const path whole = tree_.directories[directory].path / entry.name;
    const bool isLink = entry.type == EntryType::Link;
    if (isLink && !FollowLink(whole, entry)) {
        return;
    }
    if (entry.type == EntryType::Directory) {
        directories.push_back(tree_.directories.size());
        ScannedDirectory& added = tree_.directories.emplace_back();
        added.name = std::move(entry.name);
        added.path = whole;
        added.modified = entry.modified;
        added.owner = entry.owner;
    } else if (entry.type == EntryType::Other) {
        NameUnreadable(whole, "it is neither a file nor a directory");
    } else if (entry.name == kDescriptionFile) {
        tree_.directories[directory].hasDescription = true;
    } else if (!IsLeftOut(whole, entry.size)) {
        ScannedFile& added = files.emplace_back();
        added.name = std::move(entry.name);
        added.size = entry.size;
        added.modified = entry.modified;
        added.owner = entry.owner;
        added.isLink = isLink;
        ++fileCount_;
    } else {
        DetailLeftOut(whole, "the command works on it");
    }
}

std::error_code Scanner::ReadDirectories(const path& root) {
    Entry rootEntry;
    if (const std::error_code error = InspectTarget(root, rootEntry)) {
        return error;
    }
    ScannedDirectory& first = tree_.directories.emplace_back();
    first.path = root;
    first.name = root.filename().empty() ? root : root.filename();
    first.modified = rootEntry.modified;
    first.owner = rootEntry.owner;
    for (std::size_t index = 0; index < tree_.directories.size(); ++index) {
        Listing listing;
        if (const std::error_code error = ListDirectory(tree_.directories[index].path, listing)) {
            if (index == 0) {
                return error;
            }
            NameUnreadable(tree_.directories[index].path, error.message());
            continue;
        }
        AddEntries(index, std::move(listing));
        console_.ShowProgress("Looking for files", fileCount_, 0);
    }
    return {};
}

/// The path from the root, with slashes.
std::string Scanner::RelativeTo(const path& whole) const {
    return RelativePath(ToOuString(whole), ToOuString(tree_.directories.front().path)).value_or("");
}

void Scanner::ReadIgnoreFile(std::size_t directory, const Listing& listing) {
    const auto found = std::ranges::find_if(listing.entries, [](const Entry& entry) {
        return entry.type == EntryType::File && entry.name == kIgnoreFile;
    });
    if (found == listing.entries.end() || options_.exclusion == nullptr) {
        return;
    }
    constexpr std::uint64_t kMost = std::uint64_t{1} << 20U;
    const path whole = tree_.directories[directory].path / found->name;
    std::string text;
    const std::error_code error = ReadInputFile(whole, text, {kMost, kMost});
    ThrowIfOutOfMemory(error);
    if (error) {
        NameUnreadable(whole, IsOverLimit(error) ? "it is longer than a megabyte" : error.message());
        return;
    }
    options_.exclusion->AddFile(RelativeTo(tree_.directories[directory].path), text);
}

bool Scanner::IsExcluded(std::size_t directory, const Entry& entry) const {
    return options_.exclusion != nullptr && !options_.exclusion->IsEmpty() &&
           options_.exclusion->LeavesOut(RelativeTo(tree_.directories[directory].path / entry.name),
                                         entry.type == EntryType::Directory);
}

void Scanner::AddEntries(std::size_t directory, Listing listing) {
    const auto byName = [](const auto& left, const auto& right) {
        return CompareNames(left.name, right.name) < 0;
    };
    std::ranges::sort(listing.unreadable, byName);
    for (const UnreadableEntry& entry : listing.unreadable) {
        NameUnreadable(tree_.directories[directory].path / entry.name, entry.reason.message());
    }
    std::ranges::sort(listing.entries, byName);
    // Adding a directory may move the list of directories in memory, so these two are stored at the end.
    std::vector<std::size_t> directories;
    std::vector<ScannedFile> files;
    ReadIgnoreFile(directory, listing);
    for (Entry& entry : listing.entries) {
        if (entry.isHidden) {
            DetailLeftOut(tree_.directories[directory].path / entry.name, "it is hidden");
        } else if (IsExcluded(directory, entry)) {
            DetailLeftOut(tree_.directories[directory].path / entry.name, "a pattern says so");
        } else if (HasSeparator(entry.name)) {
            NameUnwritable(tree_.directories[directory].path / entry.name);
        } else {
            AddEntry(directory, std::move(entry), directories, files);
        }
    }
    tree_.directories[directory].directories = std::move(directories);
    tree_.directories[directory].files = std::move(files);
}

FileContent Scanner::ReadFile(std::size_t directory, std::size_t index, ScannedFile& file) {
    const path whole = tree_.directories[directory].path / file.name;
    const FileKind kind = KindOfFileName(file.name);
    const bool isLookedInto = kind.look != Look::None;
    FileSample sample;
    const std::error_code error = ReadSample(whole, isLookedInto ? kInputHeadSize : kFormatSampleSize,
                                             isLookedInto ? kInputTailSize : 0, sample);
    if (error) {
        NameUnreadable(whole, error.message());
        return FileContent::Unreadable;
    }
    if (IsOwnDatabase(sample.head)) {
        return FileContent::OwnDatabase;
    }
    file.format = DetectFormat(std::string_view(sample.head).substr(0, kFormatSampleSize));
    file.solver = kind.solver;
    file.type = file.format == CAE_FORMAT_BINARY ? kind.binaryType : kind.type;
    if (isLookedInto && file.format == CAE_FORMAT_ASCII) {
        const OuString name = ToOuString(file.name);
        SolverInput input = ReadSolverInput(kind.solver, name.GetAnsiBuffer(), sample);
        if (input.role == InputRole::Unclear && kind.look == Look::PossibleInput && IsPrintedResult(sample)) {
            file.type = CAE_FILE_RESULT;
        }
        candidates_.push_back({directory, index, kind, std::move(input)});
    } else if (isLookedInto && kind.binaryType == CAE_FILE_OTHER) {
        file.solver = Solver::None;
    }
    return FileContent::Simulation;
}

std::vector<ScannedFile> Scanner::ReadFilesOf(std::size_t directory) {
    std::vector<ScannedFile> readable;
    std::vector<path> databases;
    if (options_.leftOut) {
        databases.push_back(options_.leftOut->filename());
    }
    readable.reserve(tree_.directories[directory].files.size());
    for (ScannedFile& file : tree_.directories[directory].files) {
        // In the order of the names, a journal comes after its database.
        if (IsBesideDatabase(file.name, databases)) {
            DetailLeftOut(tree_.directories[directory].path / file.name, "it is the journal of a database");
        } else {
            const FileContent content = ReadFile(directory, readable.size(), file);
            if (content == FileContent::Simulation) {
                readable.push_back(std::move(file));
            } else if (content == FileContent::OwnDatabase) {
                DetailLeftOut(tree_.directories[directory].path / file.name,
                              "it is a project file or a database of this program");
                databases.push_back(std::move(file.name));
            }
        }
        console_.ShowProgress("Reading files", ++readCount_, fileCount_);
    }
    return readable;
}

std::vector<InputCandidate> Scanner::ReadFiles() {
    for (std::size_t index = 0; index < tree_.directories.size(); ++index) {
        tree_.directories[index].files = ReadFilesOf(index);
    }
    console_.ClearProgress();
    console_.Detail(Quoted(tree_.directories.front().path) + " has " +
                    FormatCount(fileCount_, "file", "files") + " in " +
                    FormatCount(tree_.directories.size(), "directory", "directories"));
    return std::move(candidates_);
}

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
    Scanner scanner(options, console, tree);
    if (const std::error_code error = scanner.ReadDirectories(root)) {
        return error;
    }
    SettleInput(scanner.ReadFiles(), tree);
    SettleUndecidedSolvers(tree);
    if (options.known != nullptr && !tree.unreadable.empty()) {
        Remember(*options.known, tree);
    }
    SumUp(tree);
    if (!options.studies.empty()) {
        const path withoutDecks = KeepStudies(options.studies, tree, *options.exclusion);
        if (!withoutDecks.empty()) {
            *options.withoutDecks = withoutDecks;
            return std::make_error_code(std::errc::no_such_file_or_directory);
        }
        SumUp(tree);
    }
    return {};
}

}  // namespace host

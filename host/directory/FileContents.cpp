#include "FileContents.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "FileFormat.h"
#include "FileKinds.h"
#include "OwnFiles.h"
#include "SolverInputReader.h"
#include "host/system/FileSystem.h"
#include "host/system/Text.h"

namespace host {
namespace {

using std::filesystem::path;

// The first few thousand bytes show whether a file is text or binary.
constexpr std::size_t kFormatSampleSize = 4096;

/// Whether a file stays in the tree.
enum class Stay { Yes, No };

class Reader {
public:
    Reader(const std::optional<path>& ownFile, Console& console, LeftOutEntries& leftOut, DirectoryTree& tree)
        : ownFile_(ownFile), console_(console), leftOut_(leftOut), tree_(tree) {}

    std::vector<InputCandidate> Read();

private:
    std::vector<ScannedFile> ReadFilesOf(std::size_t directory);
    Stay ReadFile(std::size_t directory, std::size_t index, ScannedFile& file, std::vector<path>& databases);

    const std::optional<path>& ownFile_;
    Console& console_;
    LeftOutEntries& leftOut_;
    DirectoryTree& tree_;
    std::vector<InputCandidate> candidates_;
    std::uint64_t fileCount_ = 0;
    std::uint64_t readCount_ = 0;
};

Stay Reader::ReadFile(std::size_t directory, std::size_t index, ScannedFile& file,
                      std::vector<path>& databases) {
    const path whole = tree_.directories[directory].path / file.name;
    const FileKind kind = KindOfFileName(file.name);
    const bool isLookedInto = kind.look != Look::None;
    FileSample sample;
    const std::error_code error = ReadSample(whole, isLookedInto ? kInputHeadSize : kFormatSampleSize,
                                             isLookedInto ? kInputTailSize : 0, sample);
    ThrowIfOutOfMemory(error);
    if (error) {
        leftOut_.AddUnreadable(whole, error.message());
        return Stay::No;
    }
    if (const OwnFile own = OwnFileOf(sample.head); own != OwnFile::None) {
        leftOut_.AddMeant(whole, ReasonToLeaveOut(own));
        if (own == OwnFile::Database) {
            databases.push_back(file.name);
        }
        return Stay::No;
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
    return Stay::Yes;
}

std::vector<ScannedFile> Reader::ReadFilesOf(std::size_t directory) {
    std::vector<ScannedFile> readable;
    std::vector<path> databases;
    if (ownFile_) {
        databases.push_back(ownFile_->filename());
    }
    readable.reserve(tree_.directories[directory].files.size());
    for (ScannedFile& file : tree_.directories[directory].files) {
        // In the order of the names, a journal comes after its database.
        if (IsBesideDatabase(file.name, databases)) {
            leftOut_.AddMeant(tree_.directories[directory].path / file.name,
                              "it is the journal of a database");
        } else if (ReadFile(directory, readable.size(), file, databases) == Stay::Yes) {
            readable.push_back(std::move(file));
        }
        console_.ShowProgress("Reading files", ++readCount_, fileCount_);
    }
    return readable;
}

std::vector<InputCandidate> Reader::Read() {
    for (const ScannedDirectory& directory : tree_.directories) {
        fileCount_ += directory.files.size();
    }
    for (std::size_t index = 0; index < tree_.directories.size(); ++index) {
        tree_.directories[index].files = ReadFilesOf(index);
    }
    console_.ClearProgress();
    console_.Detail(Quoted(tree_.directories.front().path) + " has " +
                    FormatCount(fileCount_, "file", "files") + " in " +
                    FormatCount(tree_.directories.size(), "directory", "directories"));
    return std::move(candidates_);
}

}  // namespace

std::vector<InputCandidate> ReadFileContents(const std::optional<path>& ownFile, Console& console,
                                             LeftOutEntries& leftOut, DirectoryTree& tree) {
    return Reader(ownFile, console, leftOut, tree).Read();
}

}  // namespace host

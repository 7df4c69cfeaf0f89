#include "DirectoryReader.h"

#include <EmbeddedModel.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "DeckModel.h"
#include "Description.h"
#include "DirectoryScanner.h"
#include "ScannedObjects.h"
#include "StudyBuilder.h"
#include "format/Kinds.h"
#include "format/Values.h"
#include "host/document/ProjectObjects.h"
#include "host/system/FileSystem.h"
#include "host/system/Phase.h"
#include "host/system/Text.h"

namespace host {
namespace {

using std::filesystem::path;

constexpr const wchar_t* kStudies = L"Studies";

/// Types 1 to 3 have roles on parts only. Anywhere else the file is a custom file, and needs a type of those.
_tagFileType CustomType(_tagFileType type) {
    return format::HasRole(static_cast<format::FileType>(type)) ? CAE_FILE_OTHER : type;
}

class ProjectBuilder {
public:
    ProjectBuilder(const DirectoryTree& tree, CAEProject& project, Console& console, bool isCounted)
        : tree_(tree),
          project_(project),
          console_(console),
          isCounted_(isCounted),
          isDescribed_(tree.directories.size()) {}

    Described Build();

private:
    /// A directory that is not read into objects yet, and the parent of its object.
    struct WaitingDirectory {
        std::size_t directory;
        CAEObject* parent;
        bool isUnderStudy;
    };

    std::vector<StudyFile> CollectStudyFiles(std::size_t directory,
                                             const std::vector<int>& identifiers) const;
    void AddAssemblyFolder(const WaitingDirectory& next, std::vector<WaitingDirectory>& waiting);
    void AddInner(std::size_t directory, CAEObject& parent, bool isUnderStudy,
                  std::vector<WaitingDirectory>& waiting) const;
    std::vector<int> AddFileChildren(const ScannedDirectory& root);
    void SetProjectMetadata();
    void Describe(CAEObject& object, std::size_t directory);
    void DescribeProject(CAEObject* studyOfRoot);

    const DirectoryTree& tree_;
    CAEProject& project_;
    Console& console_;
    /// Whether the files of the project are all there to be counted.
    bool isCounted_;
    std::size_t studyCount_ = 0;
    std::vector<bool> isDescribed_;
    Described described_;
};

/// The files of a study: those of its directory, and of the directories below it that have no decks at any
/// depth.
std::vector<StudyFile> ProjectBuilder::CollectStudyFiles(std::size_t directory,
                                                         const std::vector<int>& identifiers) const {
    std::vector<StudyFile> files;
    const ScannedDirectory& own = tree_.directories[directory];
    for (std::size_t index = 0; index < own.files.size(); ++index) {
        files.push_back({&own, &own.files[index], identifiers.empty() ? 0 : identifiers[index]});
    }
    // Directories in the order of their names, the files of each before those of the directories in it. Below
    // a directory with decks there may be directories without any; below a study, their files belong to it
    // too.
    std::vector<std::size_t> waiting(own.directories.rbegin(), own.directories.rend());
    while (!waiting.empty()) {
        const ScannedDirectory& next = tree_.directories[waiting.back()];
        waiting.pop_back();
        if (next.hasDecks) {
            continue;
        }
        if (!next.hasDecksInTree) {
            for (const ScannedFile& file : next.files) {
                files.push_back({&next, &file, 0});
            }
        }
        waiting.insert(waiting.end(), next.directories.rbegin(), next.directories.rend());
    }
    return files;
}

void ProjectBuilder::AddAssemblyFolder(const WaitingDirectory& next, std::vector<WaitingDirectory>& waiting) {
    const ScannedDirectory& directory = tree_.directories[next.directory];
    CAEObject& folder = *korvane::CreateObject(*next.parent, CAE_ASSEMBLY_FOLDER, ToOuString(directory.name));
    SetOrigin(folder, directory);
    for (const ScannedFile& file : directory.files) {
        folder.attachCustomFile(AddFile(project_, directory, file, CustomType(file.type)), nullptr);
    }
    Describe(folder, next.directory);
    AddInner(next.directory, folder, next.isUnderStudy, waiting);
}

/// Puts the directories in a directory on the stack in reverse order, so that the first by name comes off
/// first.
void ProjectBuilder::AddInner(std::size_t directory, CAEObject& parent, bool isUnderStudy,
                              std::vector<WaitingDirectory>& waiting) const {
    const std::vector<std::size_t>& inner = tree_.directories[directory].directories;
    for (std::size_t index = inner.size(); index-- > 0;) {
        const ScannedDirectory& found = tree_.directories[inner[index]];
        // A directory below a study that has no decks has given its files to the study.
        if (found.hasFilesInTree && (found.hasDecksInTree || !isUnderStudy)) {
            waiting.push_back({inner[index], &parent, isUnderStudy});
        }
    }
}

Described ProjectBuilder::Build() {
    const ScannedDirectory& root = tree_.directories.front();
    SetOrigin(project_, root);
    const std::vector<int> identifiers = AddFileChildren(root);
    const auto addStudy = [&](CAEObject& parent, const ScannedDirectory& directory,
                              const std::vector<StudyFile>& files) -> CAEObject& {
        ++studyCount_;
        return AddStudy(parent, directory, files, project_);
    };
    CAEObject* const studyOfRoot =
        root.hasDecks ? &addStudy(project_, root, CollectStudyFiles(0, identifiers)) : nullptr;
    std::vector<WaitingDirectory> waiting;
    AddInner(0, project_, root.hasDecks, waiting);
    while (!waiting.empty()) {
        const WaitingDirectory next = waiting.back();
        waiting.pop_back();
        const ScannedDirectory& directory = tree_.directories[next.directory];
        if (directory.hasDecks) {
            CAEObject& study = addStudy(*next.parent, directory, CollectStudyFiles(next.directory, {}));
            Describe(study, next.directory);
            AddInner(next.directory, study, true, waiting);
        } else {
            AddAssemblyFolder(next, waiting);
        }
    }
    SetProjectMetadata();
    DescribeProject(studyOfRoot);
    return std::move(described_);
}

void ProjectBuilder::Describe(CAEObject& object, std::size_t directory) {
    isDescribed_[directory] = true;
    ApplyDescription(object, tree_.directories[directory], console_, described_);
}

/// The description in the root is that of its study. Without one it is the project's.
void ProjectBuilder::DescribeProject(CAEObject* studyOfRoot) {
    Describe(studyOfRoot != nullptr ? *studyOfRoot : project_, 0);
    const OuString entry(format::kDescriptionEntry, 0);
    OuString text;
    if (studyOfRoot != nullptr && tree_.directories.front().hasDescription &&
        studyOfRoot->getMetadataValue(entry, text) == 0) {
        project_.setMetadataValue(entry, text);
    }
    for (std::size_t directory = 0; directory < isDescribed_.size(); ++directory) {
        if (!isDescribed_[directory]) {
            RefuseDescription(tree_.directories[directory], console_, described_);
        }
    }
}

/// Creates the files in the root as children of the project. Returns their identifiers, in the order of the
/// files.
std::vector<int> ProjectBuilder::AddFileChildren(const ScannedDirectory& root) {
    std::vector<int> identifiers;
    for (const ScannedFile& file : root.files) {
        auto& added =
            dynamic_cast<CAEFile&>(*korvane::CreateObject(project_, CAE_FILE, ToOuString(file.name)));
        added.setFullPathName(ToOuString(root.path / file.name));
        added.m_fullPathCopy = ToOuString(root.path / file.name);
        added.setFileType(file.type);
        added.setFileFormat(file.format);
        added.SetFileDownloadFlag(!file.isRemembered);
        SetOrigin(added, file);
        identifiers.push_back(added.getID());
    }
    return identifiers;
}

void ProjectBuilder::SetProjectMetadata() {
    Totals totals;
    for (const ScannedDirectory& directory : tree_.directories) {
        for (const ScannedFile& file : directory.files) {
            totals.Add(file);
        }
    }
    totals.isUncertain = totals.isUncertain || !isCounted_;
    SetTotals(project_, DescribeDirectory(tree_.directories.front()), totals);
    if (!isCounted_) {
        return;
    }
    project_.setMetadataValue(kStudies, OuString(std::to_string(studyCount_).c_str(), 0));
}

std::vector<std::string> ModelGapsOf(const DirectoryTree& tree) {
    std::vector<std::string> gaps;
    for (const ScannedDirectory& directory : tree.directories) {
        for (const ScannedFile& file : directory.files) {
            if (file.model != nullptr && !file.model->gap.empty()) {
                gaps.push_back(Quoted(directory.path / file.name) +
                               " has no counts of nodes or elements: " + file.model->gap);
            }
        }
    }
    return gaps;
}

/// The directory of a study that a user names, which must be in the root.
path StudyIn(const path& root, const std::string& name, std::error_code& error) {
    const path given = PathFromUtf8(name);
    path found = ResolvePath(root / given, error);
    if (error) {
        found = ResolvePath(given, error);
    }
    if (!error && !IsBelow(root, found)) {
        error = std::make_error_code(std::errc::no_such_file_or_directory);
    }
    return found;
}

std::error_code Scan(const path& root, ScanOptions options, const Selection& selection, Console& console,
                     DirectoryTree& tree, DirectoryReading& reading) {
    const auto refuse = [&](const std::string& study) {
        reading.refusal = Quoted(study) + " is not a directory with decks in " + Quoted(root) +
                          ". Give the path of a study in it, or of a directory with studies";
    };
    for (const std::string& study : selection.studies) {
        std::error_code error;
        options.studies.push_back(StudyIn(root, study, error));
        if (error) {
            refuse(study);
            return error;
        }
    }
    reading.exclusion = Exclusion(selection.excluded);
    path withoutDecks;
    options.exclusion = &reading.exclusion;
    options.withoutDecks = &withoutDecks;
    const std::error_code error = ScanDirectory(root, options, console, tree);
    if (!withoutDecks.empty()) {
        const auto study = std::ranges::find(options.studies, withoutDecks) - options.studies.begin();
        refuse(selection.studies[static_cast<std::size_t>(study)]);
    }
    return error;
}

}  // namespace

DirectoryReading ReadDirectory(const std::filesystem::path& root,
                               const std::optional<std::filesystem::path>& leftOut, Console& console,
                               const KnownFiles* known, const Selection& selection) {
    DirectoryReading reading;
    const path whole = ResolvePath(root, reading.error);
    if (reading.error) {
        return reading;
    }
    Entry entry;
    reading.error = InspectTarget(whole, entry);
    if (!reading.error && entry.type != EntryType::Directory) {
        reading.error = std::make_error_code(std::errc::not_a_directory);
    }
    DirectoryTree tree;
    if (!reading.error) {
        const Phase phase(console, "reading " + Quoted(whole));
        reading.error = Scan(whole, {leftOut, known}, selection, console, tree, reading);
    }
    if (reading.error) {
        return reading;
    }
    reading.project = CreateSimulationProject(ToOuString(tree.directories.front().name), ToOuString(whole));
    ReadDeckModels(tree, leftOut, console);
    const bool isCounted = known == nullptr || selection.studies.empty();
    reading.described = ProjectBuilder(tree, *reading.project, console, isCounted).Build();
    reading.modelGaps = ModelGapsOf(tree);
    std::ranges::for_each(reading.modelGaps, [&](const std::string& gap) { console.Detail(gap); });
    reading.unreadableCount = tree.unreadableCount;
    return reading;
}

}  // namespace host

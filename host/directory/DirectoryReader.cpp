#include "DirectoryReader.h"

#include <CAEFunctions.h>
#include <EmbeddedModel.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "Description.h"
#include "DirectoryScanner.h"
#include "format/Values.h"
#include "host/document/ProjectObjects.h"
#include "host/system/FileSystem.h"
#include "host/system/Text.h"

namespace host {
namespace {

using std::filesystem::path;

constexpr const wchar_t* kFiles = L"Files";
constexpr const wchar_t* kSize = L"Size";
constexpr const wchar_t* kSizeUnit = L"B";
constexpr const wchar_t* kSolver = L"Solver";
constexpr const wchar_t* kStudies = L"Studies";

/// What the metadata tell of a study or of the project.
struct Totals {
    std::size_t files = 0;
    std::uint64_t bytes = 0;
    std::set<std::string> solvers;

    void Add(const ScannedFile& file) {
        ++files;
        bytes += file.isLink ? 0 : file.size;
        if (file.type == CAE_FILE_DECK && file.solver != Solver::None) {
            solvers.emplace(SolverName(file.solver));
        }
    }
};

/// A file of a study, with the directory that it lies in.
struct StudyFile {
    const ScannedDirectory* directory;
    const ScannedFile* file;
    /// The object that stands for it already, 0 for none.
    int identifier;
};

OuString ToText(std::string_view text) {
    return OuString(std::string(text).c_str(), 0);
}

/// The name without its last extension, in upper case: what makes a mesh or a picture a part's.
std::string StemKey(const path& name) {
    OuString key = ToOuString(name.stem());
    key.MakeUpper();
    return key.GetAnsiBuffer();
}

template <typename Source>
void SetOrigin(CAEObject& object, const Source& source) {
    object.setCreatedDate(ToText(FormatTime(source.modified)));
    if (source.owner) {
        korvane::SetCreatedUserName(object, ToText(OwnerName(*source.owner)));
    }
}

void SetMetadata(CAEObject& object, const std::string& description, const Totals& totals) {
    if (!description.empty()) {
        object.setMetadataValue(ToText(format::kDescriptionEntry), ToText(description));
    }
    object.setMetadataValue(kFiles, ToText(std::to_string(totals.files)));
    object.setMetadataValue(kSize, ToText(std::to_string(totals.bytes)));
    korvane::SetMetadataUnit(object, kSize, kSizeUnit);
    std::string solvers;
    for (const std::string& solver : totals.solvers) {
        solvers += (solvers.empty() ? "" : ", ") + solver;
    }
    if (!solvers.empty()) {
        object.setMetadataValue(kSolver, ToText(solvers));
    }
}

/// Types 1 to 3 have roles on parts only; anywhere else the file is a custom one and takes a type of those.
_tagFileType CustomType(_tagFileType type) {
    return type == CAE_FILE_CAD || type == CAE_FILE_MESH || type == CAE_FILE_GRAPHIC ? CAE_FILE_OTHER : type;
}

/// The name of a deck's iteration: its stem, for a starter of Radioss without the number of the run.
OuString IterationName(const ScannedFile& deck) {
    const OuString text = ToOuString(deck.name.stem());
    std::string stem = text.GetAnsiBuffer();
    if (deck.solver == Solver::Radioss && stem.size() > 5 && stem.ends_with("_0000")) {
        stem.resize(stem.size() - 5);
    }
    return ToText(stem);
}

class Builder {
public:
    Builder(const DirectoryTree& tree, CAEProject& project) : tree_(tree), project_(project) {}

    void Build();

private:
    /// A directory waiting to be read into objects: where its object hangs, and the study above it.
    struct WaitingDirectory {
        std::size_t directory;
        CAEObject* parent;
        bool isUnderStudy;
    };

    CAEObject& AddStudy(CAEObject& parent, const ScannedDirectory& directory,
                        const std::vector<StudyFile>& files);
    void AddParts(CAEObject& study, const std::vector<StudyFile>& files);
    void AddIterations(CAEObject& study, const ScannedDirectory& directory,
                       const std::vector<StudyFile>& decks);
    std::vector<StudyFile> CollectStudyFiles(std::size_t directory,
                                             const std::vector<int>& identifiers) const;
    void AddAssemblyFolder(const WaitingDirectory& place, std::vector<WaitingDirectory>& waiting);
    void AddInner(std::size_t directory, CAEObject& parent, bool isUnderStudy,
                  std::vector<WaitingDirectory>& waiting) const;
    int AddFile(const ScannedDirectory& directory, const ScannedFile& file, _tagFileType type);
    int FileOf(const StudyFile& file, _tagFileType type);

    const DirectoryTree& tree_;
    CAEProject& project_;
    std::size_t studyCount_ = 0;
};

int Builder::AddFile(const ScannedDirectory& directory, const ScannedFile& file, _tagFileType type) {
    CAEFile& added =
        *korvane::CreateFile(project_, ToOuString(directory.path / file.name), type, file.format);
    added.m_fullPathCopy = ToOuString(directory.path / file.name);
    added.SetFileDownloadFlag(true);
    SetOrigin(added, file);
    return added.getID();
}

int Builder::FileOf(const StudyFile& file, _tagFileType type) {
    if (file.identifier == 0) {
        return AddFile(*file.directory, *file.file, type);
    }
    project_.getFile(file.identifier)->setFileType(type);
    return file.identifier;
}

/// The files of a study: those of its directory and of the directories below that hold no decks anywhere.
std::vector<StudyFile> Builder::CollectStudyFiles(std::size_t directory,
                                                  const std::vector<int>& identifiers) const {
    std::vector<StudyFile> files;
    const ScannedDirectory& own = tree_.directories[directory];
    for (std::size_t index = 0; index < own.files.size(); ++index) {
        files.push_back({&own, &own.files[index], identifiers.empty() ? 0 : identifiers[index]});
    }
    // In the order of names, a directory's files before those of the directories in it. Below a directory
    // with decks in its tree there may still be some without; below a study those belong to it as well.
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

void Builder::AddIterations(CAEObject& study, const ScannedDirectory& directory,
                            const std::vector<StudyFile>& decks) {
    CAEObject& folder = *korvane::CreateObject(study, CAE_ITERATION_FOLDER, OuString(L"Iterations"));
    SetOrigin(folder, directory);
    std::map<OuString, std::size_t> countOfName;
    for (const StudyFile& deck : decks) {
        ++countOfName[IterationName(*deck.file)];
    }
    for (const StudyFile& deck : decks) {
        const OuString fileName = ToOuString(deck.file->name);
        const OuString stem = IterationName(*deck.file);
        CAEObject& iteration =
            *korvane::CreateObject(folder, CAE_ITERATION, countOfName[stem] == 1 ? stem : fileName);
        SetOrigin(iteration, *deck.file);
        CAEObject& model = *korvane::CreateObject(iteration, CAE_ITERATION_MODEL, fileName);
        SetOrigin(model, *deck.file);
        dynamic_cast<CAERunAssembly&>(model).setFERepresentationFile(FileOf(deck, CAE_FILE_DECK));
    }
}

void Builder::AddParts(CAEObject& study, const std::vector<StudyFile>& files) {
    std::unordered_map<std::string, std::size_t> countOfGeometry;
    for (const StudyFile& file : files) {
        if (file.file->type == CAE_FILE_CAD) {
            ++countOfGeometry[StemKey(file.file->name)];
        }
    }
    std::unordered_map<std::string, CAEPart*> partOfStem;
    const auto addPart = [&](const StudyFile& file, const path& name) -> CAEPart& {
        auto& part = dynamic_cast<CAEPart&>(*korvane::CreateObject(study, CAE_PART, ToOuString(name)));
        SetOrigin(part, *file.file);
        partOfStem.emplace(StemKey(file.file->name), &part);
        return part;
    };
    // Geometry before meshes before pictures: a mesh joins the part of its stem, a picture any part's.
    for (const StudyFile& file : files) {
        if (file.file->type == CAE_FILE_CAD) {
            const path& name = file.file->name;
            const bool isAlone = countOfGeometry[StemKey(name)] == 1;
            addPart(file, isAlone ? name.stem() : name).setCADFile(FileOf(file, CAE_FILE_CAD));
        }
    }
    for (const StudyFile& file : files) {
        if (file.file->type == CAE_FILE_MESH) {
            const auto known = partOfStem.find(StemKey(file.file->name));
            CAEPart& part =
                known != partOfStem.end() ? *known->second : addPart(file, file.file->name.stem());
            const int mesh = FileOf(file, CAE_FILE_MESH);
            part.attachNewMeshOrMeshingRequest(mesh);
            part.setActiveMesh(mesh);
        }
    }
    for (const StudyFile& file : files) {
        const auto part = file.file->type == CAE_FILE_PICTURE ? partOfStem.find(StemKey(file.file->name))
                                                              : partOfStem.end();
        if (part != partOfStem.end()) {
            part->second->setGraphicFile(FileOf(file, CAE_FILE_GRAPHIC));
        }
    }
}

CAEObject& Builder::AddStudy(CAEObject& parent, const ScannedDirectory& directory,
                             const std::vector<StudyFile>& files) {
    ++studyCount_;
    CAEObject& study = *korvane::CreateObject(parent, CAE_MODEL, ToOuString(directory.name));
    SetOrigin(study, directory);
    Totals totals;
    std::unordered_set<std::string> stemsOfParts;
    std::vector<StudyFile> decks;
    for (const StudyFile& file : files) {
        const _tagFileType type = file.file->type;
        totals.Add(*file.file);
        if (type == CAE_FILE_CAD || type == CAE_FILE_MESH) {
            stemsOfParts.insert(StemKey(file.file->name));
        } else if (type == CAE_FILE_DECK) {
            decks.push_back(file);
        }
    }
    SetMetadata(study, DescribeDirectory(directory), totals);
    for (const StudyFile& file : files) {
        const _tagFileType type = file.file->type;
        const bool isOfPart = type == CAE_FILE_CAD || type == CAE_FILE_MESH ||
                              (type == CAE_FILE_PICTURE && stemsOfParts.contains(StemKey(file.file->name)));
        if (!isOfPart && type != CAE_FILE_DECK) {
            study.attachCustomFile(FileOf(file, type), nullptr);
        }
    }
    AddParts(study, files);
    AddIterations(study, directory, decks);
    return study;
}

void Builder::AddAssemblyFolder(const WaitingDirectory& place, std::vector<WaitingDirectory>& waiting) {
    const ScannedDirectory& directory = tree_.directories[place.directory];
    CAEObject& folder =
        *korvane::CreateObject(*place.parent, CAE_ASSEMBLY_FOLDER, ToOuString(directory.name));
    SetOrigin(folder, directory);
    for (const ScannedFile& file : directory.files) {
        folder.attachCustomFile(AddFile(directory, file, CustomType(file.type)), nullptr);
    }
    AddInner(place.directory, folder, place.isUnderStudy, waiting);
}

/// Puts the directories in a directory on the stack, so that the first by name comes off first.
void Builder::AddInner(std::size_t directory, CAEObject& parent, bool isUnderStudy,
                       std::vector<WaitingDirectory>& waiting) const {
    const std::vector<std::size_t>& inner = tree_.directories[directory].directories;
    for (std::size_t index = inner.size(); index-- > 0;) {
        const ScannedDirectory& found = tree_.directories[inner[index]];
        // What is under a study and has no decks has given its files to the study.
        if (found.hasFilesInTree && (found.hasDecksInTree || !isUnderStudy)) {
            waiting.push_back({inner[index], &parent, isUnderStudy});
        }
    }
}

void Builder::Build() {
    const ScannedDirectory& root = tree_.directories.front();
    SetOrigin(project_, root);
    std::vector<int> identifiers;
    for (const ScannedFile& file : root.files) {
        auto& added =
            dynamic_cast<CAEFile&>(*korvane::CreateObject(project_, CAE_FILE, ToOuString(file.name)));
        added.setFullPathName(ToOuString(root.path / file.name));
        added.m_fullPathCopy = ToOuString(root.path / file.name);
        added.setFileType(file.type);
        added.setFileFormat(file.format);
        added.SetFileDownloadFlag(true);
        SetOrigin(added, file);
        identifiers.push_back(added.getID());
    }
    if (root.hasDecks) {
        AddStudy(project_, root, CollectStudyFiles(0, identifiers));
    }
    std::vector<WaitingDirectory> waiting;
    AddInner(0, project_, root.hasDecks, waiting);
    while (!waiting.empty()) {
        const WaitingDirectory place = waiting.back();
        waiting.pop_back();
        const ScannedDirectory& directory = tree_.directories[place.directory];
        if (directory.hasDecks) {
            CAEObject& study = AddStudy(*place.parent, directory, CollectStudyFiles(place.directory, {}));
            AddInner(place.directory, study, true, waiting);
        } else {
            AddAssemblyFolder(place, waiting);
        }
    }

    Totals totals;
    for (const ScannedDirectory& directory : tree_.directories) {
        for (const ScannedFile& file : directory.files) {
            totals.Add(file);
        }
    }
    SetMetadata(project_, DescribeDirectory(root), totals);
    project_.setMetadataValue(kStudies, ToText(std::to_string(studyCount_)));
}

}  // namespace

DirectoryReading ReadDirectory(const std::filesystem::path& root,
                               const std::optional<std::filesystem::path>& leftOut, Console& console) {
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
        reading.error = ScanDirectory(whole, {leftOut}, console, tree);
    }
    if (reading.error) {
        return reading;
    }
    reading.project = CreateSimulationProject(ToOuString(tree.directories.front().name), ToOuString(whole));
    Builder(tree, *reading.project).Build();
    reading.unreadableCount = tree.unreadableCount;
    return reading;
}

}  // namespace host

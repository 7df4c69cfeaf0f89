#include "StudyBuilder.h"

#include <EmbeddedModel.h>

#include <map>
#include <string>
#include <unordered_map>
#include <unordered_set>

#include "Description.h"
#include "ScannedObjects.h"
#include "host/system/Text.h"

namespace host {
namespace {

using std::filesystem::path;

/// The name without its last extension, in upper case. Meshes and pictures belong to the part with the same
/// one.
std::string StemKey(const path& name) {
    OuString key = ToOuString(name.stem());
    key.MakeUpper();
    return key.GetAnsiBuffer();
}

/// The name of the iteration of a deck: the stem of the deck. For a starter of Radioss, the number of the run
/// is removed.
OuString IterationName(const ScannedFile& deck) {
    const OuString text = ToOuString(deck.name.stem());
    std::string stem = text.GetAnsiBuffer();
    if (deck.solver == Solver::Radioss && stem.size() > 5 && stem.ends_with("_0000")) {
        stem.resize(stem.size() - 5);
    }
    return OuString(stem.c_str(), 0);
}

/// Whether files of the type always belong to a part.
bool IsOfPart(_tagFileType type) {
    return type == CAE_FILE_CAD || type == CAE_FILE_MESH;
}

class StudyBuilder {
public:
    StudyBuilder(CAEObject& study, const std::vector<StudyFile>& files, CAEProject& project)
        : study_(study), files_(files), project_(project) {}

    void Build(const ScannedDirectory& directory);

private:
    /// Sums up the files, before the first object is created.
    Totals Survey();
    void AddCustomFiles();
    void AddParts();
    void AddGeometry();
    CAEPart& AddPart(const StudyFile& file, const path& name);
    void AddIterations(const ScannedDirectory& directory);
    int FileOf(const StudyFile& file, _tagFileType type);

    CAEObject& study_;
    const std::vector<StudyFile>& files_;
    CAEProject& project_;
    std::unordered_set<std::string> stemsOfParts_;
    std::vector<StudyFile> decks_;
    std::unordered_map<std::string, CAEPart*> partOfStem_;
};

void StudyBuilder::Build(const ScannedDirectory& directory) {
    SetOrigin(study_, directory);
    const Totals totals = Survey();
    SetTotals(study_, DescribeDirectory(directory), totals);
    AddCustomFiles();
    AddParts();
    AddIterations(directory);
}

Totals StudyBuilder::Survey() {
    Totals totals;
    for (const StudyFile& file : files_) {
        totals.Add(*file.file);
        if (IsOfPart(file.file->type)) {
            stemsOfParts_.insert(StemKey(file.file->name));
        } else if (file.file->type == CAE_FILE_DECK) {
            decks_.push_back(file);
        }
    }
    return totals;
}

void StudyBuilder::AddCustomFiles() {
    for (const StudyFile& file : files_) {
        const _tagFileType type = file.file->type;
        const bool isPictureOfPart =
            type == CAE_FILE_PICTURE && stemsOfParts_.contains(StemKey(file.file->name));
        if (!IsOfPart(type) && !isPictureOfPart && type != CAE_FILE_DECK) {
            study_.attachCustomFile(FileOf(file, type), nullptr);
        }
    }
}

void StudyBuilder::AddParts() {
    // Geometry first, then meshes, then pictures: a mesh joins the part of a geometry file, and a picture any
    // part.
    AddGeometry();
    for (const StudyFile& file : files_) {
        if (file.file->type == CAE_FILE_MESH) {
            const auto known = partOfStem_.find(StemKey(file.file->name));
            CAEPart& part =
                known != partOfStem_.end() ? *known->second : AddPart(file, file.file->name.stem());
            const int mesh = FileOf(file, CAE_FILE_MESH);
            part.attachNewMeshOrMeshingRequest(mesh);
            part.setActiveMesh(mesh);
        }
    }
    for (const StudyFile& file : files_) {
        const auto part = file.file->type == CAE_FILE_PICTURE ? partOfStem_.find(StemKey(file.file->name))
                                                              : partOfStem_.end();
        if (part != partOfStem_.end()) {
            part->second->setGraphicFile(FileOf(file, CAE_FILE_GRAPHIC));
        }
    }
}

void StudyBuilder::AddGeometry() {
    std::unordered_map<std::string, std::size_t> countOfStem;
    for (const StudyFile& file : files_) {
        if (file.file->type == CAE_FILE_CAD) {
            ++countOfStem[StemKey(file.file->name)];
        }
    }
    for (const StudyFile& file : files_) {
        if (file.file->type == CAE_FILE_CAD) {
            const path& name = file.file->name;
            const bool isAlone = countOfStem[StemKey(name)] == 1;
            AddPart(file, isAlone ? name.stem() : name).setCADFile(FileOf(file, CAE_FILE_CAD));
        }
    }
}

CAEPart& StudyBuilder::AddPart(const StudyFile& file, const path& name) {
    auto& part = dynamic_cast<CAEPart&>(*korvane::CreateObject(study_, CAE_PART, ToOuString(name)));
    SetOrigin(part, *file.file);
    partOfStem_.emplace(StemKey(file.file->name), &part);
    return part;
}

void StudyBuilder::AddIterations(const ScannedDirectory& directory) {
    CAEObject& folder = *korvane::CreateObject(study_, CAE_ITERATION_FOLDER, OuString(L"Iterations"));
    SetOrigin(folder, directory);
    std::map<OuString, std::size_t> countOfName;
    for (const StudyFile& deck : decks_) {
        ++countOfName[IterationName(*deck.file)];
    }
    for (const StudyFile& deck : decks_) {
        const OuString fileName = ToOuString(deck.file->name);
        const OuString stem = IterationName(*deck.file);
        CAEObject& iteration =
            *korvane::CreateObject(folder, CAE_ITERATION, countOfName[stem] == 1 ? stem : fileName);
        SetOrigin(iteration, *deck.file);
        SetModelMetadata(iteration, *deck.file);
        CAEObject& model = *korvane::CreateObject(iteration, CAE_ITERATION_MODEL, fileName);
        SetOrigin(model, *deck.file);
        dynamic_cast<CAERunAssembly&>(model).setFERepresentationFile(FileOf(deck, CAE_FILE_DECK));
    }
}

int StudyBuilder::FileOf(const StudyFile& file, _tagFileType type) {
    if (file.identifier == 0) {
        return AddFile(project_, *file.directory, *file.file, type);
    }
    project_.getFile(file.identifier)->setFileType(type);
    return file.identifier;
}

}  // namespace

CAEObject& AddStudy(CAEObject& parent, const ScannedDirectory& directory, const std::vector<StudyFile>& files,
                    CAEProject& project) {
    CAEObject& study = *korvane::CreateObject(parent, CAE_MODEL, ToOuString(directory.name));
    StudyBuilder(study, files, project).Build(directory);
    return study;
}

}  // namespace host

#include "Project.h"

#include <CAEFunctions.h>

#include <cstddef>
#include <iterator>

namespace {

constexpr const wchar_t* kDate = L"2026-03-01T09:30:00Z";
constexpr const wchar_t* kUser = L"engineer";
constexpr int kChildrenPerParent = 8;

struct KindOfObject {
    _tagCAEObjectType type;
    const wchar_t* name;
};

/// An object's number decides its kind. The view item comes last, behind the sub-assembly that it shows.
constexpr KindOfObject kKinds[] = {
    {CAE_SUBASSEMBLY, L"Front end"},
    {CAE_PART, L"Longitudinal member"},
    {CAE_MODEL, L"Full vehicle"},
    {CAE_ITERATION, L"Iteration"},
    {CAE_ITERATION_FOLDER, L"Iterations"},
    {CAE_ITERATION_MODEL, L"Solver model"},
    {CAE_ASSEMBLY_FOLDER, L"Assemblies"},
    {CAE_LOADCASE_VIEW_FOLDER, L"Load cases"},
    {CAE_LOADCASE_VIEW, L"Frontal impact"},
    {CAE_TAG, L"Released"},
    {CAE_VIEW_ITEM, L"View"},
};
constexpr int kKindCount = static_cast<int>(std::size(kKinds));

constexpr const wchar_t* kNamesBeyondAscii[] = {L"L\u00E4ngstr\u00E4ger", L"\u524D\u90E8\u7E26\u6881",
                                                L"\u041B\u043E\u043D\u0436\u0435\u0440\u043E\u043D"};

/// The types that have a role on parts and sub-assemblies come first.
constexpr _tagFileType kFileTypes[] = {CAE_FILE_CAD,  CAE_FILE_MESH,   CAE_FILE_GRAPHIC,
                                       CAE_FILE_DECK, CAE_FILE_RESULT, CAE_FILE_REPORT};
constexpr int kTypesWithRole = 3;

constexpr const wchar_t* kMaterials[] = {L"DC04", L"HX340LAD", L"22MnB5", L"AlMg3"};

template <typename T, std::size_t Count>
const T& Pick(const T (&choices)[Count], int number) {
    return choices[static_cast<std::size_t>(number) % Count];
}

OuString Text(const wchar_t* format, int number) {
    OuString text;
    text.Format(format, number);
    return text;
}

OuString NameOf(int number) {
    OuString name(number % 100 == 0 ? Pick(kNamesBeyondAscii, number / 100) : Pick(kKinds, number).name);
    name.Append(Text(L" %d", number).GetBuffer(), 0);
    return name;
}

/// A view item has the key of the sub-assembly that it shows.
OuString KeyOf(int number) {
    const int owner = number % kKindCount == kKindCount - 1 ? number - (kKindCount - 1) : number;
    return Text(L"DB-%010d", owner);
}

void SetMetadata(CAEObject& object, int number) {
    object.setMetadataValue(L"Mass", Text(L"%d.5", number % 5000));
    korvane::SetMetadataUnit(object, L"Mass", L"kg");
    object.setMetadataValue(L"Wall thickness", Text(L"1.%d", number % 90 + 10));
    korvane::SetMetadataUnit(object, L"Wall thickness", L"mm");
    object.setMetadataValue(L"Material", Pick(kMaterials, number));
    object.setMetadataValue(L"Release status", number % 3 == 0 ? L"released" : L"in work");
}

template <typename Owner, typename AttachMesh>
void AttachInRole(Owner& owner, const CAEFile& file, const AttachMesh& attachMesh) {
    if (file.getFileType() == CAE_FILE_CAD) {
        owner.setCADFile(file.getID());
    } else if (file.getFileType() == CAE_FILE_GRAPHIC) {
        owner.setGraphicFile(file.getID());
    } else {
        attachMesh();
        owner.setActiveMesh(file.getID());
    }
}

void Attach(CAEObject& object, const CAEFile& file) {
    CAEProject* const ownProject = nullptr;
    const bool hasRole = file.getFileType() <= CAE_FILE_GRAPHIC;
    if (auto* const part = dynamic_cast<CAEPart*>(&object); part != nullptr && hasRole) {
        AttachInRole(*part, file, [&] { part->attachNewMeshOrMeshingRequest(file.getID()); });
    } else if (auto* const assembly = dynamic_cast<CAESubAssembly*>(&object);
               assembly != nullptr && hasRole) {
        AttachInRole(*assembly, file, [&] { assembly->attachNewRepresentationOrMeshingReq(file.getID()); });
    } else {
        if (auto* const run = dynamic_cast<CAERunAssembly*>(&object)) {
            run->setFERepresentationFile(file.getID());
        }
        object.attachCustomFile(file.getID(), ownProject);
    }
}

bool HasFile(int number) {
    return number % 20 < 13;
}

void AddFile(CAEProject& project, CAEObject& object, int number) {
    const bool takesRoles = object.getType() == CAE_PART || object.getType() == CAE_SUBASSEMBLY;
    const int typeNumber = number / 2;
    const _tagFileType type =
        takesRoles ? Pick(kFileTypes, typeNumber) : kFileTypes[kTypesWithRole + typeNumber % 3];
    OuString path(kDirectory);
    path.Append(Text(L"front_structure_%d.nas", number).GetBuffer(), 0);
    CAEFile& file =
        *korvane::CreateFile(project, path, type, number % 4 == 0 ? CAE_FORMAT_BINARY : CAE_FORMAT_ASCII);
    file.setCreatedDate(kDate);
    korvane::SetCreatedUserName(file, kUser);
    file.m_locationType = L"Vault";
    file.m_fullPathCopy = path;
    Attach(object, file);
}

/// Numbers are those of a complete tree, level by level from the project's 0.
void AddChildren(CAEProject& project, CAEObject& parent, int parentNumber, int objects) {
    for (int child = 1; child <= kChildrenPerParent; ++child) {
        const int number = parentNumber * kChildrenPerParent + child;
        if (number > objects) {
            return;
        }
        CAEObject& object = *korvane::CreateObject(parent, Pick(kKinds, number).type, NameOf(number));
        object.setDBKey(KeyOf(number));
        SetMetadata(object, number);
        AddChildren(project, object, number, objects);
        if (HasFile(number)) {
            AddFile(project, object, number);
        }
    }
}

void ResetKeysBelow(CAEObject& parent, int parentNumber) {
    OuList children;
    parent.getChildrenList(children);
    int number = parentNumber * kChildrenPerParent;
    for (OuListPosition* position = children.GetHeadPosition(); position != nullptr;) {
        auto& object = *static_cast<CAEObject*>(children.GetNext(position));
        object.setDBKey(KeyOf(++number));
        ResetKeysBelow(object, number);
    }
}

}  // namespace

std::unique_ptr<CAEProject> MakeEmptyProject() {
    std::unique_ptr<CAEProject> project = korvane::CreateProject(L"plant", kDirectory);
    korvane::SetCreation(*project, kDate, kUser);
    project->setCreatedDate(kDate);
    korvane::SetCreatedUserName(*project, kUser);
    project->setAdditionalType(L"Simulation");
    return project;
}

std::unique_ptr<CAEProject> MakeProject(int objects) {
    std::unique_ptr<CAEProject> project = MakeEmptyProject();
    AddChildren(*project, *project, 0, objects);
    return project;
}

void ResetKeys(CAEProject& project) {
    project.setDBKey(OuString());
    for (CAEFile* const file : korvane::GetProjectFiles(project)) {
        file->setDBKey(OuString());
    }
    ResetKeysBelow(project, 0);
}

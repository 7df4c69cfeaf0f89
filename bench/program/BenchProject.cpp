#include "BenchProject.h"

#include <EmbeddedModel.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace bench {
namespace {

constexpr int kChildrenPerParent = 8;
constexpr int kProjectsApart = 1000;

/// Objects with children have these kinds in turn, and so have objects without.
constexpr _tagCAEObjectType kInnerKinds[] = {
    CAE_MODEL,       CAE_ITERATION,       CAE_ITERATION_FOLDER,     CAE_ITERATION_MODEL, CAE_PART,
    CAE_SUBASSEMBLY, CAE_ASSEMBLY_FOLDER, CAE_LOADCASE_VIEW_FOLDER, CAE_LOADCASE_VIEW,
};
constexpr _tagCAEObjectType kLeafKinds[] = {
    CAE_PART, CAE_SUBASSEMBLY, CAE_ITERATION_MODEL, CAE_TAG,           CAE_VIEW_ITEM,
    CAE_FILE, CAE_MODEL,       CAE_ITERATION,       CAE_LOADCASE_VIEW, CAE_ASSEMBLY_FOLDER,
};

constexpr int kFileInTurn = 5;
static_assert(kLeafKinds[kFileInTurn] == CAE_FILE);

template <std::size_t Count>
_tagCAEObjectType InTurn(const _tagCAEObjectType (&kinds)[Count], int number) {
    return kinds[static_cast<std::size_t>(number) % Count];
}

OuString Text(const std::string& utf8) {
    return OuString(utf8.c_str(), 0);
}

std::string NameOf(int number) {
    const std::string digits = std::to_string(number);
    return number % 100 == 0 ? "Träger \xE6\xA2\x81 " + digits : "cross member " + digits;
}

void AddMetadata(CAEObject& object, int number) {
    const auto add = [&](const char* name, const std::string& value, const char* type, const char* unit) {
        const OuString key = Text(name);
        object.setMetadataValue(key, Text(value));
        object.setMetadataType(key, Text(type));
        if (unit != nullptr) {
            korvane::SetMetadataUnit(object, key, Text(unit));
        }
    };
    add("Mass", std::to_string(number % 977) + "." + std::to_string(number % 89), "double", "kg");
    add("Thickness", std::to_string(number % 31) + ".25", "double", "mm");
    add("Responsible", "department " + std::to_string(number % 41), "string", nullptr);
    add("Status", number % 3 == 0 ? "released" : "in work", "string", nullptr);
}

void AddFile(CAEProject& project, CAEObject& object, int number) {
    auto* const part = dynamic_cast<CAEPart*>(&object);
    const auto type = static_cast<_tagFileType>(part != nullptr ? static_cast<int>(CAE_FILE_CAD)
                                                                : CAE_FILE_DECK + number % 10);
    const std::string path = "/studies/plant/file_" + std::to_string(number) + ".dat";
    const CAEFile* const file = korvane::CreateFile(project, Text(path), type,
                                                    number % 2 == 0 ? CAE_FORMAT_ASCII : CAE_FORMAT_BINARY);
    if (part != nullptr) {
        part->setCADFile(file->getID());
    } else {
        object.attachCustomFile(file->getID(), &project);
    }
}

}  // namespace

std::unique_ptr<CAEProject> MakeBenchProject(int objects) {
    std::unique_ptr<CAEProject> project = korvane::CreateProject(L"plant", L"/studies/plant/");
    const OuString date = L"2026-03-01T09:30:00Z";
    const OuString user = L"engineer";
    korvane::SetCreation(*project, date, user);
    project->setCreatedDate(date);
    korvane::SetCreatedUserName(*project, user);
    project->setAdditionalType(L"Simulation");
    std::vector<CAEObject*> made = {project.get()};
    made.reserve(static_cast<std::size_t>(objects) + 1);
    for (int number = 1; number <= objects; ++number) {
        CAEObject& above = *made[static_cast<std::size_t>((number - 1) / kChildrenPerParent)];
        const bool isInner = number <= (objects - 1) / kChildrenPerParent;
        _tagCAEObjectType kind = isInner ? InTurn(kInnerKinds, number) : InTurn(kLeafKinds, number);
        kind = number % kProjectsApart == 0 ? CAE_PROJECT : kind;
        CAEObject* const object = korvane::CreateObject(above, kind, Text(NameOf(number)));
        if (object == nullptr) {
            throw std::runtime_error("an object of the kind " + std::to_string(kind) + " was not created");
        }
        if (auto* const inner = dynamic_cast<CAEProject*>(object)) {
            inner->setAdditionalType(L"CAEProject");
        }
        AddMetadata(*object, number);
        // No file has a file.
        if (number % 20 < 14 && number % 10 != kFileInTurn) {
            AddFile(*object->getProject(), *object, number);
        }
        made.push_back(object);
    }
    return project;
}

}  // namespace bench

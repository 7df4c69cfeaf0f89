#include <array>

#include "CAEFunctions.h"
#include "CAEObject.h"
#include "Creation.h"
#include "Recorded.h"

namespace korvane {
namespace {

struct ObjectTypeName {
    _tagCAEObjectType type;
    const char* name;
};

/// The kinds that can be created.
constexpr std::array kObjectTypeNames{
    ObjectTypeName{CAE_PART, "Part"},
    ObjectTypeName{CAE_SUBASSEMBLY, "SubAssembly"},
    ObjectTypeName{CAE_FILE, "File"},
    ObjectTypeName{CAE_PROJECT, "Project"},
    ObjectTypeName{CAE_MODEL, "Model"},
    ObjectTypeName{CAE_ITERATION, "Iteration"},
    ObjectTypeName{CAE_ITERATION_FOLDER, "IterationFolder"},
    ObjectTypeName{CAE_ITERATION_MODEL, "IterationModel"},
    ObjectTypeName{CAE_ASSEMBLY_FOLDER, "AssemblyFolder"},
    ObjectTypeName{CAE_LOADCASE_VIEW_FOLDER, "LoadCaseViewFolder"},
    ObjectTypeName{CAE_LOADCASE_VIEW, "LoadCaseView"},
    ObjectTypeName{CAE_VIEW_ITEM, "ViewItem"},
    ObjectTypeName{CAE_SESSION_OBJECT, "SessionObject"},
    ObjectTypeName{CAE_TAG, "Tag"},
};

struct FileTypeName {
    _tagFileType type;
    const char* name;
    /// The same for comparison with wide texts.
    const wchar_t* wideName;
};

constexpr std::array kFileTypeNames{
    FileTypeName{CAE_FILE_CAD, "CAD", L"CAD"},
    FileTypeName{CAE_FILE_MESH, "Mesh", L"Mesh"},
    FileTypeName{CAE_FILE_GRAPHIC, "Graphic", L"Graphic"},
    FileTypeName{CAE_FILE_DECK, "Deck", L"Deck"},
    FileTypeName{CAE_FILE_INCLUDE, "Include", L"Include"},
    FileTypeName{CAE_FILE_RESULT, "Result", L"Result"},
    FileTypeName{CAE_FILE_REPORT, "Report", L"Report"},
    FileTypeName{CAE_FILE_PICTURE, "Picture", L"Picture"},
    FileTypeName{CAE_FILE_SCRIPT, "Script", L"Script"},
    FileTypeName{CAE_FILE_LOG, "Log", L"Log"},
    FileTypeName{CAE_FILE_TABLE, "Table", L"Table"},
    FileTypeName{CAE_FILE_ARCHIVE, "Archive", L"Archive"},
    FileTypeName{CAE_FILE_OTHER, "Other", L"Other"},
};

constexpr const char* kUnknownName = "Unknown";

const ObjectTypeName* FindObjectType(_tagCAEObjectType type) noexcept {
    for (const ObjectTypeName& entry : kObjectTypeNames) {
        if (entry.type == type) {
            return &entry;
        }
    }
    return nullptr;
}

}  // namespace

bool CanBeCreated(_tagCAEObjectType type) noexcept {
    return FindObjectType(type) != nullptr;
}

}  // namespace korvane

using korvane::FileTypeName;
using korvane::kFileTypeNames;
using korvane::kUnknownName;
using korvane::Recorded;

const char* CAEObject::getTypeName(_tagCAEObjectType type) {
    const Recorded note("CAEObject::getTypeName", type);
    if (const auto* const odd = note.Odd()) {
        return odd->text;
    }
    const korvane::ObjectTypeName* const found = korvane::FindObjectType(type);
    return found != nullptr ? found->name : kUnknownName;
}

const char* CAEGetFileTypeName(int type) {
    const Recorded note("CAEGetFileTypeName", type);
    if (const auto* const odd = note.Odd()) {
        return odd->text;
    }
    for (const FileTypeName& entry : kFileTypeNames) {
        if (entry.type == type) {
            return entry.name;
        }
    }
    return kUnknownName;
}

_tagFileType GetCAEFileType(const OuString& name) {
    const Recorded note("GetCAEFileType", name);
    for (const FileTypeName& entry : kFileTypeNames) {
        if (name == entry.wideName) {
            return entry.type;
        }
    }
    return CAE_FILE_UNKNOWN;
}

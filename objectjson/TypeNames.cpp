#include <CAEObject.h>

#include <string_view>

#include "CAEObjectJson.h"

namespace {

constexpr const wchar_t* kPrefix = L"CAE";

struct WrittenName {
    _tagCAEObjectType type;
    const wchar_t* name;
};

/// The kinds whose name the document fixes, whatever the object model calls them.
constexpr WrittenName kWrittenNames[] = {
    {CAE_ITERATION, L"CAEITERATION"},
    {CAE_ITERATION_FOLDER, L"CAEITERATIONFOLDER"},
    {CAE_ITERATION_MODEL, L"CAEITERATIONMODEL"},
    {CAE_LOADCASE_VIEW_FOLDER, L"CAELOADCASEVIEWFOLDER"},
    {CAE_LOADCASE_VIEW, L"CAELOADCASEVIEW"},
};

struct ReadName {
    std::string_view name;
    _tagCAEObjectType type;
};

/// Two names read as a project: projects are written under their additional type, and a server answers with
/// either.
constexpr ReadName kReadNames[] = {
    {"CAEPART", CAE_PART},
    {"CAESUBASSEMBLY", CAE_SUBASSEMBLY},
    {"CAEFILE", CAE_FILE},
    {"CAEPROJECT", CAE_PROJECT},
    {"CAEPROGRAM", CAE_PROJECT},
    {"CAEMODEL", CAE_MODEL},
    {"CAEITERATION", CAE_ITERATION},
    {"CAEITERATIONFOLDER", CAE_ITERATION_FOLDER},
    {"CAEITERATIONMODEL", CAE_ITERATION_MODEL},
    {"CAEASSEMBLYFOLDER", CAE_ASSEMBLY_FOLDER},
    {"CAELOADCASEVIEWFOLDER", CAE_LOADCASE_VIEW_FOLDER},
    {"CAELOADCASEVIEW", CAE_LOADCASE_VIEW},
    {"CAEVIEWITEM", CAE_VIEW_ITEM},
    {"CAETAG", CAE_TAG},
};

}  // namespace

OuString CAEObjectJson::ObjectTypeName(_tagCAEObjectType type) {
    const OuString modelName(CAEObject::getTypeName(type), 0);
    OuString name(kPrefix);
    name.Append(modelName.GetBuffer(), 0);
    for (const WrittenName& fixed : kWrittenNames) {
        if (fixed.type == type) {
            name = fixed.name;
        }
    }
    return name;
}

_tagCAEObjectType CAEObjectJson::ObjectTypeFromName(const char* name) {
    const std::string_view text = name == nullptr ? std::string_view() : std::string_view(name);
    for (const ReadName& known : kReadNames) {
        if (known.name == text) {
            return known.type;
        }
    }
    return CAE_UNKNOWN_OBJECT;
}

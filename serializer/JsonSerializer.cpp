// The suite's headers first: the serializer's own includes OuString's only under its usual name.
// clang-format off
#include "objectjson/ObjectModel.h"
#include <korvanejson/JsonSerializer.h>
// clang-format on

#include "format/MemberNames.h"
#include "format/Values.h"
#include "objectjson/CAEObjectJson.h"
#include "objectjson/DocumentText.h"
#include "objectjson/ExportMode.h"
#include "objectjson/TextWriter.h"

namespace {

/// Makes the mode the module's, in which exports are done. It is written only when it differs, so that
/// exports with one and the same mode may run side by side.
void SetModuleExportMode(const OuString& mode) {
    if (OuString& current = ModuleExportMode(); !AreEqual(current, mode)) {
        current = mode;
    }
}

}  // namespace

JsonSerializer::JsonSerializer(CAEObject* object) : object_(object) {}

JsonSerializer::JsonSerializer(const JsonSerializer& other) = default;

JsonSerializer& JsonSerializer::operator=(const JsonSerializer& other) = default;

JsonSerializer::~JsonSerializer() = default;

void JsonSerializer::SetExportMode(const OuString& mode) {
    exportMode_ = mode;
}

JSONNode JsonSerializer::GetJson() {
    // The base converter also for a file: as a root, a file is an object node, not a file record.
    CAEObjectJson converter(object_);
    SetModuleExportMode(exportMode_);
    JSONNode document = converter.GetJsonNode();
    document.push_back(JSONNode(format::member::kSubType.c_str(), format::kSubTypeValue));
    return document;
}

OuString JsonSerializer::GetJsonString() {
#if defined(KORVANEJSON_TEXT_WITHOUT_NODES)
    SetModuleExportMode(exportMode_);
    WideText text;
    WriteDocument(object_, ExportModeOfText(exportMode_), text);
    return text.Take();
#else
    return WideDocument(GetJson());
#endif
}

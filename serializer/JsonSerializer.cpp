// The suite's headers first: the serializer's own includes OuString's only under its usual name.
// clang-format off
#include "objectjson/ObjectModel.h"
#include <korvanejson/JsonSerializer.h>
// clang-format on

#include "format/MemberNames.h"
#include "format/Values.h"
#include "objectjson/CAEObjectJson.h"
#include "objectjson/ExportMode.h"

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
    // Written only when it differs, so that exports with one and the same mode may run side by side.
    if (OuString& mode = ModuleExportMode(); !AreEqual(mode, exportMode_)) {
        mode = exportMode_;
    }
    JSONNode document = converter.GetJsonNode();
    document.push_back(JSONNode(format::member::kSubType.c_str(), format::kSubTypeValue));
    return document;
}

OuString JsonSerializer::GetJsonString() {
    return WideDocument(GetJson());
}

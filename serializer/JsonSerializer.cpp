#include <korvanejson/JsonSerializer.h>

#include "module/ExportMode.h"
#include "objectjson/CAEObjectJson.h"

namespace {

constexpr const char* kSubType = "subType";
constexpr const char* kSimulationDataManagement = "SDM";

}  // namespace

JsonSerializer::JsonSerializer(CAEObject* object) : object_(object) {}

JsonSerializer::JsonSerializer(const JsonSerializer& other) = default;

JsonSerializer& JsonSerializer::operator=(const JsonSerializer& other) = default;

JsonSerializer::~JsonSerializer() = default;

void JsonSerializer::SetExportMode(const OuString& mode) {
    exportMode_ = mode;
}

JSONNode JsonSerializer::GetJson() {
    // The base converter also for a file: as a root, a file is an object node and no file record.
    CAEObjectJson converter(object_);
    // Written only when it differs, so that exports with one and the same mode may run side by side.
    if (OuString& mode = ModuleExportMode(); mode.Compare(exportMode_) != 0) {
        mode = exportMode_;
    }
    JSONNode document = converter.GetJsonNode();
    document.push_back(JSONNode(kSubType, kSimulationDataManagement));
    return document;
}

OuString JsonSerializer::GetJsonString() {
    return DocumentText(GetJson());
}

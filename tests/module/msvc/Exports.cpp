// The exported interface with the least of bodies: compiled for MSVC's target, it exports by the names that a
// library built with MSVC would have.

#include <korvanejson/CaeRest.h>
#include <korvanejson/JsonSerializer.h>
#include <korvanejson/Module.h>

JsonSerializer::JsonSerializer(CAEObject* object) : object_(object) {}

JsonSerializer::JsonSerializer(const JsonSerializer& other) = default;

JsonSerializer& JsonSerializer::operator=(const JsonSerializer& other) = default;

JsonSerializer::~JsonSerializer() = default;

void JsonSerializer::SetExportMode(const OuString&) {}

JSONNode JsonSerializer::GetJson() {
    return JSONNode();
}

OuString JsonSerializer::GetJsonString() {
    return OuString();
}

void caerest::json::DeserializeJsonToObject(JSONNode&, CAEObject*) {}

void caerest::json::ApplyJsonResponseOnObject(const JSONNode&, CAEObject*) {}

void caerest::json::util::ParseNode(const JSONNode&, std::map<std::string, std::string>&) {}

void KorvaneJsonInitialize() {}

void KorvaneJsonTerminate() {}

const char* KorvaneJson_get_module_info(int) {
    return "";
}

void __localFnToKeepKorvaneJsonDllLoaded() {}

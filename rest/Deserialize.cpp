#include <korvanejson/CaeRest.h>

#include "objectjson/CAEObjectJson.h"

void caerest::json::DeserializeJsonToObject(JSONNode& node, CAEObject* object) {
    CAEObjectJson(node, object).Import();
}

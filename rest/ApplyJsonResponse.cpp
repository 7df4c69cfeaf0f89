#include <korvanejson/CaeRest.h>

#include "Answer.h"
#include "ResponseKeys.h"

void caerest::json::ApplyJsonResponseOnObject(const JSONNode& node, CAEObject* object) {
    if (object == nullptr) {
        return;
    }
    const std::vector<ResponseKey> keys = ReadResponseKeys(node);
    TakeDisplayName(node, *object);
    for (const ResponseKey& key : keys) {
        CAEProject* const project = object->getProject();
        if (project == nullptr) {
            return;
        }
        if (CAEObject* const target = project->getCAEObject(ReadIdentifier(key.Id()))) {
            SetKey(*target, key);
        }
    }
}

#include "Answer.h"
#include "ResponseKeys.h"
#include "format/MemberNames.h"
#include "objectjson/NodeReading.h"

namespace {

void TakeDisplayName(const JSONNode& answer, CAEObject& object) {
    auto* const project =
        KindOf(object) == format::Kind::kProject ? dynamic_cast<CAEProject*>(&object) : nullptr;
    const JSONNode* const name = project == nullptr ? nullptr : FindMember(answer, format::member::kName);
    if (name != nullptr) {
        project->SetDisplayName(WideValue(*name));
    }
}

}  // namespace

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
            // Its own key for every kind: the server answers with the view item's, not with the item's it
            // shows.
            target->setDBKey(TextFromAnsi(key.Key()));
        }
    }
}

#include <algorithm>
#include <cstdlib>
#include <limits>

#include "SecondReading.h"

namespace reference {
namespace {

void FlattenEach(const JSONNode* container, ResponseKeys& keys) {
    if (container != nullptr && IsContainer(*container)) {
        for (const JSONNode& element : *container) {
            Flatten(element, keys);
        }
    }
}

int IdentifierIn(const std::string& text) {
    const long long number = std::strtoll(text.c_str(), nullptr, 10);
    constexpr long long smallest = std::numeric_limits<int>::min();
    constexpr long long greatest = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(number, smallest, greatest));
}

}  // namespace

void Flatten(const JSONNode& node, ResponseKeys& keys) {
    const JSONNode* const identifier = FindMember(node, "id");
    const JSONNode* const key = FindMember(node, "dbkey");
    if (identifier != nullptr && key != nullptr) {
        keys.insert({TextOf(*identifier), TextOf(*key)});
    }
    FlattenEach(FindMember(node, "children"), keys);
    FlattenEach(FindMember(node, "files"), keys);
}

void ApplyAnswer(const JSONNode& answer, CAEObject* object) {
    if (object == nullptr) {
        return;
    }
    ResponseKeys keys;
    if (answer.type() == JSON_NODE) {
        Flatten(answer, keys);
    } else if (answer.type() == JSON_ARRAY) {
        FlattenEach(&answer, keys);
    }
    if (object->getType() == CAE_PROJECT) {
        const JSONNode* const name = FindMember(answer, "name");
        auto* const project = dynamic_cast<CAEProject*>(object);
        if (name != nullptr && project != nullptr) {
            project->SetDisplayName(Widen(TextOf(*name)));
        }
    }
    for (const auto& [identifier, key] : keys) {
        CAEProject* const project = object->getProject();
        if (project == nullptr) {
            return;
        }
        CAEObject* const target = project->getCAEObject(IdentifierIn(identifier));
        if (target != nullptr) {
            target->setDBKey(Widen(key));
        }
    }
}

}  // namespace reference

#include <CAEObject.h>
#include <CAEProject.h>
#include <korvanejson/CaeRest.h>

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace {

constexpr const char* kName = "name";

using ResponseKeyMap = std::map<std::string, std::string>;

OuString Widened(const std::string& text) {
    return OuString(text.c_str(), 0);
}

ResponseKeyMap Flatten(const JSONNode& answer) {
    ResponseKeyMap map;
    if (answer.type() == JSON_NODE) {
        caerest::json::util::ParseNode(answer, map);
    } else if (answer.type() == JSON_ARRAY) {
        for (const JSONNode& element : answer) {
            caerest::json::util::ParseNode(element, map);
        }
    }
    return map;
}

void TakeDisplayName(const JSONNode& answer, CAEObject& object) {
    auto* project = object.getType() == CAE_PROJECT ? dynamic_cast<CAEProject*>(&object) : nullptr;
    // The elements of an array are no members, even where they bear names.
    if (project == nullptr || answer.type() != JSON_NODE) {
        return;
    }
    if (const auto name = answer.find(kName); name != answer.end()) {
        project->SetDisplayName(Widened(name->as_string().c_str()));
    }
}

/// As atoi, with the nearest limit instead of an overflow.
int ToIdentifier(const std::string& text) {
    using Limits = std::numeric_limits<int>;
    return static_cast<int>(
        std::clamp<long long>(std::strtoll(text.c_str(), nullptr, 10), Limits::min(), Limits::max()));
}

}  // namespace

void caerest::json::ApplyJsonResponseOnObject(const JSONNode& node, CAEObject* object) {
    if (object == nullptr) {
        return;
    }
    const ResponseKeyMap keys = Flatten(node);
    TakeDisplayName(node, *object);
    for (const auto& [id, key] : keys) {
        CAEProject* project = object->getProject();
        if (project == nullptr) {
            return;
        }
        if (CAEObject* target = project->getCAEObject(ToIdentifier(id))) {
            // Its own key for every kind: a view item's link is another matter.
            target->setDBKey(Widened(key));
        }
    }
}

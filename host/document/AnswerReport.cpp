#include "AnswerReport.h"

#include <korvanejson/CaeRest.h>

#include <algorithm>
#include <iterator>
#include <unordered_map>

#include "DocumentFile.h"
#include "DocumentNode.h"
#include "NodeWalker.h"
#include "format/MemberNames.h"
#include "host/system/Text.h"
#include "objectjson/NodeReading.h"
#include "rest/Answer.h"

namespace member = format::member;

namespace host {
namespace {

constexpr std::string_view kNoSuchObject = "key not set, because no object has the identifier";
constexpr std::string_view kNoKey = "key not set, because there is no \"dbkey\"";
constexpr std::string_view kNoIdentifier = "key not set, because there is no \"id\"";
constexpr std::string_view kLater =
    "key not set, because an earlier node with the identifier has another key";
constexpr std::string_view kEmptyKey = "key removed, because \"dbkey\" is empty";
constexpr std::string_view kNoNumber =
    "identifier that is not a number, read as the number that it begins with";
constexpr std::string_view kNoObject = "ignored, because it is not an object";

/// Under these names, servers say what went wrong.
constexpr std::string_view kErrorMembers[] = {"error", "errors", "exception", "fault"};

/// Notes what the library does not use of a node of an answer.
void NoteNode(const JSONNode& node, const ResponseKeyMap& keys, Notes& notes) {
    const JSONNode* const id = FindMember(node, member::kId);
    const JSONNode* const key = FindMember(node, member::kDatabaseKey);
    if (node.type() != JSON_NODE) {
        notes.Add(kNoObject, [&] { return Describe(node); });
    } else if (id != nullptr && key == nullptr) {
        notes.Add(kNoKey, [&] { return Describe(node); });
    } else if (id == nullptr && key != nullptr) {
        notes.Add(kNoIdentifier, [&] { return Excerpt(ValueText(*key)); });
    } else if (id != nullptr) {
        const auto first = keys.find(ValueText(*id));
        if (first != keys.end() && first->second != ValueText(*key)) {
            notes.Add(kLater, [&] { return Describe(node) + " with the key " + Excerpt(ValueText(*key)); });
        }
    }
}

/// Why no key of an answer was set.
std::string WhyUseless(const JSONNode& answer) {
    if (answer.empty()) {
        return std::string("it is an empty ") + (answer.type() == JSON_ARRAY ? "array" : "object") +
               " and has no keys";
    }
    if (answer.type() == JSON_NODE) {
        for (const JSONNode& value : answer) {
            if (std::ranges::find(kErrorMembers, NameOfMember(value)) != std::end(kErrorMembers)) {
                return "it reports an error" +
                       (IsContainer(value) ? std::string() : ": " + Excerpt(ValueText(value)));
            }
        }
    }
    const std::size_t count = FlattenAnswer(answer).size();
    if (count == 0) {
        return FindMember(answer, member::kType) != nullptr
                   ? "it is a document and not the server's answer to one: it has no keys"
                   : "it has no keys: no node in it has both \"id\" and \"dbkey\"";
    }
    return "the project has no object with " +
           (count == 1 ? "its identifier" : "one of its " + std::to_string(count) + " identifiers");
}

}  // namespace

void AnswerReport::Say(const std::string& what, Console& console) const {
    console.Say(what + ": " + FormatCount(keysSet, "key", "keys") + " set, " + std::to_string(keysKept) +
                " unchanged" + (hasName ? ", and the display name taken from the answer" : ""));
    notes.Say(what, console);
}

bool IsAnswer(const JSONNode& answer, const std::string& file, Console& console) {
    if (IsContainer(answer)) {
        return true;
    }
    console.Say("cannot use " + InputName(file) +
                ": an answer is an object or an array of objects. Nothing was changed");
    return false;
}

bool ApplyAnswer(JSONNode answer, CAEProject& project, AnswerReport& report, Console& console) {
    console.ShowProgress("Applying the answer", 0, 0);
    RemoveNullKeys(answer, report.notes);
    const ResponseKeyMap keys = FlattenAnswer(answer);
    WalkNodes(answer, SectionOrder::FirstOfEach, [&](const auto& visit) {
        NoteNode(visit.node, keys, report.notes);
        return true;
    });

    struct Target {
        CAEObject* object;
        OuString oldKey;
    };
    std::unordered_map<int, Target> targets;
    for (const auto& entry : keys) {
        const std::string& text = entry.first;
        const std::string& key = entry.second;
        const int id = ReadIdentifier(text);
        CAEObject* const object = project.getCAEObject(id);
        if (object == nullptr) {
            report.notes.Add(kNoSuchObject, [&] { return Excerpt(text) + " with the key " + Excerpt(key); });
            continue;
        }
        if (text != std::to_string(id)) {
            report.notes.Add(kNoNumber, [&] { return Excerpt(text) + " as " + std::to_string(id); });
        }
        if (targets.emplace(id, Target{object, object->getDBKey()}).second && key.empty()) {
            report.notes.Add(kEmptyKey, [&] { return Excerpt(text); });
        }
    }
    if (targets.empty()) {
        console.ClearProgress();
        return false;
    }
    caerest::json::ApplyJsonResponseOnObject(answer, &project);
    for (const auto& [id, target] : targets) {
        ++(target.object->getDBKey() == target.oldKey ? report.keysKept : report.keysSet);
    }
    report.hasName = FindMember(answer, member::kName) != nullptr;
    console.ClearProgress();
    return true;
}

void SayUseless(JSONNode answer, const std::string& file, Console& console) {
    Notes ignored;
    RemoveNullKeys(answer, ignored);
    console.Say("cannot use " + InputName(file) + ": " + WhyUseless(answer) +
                ". Give the answer to a document of this project. Nothing was changed");
}

}  // namespace host

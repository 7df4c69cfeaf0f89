// The suite's headers first: the public header includes OuString's only under its usual name.
// clang-format off
#include "objectjson/ObjectModel.h"
#include <korvaneexchange/ApplyAnswer.h>
#include <korvaneexchange/PrintableText.h>
// clang-format on

#include <algorithm>
#include <iterator>
#include <unordered_map>
#include <utility>
#include <vector>

#include "NodeText.h"
#include "NodeWalker.h"
#include "NullKeys.h"
#include "ReportBuilder.h"
#include "format/MemberNames.h"
#include "objectjson/NodeReading.h"
#include "rest/Answer.h"
#include "rest/ResponseKeys.h"

namespace member = format::member;

namespace korvane::exchange {
namespace {

/// Under these names, servers say what went wrong.
constexpr std::string_view kErrorMembers[] = {"error", "errors", "exception", "fault"};

constexpr std::size_t kStepsBetweenCalls = 256;

/// Where a node stands in the answer, as far as its pointer needs it.
struct AnswerPlace {
    const AnswerPlace* above = nullptr;
    const JSONNode* node = nullptr;
    NodePlace place = NodePlace::Root;
    std::size_t index = 0;
    std::size_t nextChild = 0;
    std::size_t nextFile = 0;
};

bool HasNullKey(const JSONNode& node) {
    return std::any_of(node.begin(), node.end(), IsNullKey);
}

/// The first key that is not null; null where there is none.
const JSONNode* FirstKey(const JSONNode& node) {
    const auto found = std::find_if(node.begin(), node.end(), [](const JSONNode& value) {
        return value.type() != JSON_NULL && member::kDatabaseKey == NodeName(value);
    });
    return found == node.end() ? nullptr : &*found;
}

class AnswerApplication {
public:
    /// `answer` is the original without keys that are null.
    AnswerApplication(const JSONNode& original, const JSONNode& answer, CAEObject& object,
                      const AnswerOptions& options, AnswerReport& report)
        : original_(original),
          answer_(answer),
          object_(object),
          options_(options),
          report_(report),
          builder_(report) {}

    void Run();

private:
    struct Target {
        const ResponseKey* key;
        CAEObject* object;
    };

    void TellOfNodes();
    void TellOfNode(const JSONNode& node, const AnswerPlace& place);
    std::string PointerOf(const AnswerPlace& place) const;
    const ResponseKey* FirstKeyOf(std::string_view id) const;
    void FindTargets();
    void Apply();
    bool GoesOn(std::size_t done);
    std::string WhyUseless() const;

    const JSONNode& original_;
    const JSONNode& answer_;
    CAEObject& object_;
    const AnswerOptions& options_;
    AnswerReport& report_;
    ReportBuilder builder_;
    std::vector<ResponseKey> keys_;
    std::vector<Target> targets_;
    std::size_t rootIndex_ = 0;
};

void AnswerApplication::Run() {
    keys_ = ReadResponseKeys(answer_);
    TellOfNodes();
    FindTargets();
    report_.hasFitted = !targets_.empty();
    if (!report_.hasFitted) {
        report_.whyUseless = WhyUseless();
        return;
    }
    Apply();
}

// What is said of the nodes

void AnswerApplication::TellOfNodes() {
    WalkNodes<AnswerPlace>(
        original_, SectionOrder::FirstOfEach,
        [this](const auto& visit) {
            AnswerPlace& place = visit.own;
            place.above = visit.above;
            place.node = &visit.node;
            place.place = visit.place;
            place.index = visit.place == NodePlace::Root         ? rootIndex_++
                          : visit.place == NodePlace::FileRecord ? visit.above->nextFile++
                                                                 : visit.above->nextChild++;
            TellOfNode(visit.node, place);
            return true;
        },
        [](const auto&) {});
}

std::string AnswerApplication::PointerOf(const AnswerPlace& place) const {
    std::vector<const AnswerPlace*> way;
    for (const AnswerPlace* step = &place; step != nullptr; step = step->above) {
        way.push_back(step);
    }
    std::string pointer;
    for (auto step = way.rbegin(); step != way.rend(); ++step) {
        const AnswerPlace& at = **step;
        if (at.place == NodePlace::Root) {
            pointer += answer_.type() == JSON_ARRAY ? "/" + std::to_string(at.index) : std::string();
            continue;
        }
        const format::MemberName section = SectionOf(at.place);
        pointer += PointerTo(section.View());
        const bool isNamed = FindMember(*at.above->node, section)->type() == JSON_NODE;
        const NodeText name = isNamed ? NodeName(*at.node) : NodeText();
        pointer += isNamed ? PointerTo(Utf8OfAnsi(name)) : "/" + std::to_string(at.index);
    }
    return pointer;
}

const ResponseKey* AnswerApplication::FirstKeyOf(std::string_view id) const {
    const ResponseKey sought{NodeText(id), NodeText(), 0};
    const auto found = std::lower_bound(keys_.begin(), keys_.end(), sought);
    return found != keys_.end() && found->Id() == id ? &*found : nullptr;
}

void AnswerApplication::TellOfNode(const JSONNode& node, const AnswerPlace& place) {
    const auto tell = [&](Reason reason, const std::string& subject, const std::string& sentence) {
        builder_.Add(reason, builder_.IsListing() ? PointerOf(place) : std::string(), 0, subject, sentence);
    };
    if (node.type() != JSON_NODE) {
        tell(Reason::kNotAnObject, Describe(node),
             "an element of the answer is ignored, because it is not an object");
        return;
    }
    const JSONNode* const id = FindMember(node, member::kId);
    const JSONNode* const key = FirstKey(node);
    if (HasNullKey(node)) {
        tell(Reason::kNullKey, Describe(node), "the key of " + Describe(node) + " is null, and is left out");
    }
    if (id != nullptr && key == nullptr) {
        tell(Reason::kNoKey, Describe(node), Describe(node) + " has no \"dbkey\", so no key is set");
    } else if (id == nullptr && key != nullptr) {
        const std::string shown = Excerpt(Utf8OfValue(*key));
        tell(Reason::kNoIdentifier, shown, "the key " + shown + " is not set, because there is no \"id\"");
    } else if (id != nullptr) {
        const NodeText idText = NodeValue(*id);
        const NodeText keyText = NodeValue(*key);
        const ResponseKey* const first = FirstKeyOf(UpToNul(idText));
        if (first != nullptr && first->Key() != UpToNul(keyText)) {
            const std::string subject = Describe(node) + " with the key " + Excerpt(Utf8OfValue(*key));
            tell(Reason::kLaterKey, subject,
                 subject + " is left out, because an earlier node with the identifier has another key");
        }
    }
}

// What is set

void AnswerApplication::FindTargets() {
    CAEProject* const project = object_.getProject();
    std::unordered_map<const CAEObject*, std::size_t> known;
    for (const ResponseKey& key : keys_) {
        const int id = ReadIdentifier(key.Id());
        CAEObject* const target = project == nullptr ? nullptr : project->getCAEObject(id);
        const std::string shown = Excerpt(Utf8OfAnsi(key.Id()));
        if (target == nullptr) {
            const std::string subject = shown + " with the key " + Excerpt(Utf8OfAnsi(key.Key()));
            builder_.Add(Reason::kNoSuchObject, {}, 0, subject, "no object has the identifier " + subject);
            continue;
        }
        if (key.Id() != std::to_string(id)) {
            builder_.Add(
                Reason::kNoNumber, {}, id, shown + " as " + std::to_string(id),
                "the identifier " + shown + " is not a number, and is read as " + std::to_string(id));
        }
        if (known.emplace(target, targets_.size()).second && key.Key().empty()) {
            builder_.Add(Reason::kKeyRemoved, {}, id, shown,
                         "the key of the object " + shown + " is removed");
        }
        targets_.push_back({&key, target});
    }
}

bool AnswerApplication::GoesOn(std::size_t done) {
    return !options_.progress || done % kStepsBetweenCalls != 0 ||
           options_.progress({.objects = done, .total = targets_.size()});
}

void AnswerApplication::Apply() {
    report_.hasName =
        FindMember(answer_, member::kName) != nullptr && KindOf(object_) == format::Kind::kProject;
    if (!options_.dryRun) {
        TakeDisplayName(answer_, object_);
    }
    struct Change {
        OuString oldKey;
        const ResponseKey* newKey;
    };
    std::unordered_map<CAEObject*, Change> changes;
    std::vector<CAEObject*> order;
    for (std::size_t index = 0; index < targets_.size(); ++index) {
        const Target& target = targets_[index];
        if (!GoesOn(index)) {
            report_.isStopped = true;
            break;
        }
        const auto [change, isFirst] =
            changes.try_emplace(target.object, Change{target.object->getDBKey(), target.key});
        change->second.newKey = target.key;
        if (isFirst) {
            order.push_back(target.object);
        }
        if (!options_.dryRun) {
            SetKey(*target.object, *target.key);
        }
    }
    for (CAEObject* const object : order) {
        const Change& change = changes.find(object)->second;
        const OuString key = TextFromAnsi(change.newKey->Key());
        if (AreEqual(change.oldKey, key)) {
            ++report_.keysKept;
            continue;
        }
        ++report_.keysSet;
        if (!builder_.IsListing()) {
            builder_.CountUnlisted(Reason::kChanged);
            continue;
        }
        const std::string subject = "the key of " + Describe(*object);
        builder_.Add(Reason::kChanged, {}, object->getID(), subject,
                     subject + ": " + Excerpt(Utf8Of(change.oldKey)) + " becomes " + Excerpt(Utf8Of(key)));
    }
}

std::string AnswerApplication::WhyUseless() const {
    if (!IsContainer(answer_)) {
        return "an answer is an object or an array of objects";
    }
    if (answer_.empty()) {
        return std::string("it is an empty ") + (answer_.type() == JSON_ARRAY ? "array" : "object") +
               " and has no keys";
    }
    for (ChildWalk members = answer_.type() == JSON_NODE ? ChildWalk(answer_) : ChildWalk();
         const JSONNode* const value = members.Next();) {
        const NodeText name = NodeName(*value);
        if (std::ranges::find(kErrorMembers, std::string_view(name)) != std::end(kErrorMembers)) {
            return "it reports an error" +
                   (IsContainer(*value) ? std::string() : ": " + Excerpt(Utf8OfValue(*value)));
        }
    }
    if (keys_.empty()) {
        return FindMember(answer_, member::kType) != nullptr
                   ? "it is a document and not the server's answer to one: it has no keys"
                   : "it has no keys: no node in it has both \"id\" and \"dbkey\"";
    }
    return "the project has no object with " +
           (keys_.size() == 1 ? "its identifier"
                              : "one of its " + std::to_string(keys_.size()) + " identifiers");
}

}  // namespace

AnswerReport ApplyAnswer(const JSONNode& answer, CAEObject& object, const AnswerOptions& options) {
    AnswerReport report;
    if (HasNullKeys(answer)) {
        JSONNode without = answer;
        RemoveNullKeys(without, [](const JSONNode&) {});
        AnswerApplication(answer, without, object, options, report).Run();
    } else {
        AnswerApplication(answer, answer, object, options, report).Run();
    }
    return report;
}

}  // namespace korvane::exchange

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
    /// What becomes of the first key of an identifier.
    struct Outcome {
        CAEObject* target = nullptr;
        OuString oldKey = {};
        bool isDone = false;
        /// Whether the object got another key under another text of its identifier.
        bool isOverridden = false;
        bool isTold = false;
    };

    void FindTargets();
    void Apply();
    bool GoesOn(std::size_t done);

    void TellOfNodes();
    void TellOfNode(const JSONNode& node, const AnswerPlace& place);
    void TellOfKey(const JSONNode& node, const AnswerPlace& place, std::string_view id, std::string_view key);
    void TellOfChange(const AnswerPlace& place, std::string_view id, const Outcome& outcome,
                      std::string_view key);
    void TellOfSections(const JSONNode& node, const AnswerPlace& place);
    template <typename Texts>
    void Tell(Reason reason, const AnswerPlace& place, int identifier, const Texts& texts);
    std::string PointerOf(const AnswerPlace& place) const;
    int IdentifierOf(std::string_view id) const;
    std::string WhyUseless() const;

    const JSONNode& original_;
    const JSONNode& answer_;
    CAEObject& object_;
    const AnswerOptions& options_;
    AnswerReport& report_;
    ReportBuilder builder_;
    std::vector<ResponseKey> keys_;
    /// One for each of the keys.
    std::vector<Outcome> outcomes_;
    std::size_t rootIndex_ = 0;
};

void AnswerApplication::Run() {
    keys_ = ReadResponseKeys(answer_);
    FindTargets();
    report_.hasFitted =
        std::ranges::any_of(outcomes_, [](const Outcome& outcome) { return outcome.target != nullptr; });
    if (report_.hasFitted) {
        Apply();
    } else {
        report_.whyUseless = WhyUseless();
    }
    TellOfNodes();
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

int AnswerApplication::IdentifierOf(std::string_view id) const {
    CAEProject* const project = object_.getProject();
    const int number = ReadIdentifier(id);
    return project == nullptr || project->getCAEObject(number) == nullptr ? 0 : number;
}

template <typename Texts>
void AnswerApplication::Tell(Reason reason, const AnswerPlace& place, int identifier, const Texts& texts) {
    if (!builder_.IsListing()) {
        builder_.CountUnlisted(reason);
        return;
    }
    const auto [subject, sentence] = texts();
    builder_.Add(reason, PointerOf(place), identifier, subject, sentence);
}

void AnswerApplication::TellOfNode(const JSONNode& node, const AnswerPlace& place) {
    if (node.type() != JSON_NODE) {
        Tell(Reason::kNotAnObject, place, 0, [&] {
            return std::pair(Describe(node),
                             std::string("an element of the answer is ignored, because it is not an object"));
        });
        return;
    }
    const JSONNode* const id = FindMember(node, member::kId);
    const JSONNode* const key = FirstKey(node);
    const NodeText idText = id == nullptr ? NodeText() : NodeValue(*id);
    const std::string_view idRead = UpToNul(idText);
    const int identifier = id == nullptr || key != nullptr ? 0 : IdentifierOf(idRead);
    if (HasNullKey(node)) {
        Tell(Reason::kNullKey, place, identifier, [&] {
            return std::pair(Describe(node), "the key of " + Describe(node) + " is null, and is left out");
        });
    }
    if (id != nullptr && key == nullptr) {
        Tell(Reason::kNoKey, place, identifier, [&] {
            return std::pair(Describe(node), Describe(node) + " has no \"dbkey\", so no key is set");
        });
    } else if (id == nullptr && key != nullptr) {
        Tell(Reason::kNoIdentifier, place, 0, [&] {
            const std::string shown = Excerpt(Utf8OfValue(*key));
            return std::pair(shown, "the key " + shown + " is not set, because there is no \"id\"");
        });
    } else if (id != nullptr) {
        const NodeText keyText = NodeValue(*key);
        TellOfKey(node, place, idRead, UpToNul(keyText));
    }
    TellOfSections(node, place);
}

void AnswerApplication::TellOfKey(const JSONNode& node, const AnswerPlace& place, std::string_view id,
                                  std::string_view key) {
    const ResponseKey sought{NodeText(id), NodeText(), 0};
    const auto first = std::lower_bound(keys_.begin(), keys_.end(), sought);
    if (first == keys_.end() || first->Id() != id) {
        return;
    }
    Outcome& outcome = outcomes_[static_cast<std::size_t>(first - keys_.begin())];
    const int identifier = outcome.target == nullptr ? 0 : outcome.target->getID();
    if (std::exchange(outcome.isTold, true) ? first->Key() != key : outcome.isOverridden) {
        Tell(Reason::kLaterKey, place, identifier, [&] {
            const std::string subject = Describe(node) + " with the key " + Excerpt(Utf8OfAnsi(key));
            return std::pair(subject,
                             subject + " is left out, because " +
                                 (first->Key() != key ? "an earlier node with the identifier"
                                                      : "a node with another text for the identifier") +
                                 " has another key");
        });
    } else if (outcome.target == nullptr) {
        Tell(Reason::kNoSuchObject, place, 0, [&] {
            const std::string subject = Excerpt(Utf8OfAnsi(id)) + " with the key " + Excerpt(Utf8OfAnsi(key));
            return std::pair(subject, "no object has the identifier " + subject);
        });
    } else if (outcome.isDone) {
        TellOfChange(place, id, outcome, key);
        outcome.isDone = false;
    }
}

void AnswerApplication::TellOfChange(const AnswerPlace& place, std::string_view id, const Outcome& outcome,
                                     std::string_view key) {
    CAEObject& object = *outcome.target;
    const std::string number = std::to_string(ReadIdentifier(id));
    const std::string shown = Excerpt(Utf8OfAnsi(id));
    if (id != number) {
        Tell(Reason::kNoNumber, place, object.getID(), [&] {
            return std::pair(shown + " as " + number,
                             "the identifier " + shown + " is not a number, and is read as " + number);
        });
    }
    const OuString newKey = TextFromAnsi(key);
    if (AreEqual(outcome.oldKey, newKey)) {
        ++report_.keysKept;
        return;
    }
    ++report_.keysSet;
    if (key.empty()) {
        Tell(Reason::kKeyRemoved, place, object.getID(),
             [&] { return std::pair(shown, "the key of the object " + shown + " is removed"); });
    }
    // Listed or not: the object model is asked the same for every object.
    const std::string subject = "the key of " + Describe(object);
    Tell(Reason::kChanged, place, object.getID(), [&] {
        return std::pair(subject, subject + ": " + Excerpt(Utf8Of(outcome.oldKey)) + " becomes " +
                                      Excerpt(Utf8Of(newKey)));
    });
}

void AnswerApplication::TellOfSections(const JSONNode& node, const AnswerPlace& place) {
    for (const format::MemberName section : {member::kChildren, member::kFiles}) {
        const auto count = std::count_if(node.begin(), node.end(),
                                         [&](const JSONNode& value) { return section == NodeName(value); });
        if (count > 1) {
            Tell(Reason::kRepeatedMember, place, 0, [&] {
                const std::string subject = Excerpt(section.View()) + " of " + Describe(node);
                return std::pair(subject, subject + " occurs again; the first one counts");
            });
        }
    }
}

// What is set

void AnswerApplication::FindTargets() {
    outcomes_.resize(keys_.size());
    CAEProject* const project = object_.getProject();
    for (std::size_t index = 0; project != nullptr && index < keys_.size(); ++index) {
        outcomes_[index].target = project->getCAEObject(ReadIdentifier(keys_[index].Id()));
    }
}

bool AnswerApplication::GoesOn(std::size_t done) {
    return !options_.progress || done % kStepsBetweenCalls != 0 ||
           options_.progress({.objects = done, .total = keys_.size()});
}

void AnswerApplication::Apply() {
    report_.hasName =
        FindMember(answer_, member::kName) != nullptr && KindOf(object_) == format::Kind::kProject;
    if (!options_.dryRun) {
        TakeDisplayName(answer_, object_);
    }
    // Of several texts for one identifier, 7 and 007, the last one counts.
    std::unordered_map<const CAEObject*, Outcome*> counting;
    for (std::size_t index = 0; index < keys_.size(); ++index) {
        if (!GoesOn(index)) {
            report_.isStopped = true;
            return;
        }
        Outcome& outcome = outcomes_[index];
        if (outcome.target == nullptr) {
            continue;
        }
        const auto [found, isFirst] = counting.try_emplace(outcome.target, &outcome);
        if (isFirst) {
            outcome.oldKey = outcome.target->getDBKey();
        } else {
            Outcome& before = *std::exchange(found->second, &outcome);
            outcome.oldKey = before.oldKey;
            before.isDone = false;
            before.isOverridden = true;
        }
        outcome.isDone = true;
        if (!options_.dryRun) {
            SetKey(*outcome.target, keys_[index]);
        }
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

#include <korvaneexchange/PrintableText.h>

#include <algorithm>
#include <utility>

#include "AnswerApplication.h"
#include "NodeText.h"
#include "NullKeys.h"
#include "format/MemberNames.h"
#include "objectjson/NodeReading.h"
#include "rest/Answer.h"

namespace member = format::member;

namespace korvane::exchange {
namespace {

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

}  // namespace

// What is said of the nodes

void AnswerApplication::TellOfNodes() {
    WalkNodes<AnswerPlace>(
        original_, SectionOrder::FirstOfEach,
        [this](const auto& visit) {
            AnswerPlace& place = visit.own;
            place.above = visit.above;
            place.node = &visit.node;
            place.place = visit.place;
            place.section = visit.section;
            place.index = visit.section == nullptr ? rootIndex_++ : visit.position;
            place.number = nodeCount_++;
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
    std::ranges::reverse(way);
    for (const AnswerPlace* const step : way) {
        const AnswerPlace& at = *step;
        if (at.section == nullptr) {
            pointer += answer_.type() == JSON_ARRAY ? "/" + std::to_string(at.index) : std::string();
            continue;
        }
        pointer += PointerTo(SectionOf(at.place).View());
        const bool isNamed = at.section->type() == JSON_NODE;
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
    // What is below a node that is left out is left out with it.
    if (places_ && places_->FitOf(place.number) != NodeFit::kFits) {
        TellOfOtherParent(node, place);
        return;
    }
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
    // It is there: the keys are those of all nodes that have an identifier and a key.
    const auto first = std::lower_bound(keys_.begin(), keys_.end(), sought);
    KeyOutcome& outcome = outcomes_.at(static_cast<std::size_t>(first - keys_.begin()));
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
    } else if (outcome.conflict) {
        TellOfConflict(place, outcome, key);
    } else if (outcome.isDone) {
        TellOfChange(place, id, outcome, key);
        outcome.isDone = false;
    }
}

void AnswerApplication::TellOfChange(const AnswerPlace& place, std::string_view id, const KeyOutcome& outcome,
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

void AnswerApplication::TellOfConflict(const AnswerPlace& place, const KeyOutcome& outcome,
                                       std::string_view key) {
    CAEObject& object = *outcome.target;
    Tell(*outcome.conflict, place, object.getID(), [&] {
        const std::string shown = Excerpt(Utf8OfAnsi(key));
        if (*outcome.conflict == Reason::kOtherParent) {
            const std::string subject = Describe(object);
            return std::pair(subject,
                             "the key of " + subject + ": " + shown +
                                 " is not set, because the answer has the object in other places, too");
        }
        const std::string subject = "the key of " + Describe(object);
        return std::pair(subject, *outcome.conflict == Reason::kOtherKey
                                      ? subject + ": " + Excerpt(Utf8Of(outcome.oldKey)) + " stays, and " +
                                            shown + " is not set"
                                      : subject + ": " + shown + " is not set, because it is the key of " +
                                            Describe(*outcome.holder));
    });
}

void AnswerApplication::TellOfOtherParent(const JSONNode& node, const AnswerPlace& place) {
    if (places_->FitOf(place.number) == NodeFit::kBelowMisplaced) {
        return;
    }
    CAEProject& project = *object_.getProject();
    const auto objectOf = [&](const JSONNode& of) {
        const NodeText id = NodeValue(*FindMember(of, member::kId));
        return project.getCAEObject(ReadIdentifier(UpToNul(id)));
    };
    // A node can only be misplaced if it and the one above have identifiers.
    CAEObject& object = *objectOf(node);
    Tell(Reason::kOtherParent, place, object.getID(), [&] {
        const std::string subject = Describe(object);
        CAEObject* const above = objectOf(*place.above->node);
        return std::pair(subject,
                         subject + " is left out with everything below it, because the answer has it below " +
                             (above == nullptr ? Describe(*place.above->node) : Describe(*above)) +
                             ", and the project does not");
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

}  // namespace korvane::exchange

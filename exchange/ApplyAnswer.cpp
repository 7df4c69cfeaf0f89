#include <korvaneexchange/PrintableText.h>

#include <algorithm>
#include <iterator>
#include <utility>

#include "AnswerApplication.h"
#include "NodeText.h"
#include "NullKeys.h"
#include "StepsBetweenCalls.h"
#include "format/MemberNames.h"
#include "objectjson/NodeReading.h"
#include "rest/Answer.h"

namespace member = format::member;

namespace korvane::exchange {
namespace {

/// Under these names, servers say what went wrong.
constexpr std::string_view kErrorMembers[] = {"error", "errors", "exception", "fault"};

}  // namespace

void AnswerApplication::Run() {
    keys_ = ReadResponseKeys(answer_);
    FindTargets();
    report_.hasFitted =
        std::ranges::any_of(outcomes_, [](const KeyOutcome& outcome) { return outcome.target != nullptr; });
    if (report_.hasFitted) {
        FindConflictsWithProject();
        Apply();
    } else {
        report_.whyUseless = WhyUseless();
    }
    TellOfNodes();
}

void AnswerApplication::FindTargets() {
    outcomes_.resize(keys_.size());
    CAEProject* const project = object_.getProject();
    for (std::size_t index = 0; project != nullptr && index < keys_.size(); ++index) {
        outcomes_[index].target = project->getCAEObject(ReadIdentifier(keys_[index].Id()));
    }
}

void AnswerApplication::FindConflictsWithProject() {
    if (options_.keys != KeyChoice::kAll) {
        CAEProject& project = *object_.getProject();
        places_.emplace(original_, project);
        hasConflict_ = FindConflicts(project, keys_, *places_, options_.keys, outcomes_);
    }
}

bool AnswerApplication::GoesOn(std::size_t done) {
    return !options_.progress || done % kStepsBetweenCalls != 0 ||
           options_.progress({.objects = done, .total = keys_.size()});
}

void AnswerApplication::FindOverridden(KeyOutcome& outcome,
                                       std::unordered_map<const CAEObject*, KeyOutcome*>& counting) {
    const auto [found, isFirst] = counting.try_emplace(outcome.target, &outcome);
    if (isFirst) {
        outcome.oldKey = outcome.target->getDBKey();
    } else {
        KeyOutcome& before = *std::exchange(found->second, &outcome);
        outcome.oldKey = before.oldKey;
        before.isDone = false;
        before.isOverridden = true;
    }
}

void AnswerApplication::Apply() {
    report_.hasName = !hasConflict_ && FindMember(answer_, member::kName) != nullptr &&
                      KindOf(object_) == format::Kind::kProject;
    if (!options_.dryRun && !hasConflict_) {
        TakeDisplayName(answer_, object_);
    }
    // Of several texts for one identifier, 7 and 007, the last one counts.
    std::unordered_map<const CAEObject*, KeyOutcome*> counting;
    for (std::size_t index = 0; index < keys_.size(); ++index) {
        if (!GoesOn(index)) {
            report_.isStopped = true;
            return;
        }
        KeyOutcome& outcome = outcomes_[index];
        if (outcome.target == nullptr || outcome.conflict || outcome.isOverridden) {
            continue;
        }
        if (!places_) {
            FindOverridden(outcome, counting);
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

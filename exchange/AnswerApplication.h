#pragma once

// The suite's headers first: the public headers include OuString's only under its usual name.
// clang-format off
#include "objectjson/ObjectModel.h"
#include <korvaneexchange/ApplyAnswer.h>
// clang-format on

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "AnswerPlaces.h"
#include "NodeWalker.h"
#include "ReportBuilder.h"
#include "rest/ResponseKeys.h"

namespace korvane::exchange {

/// Where a node stands in the answer, as far as its pointer needs it.
struct AnswerPlace {
    const AnswerPlace* above = nullptr;
    const JSONNode* node = nullptr;
    NodePlace place = NodePlace::Root;
    /// The section that it is an element of; null for a root.
    const JSONNode* section = nullptr;
    /// Its place there, or among the roots.
    std::size_t index = 0;
    /// Which of all nodes it is, in the order of the walk.
    std::size_t number = 0;
};

/// What becomes of the first key of an identifier.
struct KeyOutcome {
    CAEObject* target = nullptr;
    OuString oldKey = {};
    bool isDone = false;
    /// Whether the object got another key under another text of its identifier.
    bool isOverridden = false;
    bool isTold = false;
    /// Why the key is left out, and the object that has it, if another one has.
    std::optional<Reason> conflict = std::nullopt;
    CAEObject* holder = nullptr;
};

/// Finds the keys that are in conflict with the project (KeyChoice), and marks what becomes of them. Of
/// several texts for one identifier the last one counts; the others are marked as overridden. `keys` and
/// `outcomes` belong together. Returns whether there is any conflict.
bool FindConflicts(CAEProject& project, const std::vector<ResponseKey>& keys, const AnswerPlaces& places,
                   KeyChoice choice, std::vector<KeyOutcome>& outcomes);

/// One answer that is applied to one object.
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
    void FindTargets();
    void FindConflictsWithProject();
    void Apply();
    /// Marks the outcome of another text of the same identifier that came before; `counting` has those that
    /// count. FindConflicts has done it already.
    static void FindOverridden(KeyOutcome& outcome,
                               std::unordered_map<const CAEObject*, KeyOutcome*>& counting);
    bool GoesOn(std::size_t done);

    void TellOfNodes();
    void TellOfNode(const JSONNode& node, const AnswerPlace& place);
    void TellOfKey(const JSONNode& node, const AnswerPlace& place, std::string_view id, std::string_view key);
    void TellOfChange(const AnswerPlace& place, std::string_view id, const KeyOutcome& outcome,
                      std::string_view key);
    void TellOfConflict(const AnswerPlace& place, const KeyOutcome& outcome, std::string_view key);
    void TellOfOtherParent(const JSONNode& node, const AnswerPlace& place);
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
    std::vector<KeyOutcome> outcomes_;
    /// Unless all keys are set.
    std::optional<AnswerPlaces> places_;
    bool hasConflict_ = false;
    std::size_t rootIndex_ = 0;
    std::size_t nodeCount_ = 0;
};

}  // namespace korvane::exchange

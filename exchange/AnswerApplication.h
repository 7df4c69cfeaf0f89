#pragma once

// The suite's headers first: the public headers include OuString's only under its usual name.
// clang-format off
#include "objectjson/ObjectModel.h"
#include <korvaneexchange/ApplyAnswer.h>
// clang-format on

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

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
};

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

}  // namespace korvane::exchange

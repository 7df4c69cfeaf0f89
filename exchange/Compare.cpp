#include <korvaneexchange/Compare.h>

#include <optional>
#include <utility>

#include "Alignment.h"
#include "CarriedTree.h"
#include "Comparison.h"
#include "DistinctTexts.h"

using format::Kind;

namespace korvane::exchange {
namespace {

/// How many nodes are looked at between two calls of the callback.
constexpr std::size_t kNodesPerCall = 1000;

/// The callback stopped the work.
struct IsStopped {};

/// Calls the callback now and then.
class Steps {
public:
    explicit Steps(const ProgressCallback& callback) : callback_(callback) { Call(); }

    /// One node of either was read.
    void CountRead() {
        ++progress_.objects;
        Step();
    }
    /// All were read: now each is compared.
    void EndReading() {
        progress_.total = 2 * progress_.objects;
        Call();
    }
    /// One node was aligned.
    void Step() {
        if (++steps_ % kNodesPerCall == 0) {
            Call();
        }
    }
    void CountCompared(std::size_t nodes) {
        progress_.objects += nodes;
        Step();
    }

private:
    void Call() {
        if (callback_ != nullptr && !callback_(progress_)) {
            throw IsStopped();
        }
    }

    const ProgressCallback& callback_;
    Progress progress_;
    std::size_t steps_ = 0;
};

/// An object or a document.
struct Input {
    CAEObject* object = nullptr;
    const JSONNode* document = nullptr;
};

/// The kind of a document's root. Where the other one is an object whose type is the same, its kind says what
/// the type stands for.
Kind RootKind(const JSONNode& document, const CarriedTree& other, const DistinctTexts& texts) {
    const std::string type = RootType(document);
    if (other.object != nullptr && texts.TextOf(other.nodes.front().type) == type) {
        return other.nodes.front().kind;
    }
    return KindOfRoot(type);
}

class ComparisonRun {
public:
    ComparisonRun(const CompareOptions& options, CompareReport& report)
        : options_(options), report_(report), steps_(options.progress) {}

    void Run(const Input& first, const Input& second);

private:
    void Read(const Input& input, const CarriedTree& other, CarriedTree& tree);

    const CompareOptions& options_;
    CompareReport& report_;
    Steps steps_;
    DistinctTexts texts_;
    CarriedTree first_;
    CarriedTree second_;
};

void ComparisonRun::Read(const Input& input, const CarriedTree& other, CarriedTree& tree) {
    const CountNode count = [this] { steps_.CountRead(); };
    if (input.object != nullptr) {
        ReadTree(*input.object, texts_, count, tree);
    } else {
        ReadDocumentTree(*input.document, RootKind(*input.document, other, texts_), texts_, count, tree);
    }
}

void ComparisonRun::Run(const Input& first, const Input& second) {
    // An object's kind may say what the other root is.
    if (first.object == nullptr && second.object != nullptr) {
        Read(second, first_, second_);
        Read(first, second_, first_);
    } else {
        Read(first, second_, first_);
        Read(second, first_, second_);
    }
    steps_.EndReading();
    const Alignment alignment(first_, second_, [this] { steps_.Step(); });
    Comparison comparison(first_, second_, texts_, alignment, options_, report_);
    std::size_t firstLeft = first_.size();
    for (NodeIndex node = 0; node < second_.size(); ++node) {
        comparison.CompareNode(node);
        const std::size_t firstThen =
            first_.size() - first_.size() * (node + std::size_t{1}) / second_.size();
        steps_.CountCompared(1 + firstLeft - firstThen);
        firstLeft = firstThen;
    }
}

CompareReport Compare(const Input& first, const Input& second, const CompareOptions& options) {
    CompareReport report;
    try {
        ComparisonRun(options, report).Run(first, second);
    } catch (const IsStopped&) {
        report.isStopped = true;
    }
    return report;
}

}  // namespace

CompareReport Compare(CAEObject& first, CAEObject& second, const CompareOptions& options) {
    return Compare(Input{&first, nullptr}, Input{&second, nullptr}, options);
}

CompareReport Compare(CAEObject& first, const JSONNode& second, const CompareOptions& options) {
    return Compare(Input{&first, nullptr}, Input{nullptr, &second}, options);
}

CompareReport Compare(const JSONNode& first, CAEObject& second, const CompareOptions& options) {
    return Compare(Input{nullptr, &first}, Input{&second, nullptr}, options);
}

CompareReport Compare(const JSONNode& first, const JSONNode& second, const CompareOptions& options) {
    return Compare(Input{nullptr, &first}, Input{nullptr, &second}, options);
}

}  // namespace korvane::exchange

#include <algorithm>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "AnswerApplication.h"
#include "TreeIndex.h"

namespace korvane::exchange {
namespace {

/// The objects and files of a project by their keys, view items by their own.
class KeyHolders {
public:
    explicit KeyHolders(CAEProject& project);

    const std::vector<CAEObject*>& Of(std::string_view key) const {
        static const std::vector<CAEObject*> kNobody;
        const auto found = holders_.empty() ? holders_.end() : holders_.find(std::string(key));
        return found == holders_.end() ? kNobody : found->second;
    }

private:
    /// Adds an object that has a key, and a file once, which may be in several places.
    void Add(CAEObject& object, std::unordered_set<const CAEObject*>& known);

    std::unordered_map<std::string, std::vector<CAEObject*>> holders_;
};

KeyHolders::KeyHolders(CAEProject& project) {
    CAEObject* top = &project;
    while (CAEObject* const above = top->getParent()) {
        top = above;
    }
    std::unordered_set<const CAEObject*> known;
    std::vector<CAEObject*> open = {top};
    while (!open.empty()) {
        CAEObject& object = *open.back();
        open.pop_back();
        Add(object, known);
        for (CAEFile* const file : FilesOf(object)) {
            Add(*file, known);
        }
        const std::vector<CAEObject*> children = ChildrenOf(object);
        open.insert(open.end(), children.begin(), children.end());
    }
}

void KeyHolders::Add(CAEObject& object, std::unordered_set<const CAEObject*>& known) {
    if (const OuString key = object.getDBKey(); !IsEmpty(key) && known.insert(&object).second) {
        holders_[AnsiFormOf(key)].push_back(&object);
    }
}

/// The objects that get another key, and what speaks against it.
class KeyMoves {
public:
    explicit KeyMoves(CAEProject& project) : project_(project) {}

    /// `newKey` must stay valid.
    void Add(KeyOutcome& outcome, std::string_view newKey) {
        moves_.push_back({&outcome, newKey});
        if (!IsEmpty(outcome.oldKey)) {
            moveOfHolder_.emplace(outcome.target, &outcome);
        }
    }
    /// No two objects have one key afterwards, unless they have it now.
    void FindKeysInUse();

private:
    struct Move {
        KeyOutcome* outcome;
        std::string_view newKey;
    };

    CAEObject* HolderThatStays(const KeyHolders& all, std::string_view key) const;
    /// An object that gets no other key keeps its own, so that no other one can get that.
    void Refuse(KeyOutcome& outcome, CAEObject& holder);

    CAEProject& project_;
    std::vector<Move> moves_;
    std::unordered_map<const CAEObject*, KeyOutcome*> moveOfHolder_;
    std::unordered_map<std::string_view, KeyOutcome*> takers_;
};

CAEObject* KeyMoves::HolderThatStays(const KeyHolders& all, std::string_view key) const {
    const std::vector<CAEObject*>& holders = all.Of(key);
    const auto found = std::ranges::find_if(holders, [this](const CAEObject* holder) {
        const auto move = moveOfHolder_.find(holder);
        return move == moveOfHolder_.end() || move->second->conflict;
    });
    return found == holders.end() ? nullptr : *found;
}

void KeyMoves::Refuse(KeyOutcome& outcome, CAEObject& holder) {
    KeyOutcome* refused = &outcome;
    CAEObject* has = &holder;
    while (refused != nullptr && !refused->conflict) {
        refused->conflict = Reason::kKeyInUse;
        refused->holder = has;
        has = refused->target;
        const auto taker = takers_.find(std::string_view(AnsiFormOf(refused->oldKey)));
        refused = taker == takers_.end() ? nullptr : taker->second;
    }
}

void KeyMoves::FindKeysInUse() {
    if (moves_.empty()) {
        return;
    }
    const KeyHolders holders(project_);
    takers_.reserve(moves_.size());
    for (const Move& move : moves_) {
        if (!move.newKey.empty()) {
            takers_.emplace(move.newKey, move.outcome);
        }
    }
    for (const Move& move : moves_) {
        if (move.newKey.empty()) {
            continue;
        }
        KeyOutcome& first = *takers_.at(move.newKey);
        if (&first != move.outcome) {
            Refuse(*move.outcome, *first.target);
        } else if (CAEObject* const holder = HolderThatStays(holders, move.newKey)) {
            Refuse(*move.outcome, *holder);
        }
    }
}

}  // namespace

bool FindConflicts(CAEProject& project, const std::vector<ResponseKey>& keys, const AnswerPlaces& places,
                   KeyChoice choice, std::vector<KeyOutcome>& outcomes) {
    std::unordered_set<const CAEObject*> known;
    known.reserve(outcomes.size());
    KeyMoves moves(project);
    for (std::size_t index = outcomes.size(); index-- > 0;) {
        KeyOutcome& outcome = outcomes[index];
        if (outcome.target == nullptr) {
            continue;
        }
        if (!known.insert(outcome.target).second) {
            outcome.isOverridden = true;
            continue;
        }
        outcome.oldKey = outcome.target->getDBKey();
        if (places.IsMisplaced(*outcome.target)) {
            outcome.conflict = Reason::kOtherParent;
        } else if (AreEqual(outcome.oldKey, TextFromAnsi(keys[index].Key()))) {
            continue;
        } else if (!IsEmpty(outcome.oldKey) && choice != KeyChoice::kReplacing) {
            outcome.conflict = Reason::kOtherKey;
        } else {
            moves.Add(outcome, keys[index].Key());
        }
    }
    moves.FindKeysInUse();
    return std::ranges::any_of(outcomes,
                               [](const KeyOutcome& outcome) { return outcome.conflict.has_value(); });
}

}  // namespace korvane::exchange

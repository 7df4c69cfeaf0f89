#include <algorithm>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "AnswerApplication.h"
#include "TreeIndex.h"

namespace korvane::exchange {
namespace {

/// The objects and files of a project by their keys, view items by their own.
class KeyHolders {
public:
    explicit KeyHolders(CAEProject& project);

    const std::vector<CAEObject*>& Of(const std::string& key) const {
        static const std::vector<CAEObject*> kNobody;
        const auto found = holders_.find(key);
        return found == holders_.end() ? kNobody : found->second;
    }

private:
    void Add(CAEObject& object);

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
        // A file may be attached to several objects, and be a child as well.
        if (known.insert(&object).second) {
            Add(object);
        }
        for (CAEFile* const file : FilesOf(object)) {
            if (known.insert(file).second) {
                Add(*file);
            }
        }
        const std::vector<CAEObject*> children = ChildrenOf(object);
        open.insert(open.end(), children.begin(), children.end());
    }
}

void KeyHolders::Add(CAEObject& object) {
    if (const OuString key = object.getDBKey(); !IsEmpty(key)) {
        holders_[AnsiFormOf(key)].push_back(&object);
    }
}

/// The objects that get another key, and what speaks against it.
class KeyMoves {
public:
    explicit KeyMoves(CAEProject& project) : holders_(project) {}

    void Add(KeyOutcome& outcome, std::string newKey) {
        moves_.push_back({&outcome, std::move(newKey)});
        moveOf_.emplace(outcome.target, &outcome);
    }
    /// No two objects have one key afterwards, unless they have it now.
    void FindKeysInUse();

private:
    struct Move {
        KeyOutcome* outcome;
        std::string newKey;
    };

    CAEObject* HolderThatStays(const std::string& key) const;
    /// An object that gets no other key keeps its own, so that no other one can get that.
    void Refuse(KeyOutcome& outcome, CAEObject& holder);

    KeyHolders holders_;
    std::vector<Move> moves_;
    std::unordered_map<const CAEObject*, KeyOutcome*> moveOf_;
    std::unordered_map<std::string, KeyOutcome*> takers_;
};

CAEObject* KeyMoves::HolderThatStays(const std::string& key) const {
    const std::vector<CAEObject*>& holders = holders_.Of(key);
    const auto found = std::ranges::find_if(holders, [this](const CAEObject* holder) {
        const auto move = moveOf_.find(holder);
        return move == moveOf_.end() || move->second->conflict;
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
        const auto taker = takers_.find(AnsiFormOf(refused->oldKey));
        refused = taker == takers_.end() ? nullptr : taker->second;
    }
}

void KeyMoves::FindKeysInUse() {
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
        } else if (CAEObject* const holder = HolderThatStays(move.newKey)) {
            Refuse(*move.outcome, *holder);
        }
    }
}

}  // namespace

bool FindConflicts(CAEProject& project, const std::vector<ResponseKey>& keys, const AnswerPlaces& places,
                   KeyChoice choice, std::vector<KeyOutcome>& outcomes) {
    std::unordered_set<const CAEObject*> known;
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
        const OuString newKey = TextFromAnsi(keys[index].Key());
        if (places.IsMisplaced(*outcome.target)) {
            outcome.conflict = Reason::kOtherParent;
        } else if (AreEqual(outcome.oldKey, newKey)) {
            continue;
        } else if (!IsEmpty(outcome.oldKey) && choice != KeyChoice::kReplacing) {
            outcome.conflict = Reason::kOtherKey;
        } else {
            moves.Add(outcome, std::string(keys[index].Key()));
        }
    }
    moves.FindKeysInUse();
    return std::ranges::any_of(outcomes,
                               [](const KeyOutcome& outcome) { return outcome.conflict.has_value(); });
}

}  // namespace korvane::exchange

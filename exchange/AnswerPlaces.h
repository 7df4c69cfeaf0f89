#pragma once

#include <libjson.h>

#include <cstddef>
#include <unordered_set>
#include <vector>

#include "objectjson/ObjectModel.h"

namespace korvane::exchange {

/// Whether a node of an answer is where its object is in the project.
enum class NodeFit : unsigned char {
    /// It is, or nothing says where it should be: it or the node above it has no identifier, there is no
    /// object with its identifier, or it is a root.
    kFits,
    kMisplaced,
    kBelowMisplaced,
};

/// Compares the places of all nodes of an answer with those of their objects.
class AnswerPlaces {
public:
    AnswerPlaces(const JSONNode& answer, CAEProject& project);

    /// `number` counts all nodes in the order of WalkNodes with SectionOrder::FirstOfEach.
    NodeFit FitOf(std::size_t number) const { return fits_[number]; }
    /// Whether any node with the object's identifier does not fit.
    bool IsMisplaced(const CAEObject& object) const { return misplaced_.contains(&object); }

private:
    /// The root and all below it.
    void AddTree(const JSONNode& root, CAEProject& project);

    std::vector<NodeFit> fits_;
    std::unordered_set<const CAEObject*> misplaced_;
};

}  // namespace korvane::exchange

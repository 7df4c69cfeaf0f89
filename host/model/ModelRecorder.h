#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "IdentifierSet.h"
#include "SolverModel.h"

namespace host {

/// Counts what a reading finds, and hands it on to the sink.
class ModelRecorder {
public:
    explicit ModelRecorder(SolverModelSink* sink);
    ModelRecorder(const ModelRecorder&) = delete;
    ModelRecorder& operator=(const ModelRecorder&) = delete;

    /// Whether anybody wants to know where nodes are.
    bool WantsPositions() const { return sink_ != nullptr; }

    /// Identifiers must be positive.
    void AddNode(std::int64_t id, const Position& position);
    /// LS-DYNA numbers solids, shells and beams each for themselves: `numbering` tells them apart.
    void AddElement(const ModelElement& element, std::size_t numbering = 0);
    static constexpr std::size_t kNumberings = 8;
    /// Names are compared without regard to case.
    void AddMaterial(std::string_view name);
    void AddStep();
    /// Two statements that differ say nothing, and neither does an empty text.
    void AddUnits(const std::string& units);

    void BeginPart(std::string_view name);
    void EndPart();
    /// Returns false if there is no such part.
    bool BeginInstance(std::string_view part, const Placement& placement);
    void EndInstance();

    /// The reason of the first call is the one that the model has.
    void CannotCountNodes(const std::string& reason);
    void CannotCountElements(const std::string& reason);
    void CannotCount(const std::string& reason);
    void CannotPlace(const std::string& reason);

    SolverModel Finish();

private:
    /// Nodes and elements that share their numbers.
    struct Numbers {
        IdentifierSet nodes;
        std::array<IdentifierSet, kNumberings> elements;
        /// Of the part of an instance.
        std::uint64_t nodesOfPart = 0;
        std::uint64_t elementsOfPart = 0;

        std::uint64_t CountNodes() const { return nodes.Count() + nodesOfPart; }
        std::uint64_t CountElements() const;
    };

    SolverModelSink* sink_;
    SolverModel model_;
    bool areNodesUncertain_ = false;
    bool areElementsUncertain_ = false;
    bool areUnitsUncertain_ = false;
    std::unordered_set<std::string> materials_;
    Numbers whole_;
    std::unordered_map<std::string, std::unique_ptr<Numbers>> parts_;
    std::unique_ptr<Numbers> instance_;
    Numbers* current_ = &whole_;
    bool hasInstances_ = false;
    std::uint64_t nodesOfInstances_ = 0;
    std::uint64_t elementsOfInstances_ = 0;
};

}  // namespace host

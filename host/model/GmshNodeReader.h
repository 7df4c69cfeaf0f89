#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "GmshNumbers.h"
#include "ModelRecorder.h"

namespace host {

/// The section with the nodes of a Gmsh file.
class GmshNodeReader {
public:
    GmshNodeReader(GmshNumbers& numbers, ModelRecorder& model) : numbers_(numbers), model_(model) {}

    /// A node on each line.
    void ReadLines();
    /// Blocks of them.
    void ReadBlocks();

private:
    bool ReadBlock(std::int64_t& count);
    bool ReadNumbers(std::int64_t count);
    bool ReadPlace(Position& position);
    void AddNode(std::int64_t id, const Position& position);
    void Lacks(const std::string& what) { model_.CannotCountNodes(numbers_.Place() + ": " + what); }

    GmshNumbers& numbers_;
    ModelRecorder& model_;
    /// Of a block.
    std::vector<std::int64_t> ids_;
};

}  // namespace host

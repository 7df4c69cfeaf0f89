#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "GmshElements.h"
#include "GmshNumbers.h"
#include "ModelRecorder.h"

namespace host {

/// The section with the elements of a Gmsh file.
class GmshElementReader {
public:
    GmshElementReader(GmshNumbers& numbers, ModelRecorder& model) : numbers_(numbers), model_(model) {}

    /// An element on each line, or in bytes some of one type behind each other.
    void ReadLines();
    /// Blocks of them.
    void ReadBlocks();

private:
    bool ReadLine();
    bool ReadElementsOfOneType(std::int64_t most, std::int64_t& count);
    bool ReadBlock(std::int64_t& count);
    bool ReadElement(std::int64_t id, const GmshElement* element);
    bool SkipIntegers(std::int64_t count);
    void Lacks(const std::string& what) { model_.CannotCountElements(numbers_.Place() + ": " + what); }

    GmshNumbers& numbers_;
    ModelRecorder& model_;
    /// Of an element.
    std::vector<std::int64_t> nodes_;
    std::vector<std::int64_t> ordered_;
};

}  // namespace host

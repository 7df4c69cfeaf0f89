#include "GmshNodeReader.h"

#include <algorithm>

#include "GmshBlocks.h"
#include "Numbers.h"
#include "host/system/Text.h"

namespace host {

bool GmshNodeReader::ReadPlace(Position& position) {
    return numbers_.Real(position[0]) && numbers_.Real(position[1]) && numbers_.Real(position[2]);
}

void GmshNodeReader::AddNode(std::int64_t id, const Position& position) {
    if (id <= 0 || !std::ranges::all_of(position, IsCoordinate)) {
        Lacks("the node " + std::to_string(id) + " has no number, or is at no place");
        return;
    }
    model_.AddNode(id, position);
}

void GmshNodeReader::ReadLines() {
    std::int64_t stated = 0;
    if (!numbers_.NextLine() || !numbers_.Integer(stated)) {
        Lacks("the number of nodes is missing");
        return;
    }
    std::int64_t count = 0;
    for (; count < stated && numbers_.NextRecord(); ++count) {
        std::int64_t id = 0;
        Position position{};
        if (numbers_.Id(id) && ReadPlace(position)) {
            AddNode(id, position);
        } else {
            Lacks("it is not a node");
            if (numbers_.HasBytes()) {
                return;
            }
        }
    }
    if (count < stated) {
        Lacks("there are " + std::to_string(count) + " of " +
              FormatCount(static_cast<std::uint64_t>(stated), "node", "nodes"));
    }
}

void GmshNodeReader::ReadBlocks() {
    ReadGmshBlocks(
        numbers_, "nodes", [this](std::int64_t& count) { return ReadBlock(count); },
        [this](const std::string& what) { Lacks(what); });
}

bool GmshNodeReader::ReadNumbers(std::int64_t count) {
    ids_.clear();
    for (std::int64_t node = 0; node < count; ++node) {
        std::int64_t id = 0;
        if (!numbers_.NextRecord() || !numbers_.Id(id)) {
            return false;
        }
        // Not reserved: what the file says may be more than it has.
        ids_.push_back(id);
    }
    return true;
}

/// All numbers of the nodes come before all of their places. Returns false if it cannot be said what comes
/// next.
bool GmshNodeReader::ReadBlock(std::int64_t& count) {
    std::int64_t dimension = 0;
    std::int64_t entity = 0;
    std::int64_t hasParameters = 0;
    std::int64_t nodes = 0;
    if (!numbers_.NextRecord() || !numbers_.Integer(dimension) || !numbers_.Integer(entity) ||
        !numbers_.Integer(hasParameters) || !numbers_.Size(nodes) || dimension < 0 || dimension > 3 ||
        nodes < 0) {
        return false;
    }
    if (!ReadNumbers(nodes)) {
        return false;
    }
    for (const std::int64_t id : ids_) {
        Position position{};
        if (!numbers_.NextRecord()) {
            return false;
        }
        if (ReadPlace(position)) {
            AddNode(id, position);
        } else if (numbers_.HasBytes()) {
            return false;
        } else {
            Lacks("it is not the place of a node");
        }
        double parameter = 0;
        for (std::int64_t index = 0; numbers_.HasBytes() && hasParameters != 0 && index < dimension;
             ++index) {
            numbers_.Real(parameter);
        }
        ++count;
    }
    return true;
}

}  // namespace host

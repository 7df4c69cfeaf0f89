#pragma once

#include <cstdint>
#include <string>

#include "GmshNumbers.h"

namespace host {

/// Reads a section of blocks, one for each point, curve, surface or volume of the geometry. `readBlock` adds
/// to a count what it has read, and returns false if it cannot be said what comes next. `lacks` is told what
/// is missing; `things` are what the blocks have.
template <typename ReadBlock, typename Lacks>
void ReadGmshBlocks(GmshNumbers& numbers, const std::string& things, const ReadBlock& readBlock,
                    const Lacks& lacks) {
    std::int64_t blocks = 0;
    std::int64_t stated = 0;
    if (!numbers.NextRecord() || !numbers.Size(blocks) || !numbers.Size(stated) || !numbers.SkipRange()) {
        lacks("the number of " + things + " is missing");
        return;
    }
    std::int64_t count = 0;
    for (std::int64_t block = 0; block < blocks; ++block) {
        if (!readBlock(count)) {
            lacks("it is not a block of " + things);
            return;
        }
    }
    if (count != stated) {
        lacks("the number of " + things + " is not that of its beginning");
    }
}

}  // namespace host

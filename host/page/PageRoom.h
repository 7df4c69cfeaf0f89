#pragma once

#include <cstdint>

namespace host {

/// Room for what is embedded into a page.
struct PageRoom {
    std::uint64_t bytes = 0;

    /// Takes the bytes away if they are there.
    bool Take(std::uint64_t size) {
        if (size > bytes) {
            return false;
        }
        bytes -= size;
        return true;
    }
};

}  // namespace host

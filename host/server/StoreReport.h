#pragma once

#include <cstddef>
#include <string>

#include "host/system/Console.h"
#include "host/system/Notes.h"

namespace host {

/// What storing a document did.
struct StoreReport {
    /// Object nodes of the document, and its files: one that is attached to several objects counts once.
    std::size_t objects = 0;
    std::size_t files = 0;
    /// Of both, those that the database did not know before.
    std::size_t newKeys = 0;
    /// Children and files that an object had before and does not have in the document.
    std::size_t detached = 0;
    /// Whether the database had an older format.
    bool isCarriedOver = false;
    Notes notes;

    void Say(const std::string& what, Console& console) const;
};

}  // namespace host

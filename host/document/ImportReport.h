#pragma once

#include <cstddef>
#include <string>

#include "host/system/Console.h"
#include "host/system/Notes.h"

namespace host {

/// What an import did.
struct ImportReport {
    /// Objects that are not files.
    std::size_t objects = 0;
    std::size_t files = 0;
    /// Of the files, those that are attached to an object, and those that are children of one.
    std::size_t attachedFiles = 0;
    std::size_t childFiles = 0;
    std::size_t keys = 0;
    std::size_t viewItems = 0;
    /// Of the view items, those that show an object.
    std::size_t linkedViewItems = 0;
    /// What was left out or changed.
    Notes notes;

    /// Says all of it; every line begins with `what`, the name of what was changed.
    void Say(const std::string& what, Console& console) const;
};

}  // namespace host

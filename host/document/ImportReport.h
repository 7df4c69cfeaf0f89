#pragma once

#include <cstddef>
#include <string>

#include "host/system/Console.h"
#include "host/system/Notes.h"

namespace host {

/// What an import did.
struct ImportReport {
    /// Objects that are no files.
    std::size_t objects = 0;
    std::size_t files = 0;
    /// Of the files, those that are attached to an object, and those that are children of one.
    std::size_t attachedFiles = 0;
    std::size_t childFiles = 0;
    std::size_t keys = 0;
    std::size_t viewItems = 0;
    /// Of the view items, those that show an object now.
    std::size_t linkedViewItems = 0;
    /// What was left out or changed on the way.
    Notes notes;

    /// Says it all, the first line beginning with the name of what was changed.
    void Say(const std::string& what, Console& console) const;
};

}  // namespace host

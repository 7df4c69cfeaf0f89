#pragma once

#include <CAEProject.h>
#include <libjson.h>

#include <cstddef>
#include <string>

#include "host/system/Console.h"
#include "host/system/Notes.h"

/// Applying the answers of the data-management server, with a report: the library passes over what it cannot
/// use in silence.
namespace host {

/// What an answer did.
struct AnswerReport {
    /// Objects and files whose key is another one now, and those that had theirs already.
    std::size_t keysSet = 0;
    std::size_t keysKept = 0;
    /// Whether the answer named the project.
    bool hasName = false;
    Notes notes;

    /// Says it all, the first line beginning with the name of what was changed.
    void Say(const std::string& what, Console& console) const;
};

/// Whether the answer is an object node or an array of such, so that keys can be in it. Where it is not, the
/// message says so.
bool IsAnswer(const JSONNode& answer, const std::string& file, Console& console);

/// Writes the keys of the answer onto the objects of the project. Members "dbkey" that are null are taken out
/// first.
void ApplyAnswer(JSONNode answer, CAEProject& project, AnswerReport& report, Console& console);

}  // namespace host

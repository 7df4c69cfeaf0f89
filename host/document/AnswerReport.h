#pragma once

#include <CAEProject.h>
#include <libjson.h>

#include <cstddef>
#include <string>

#include "host/system/Console.h"
#include "host/system/Notes.h"

/// Applying the answers of the data-management server, with a report of what the library silently ignores.
namespace host {

/// What an answer did.
struct AnswerReport {
    /// Objects and files whose key has changed, and those that had the same key before.
    std::size_t keysSet = 0;
    std::size_t keysKept = 0;
    /// Whether the answer has a name, which becomes the display name of the project.
    bool hasName = false;
    Notes notes;

    /// Says all of it; every line begins with `what`, the name of what was changed.
    void Say(const std::string& what, Console& console) const;
};

/// Whether the answer is an object or an array, so that it can have keys. If not, a message says so.
bool IsAnswer(const JSONNode& answer, const std::string& file, Console& console);

/// Sets the keys from the answer on the objects of the project. Members "dbkey" that are null are removed
/// first. If no key is for an object of the project, this changes nothing, not even the display name, and
/// returns false: whatever it is, it is not the answer to a document of this project.
bool ApplyAnswer(JSONNode answer, CAEProject& project, AnswerReport& report, Console& console);

/// Says what an answer seems to be of which ApplyAnswer used nothing.
void SayUseless(JSONNode answer, const std::string& file, Console& console);

}  // namespace host

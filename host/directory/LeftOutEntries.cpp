#include "LeftOutEntries.h"

#include "host/system/Text.h"

namespace host {

using std::filesystem::path;

void LeftOutEntries::AddUnreadable(const path& entry, const std::string& reason) {
    ++tree_.unreadableCount;
    tree_.unreadable.push_back(entry);
    console_.Say(Quoted(entry) + " cannot be read and is left out: " + reason);
}

void LeftOutEntries::AddUnwritable(const path& entry) {
    ++tree_.unreadableCount;
    console_.Say(Quoted(entry) +
                 " is left out: in a document a backslash separates directories. Rename it to keep it");
}

void LeftOutEntries::AddLinkOut(const path& link, const path& target) {
    console_.Note(Quoted(link) + " is left out: it is a link out of the project, to " + Quoted(target) +
                  ". Copy its target into the project if it belongs there");
}

void LeftOutEntries::AddMeant(const path& entry, std::string_view reason) {
    if (console_.IsVerbose()) {
        console_.Detail(Quoted(entry) + " is left out: " + std::string(reason));
    }
}

}  // namespace host

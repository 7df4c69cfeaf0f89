#include "ImportReport.h"

#include "host/system/Text.h"

namespace host {

void ImportReport::Say(const std::string& what, Console& console) const {
    std::string line = what + ": " + FormatCount(objects, "object", "objects") + " and " +
                       FormatCount(files, "file", "files") + " created, " + std::to_string(attachedFiles) +
                       " of the files attached";
    if (childFiles > 0) {
        line += " and " + std::to_string(childFiles) + " as children";
    }
    line += ", " + FormatCount(keys, "key", "keys") + " set";
    if (viewItems > 0) {
        line += ", " + std::to_string(linkedViewItems) + " of " +
                FormatCount(viewItems, "view item", "view items") + " linked";
    }
    console.Say(line);
    notes.Say(what, console);
}

}  // namespace host

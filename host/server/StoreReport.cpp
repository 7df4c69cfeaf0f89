#include "StoreReport.h"

#include "host/system/Text.h"

namespace host {

void StoreReport::Say(const std::string& what, Console& console) const {
    if (isCarriedOver) {
        console.Note(
            what +
            ": carried over to a new format with all its keys; older versions of korvane-json cannot "
            "read it any more");
    }
    const std::string detachedOnes =
        detached == 0 ? ""
                      : ", and " + std::to_string(detached) + " detached that the document no longer has";
    console.Note(what + ": " + FormatCount(objects, "object", "objects") + " and " +
                 FormatCount(files, "file", "files") + " stored, " + std::to_string(newKeys) +
                 " of them under new keys" + detachedOnes);
    notes.Say(what, console);
}

}  // namespace host

#include "StoreReport.h"

#include "host/system/Text.h"

namespace host {

void StoreReport::Say(const std::string& what, Console& console) const {
    console.Say(what + ": " + FormatCount(objects, "object", "objects") + " and " +
                FormatCount(files, "file", "files") + " stored, " + std::to_string(newKeys) +
                " of them under new keys" +
                (parted == 0 ? ""
                             : ", " + std::to_string(parted) +
                                   " no longer part of what they belonged to, because the document has them "
                                   "no more"));
    notes.Say(what, console);
}

}  // namespace host

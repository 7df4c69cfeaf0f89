#include "IncludedFile.h"

#include "host/system/Text.h"

namespace host {

bool IncludeFile(const std::string& name, InputLines& lines, ModelRecorder& model) {
    const bool isIncluded = lines.Include(name);
    if (!isIncluded && lines.StopReason().empty()) {
        model.CannotCount(lines.Place() + ": " + Quoted(name) + " is included, but cannot be read");
    }
    return isIncluded;
}

}  // namespace host

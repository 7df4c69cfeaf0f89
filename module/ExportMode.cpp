#include "ExportMode.h"

namespace {
OuString moduleExportMode;
}  // namespace

OuString& ModuleExportMode() noexcept {
    return moduleExportMode;
}

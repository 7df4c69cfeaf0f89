#include "objectjson/ExportMode.h"

/// Each call of this library has its mode with it. The converters ask for the module's, which stays empty
/// here.
OuString& ModuleExportMode() noexcept {
    static OuString mode;
    return mode;
}

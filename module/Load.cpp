#include <libjson.h>

#include <cstdlib>

#include "ModuleInformation.h"
#include "objectjson/ExportMode.h"

namespace {

// All that is made when the library is loaded, in this order, and released in the reverse order.

const ModuleTexts moduleTexts;

OuString moduleExportMode;

/// Documents are allocated with the functions of the library's own runtime, whatever was registered before.
struct AllocationFunctions {
    AllocationFunctions() { libjson::register_memory_callbacks(std::malloc, std::realloc, std::free); }
};
const AllocationFunctions allocationFunctions;

}  // namespace

const ModuleTexts& LoadedModuleTexts() noexcept {
    return moduleTexts;
}

OuString& ModuleExportMode() noexcept {
    return moduleExportMode;
}

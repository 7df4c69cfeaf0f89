#include <korvanejson/Module.h>

#include "ModuleInformation.h"

void KorvaneJsonInitialize() {}

void KorvaneJsonTerminate() {}

const char* KorvaneJson_get_module_info(int selector) {
    return ModuleInformation(selector);
}

void __localFnToKeepKorvaneJsonDllLoaded() {}

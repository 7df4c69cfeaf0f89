#pragma once

#include "Export.h"

/// @file
/// The library as a module of the suite: what the host's module loader asks of every library that it loads,
/// by these names, from the export table.
///
/// The library stays loaded until the process ends: FreeLibrary and dlclose leave it where it is. None of the
/// functions throws, none keeps a state, and all may be called on any thread, as often as one likes.

/// What KorvaneJson_get_module_info tells for a selector; every value without a name here means the banner.
enum KorvaneJsonModuleInfo : int {
    /// "Dynamic linked library".
    KORVANEJSON_MODULE_KIND = 0,
    /// The release number, a dot, and the first 11 hexadecimal digits of the revision: "0.1.0.02fb09e8d41".
    KORVANEJSON_MODULE_VERSION = 1,
    /// One line for people: name, version, web address, build host, build date and time, rights notice.
    KORVANEJSON_MODULE_BANNER = 2,
};

extern "C" {

/// Does nothing: everything is ready when the library is loaded. May be left uncalled.
KORVANEJSON_API void KorvaneJsonInitialize();

/// Does nothing: nothing is released before the process ends. The library goes on working after it.
KORVANEJSON_API void KorvaneJsonTerminate();

/// A constant text about the module, in ASCII, which lives as long as the process and is never null. Takes
/// every value; see KorvaneJsonModuleInfo.
KORVANEJSON_API const char* KorvaneJson_get_module_info(int selector);

/// Does nothing. Its address is what the library pins itself by.
KORVANEJSON_API void __localFnToKeepKorvaneJsonDllLoaded();

}  // extern "C"

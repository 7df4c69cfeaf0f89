#pragma once

#include <OuString.h>

/// The module-wide export mode: empty from the loading of the library on, written by JsonSerializer::GetJson,
/// read by the export of children, and kept between calls.
OuString& ModuleExportMode() noexcept;

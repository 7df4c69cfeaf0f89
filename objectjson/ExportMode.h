#pragma once

#include "ObjectModel.h"

/// Which children an export writes, at every level.
enum class ExportMode {
    kEverything,
    /// Only files.
    kProject,
    /// Everything but iteration models.
    kStudy,
};

/// The mode with exactly this text, "PROJECT" or "STUDY"; kEverything for any other.
ExportMode ExportModeOfText(const OuString& text);

/// Whether the mode lets the child through. A null child is of no kind.
bool IsLetThrough(ExportMode mode, CAEObject* child);

/// The text of the module-wide export mode: empty from the loading of the library on, written by every
/// document of a JsonSerializer, read by every export, and kept between calls. The module has the variable.
OuString& ModuleExportMode() noexcept;

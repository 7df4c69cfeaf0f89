#pragma once

#include "PimuUtil.h"

/// Chooses what PimuIsDLLUnloadWarningEnabled answers. Hosts and tests call it; it may be called on any
/// thread.
PIMUUTIL_API void PimuSetDLLUnloadWarning(bool enabled);

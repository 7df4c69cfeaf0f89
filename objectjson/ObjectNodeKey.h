#pragma once

#include <string_view>

#include "format/Effects.h"

/// The key with exactly this name, byte for byte.
ObjectNodeKey ClassifyObjectNodeKey(std::string_view name);

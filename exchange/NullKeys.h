#pragma once

#include <libjson.h>

namespace korvane::exchange {

bool IsNullKey(const JSONNode& value);
/// Whether a node of the document or answer has a "dbkey" that is null.
bool HasNullKeys(const JSONNode& document);

/// The document or answer without them. The one that is handed in is not changed.
JSONNode WithoutNullKeys(const JSONNode& document);

}  // namespace korvane::exchange

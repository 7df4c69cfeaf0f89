#pragma once

#include <OuString.h>

#include <string>

#include "Random.h"

/// Texts that occur in practice: plain ones, quotes and control characters, text beyond ASCII, bytes that
/// are not text, empty ones, long ones, and the few that have a meaning.

/// A text without NUL, in the code page.
std::string RandomText(Random& random);
/// One that may hold a NUL as well.
std::string RandomBytes(Random& random);
/// One as the object model may hold it, NUL and lone surrogates included.
OuString RandomWide(Random& random);

/// The database key of an object or an item, one of a few, so that some are found.
std::string RandomKey(Random& random);
/// The name of a metadata entry, often one that means something.
std::string RandomEntryName(Random& random);
/// The same as the object model may hold it: a NUL may follow.
OuString RandomWideEntryName(Random& random);
/// The name of a kind of object in a document, mostly one that is read.
std::string RandomTypeName(Random& random);
OuString RandomMode(Random& random);

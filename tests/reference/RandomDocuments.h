#pragma once

#include <libjson.h>

#include "Random.h"

/// Documents and answers of all shapes: sound ones, and sound ones with members missing, doubled, of the
/// wrong kind or unknown, arrays that are objects and objects that are arrays, elements with names, and
/// nesting without end.

/// An object node, mostly.
JSONNode RandomDocument(Random& random);
/// A section of an object node, mostly of the shape that it has; "children", "files", "metaData" or
/// "versions".
JSONNode RandomSection(Random& random, const char* name);
/// A file record, mostly.
JSONNode RandomFileRecord(Random& random);
/// A server's answer about objects with small identifiers, mostly.
JSONNode RandomAnswer(Random& random);
/// Any value at all.
JSONNode RandomValue(Random& random);

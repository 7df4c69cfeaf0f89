#pragma once

#include <string>
#include <vector>

#include "KorvaneExport.h"

/// The recording build of the object model: the same headers and the same work, and every operation of the
/// suite's interface first notes its name and arguments. Only the library KorvaneRecording has these
/// functions. It can also be told to answer oddly (EmbeddedOddAnswers.h).
///
/// A note reads `CAEObject::setName(#7, "frame")`: the object that is asked by its identifier, then the
/// arguments; texts in quotes (UTF-8), objects as `#identifier` or `null`, enumerations and numbers in
/// decimal, booleans as `true` and `false`; what is only filled in is left out. Free functions, static
/// operations and the constructor of files have just their arguments. The class is the one that declares the
/// operation: `CAEObjectIdentification::getID(#7)`. Operations that the object model calls on itself are not
/// noted. A recording belongs to the thread that started it.
namespace korvane {

/// Starts a recording and drops the notes of an earlier one.
KORVANE_API void StartRecording();
/// Ends the recording and returns its notes, in the order of the calls.
KORVANE_API std::vector<std::string> TakeRecording();

}  // namespace korvane

#pragma once

#include <string>
#include <vector>

#include "KorvaneExport.h"

class CAEObject;

/// The recording build of the object model: the same headers and the same work, and every operation of the
/// suite's interface first notes its name and arguments. Only the library KorvaneRecording has these
/// functions.
///
/// A note reads `CAEObject::setName(#7, "frame")`: the object that is asked by its identifier, then the
/// arguments; texts in quotes (UTF-8), objects as `#identifier` or `null`, enumerations and numbers in
/// decimal, booleans as `true` and `false`; what is only filled in is left out. Free functions, static
/// operations and the constructor of files have just their arguments. The class is the one that declares the
/// operation: `CAEObjectIdentification::getID(#7)`. Operations that the object
/// model calls on itself are not noted. A recording belongs to the thread that started it.
namespace korvane {

/// Starts a recording and drops the notes of an earlier one.
KORVANE_API void StartRecording();
/// Ends the recording and hands out its notes, in the order of the calls.
KORVANE_API std::vector<std::string> TakeRecording();

/// The next call of the operation that is noted throws std::bad_alloc, as it may when there is no memory, and
/// does nothing else. The operation is named as in its note: "CAEObject::setName". It must not be noexcept.
KORVANE_API void ThrowAtNext(const char* operation);

/// The next getPointerToVersion of this thread answers with this status and this pointer, whatever versions
/// there are: an object model may answer so that its callers cannot count on the two going together.
KORVANE_API void AnswerNextVersionWith(int status, const CAEObject* version);

}  // namespace korvane

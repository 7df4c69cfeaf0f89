#pragma once

#include <exception>
#include <optional>
#include <string>
#include <vector>

#include "CAETypes.h"
#include "KorvaneExport.h"

class CAEObject;

/// The recording build of the object model can be told to answer as a correct object model never does, so
/// that tests see what its callers make of it. Only the library KorvaneRecording has this class.
namespace korvane {

/// What an operation answers in place of its own answer. Each operation takes what it has to return or to
/// fill in and ignores the rest; it changes nothing and fills in nothing else.
struct Answer {
    /// What an operation returns that returns a status. CAEObject::addChild, getMetadataType,
    /// getMetadataUnitString, getMetadataValue, getPointerToVersion and createNewVersion, createCAEObject,
    /// getMasterAssemblyCAEIDByITEMID.
    int status = 0;
    /// The identifier that is filled in; none leaves the caller's as it was. createCAEObject,
    /// getMasterAssemblyCAEIDByITEMID.
    std::optional<int> identifier = {};
    /// The kind that an object says it is of, whatever its class. CAEObject::getType.
    _tagCAEObjectType type = CAE_UNKNOWN_OBJECT;
    /// The object that is returned, or filled in as the version. CAEObject::getParent, getProject and
    /// getPointerToVersion, CAEProject::getCAEObject and getFile. Where the operation returns a project or a
    /// file and the object is not one, it is null.
    CAEObject* object = nullptr;
    /// The text that is returned. CAEObject::getTypeName, CAEGetFileTypeName.
    const char* text = nullptr;
    /// What is appended to the list of children. CAEObject::getChildrenList.
    std::vector<CAEObject*> children = {};
    /// The operation throws std::bad_alloc, as it may when there is no memory. Every operation that is noted
    /// and is not noexcept.
    bool throws = false;
    /// What an operation that throws throws instead of std::bad_alloc.
    std::exception_ptr exception = {};
    /// How many calls that fit are left to the operation before the answer is given.
    int after = 0;
};

/// Lets calls of an operation answer oddly for as long as it lives, in the thread that made it. Calls are
/// noted all the same, and need not be recorded.
///
///     const korvane::OddAnswer wrongKind("CAEObject::getType(#3)", {.type = CAE_PROJECT},
///                                      korvane::OddAnswer::kAlways);
///     const korvane::OddAnswer failure("CAEObject::getMetadataValue", {.status = 1});
class KORVANE_API OddAnswer {
public:
    enum class Times { kOnce, kAlways };
    using enum Times;

    /// The call is named as its note: `CAEObject::getType` for every call of the operation,
    /// `CAEObject::getType(#3)` for the calls with exactly these arguments, and nothing at all for every call
    /// of every operation, which can only throw. Where several answers fit a call, the one that was made
    /// first and is not used up is given. Throws std::invalid_argument for an operation that can only
    /// throw.
    OddAnswer(const char* call, Answer answer, Times times = kOnce);
    ~OddAnswer();
    OddAnswer(const OddAnswer&) = delete;
    OddAnswer& operator=(const OddAnswer&) = delete;

    /// How often the answer was given so far. Worth checking where an odd answer leaves no trace: a call that
    /// nobody makes is answered by nobody.
    int TimesGiven() const noexcept;
    /// How many calls that fit were left to the operation so far.
    int TimesLeftOut() const noexcept;

private:
    friend class Recorded;
    bool Fits(const std::string& note) const;

    const std::string call_;
    const Answer answer_;
    const Times times_;
    int timesLeftOut_ = 0;
    int timesGiven_ = 0;
};

}  // namespace korvane

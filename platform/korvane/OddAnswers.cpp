#include "OddAnswers.h"

#include <algorithm>
#include <array>
#include <new>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "EmbeddedOddAnswers.h"
#include "Recorded.h"

namespace korvane {
namespace {

/// The operations that ask their scope for an odd answer.
constexpr std::array<std::string_view, 16> kAnswering{
    "CAEGetFileTypeName",
    "CAEObject::addChild",
    "CAEObject::createNewVersion",
    "CAEObject::getChildrenList",
    "CAEObject::getMetadataType",
    "CAEObject::getMetadataUnitString",
    "CAEObject::getMetadataValue",
    "CAEObject::getParent",
    "CAEObject::getPointerToVersion",
    "CAEObject::getProject",
    "CAEObject::getType",
    "CAEObject::getTypeName",
    "CAEProject::getCAEObject",
    "CAEProject::getFile",
    "createCAEObject",
    "getMasterAssemblyCAEIDByITEMID",
};

/// Those of the thread, in the order in which they were made.
thread_local std::vector<OddAnswer*> oddAnswers;
/// A thread's first use needs memory for the end of the thread, and glibc aborts if there is none. The main
/// thread has it from the beginning.
[[maybe_unused]] const std::size_t countOfMainThread = oddAnswers.size();

std::string_view OperationOf(std::string_view note) {
    return note.substr(0, note.find('('));
}

}  // namespace

bool HasOddAnswers() noexcept {
    return !oddAnswers.empty();
}

OddAnswer::OddAnswer(const char* call, Answer answer, Times times)
    : call_(call), answer_(std::move(answer)), times_(times) {
    if (!answer_.throws && std::ranges::find(kAnswering, OperationOf(call_)) == kAnswering.end()) {
        throw std::invalid_argument("No operation that can answer oddly: " + call_);
    }
    oddAnswers.push_back(this);
}

OddAnswer::~OddAnswer() {
    std::erase(oddAnswers, this);
}

int OddAnswer::TimesGiven() const noexcept {
    return timesGiven_;
}

int OddAnswer::TimesLeftOut() const noexcept {
    return timesLeftOut_;
}

bool OddAnswer::Fits(const std::string& note) const {
    return (times_ == kAlways || timesGiven_ == 0) &&
           (call_.empty() || note == call_ || OperationOf(note) == call_);
}

const Answer* Recorded::FindOddAnswer(const std::string& note) {
    const auto found = std::ranges::find_if(oddAnswers, [&](OddAnswer* odd) {
        if (!odd->Fits(note)) {
            return false;
        }
        const bool isItsTurn = odd->timesLeftOut_ == odd->answer_.after;
        odd->timesLeftOut_ += isItsTurn ? 0 : 1;
        return isItsTurn;
    });
    if (found == oddAnswers.end()) {
        return nullptr;
    }
    OddAnswer& odd = **found;
    ++odd.timesGiven_;
    if (odd.answer_.throws) {
        if (odd.answer_.exception) {
            std::rethrow_exception(odd.answer_.exception);
        }
        throw std::bad_alloc();
    }
    return &odd.answer_;
}

}  // namespace korvane

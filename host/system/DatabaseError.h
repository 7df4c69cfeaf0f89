#pragma once

#include <stdexcept>
#include <string>

namespace host {

/// What is in a database after a failure.
enum class Remains {
    /// What was there before.
    TheOld,
    /// The new content: only the end of the change failed.
    TheNew,
    /// Both, because the change could not be undone. SQLite undoes it from the journal when it can.
    AJournal,
    /// What cannot be read.
    Unknown
};

/// Why a database cannot be used, as the end of a sentence that begins with its name: "is in use by another
/// program".
class DatabaseError : public std::runtime_error {
public:
    explicit DatabaseError(const std::string& reason, Remains remains = Remains::TheOld)
        : std::runtime_error(reason), remains_(remains) {}
    Remains WhatRemains() const { return remains_; }

private:
    Remains remains_;
};

/// Throws the DatabaseError of a database that is damaged for this reason.
[[noreturn]] void RefuseDamaged(const std::string& reason);

/// Throws the DatabaseError of a database that has something else in it than this program writes.
[[noreturn]] void RefuseForeign(const std::string& reason);

}  // namespace host

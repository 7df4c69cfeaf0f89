#pragma once

#include <exception>
#include <string>

#include "Console.h"

namespace host {

/// A part of the work, whose time is a detail. It says nothing if it ends with an exception.
class Phase {
public:
    /// `what` was done, as a message has it: "reading 'bracket.json'".
    Phase(Console& console, std::string what);
    ~Phase();
    Phase(const Phase&) = delete;
    Phase& operator=(const Phase&) = delete;

private:
    Console& console_;
    std::string what_;
    Console::Clock::time_point begin_;
    int exceptions_ = std::uncaught_exceptions();
};

}  // namespace host

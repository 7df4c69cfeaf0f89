#pragma once

#include <libjson.h>

#include <functional>
#include <string>
#include <string_view>

#include "host/system/Console.h"
#include "host/system/DatabaseError.h"

namespace host {

/// A console that keeps what is said, without any progress.
struct KeptConsole {
    std::string said;
    Console console{[this](std::string_view text) { said += text; }, false, &Console::Clock::now};
};

inline JSONNode Parse(const std::string& text) {
    return libjson::parse(json_string(text.data(), text.size()));
}

/// What a DatabaseError of the work says.
inline std::string ErrorOf(const std::function<void()>& work) {
    try {
        work();
    } catch (const DatabaseError& error) {
        return error.what();
    }
    return "no error";
}

/// Decks in as few words as their solvers' syntax allows.
inline constexpr std::string_view kAbaqusDeck = "*STEP\n*STATIC\n*END STEP\n";
inline constexpr std::string_view kNastranDeck = "SOL 101\nCEND\nBEGIN BULK\nENDDATA\n";
inline constexpr std::string_view kLsDynaDeck = "*KEYWORD\n*CONTROL_TERMINATION\n0.02\n*END\n";

}  // namespace host

#pragma once

#include "EmbeddedOddAnswers.h"

#if defined(KORVANE_RECORDING)
#include <string>

#include "CAEObject.h"
#include "OuString.h"
#endif

namespace korvane {

#if defined(KORVANE_RECORDING)

/// The scope of one operation of the suite's interface. The outermost one of a thread that records notes the
/// operation and its arguments; the arguments are those of the operation, the object that is asked first,
/// without what the operation only fills in.
class [[maybe_unused]] Recorded {
public:
    template <typename... Arguments>
    explicit Recorded(const char* operation, const Arguments&... arguments) {
        if (!Enter()) {
            return;
        }
        try {
            std::string note(operation);
            const char* before = "(";
            ((note += before, before = ", ", Append(note, arguments)), ...);
            note += ')';
            Keep(note);
            odd_ = FindOddAnswer(note);
        } catch (...) {
            // The destructor does not run for a scope whose constructor throws.
            Leave();
            throw;
        }
    }
    ~Recorded() { Leave(); }
    Recorded(const Recorded&) = delete;
    Recorded& operator=(const Recorded&) = delete;

    /// What the operation is to answer instead of doing its work; null where it does its work.
    const Answer* Odd() const noexcept { return odd_; }

private:
    /// Counts the scope; true when it is the outermost one and its thread records or has odd answers.
    static bool Enter() noexcept;
    static void Leave() noexcept;
    /// Keeps the note when the thread records.
    static void Keep(const std::string& note);
    /// The odd answer to the call, counted as given; null when there is none. Throws for one that throws.
    static const Answer* FindOddAnswer(const std::string& note);

    static void Append(std::string& note, const CAEObjectIdentification& object);
    static void Append(std::string& note, const CAEObjectIdentification* object);
    static void Append(std::string& note, const OuString& text);
    static void Append(std::string& note, const OuString* text);
    static void Append(std::string& note, bool value);
    static void Append(std::string& note, int value);

    const Answer* odd_ = nullptr;
};

#else

/// Nothing: only the recording build notes operations and answers oddly.
class [[maybe_unused]] Recorded {
public:
    template <typename... Arguments>
    constexpr explicit Recorded(const char*, const Arguments&...) noexcept {}

    static constexpr const Answer* Odd() noexcept { return nullptr; }
};

#endif

}  // namespace korvane

#pragma once

#if defined(KORVANE_RECORDING)
#include <optional>
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
            ThrowWhereWanted(operation);
        } catch (...) {
            // No destructor runs for a scope that was not made.
            Leave();
            throw;
        }
    }
    ~Recorded() { Leave(); }
    Recorded(const Recorded&) = delete;
    Recorded& operator=(const Recorded&) = delete;

private:
    /// Counts the scope; true when it is the outermost one and its thread records.
    static bool Enter() noexcept;
    static void Leave() noexcept;
    static void Keep(const std::string& note);
    static void ThrowWhereWanted(const char* operation);

    static void Append(std::string& note, const CAEObjectIdentification& object);
    static void Append(std::string& note, const CAEObjectIdentification* object);
    static void Append(std::string& note, const OuString& text);
    static void Append(std::string& note, const OuString* text);
    static void Append(std::string& note, bool value);
    static void Append(std::string& note, int value);
};

/// What a test wants getPointerToVersion to answer once: its status and pointer.
struct VersionAnswer {
    int status = 0;
    const CAEObject* version = nullptr;
};
std::optional<VersionAnswer> TakeVersionAnswer() noexcept;

#else

/// Nothing: only the recording build notes operations.
class [[maybe_unused]] Recorded {
public:
    template <typename... Arguments>
    constexpr explicit Recorded(const char*, const Arguments&...) noexcept {}
};

#endif

}  // namespace korvane

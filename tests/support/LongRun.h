#pragma once

#include <cstdlib>

/// Whether tests go through the whole of their ranges instead of a part, as `./dev test --long` asks for.
inline bool IsLongRun() {
    const char* const asked = std::getenv("KORVANEJSON_LONG");
    return asked != nullptr && *asked != '\0' && *asked != '0';
}

/// Whether the sanitizers make everything take many times as long.
inline constexpr bool kIsSanitized =
#if defined(__SANITIZE_ADDRESS__)
    true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
    true;
#else
    false;
#endif
#else
    false;
#endif

/// So many levels that a call which went down into them, a frame for each, would need more than the small
/// stacks on which tests make it.
inline int DeepLevels() {
    constexpr int kLevels = kIsSanitized ? 10'000 : 100'000;
    return IsLongRun() && !kIsSanitized ? 10 * kLevels : kLevels;
}

/// Whether a sample of the moments at which files fail, or programs are killed, is enough: Linux without
/// sanitizers tries more of them, and what the program does then is the same everywhere.
inline constexpr bool kIsSample =
#if defined(_WIN32)
    true;
#else
    kIsSanitized;
#endif

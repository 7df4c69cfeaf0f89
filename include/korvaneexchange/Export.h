#pragma once

/// @file
/// How the library's interface leaves it: exported while the library itself is compiled, imported elsewhere.

#if defined(_WIN32)
#if defined(KORVANEEXCHANGE_BUILD)
#define KORVANEEXCHANGE_API __declspec(dllexport)
#else
#define KORVANEEXCHANGE_API __declspec(dllimport)
#endif
#else
#define KORVANEEXCHANGE_API __attribute__((visibility("default")))
#endif

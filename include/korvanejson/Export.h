#pragma once

/// @file
/// How the library's interface leaves it: exported while the library itself is compiled, imported elsewhere.

#if defined(_WIN32)
#if defined(KORVANEJSON_BUILD)
#define KORVANEJSON_API __declspec(dllexport)
#else
#define KORVANEJSON_API __declspec(dllimport)
#endif
#else
#define KORVANEJSON_API __attribute__((visibility("default")))
#endif

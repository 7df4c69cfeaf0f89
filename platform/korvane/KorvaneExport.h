#pragma once

#if defined(_WIN32)
#if defined(KORVANE_BUILD)
#define KORVANE_API __declspec(dllexport)
#else
#define KORVANE_API __declspec(dllimport)
#endif
#else
#define KORVANE_API __attribute__((visibility("default")))
#endif

#if defined(_MSC_VER)
// The private members of exported classes are of types that the library does not export; nobody outside
// reaches them.
#pragma warning(disable : 4251)
#endif

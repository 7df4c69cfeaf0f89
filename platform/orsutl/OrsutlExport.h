#pragma once

#if defined(_WIN32)
#if defined(ORSUTL_BUILD)
#define ORSUTL_API __declspec(dllexport)
#else
#define ORSUTL_API __declspec(dllimport)
#endif
#else
#define ORSUTL_API __attribute__((visibility("default")))
#endif

#pragma once

#if defined(_WIN32)
#if defined(PIMUUTIL_BUILD)
#define PIMUUTIL_API __declspec(dllexport)
#else
#define PIMUUTIL_API __declspec(dllimport)
#endif
#else
#define PIMUUTIL_API __attribute__((visibility("default")))
#endif

/// The kind of a console message; any value may travel through it.
enum _PimuMessageType : int {
    PIMU_MESSAGE_NORMAL = 0,
    PIMU_MESSAGE_WARNING = 1,
    PIMU_MESSAGE_ERROR = 2,
};

/// Whether the unloading of a library while the application runs is to be reported; false unless set.
PIMUUTIL_API bool PimuIsDLLUnloadWarningEnabled();

/// Writes one formatted line to the application's console, which is standard error: the text in the ANSI code
/// page and a line feed, without delay, whatever the message's type, the locale and the orientation of the
/// stream are. The format and its arguments are those of OuString::Format, so "%s" takes a wide text on every
/// platform; a wrong format gives an empty line. Nothing is thrown: a message that cannot be formatted or
/// written is lost.
PIMUUTIL_API void PimuWriteConsoleMessage(_PimuMessageType type, const wchar_t* format, ...);

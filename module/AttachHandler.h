#pragma once

/// The reasons for which Windows calls a library's entry point; it may have others one day.
enum class AttachReason : unsigned long {
    kProcessDetach = 0,
    kProcessAttach = 1,
    kThreadAttach = 2,
    kThreadDetach = 3,
};

/// What the entry point does, after the runtime's own start-up. Attaching a process or a thread pins the
/// library, so that it stays until the process ends. Detaching a process writes a warning to the host's
/// console where the console library wants it, unless the process is ending, which a reserved argument that
/// is not null tells. Everything else does nothing. Always 1: no load is ever refused.
///
/// Only Windows has it. Elsewhere the linker marks the library as one that is never unloaded.
int HandleAttach(AttachReason reason, const void* reserved) noexcept;

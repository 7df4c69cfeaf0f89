#include "AttachHandler.h"

#include <PimuUtil.h>
#include <korvanejson/Module.h>
#include <windows.h>

namespace {

static_assert(static_cast<DWORD>(AttachReason::kProcessDetach) == DLL_PROCESS_DETACH);
static_assert(static_cast<DWORD>(AttachReason::kProcessAttach) == DLL_PROCESS_ATTACH);
static_assert(static_cast<DWORD>(AttachReason::kThreadAttach) == DLL_THREAD_ATTACH);
static_assert(static_cast<DWORD>(AttachReason::kThreadDetach) == DLL_THREAD_DETACH);

/// A pin that fails leaves a library that can be unloaded: nothing to be done about it here.
void Pin() noexcept {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                       reinterpret_cast<LPCWSTR>(&__localFnToKeepKorvaneJsonDllLoaded), &module);
}

void WarnOfUnload() noexcept {
    if (PimuIsDLLUnloadWarningEnabled()) {
        PimuWriteConsoleMessage(PIMU_MESSAGE_NORMAL,
                                L"'%s' dll is getting unloaded with application still running!",
                                L"KorvaneJson");
    }
}

}  // namespace

int HandleAttach(AttachReason reason, const void* reserved) noexcept {
    switch (reason) {
        case AttachReason::kProcessAttach:
        case AttachReason::kThreadAttach:
            // Every thread pins again: once would do, and more does no harm. This is meant.
            Pin();
            break;
        case AttachReason::kProcessDetach:
            if (reserved == nullptr) {
                WarnOfUnload();
            }
            break;
        case AttachReason::kThreadDetach:
            break;
    }
    return 1;
}

BOOL WINAPI DllMain(HINSTANCE /*library*/, DWORD reason, LPVOID reserved) {
    return HandleAttach(static_cast<AttachReason>(reason), reserved);
}

#include "AttachHandler.h"

#include <korvanejson/Module.h>
#include <windows.h>

#include "objectjson/ObjectModel.h"

namespace {

constexpr auto kNormalMessage = static_cast<_PimuMessageType>(0);

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
        PimuWriteConsoleMessage(
            kNormalMessage, L"'%s' dll is getting unloaded with application still running!", L"KorvaneJson");
    }
}

}  // namespace

int HandleAttach(AttachReason reason, const void* reserved) noexcept {
    switch (reason) {
        case AttachReason::kProcessAttach:
        case AttachReason::kThreadAttach:
            // At every thread again, as every library of the suite does: a repeated pin does no harm.
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

#include <windows.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

#include "Allocations.h"

// Every library has an operator new of its own, but all of them call the one in the compiler's runtime, and
// that one takes its memory from the C library by way of a table of its imports. The table's entries are
// replaced.

namespace allocations {
namespace {

void* Allocate(std::size_t bytes) {
    return GateOf(Source::kNew).Admit() ? std::malloc(bytes) : nullptr;
}

void Free(void* memory) {
    if (memory != nullptr) {
        GateOf(Source::kNew).Return();
        std::free(memory);
    }
}

struct Replacement {
    const char* function;
    void* by;
    bool isDone;
};

std::byte* At(HMODULE module, DWORD offset) {
    return reinterpret_cast<std::byte*>(module) + offset;
}

void Replace(ULONG_PTR& entry, void* by) {
    DWORD before = 0;
    VirtualProtect(&entry, sizeof(entry), PAGE_READWRITE, &before);
    entry = reinterpret_cast<ULONG_PTR>(by);
    VirtualProtect(&entry, sizeof(entry), before, &before);
}

/// Replaces entries among the imports from one library.
void ReplaceImports(HMODULE module, const IMAGE_IMPORT_DESCRIPTOR& library, Replacement (&wanted)[2]) {
    auto* name = reinterpret_cast<IMAGE_THUNK_DATA*>(At(module, library.OriginalFirstThunk));
    auto* entry = reinterpret_cast<IMAGE_THUNK_DATA*>(At(module, library.FirstThunk));
    for (; name->u1.AddressOfData != 0; ++name, ++entry) {
        if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) {
            continue;
        }
        const auto* const import =
            reinterpret_cast<IMAGE_IMPORT_BY_NAME*>(At(module, static_cast<DWORD>(name->u1.AddressOfData)));
        for (Replacement& replacement : wanted) {
            if (std::strcmp(import->Name, replacement.function) == 0) {
                Replace(entry->u1.Function, replacement.by);
                replacement.isDone = true;
            }
        }
    }
}

}  // namespace

void CountOperatorNew() {
    static bool isDone = false;
    if (isDone) {
        return;
    }
    const HMODULE runtime = GetModuleHandleW(L"libstdc++-6.dll");
    if (runtime == nullptr) {
        throw std::runtime_error("the compiler's runtime is not a library of its own");
    }
    const auto* const header = reinterpret_cast<IMAGE_DOS_HEADER*>(runtime);
    const auto* const headers =
        reinterpret_cast<IMAGE_NT_HEADERS*>(At(runtime, static_cast<DWORD>(header->e_lfanew)));
    const auto* library = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(
        At(runtime, headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress));
    Replacement wanted[] = {{"malloc", reinterpret_cast<void*>(Allocate), false},
                            {"free", reinterpret_cast<void*>(Free), false}};
    for (; library->Name != 0; ++library) {
        ReplaceImports(runtime, *library, wanted);
    }
    if (!wanted[0].isDone || !wanted[1].isDone) {
        throw std::runtime_error("the compiler's runtime takes its memory from elsewhere");
    }
    isDone = true;
}

}  // namespace allocations

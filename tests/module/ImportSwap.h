#pragma once

#include <windows.h>

#include <stdexcept>

/// Puts a function of the test's in the place of one that this program imports, for as long as it lives.
class ImportSwap {
public:
    template <typename Function>
    ImportSwap(Function* imported, Function* replacement)
        : slot_(FindSlot(reinterpret_cast<void*>(imported))), original_(*slot_) {
        Write(reinterpret_cast<void*>(replacement));
    }
    ~ImportSwap() { Write(original_); }
    ImportSwap(const ImportSwap&) = delete;
    ImportSwap& operator=(const ImportSwap&) = delete;

private:
    static void** FindSlot(const void* function) {
        auto* const image = reinterpret_cast<char*>(GetModuleHandleW(nullptr));
        const auto& start = *reinterpret_cast<const IMAGE_DOS_HEADER*>(image);
        const auto& headers = *reinterpret_cast<const IMAGE_NT_HEADERS*>(image + start.e_lfanew);
        const IMAGE_DATA_DIRECTORY& place =
            headers.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
        const auto* library = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(image + place.VirtualAddress);
        for (; library->Name != 0; ++library) {
            for (auto** slot = reinterpret_cast<void**>(image + library->FirstThunk); *slot != nullptr;
                 ++slot) {
                if (*slot == function) {
                    return slot;
                }
            }
        }
        throw std::runtime_error("the program does not import the function");
    }

    void Write(void* function) {
        DWORD before = 0;
        VirtualProtect(slot_, sizeof(void*), PAGE_READWRITE, &before);
        *slot_ = function;
        VirtualProtect(slot_, sizeof(void*), before, &before);
    }

    void** slot_;
    void* original_;
};

#pragma once

#if defined(_WIN32)
#include <windows.h>
#else
#include <dlfcn.h>
#endif

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

/// The library loaded at run time by its plain name, as a host loads it. Every object is one load, and its
/// end one unload.
class LoadedLibrary {
public:
    LoadedLibrary() : handle_(Load()) {
        if (handle_ == nullptr) {
            throw std::runtime_error(std::string(kFileName) + " cannot be loaded");
        }
    }
    ~LoadedLibrary() { Unload(); }
    LoadedLibrary(const LoadedLibrary&) = delete;
    LoadedLibrary& operator=(const LoadedLibrary&) = delete;

    /// A function of the export table; throws if none has this name.
    template <typename Function>
    static Function* Find(const char* name) {
        void* const address = Address(name);
        if (address == nullptr) {
            throw std::runtime_error(std::string(kFileName) + " does not export " + name);
        }
        return reinterpret_cast<Function*>(address);
    }

    /// Takes one load back; false when the system has none left to take.
#if defined(_WIN32)
    bool Unload() const {
        return FreeLibrary(handle_) != 0;
    }
    static bool IsLoaded() {
        return GetModuleHandleA(kFileName) != nullptr;
    }

    /// The names in the export table of the loaded library, in its order, which is that of their bytes.
    static std::vector<std::string> ExportedNames() {
        const auto* const image = reinterpret_cast<const std::uint8_t*>(GetModuleHandleA(kFileName));
        const auto& start = *reinterpret_cast<const IMAGE_DOS_HEADER*>(image);
        const auto& headers = *reinterpret_cast<const IMAGE_NT_HEADERS*>(image + start.e_lfanew);
        const IMAGE_DATA_DIRECTORY& place =
            headers.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT];
        const auto& table = *reinterpret_cast<const IMAGE_EXPORT_DIRECTORY*>(image + place.VirtualAddress);
        const auto* const names = reinterpret_cast<const DWORD*>(image + table.AddressOfNames);
        if (table.NumberOfFunctions != table.NumberOfNames) {
            throw std::runtime_error(std::string(kFileName) + " exports functions without a name");
        }
        std::vector<std::string> found;
        for (DWORD index = 0; index < table.NumberOfNames; ++index) {
            found.emplace_back(reinterpret_cast<const char*>(image + names[index]));
        }
        return found;
    }
#else
    bool Unload() const {
        return dlclose(handle_) == 0;
    }
    static bool IsLoaded() {
        void* const handle = dlopen(kFileName, RTLD_NOW | RTLD_NOLOAD);
        return handle != nullptr && dlclose(handle) == 0;
    }
#endif

private:
    static constexpr const char* kFileName = KORVANEJSON_FILE_NAME;

#if defined(_WIN32)
    static HMODULE Load() {
        return LoadLibraryA(kFileName);
    }
    static void* Address(const char* name) {
        return reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA(kFileName), name));
    }
    HMODULE handle_;
#else
    static void* Load() {
        return dlopen(kFileName, RTLD_NOW);
    }
    static void* Address(const char* name) {
        void* const handle = dlopen(kFileName, RTLD_NOW | RTLD_NOLOAD);
        if (handle == nullptr) {
            return nullptr;
        }
        void* const address = dlsym(handle, name);
        // Looking something up must not be a load that is never given back: it would keep the library by
        // itself.
        dlclose(handle);
        return address;
    }
    void* handle_;
#endif
};

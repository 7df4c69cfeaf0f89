#include <windows.h>

#include <cstdlib>
#include <memory>
#include <new>

#include "Pool.h"

// Not with thread_local: mingw-w64 frees the storage of such variables before it destroys them.

namespace libjson::detail {
namespace {

/// The lists of each thread in a slot that calls back at the thread's end, and a plain slot that remembers
/// that it has: nodes may be released on the thread even after that.
class ThreadSlots {
public:
    ThreadSlots() noexcept : cache_(FlsAlloc(HandOverAndFree)), ended_(TlsAlloc()) {}

    /// Frees the lists of all threads: the library may be unloaded while they are running.
    ~ThreadSlots() {
        FlsFree(cache_);
        TlsFree(ended_);
        cache_ = FLS_OUT_OF_INDEXES;
        ended_ = TLS_OUT_OF_INDEXES;
    }

    ThreadSlots(const ThreadSlots&) = delete;
    ThreadSlots& operator=(const ThreadSlots&) = delete;

    CellCache* Cache() const noexcept {
        if (void* const cache = FlsGetValue(cache_)) {
            return static_cast<CellCache*>(cache);
        }
        return AddCache();
    }

private:
    static void WINAPI HandOverAndFree(void* cache) noexcept;

    CellCache* AddCache() const noexcept {
        if (cache_ == FLS_OUT_OF_INDEXES || ended_ == TLS_OUT_OF_INDEXES || TlsGetValue(ended_) != nullptr) {
            return nullptr;
        }
        auto* const cache = static_cast<CellCache*>(std::calloc(1, sizeof(CellCache)));
        if (cache != nullptr && FlsSetValue(cache_, cache) == 0) {
            std::free(cache);
            return nullptr;
        }
        return cache;
    }

    DWORD cache_;
    DWORD ended_;
};

ThreadSlots slots;

void WINAPI ThreadSlots::HandOverAndFree(void* cache) noexcept {
    TlsSetValue(slots.ended_, &slots);
    HandOver(*static_cast<CellCache*>(cache));
    std::free(cache);
}

}  // namespace

CellCache* CacheOfThread() noexcept {
    return slots.Cache();
}

}  // namespace libjson::detail

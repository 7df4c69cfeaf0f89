#include "Pool.h"

namespace libjson::detail {
namespace {

/// The lists that the calling thread has, null before the first use and after its end. It is asked for at
/// every operation: found at a fixed place it costs no call.
/// Measured: without the model, making a document node by node takes 1.08 times as long and adding one member
/// to a copy 1.11 times (1,111 objects, gcc 12).
[[gnu::tls_model("initial-exec")]] constinit thread_local CellCache* current = nullptr;

constinit thread_local CellCache cache{};
constinit thread_local bool hasEnded = false;

struct ThreadEnd {
    ~ThreadEnd() {
        current = nullptr;
        hasEnded = true;
        HandOver(cache);
    }
};

CellCache* EnterThread() noexcept {
    static thread_local const ThreadEnd threadEnd;
    if (!hasEnded) {
        current = &cache;
    }
    return current;
}

/// A thread's first use needs memory for the end of the thread, and glibc aborts if there is none. The main
/// thread has it from the beginning, so that a program with one thread can report that it has no memory.
[[maybe_unused]] const CellCache* const ofMainThread = EnterThread();

}  // namespace

CellCache* CacheOfThread() noexcept {
    return current != nullptr ? current : EnterThread();
}

}  // namespace libjson::detail

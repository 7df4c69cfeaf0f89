#include "SmallStack.h"

#include <cstddef>
#include <exception>
#include <stdexcept>

#if defined(_WIN32)
#include <malloc.h>
#include <windows.h>

#include <thread>
#else
#include <pthread.h>
#endif

namespace {

constexpr std::size_t kStackSize = std::size_t{256} * 1024;

struct Run {
    const std::function<void()>& body;
    bool done = false;
    std::exception_ptr error;

    void operator()() {
        try {
            body();
        } catch (...) {
            error = std::current_exception();
        }
        done = true;
    }

    /// An overflow of a side thread's stack can look like a thread that ended: only the flag shows the
    /// difference.
    void Finish() const {
        if (!done) {
            throw std::runtime_error("the body did not come back");
        }
        if (error) {
            std::rethrow_exception(error);
        }
    }
};

#if defined(_WIN32)
/// Threads may be given more than they ask for: all but the wanted size is taken first.
void RunOnTheRest(Run& run) {
    ULONG_PTR low = 0;
    ULONG_PTR high = 0;
    GetCurrentThreadStackLimits(&low, &high);
    char here = 0;
    const std::size_t left = static_cast<std::size_t>(reinterpret_cast<ULONG_PTR>(&here) - low);
    if (left > kStackSize) {
        auto* taken = static_cast<volatile char*>(_alloca(left - kStackSize));
        taken[0] = 1;
    }
    run();
}
#endif

}  // namespace

void OnSmallStack(const std::function<void()>& body) {
    Run run{body, false, nullptr};
#if defined(_WIN32)
    std::thread([&run] { RunOnTheRest(run); }).join();
#else
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, kStackSize);
    pthread_t thread{};
    const int status = pthread_create(
        &thread, &attributes,
        [](void* argument) -> void* {
            (*static_cast<Run*>(argument))();
            return nullptr;
        },
        &run);
    pthread_attr_destroy(&attributes);
    if (status != 0) {
        throw std::runtime_error("no thread could be started");
    }
    pthread_join(thread, nullptr);
#endif
    run.Finish();
}

#include <dlfcn.h>
#include <pwd.h>

#include <cerrno>
#include <clocale>
#include <cstddef>
#include <cstdlib>
#include <new>

#include "Failures.h"
#include "Plans.h"

/// The functions of the C library, under their other names.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
}

namespace exhaustion {
namespace {

Plan plan;
bool isCounting = false;

/// Nothing fails as long as it exists.
class Pause {
public:
    Pause() : wasCounting_(isCounting) { isCounting = false; }
    ~Pause() { isCounting = wasCounting_; }
    Pause(const Pause&) = delete;
    Pause& operator=(const Pause&) = delete;

private:
    bool wasCounting_;
};

/// The C library's own function.
template <typename Function>
Function Find(const char* name) {
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

bool IsToFail() {
    return isCounting && IsReached(plan, ++SharedCounts().allocations);
}

void* NoMemory() {
    errno = ENOMEM;
    return nullptr;
}

}  // namespace

void PlanAllocations(const Plan& next) {
    plan = next;
    isCounting = true;
}

}  // namespace exhaustion

extern "C" {

void* malloc(std::size_t size) {
    return exhaustion::IsToFail() ? exhaustion::NoMemory() : __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size) {
    return exhaustion::IsToFail() ? exhaustion::NoMemory() : __libc_calloc(count, size);
}

void* realloc(void* memory, std::size_t size) {
    return exhaustion::IsToFail() ? exhaustion::NoMemory() : __libc_realloc(memory, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) {
    return exhaustion::IsToFail() ? exhaustion::NoMemory() : __libc_memalign(alignment, size);
}

// Two services of glibc do not withstand a failure: that of user names ends in an assertion or worse, and
// locales seem not to be there. So nothing fails in them; the program makes sure before that there is memory.

int getpwuid_r(uid_t owner, passwd* record, char* buffer, std::size_t size, passwd** found) {
    const exhaustion::Pause pause;
    static const auto lookUp = exhaustion::Find<decltype(&::getpwuid_r)>("getpwuid_r");
    return lookUp(owner, record, buffer, size, found);
}

locale_t newlocale(int mask, const char* name, locale_t base) {
    const exhaustion::Pause pause;
    static const auto makeLocale = exhaustion::Find<decltype(&::newlocale)>("newlocale");
    return makeLocale(mask, name, base);
}

int posix_memalign(void** memory, std::size_t alignment, std::size_t size) {
    *memory = exhaustion::IsToFail() ? nullptr : __libc_memalign(alignment, size);
    return *memory != nullptr ? 0 : ENOMEM;
}
}

#include <dlfcn.h>
#include <pwd.h>

#include <cerrno>
#include <clocale>
#include <cstddef>
#include <cstdlib>
#include <new>

#include "Failures.h"
#include "Plans.h"
#include "host/system/MemoryReserve.h"

/// The functions of the C library, under their other names.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
}

// Those of UDUNITS, whose header is not there where the program is built without it.
union ut_unit;
union cv_converter;
struct ut_system;

namespace exhaustion {
namespace {

Plan plannedAllocations;
bool isCounting = false;
/// What the program has asked for last.
std::size_t lastSize = 0;

/// Nothing fails as long as it exists, if the program has just made sure that there is memory.
class Pause {
public:
    Pause() : wasCounting_(isCounting) { isCounting = isCounting && lastSize < host::kMemoryReserve; }
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

bool IsToFail(std::size_t size) {
    if (!isCounting) {
        return false;
    }
    lastSize = size;
    return IsReached(plannedAllocations, ++SharedCounts().allocations);
}

void* NoMemory() {
    errno = ENOMEM;
    return nullptr;
}

}  // namespace

void PlanAllocations(const Plan& next) {
    plannedAllocations = next;
    isCounting = true;
}

}  // namespace exhaustion

extern "C" {

void* malloc(std::size_t size) {
    return exhaustion::IsToFail(size) ? exhaustion::NoMemory() : __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size) {
    return exhaustion::IsToFail(count * size) ? exhaustion::NoMemory() : __libc_calloc(count, size);
}

void* realloc(void* memory, std::size_t size) {
    return exhaustion::IsToFail(size) ? exhaustion::NoMemory() : __libc_realloc(memory, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) {
    return exhaustion::IsToFail(size) ? exhaustion::NoMemory() : __libc_memalign(alignment, size);
}

// Some services do not withstand a failure: that of user names in glibc ends in an assertion or worse, its
// locales seem not to be there, and UDUNITS ends the program or does not know its units. So nothing fails in
// them when the program has made sure that there is memory.

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

ut_system* ut_read_xml(const char* path) {
    const exhaustion::Pause pause;
    static const auto readUnits = exhaustion::Find<decltype(&::ut_read_xml)>("ut_read_xml");
    return readUnits(path);
}

ut_unit* ut_parse(const ut_system* system, const char* text, int encoding) {
    const exhaustion::Pause pause;
    static const auto parse = exhaustion::Find<decltype(&::ut_parse)>("ut_parse");
    return parse(system, text, encoding);
}

int ut_are_convertible(const ut_unit* left, const ut_unit* right) {
    const exhaustion::Pause pause;
    static const auto areConvertible =
        exhaustion::Find<decltype(&::ut_are_convertible)>("ut_are_convertible");
    return areConvertible(left, right);
}

cv_converter* ut_get_converter(ut_unit* from, ut_unit* to) {
    const exhaustion::Pause pause;
    static const auto getConverter = exhaustion::Find<decltype(&::ut_get_converter)>("ut_get_converter");
    return getConverter(from, to);
}

int posix_memalign(void** memory, std::size_t alignment, std::size_t size) {
    *memory = exhaustion::IsToFail(size) ? nullptr : __libc_memalign(alignment, size);
    return *memory != nullptr ? 0 : ENOMEM;
}
}

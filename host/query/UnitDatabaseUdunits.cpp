#include <udunits2.h>

#include <new>

#include "UnitDatabase.h"
#include "host/system/MemoryReserve.h"

namespace host {
namespace {

template <auto Free>
struct Deleter {
    template <typename Value>
    void operator()(Value* value) const {
        Free(value);
    }
};
using System = std::unique_ptr<ut_system, Deleter<ut_free_system>>;
using Unit = std::unique_ptr<ut_unit, Deleter<ut_free>>;

void ThrowIfOutOfMemory() {
    if (ut_get_status() == UT_OS) {
        throw std::bad_alloc();
    }
}

Unit ParseUnit(const System& system, const std::string& name) {
    Unit unit(ut_parse(system.get(), name.c_str(), UT_UTF8));
    if (unit == nullptr) {
        ThrowIfOutOfMemory();
    }
    return unit;
}

}  // namespace

struct UnitDatabase::Units {
    System system;
};

UnitDatabase::UnitDatabase() {
    EnsureMemory();
    // What cannot be converted is said in the program's own words.
    ut_set_error_message_handler(ut_ignore);
    System system(ut_read_xml(nullptr));
    if (system != nullptr) {
        units_ = std::make_unique<Units>(Units{std::move(system)});
    } else {
        ThrowIfOutOfMemory();
    }
}

UnitDatabase::~UnitDatabase() = default;

UnitConversion UnitDatabase::Find(const std::string& from, const std::string& to) const {
    if (units_ == nullptr) {
        return {};
    }
    EnsureMemory();
    const Unit left = ParseUnit(units_->system, from);
    const Unit right = ParseUnit(units_->system, to);
    if (left == nullptr || right == nullptr || ut_are_convertible(left.get(), right.get()) == 0) {
        return {};
    }
    const std::shared_ptr<cv_converter> converter(ut_get_converter(left.get(), right.get()),
                                                  [](cv_converter* value) { cv_free(value); });
    if (converter == nullptr) {
        ThrowIfOutOfMemory();
        return {};
    }
    return [converter](double value) { return cv_convert_double(converter.get(), value); };
}

}  // namespace host

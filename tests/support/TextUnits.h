#pragma once

#include <libjson.h>

/// Sets the text units for as long as it lives.
class UnitsFor {
public:
    explicit UnitsFor(libjson::text_units units) : before_(libjson::get_text_units()) {
        libjson::set_text_units(units);
    }
    ~UnitsFor() { libjson::set_text_units(before_); }
    UnitsFor(const UnitsFor&) = delete;
    UnitsFor& operator=(const UnitsFor&) = delete;

private:
    libjson::text_units before_;
};

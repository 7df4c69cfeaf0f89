#pragma once

#include "OuString.h"

/// A text that is a path.
class ORSUTL_API OuStringFileName : public OuString {
public:
    using OuString::OuString;
    using OuString::operator=;
    OuStringFileName() = default;
    OuStringFileName(const OuString& path) : OuString(path) {}

    /// Turns the path into a directory's normal form: forward slashes, no double ones except a leading pair,
    /// exactly one at the end. More than two leading slashes become a pair, a path of nothing but slashes
    /// becomes one. The empty path stays empty.
    void NormalizeDirectory();

    /// What follows the last slash or backslash; the whole path where there is none.
    OuString GetFileName() const;
};

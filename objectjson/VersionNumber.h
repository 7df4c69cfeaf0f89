#pragma once

#include <OuArray.h>
#include <OuString.h>

/// The number of a version, major and minor.
struct VersionNumber {
    int majorNumber = 0;
    int minorNumber = 0;

    /// The number at an index of the object model's two lists, in the low 32 bits of their slots; what a list
    /// that ends earlier lacks is 0.
    static VersionNumber At(const OuArray& majors, const OuArray& minors, int index) noexcept;

    /// The number as a document writes it: "3.14".
    OuString Label() const;
};

#pragma once

#include "ObjectModel.h"

/// The number of a version.
struct MajorMinor {
    int majorNumber = 0;
    int minorNumber = 0;

    /// The number at an index of the object model's two lists, in the low 32 bits of their slots; what a list
    /// that ends earlier lacks is 0.
    static MajorMinor At(OuArray& majors, OuArray& minors, int index);

    /// The number as a document writes it: "3.14".
    OuString Label() const;
};

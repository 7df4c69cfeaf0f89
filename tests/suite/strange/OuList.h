#pragma once

#include <cstddef>
#include <vector>

#include "OrsutlExport.h"

/// A place in an OuList: neither a pointer nor true or false, and comparable with nothing.
struct OuPlace {
    std::size_t index;
};

/// The list of the strange suite. It is walked with operations of its own, none of which is const.
class ORSUTL_API OuList {
public:
    explicit OuList(int blockSize = 10);

    void AddTail(void* pointer);
    void AddTail(int identifier);

    OuPlace First();
    /// Whether there is a slot at the place.
    bool Has(OuPlace place);
    /// The slot at the place, which moves on.
    void* Take(OuPlace& place);
    int TakeIdentifier(OuPlace& place);

private:
    std::vector<void*> slots_;
};

#include "OuList.h"

#include <cstdint>

OuList::OuList(int blockSize) {
    slots_.reserve(blockSize > 0 ? static_cast<std::size_t>(blockSize) : 1);
}

void OuList::AddTail(void* pointer) {
    slots_.push_back(pointer);
}

void OuList::AddTail(int identifier) {
    AddTail(reinterpret_cast<void*>(static_cast<std::intptr_t>(identifier)));
}

OuPlace OuList::First() {
    return {0};
}

bool OuList::Has(OuPlace place) {
    return place.index < slots_.size();
}

void* OuList::Take(OuPlace& place) {
    return slots_.at(place.index++);
}

int OuList::TakeIdentifier(OuPlace& place) {
    return static_cast<int>(reinterpret_cast<std::intptr_t>(Take(place)));
}

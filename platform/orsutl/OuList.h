#pragma once

#include <cstddef>

#include "OrsutlExport.h"

/// A place in an OuList; null after the tail.
struct OuListPosition;

/// A list of pointer-wide slots, each of which holds a pointer or an identifier; it owns neither. Slots are
/// kept in blocks of the size given at construction, and a place stays valid while the list grows, or is
/// moved. Memory exhaustion throws std::bad_alloc and leaves the list as it was. A list that was moved from
/// is empty.
class ORSUTL_API OuList {
public:
    /// `blockSize` slots are allocated at a time; below 1 counts as 1.
    explicit OuList(int blockSize = 10) noexcept;
    OuList(const OuList& other);
    OuList(OuList&& other) noexcept;
    OuList& operator=(const OuList& other);
    OuList& operator=(OuList&& other) noexcept;
    ~OuList();

    void AddTail(void* pointer);
    void AddTail(int identifier);
    void RemoveAll() noexcept;

    bool IsEmpty() const noexcept;
    std::size_t GetCount() const noexcept;

    /// The place of the head; null when the list is empty.
    OuListPosition* GetHeadPosition() const noexcept;
    /// The slot at the place, which must not be null; moves the place on, to null after the tail.
    void* GetNext(OuListPosition*& position) const noexcept;
    /// The same for a slot that holds an identifier.
    int GetNextID(OuListPosition*& position) const noexcept;

private:
    struct Block;
    Block* head_ = nullptr;
    Block* tail_ = nullptr;
    std::size_t count_ = 0;
    int blockSize_;
};

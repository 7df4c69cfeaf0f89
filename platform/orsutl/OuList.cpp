#include "OuList.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <new>
#include <utility>

struct OuListPosition {
    void* slot;
    OuListPosition* next;
};

/// The head of a block of memory; its places follow.
struct OuList::Block {
    Block* next;
    int used;

    OuListPosition* Places() noexcept { return reinterpret_cast<OuListPosition*>(this + 1); }
};

OuList::OuList(int blockSize) noexcept : blockSize_(std::max(1, blockSize)) {}

OuList::OuList(const OuList& other) : OuList(other.blockSize_) {
    for (OuListPosition* place = other.GetHeadPosition(); place != nullptr;) {
        AddTail(other.GetNext(place));
    }
}

OuList::OuList(OuList&& other) noexcept
    : head_(std::exchange(other.head_, nullptr)),
      tail_(std::exchange(other.tail_, nullptr)),
      count_(std::exchange(other.count_, 0)),
      blockSize_(other.blockSize_) {}

OuList& OuList::operator=(const OuList& other) {
    return *this = OuList(other);
}

OuList& OuList::operator=(OuList&& other) noexcept {
    OuList taken(std::move(other));
    std::swap(head_, taken.head_);
    std::swap(tail_, taken.tail_);
    std::swap(count_, taken.count_);
    std::swap(blockSize_, taken.blockSize_);
    return *this;
}

OuList::~OuList() {
    RemoveAll();
}

void OuList::AddTail(void* pointer) {
    static_assert(sizeof(Block) % alignof(OuListPosition) == 0);
    OuListPosition* last = tail_ == nullptr ? nullptr : tail_->Places() + (tail_->used - 1);
    if (tail_ == nullptr || tail_->used == blockSize_) {
        void* memory =
            ::operator new(sizeof(Block) + static_cast<std::size_t>(blockSize_) * sizeof(OuListPosition));
        Block* block = std::construct_at(static_cast<Block*>(memory), Block{nullptr, 0});
        (tail_ == nullptr ? head_ : tail_->next) = block;
        tail_ = block;
    }
    OuListPosition* place =
        std::construct_at(tail_->Places() + tail_->used, OuListPosition{pointer, nullptr});
    ++tail_->used;
    ++count_;
    if (last != nullptr) {
        last->next = place;
    }
}

void OuList::AddTail(int identifier) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): a slot holds either.
    AddTail(reinterpret_cast<void*>(static_cast<std::intptr_t>(identifier)));
}

void OuList::RemoveAll() noexcept {
    while (head_ != nullptr) {
        ::operator delete(static_cast<void*>(std::exchange(head_, head_->next)));
    }
    tail_ = nullptr;
    count_ = 0;
}

bool OuList::IsEmpty() const noexcept {
    return count_ == 0;
}

std::size_t OuList::GetCount() const noexcept {
    return count_;
}

OuListPosition* OuList::GetHeadPosition() const noexcept {
    return head_ == nullptr ? nullptr : head_->Places();
}

void* OuList::GetNext(OuListPosition*& position) const noexcept {
    return std::exchange(position, position->next)->slot;
}

int OuList::GetNextID(OuListPosition*& position) const noexcept {
    return static_cast<int>(reinterpret_cast<std::intptr_t>(GetNext(position)));
}

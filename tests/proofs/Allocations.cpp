#include "Allocations.h"

#include <libjson.h>

#include <cstdlib>
#include <new>

namespace allocations {
namespace {

/// libjson's pool takes its memory in blocks of this size at least.
constexpr std::size_t kPoolBlockBytes = std::size_t{1024} * 1024;
std::atomic<std::size_t> poolBlocks = 0;

/// Stored before every block.
struct alignas(alignof(std::max_align_t)) Header {
    std::size_t bytes;
};

bool IsPoolBlock(std::size_t bytes) {
    return bytes >= kPoolBlockBytes;
}

void* Give(void* memory, std::size_t bytes) {
    if (memory == nullptr) {
        return nullptr;
    }
    poolBlocks += IsPoolBlock(bytes) ? 1 : 0;
    return new (memory) Header{bytes} + 1;
}

/// The block with its header, no longer counted.
Header* Take(void* block) {
    Header* const header = static_cast<Header*>(block) - 1;
    poolBlocks -= IsPoolBlock(header->bytes) ? 1 : 0;
    GateOf(Source::kLibjson).Return();
    return header;
}

void* Allocate(std::size_t bytes) {
    return GateOf(Source::kLibjson).Admit() ? Give(std::malloc(sizeof(Header) + bytes), bytes) : nullptr;
}

void* Reallocate(void* block, std::size_t bytes) {
    return GateOf(Source::kLibjson).Admit() ? Give(std::realloc(Take(block), sizeof(Header) + bytes), bytes)
                                            : nullptr;
}

void Free(void* block) {
    std::free(Take(block));
}

// What runs before and behind every object of this program asks them.
constinit Gate gateOfNew;
constinit Gate gateOfLibjson;

}  // namespace

bool Gate::Admit() noexcept {
    if (untilFailure_ > 0) {
        if (untilFailure_ == 1) {
            hasFailed_ = true;
            untilFailure_ = isForGood_ ? 1 : 0;
            return false;
        }
        --untilFailure_;
    }
    ++calls_;
    ++inUse_;
    return true;
}

void Gate::FailAt(std::size_t nth, Times times) noexcept {
    isForGood_ = times == Times::kFromThenOn;
    hasFailed_ = false;
    untilFailure_ = nth;
}

Gate& GateOf(Source source) noexcept {
    return source == Source::kNew ? gateOfNew : gateOfLibjson;
}

std::size_t Calls(Source source) {
    return GateOf(source).Calls();
}

std::size_t InUse(Source source) {
    return GateOf(source).InUse() - (source == Source::kLibjson ? poolBlocks.load() : 0);
}

LibjsonFunctions::LibjsonFunctions() {
    libjson::register_memory_callbacks(Allocate, Reallocate, Free);
}

LibjsonFunctions::~LibjsonFunctions() {
    libjson::register_memory_callbacks(nullptr, nullptr, nullptr);
}

Failing::Failing(Source source, std::size_t nth, Times times) : source_(source) {
    GateOf(source_).FailAt(nth, times);
}

Failing::~Failing() {
    GateOf(source_).FailNoMore();
}

bool Failing::HasHappened() const {
    return GateOf(source_).HasFailed();
}

}  // namespace allocations

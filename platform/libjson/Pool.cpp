#include "Pool.h"

#include <mutex>
#include <new>

#include "Blocks.h"

namespace libjson::detail {
namespace {

constexpr std::size_t kRegionBytes = std::size_t{1024} * 1024;
constexpr std::size_t kSpanBytes = std::size_t{64} * 1024;
constexpr std::size_t kSpanHeaderBytes = 64;

/// A doubly linked list through the elements' own fields.
template <class T>
class Chain {
public:
    T* First() const noexcept { return first_; }

    void Add(T& element) noexcept {
        element.previous = nullptr;
        element.next = first_;
        if (first_ != nullptr) {
            first_->previous = &element;
        }
        first_ = &element;
    }

    void Remove(T& element) noexcept {
        (element.previous != nullptr ? element.previous->next : first_) = element.next;
        if (element.next != nullptr) {
            element.next->previous = element.previous;
        }
    }

private:
    T* first_ = nullptr;
};

struct Region;

/// The start of an aligned stretch of a region that is cut into cells of one class. Any address in it leads
/// back to it, so a cell needs no header.
struct Span {
    Region* region;
    Span* next;
    Span* previous;
    FreeCell* freeCells;
    std::uint32_t freeCount;
    std::uint32_t cutCount;
    std::uint32_t capacity;
    CellClass cellClass;

    bool HasRoom() const noexcept { return freeCells != nullptr || cutCount < capacity; }
    bool IsUnused() const noexcept { return freeCount == cutCount; }
};
static_assert(sizeof(Span) <= kSpanHeaderBytes);

/// The start of a block from the registered functions, followed by as many spans as fit.
struct Region {
    Region* next;
    Region* previous;
    Chain<Span> freeSpans;
    std::size_t spanCount;
    std::size_t freeSpanCount;
};

Span* SpanOf(FreeCell* cell) noexcept {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): a span is found by where its cells lie.
    return reinterpret_cast<Span*>(reinterpret_cast<std::uintptr_t>(cell) &
                                   ~(std::uintptr_t{kSpanBytes} - 1));
}

FreeCell* NextOf(FreeCell* cell) noexcept {
    Unpoison(cell, sizeof(FreeCell));
    FreeCell* const next = cell->next;
    Poison(cell, sizeof(FreeCell));
    return next;
}

void SetNext(FreeCell* cell, FreeCell* next) noexcept {
    Unpoison(cell, sizeof(FreeCell));
    cell->next = next;
    Poison(cell, sizeof(FreeCell));
}

/// The cells that no thread keeps, for all threads.
class SharedStore {
public:
    /// A list of at most count cells of the class, at least one. Throws std::bad_alloc when there is none.
    std::size_t Take(CellClass cellClass, std::size_t count, FreeCell*& cells) {
        const std::lock_guard lock(guard_);
        std::size_t taken = 0;
        cells = nullptr;
        while (taken < count) {
            Span* span = spansWithRoom_[cellClass].First();
            if (span == nullptr) {
                if (taken > 0) {
                    break;
                }
                span = &AddSpan(cellClass);
            }
            taken += TakeFrom(*span, count - taken, cells);
            if (!span->HasRoom()) {
                spansWithRoom_[cellClass].Remove(*span);
            }
        }
        return taken;
    }

    void Give(FreeCell* cells) noexcept {
        if (cells == nullptr) {
            return;
        }
        const std::lock_guard lock(guard_);
        while (cells != nullptr) {
            // Cells that were freed together mostly lie together.
            Span& span = *SpanOf(cells);
            FreeCell* const first = cells;
            FreeCell* last = cells;
            std::uint32_t count = 1;
            for (cells = NextOf(last); cells != nullptr && SpanOf(cells) == &span; cells = NextOf(last)) {
                last = cells;
                ++count;
            }
            if (!span.HasRoom()) {
                spansWithRoom_[span.cellClass].Add(span);
            }
            SetNext(last, span.freeCells);
            span.freeCells = first;
            span.freeCount += count;
            if (span.IsUnused()) {
                spansWithRoom_[span.cellClass].Remove(span);
                ReleaseSpan(span);
            }
        }
    }

private:
    /// Puts up to count cells of the span before the list: freed ones first, then new ones.
    static std::size_t TakeFrom(Span& span, std::size_t count, FreeCell*& cells) noexcept {
        const std::size_t bytes = kCellSizes[span.cellClass];
        std::byte* const firstCell = reinterpret_cast<std::byte*>(&span) + kSpanHeaderBytes;
        std::size_t taken = 0;
        while (taken < count && span.HasRoom()) {
            FreeCell* cell = span.freeCells;
            if (cell != nullptr) {
                span.freeCells = NextOf(cell);
                --span.freeCount;
            } else {
                cell = reinterpret_cast<FreeCell*>(firstCell + span.cutCount * bytes);
                ++span.cutCount;
            }
            SetNext(cell, cells);
            cells = cell;
            ++taken;
        }
        return taken;
    }

    Span& AddSpan(CellClass cellClass) {
        if (regionsWithRoom_.First() == nullptr) {
            AddRegion();
        }
        Region& region = *regionsWithRoom_.First();
        if (&region == spareRegion_) {
            spareRegion_ = nullptr;
        }
        Span& span = *region.freeSpans.First();
        region.freeSpans.Remove(span);
        if (--region.freeSpanCount == 0) {
            regionsWithRoom_.Remove(region);
        }
        span.freeCells = nullptr;
        span.freeCount = 0;
        span.cutCount = 0;
        span.capacity = static_cast<std::uint32_t>((kSpanBytes - kSpanHeaderBytes) / kCellSizes[cellClass]);
        span.cellClass = cellClass;
        spansWithRoom_[cellClass].Add(span);
        return span;
    }

    void AddRegion() {
        auto* const memory = static_cast<std::byte*>(AllocateBlock(kRegionBytes));
        auto* const region = new (memory) Region{};
        std::byte* const end = memory + kRegionBytes;
        const std::uintptr_t past = reinterpret_cast<std::uintptr_t>(memory + sizeof(Region)) % kSpanBytes;
        std::byte* at = memory + sizeof(Region) + (kSpanBytes - past) % kSpanBytes;
        for (; end - at >= static_cast<std::ptrdiff_t>(kSpanBytes); at += kSpanBytes) {
            Span* const span = new (at) Span{};
            span->region = region;
            region->freeSpans.Add(*span);
            ++region->spanCount;
            Poison(at + kSpanHeaderBytes, kSpanBytes - kSpanHeaderBytes);
        }
        region->freeSpanCount = region->spanCount;
        regionsWithRoom_.Add(*region);
    }

    void ReleaseSpan(Span& span) noexcept {
        Region& region = *span.region;
        region.freeSpans.Add(span);
        if (++region.freeSpanCount == 1) {
            regionsWithRoom_.Add(region);
        }
        if (region.freeSpanCount < region.spanCount) {
            return;
        }
        // One empty region stays, so that a document made over and over does not fetch one each time.
        // Measured: with an allocator that returns large blocks to the system at once (glibc's with a fixed
        // MALLOC_MMAP_THRESHOLD_), reading and releasing an array of 40,000 texts takes 1.22 times as long
        // without it; with glibc's own settings it makes no difference.
        if (spareRegion_ == nullptr) {
            spareRegion_ = &region;
            return;
        }
        regionsWithRoom_.Remove(region);
        Unpoison(&region, kRegionBytes);
        FreeBlock(&region);
    }

    std::mutex guard_;
    Chain<Span> spansWithRoom_[kCellClasses];
    Chain<Region> regionsWithRoom_;
    Region* spareRegion_ = nullptr;
};

/// Never destroyed: nodes in static variables are released after everything else.
SharedStore& Store() {
    static SharedStore& store = *new SharedStore;  // NOLINT(cppcoreguidelines-owning-memory)
    return store;
}

}  // namespace

void HandOver(CellCache& cache) noexcept {
    for (CellCache::Bin& bin : cache.bins) {
        Store().Give(bin.active);
        Store().Give(bin.spare);
        bin = {};
    }
}

void Cells::Refill(CellCache::Bin& bin, CellClass cellClass) {
    if (bin.spare != nullptr) {
        bin.active = bin.spare;
        bin.activeCount = CellsPerBatch(cellClass);
        bin.spare = nullptr;
        return;
    }
    bin.activeCount = Store().Take(cellClass, CellsPerBatch(cellClass), bin.active);
}

void Cells::SetAside(CellCache::Bin& bin) noexcept {
    if (bin.spare != nullptr) {
        Store().Give(bin.spare);
    }
    bin.spare = bin.active;
    bin.active = nullptr;
    bin.activeCount = 0;
}

}  // namespace libjson::detail

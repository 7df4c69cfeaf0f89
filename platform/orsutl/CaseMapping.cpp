#include "CaseMapping.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace orsutl::detail {

namespace {

/// The code points from `first` to `last`, `step` apart, are mapped to themselves plus `delta`.
struct CaseRange {
    char32_t first;
    char32_t last;
    char32_t step;
    std::int32_t delta;
};

#include "CaseTable.inc"

template <std::size_t Size>
char32_t Mapped(const CaseRange (&ranges)[Size], char32_t codePoint) {
    const CaseRange* range =
        std::lower_bound(std::begin(ranges), std::end(ranges), codePoint,
                         [](const CaseRange& candidate, char32_t wanted) { return candidate.last < wanted; });
    if (range == std::end(ranges) || codePoint < range->first ||
        (codePoint - range->first) % range->step != 0) {
        return codePoint;
    }
    return static_cast<char32_t>(static_cast<std::int32_t>(codePoint) + range->delta);
}

}  // namespace

char32_t ToUpper(char32_t codePoint) noexcept {
    if (codePoint < 0x80) {
        return codePoint >= U'a' && codePoint <= U'z' ? codePoint - 0x20 : codePoint;
    }
    return Mapped(kUpperRanges, codePoint);
}

char32_t FoldCase(char32_t codePoint) noexcept {
    if (codePoint < 0x80) {
        return codePoint >= U'A' && codePoint <= U'Z' ? codePoint + 0x20 : codePoint;
    }
    return Mapped(kFoldRanges, codePoint);
}

}  // namespace orsutl::detail

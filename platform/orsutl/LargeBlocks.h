#pragma once

#include <cstddef>

/// Blocks of memory for texts of a megabyte and more, which grow without being copied where the system can
/// move memory by its pages. Aligned for every fundamental type.
namespace orsutl::detail {

inline constexpr std::size_t kLargeBlock = std::size_t{1024} * 1024;

/// Throws std::bad_alloc.
void* AllocateLargeBlock(std::size_t bytes);
/// The block with a new size, maybe at another place. Throws std::bad_alloc, and then the block is as it was.
void* ResizeLargeBlock(void* block, std::size_t bytes);
void FreeLargeBlock(void* block) noexcept;

}  // namespace orsutl::detail

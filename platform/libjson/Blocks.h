#pragma once

#include <cstddef>

namespace libjson::detail {

/// A block of memory from the registered functions, aligned for any type. Throws std::bad_alloc.
void* AllocateBlock(std::size_t bytes);

/// The block with a new size and, up to the smaller of both sizes, its old content; the block itself is
/// invalid afterwards. Throws std::bad_alloc and leaves the block as it is when there is no memory.
void* ResizeBlock(void* block, std::size_t bytes);

/// Gives the block back to the function that belonged to the one it came from.
void FreeBlock(void* block) noexcept;

}  // namespace libjson::detail

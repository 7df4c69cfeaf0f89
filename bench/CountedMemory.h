#pragma once

/// How often this process has asked for memory, the reallocations included.
long CountOfAllocations() noexcept;

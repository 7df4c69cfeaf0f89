#pragma once

#include <cstddef>

/// The memory of the whole process, libraries included, in a program that is linked with CountedMemory.cpp:
/// from when this is made, without what was in use then. Not for Windows, where a library has its own.
class CountedMemory {
public:
    CountedMemory();

    std::size_t InUse() const;
    /// The most that was in use at one time since the newest of all of these was made.
    std::size_t Most() const;

private:
    std::size_t before_;
};

/// For as long as it lives, nodes take their memory where it is counted.
class NodesInCountedMemory {
public:
    NodesInCountedMemory();
    ~NodesInCountedMemory();
    NodesInCountedMemory(const NodesInCountedMemory&) = delete;
    NodesInCountedMemory& operator=(const NodesInCountedMemory&) = delete;
};

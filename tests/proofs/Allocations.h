#pragma once

#include <atomic>
#include <cstddef>

/// The memory that the process is given, counted and, on demand, denied.
namespace allocations {

enum class Source {
    /// What operator new gives, in every library of the process.
    kNew,
    /// What the functions give that are registered with libjson.
    kLibjson,
};

enum class Times { kOnce, kFromThenOn };

/// How many blocks were given, and how many of them are in use; of libjson's those that it does not keep for
/// many nodes.
std::size_t Calls(Source source);
std::size_t InUse(Source source);

/// Registers the functions with libjson, and gives libjson's own back at the end.
class LibjsonFunctions {
public:
    LibjsonFunctions();
    ~LibjsonFunctions();
    LibjsonFunctions(const LibjsonFunctions&) = delete;
    LibjsonFunctions& operator=(const LibjsonFunctions&) = delete;
};

/// The n-th allocation from now on, counted from 1, fails for as long as it lives.
class Failing {
public:
    Failing(Source source, std::size_t nth, Times times);
    ~Failing();
    Failing(const Failing&) = delete;
    Failing& operator=(const Failing&) = delete;

    bool HasHappened() const;

private:
    Source source_;
};

/// What one source counts and denies.
class Gate {
public:
    /// Whether the next allocation succeeds; counts it if it does.
    bool Admit() noexcept;
    void Return() noexcept { --inUse_; }

    std::size_t Calls() const noexcept { return calls_; }
    std::size_t InUse() const noexcept { return inUse_; }
    bool HasFailed() const noexcept { return hasFailed_; }
    void FailAt(std::size_t nth, Times times) noexcept;
    void FailNoMore() noexcept { untilFailure_ = 0; }

private:
    std::atomic<std::size_t> calls_ = 0;
    std::atomic<std::size_t> inUse_ = 0;
    /// 1 for the next allocation; 0 for none.
    std::atomic<std::size_t> untilFailure_ = 0;
    bool isForGood_ = false;
    std::atomic<bool> hasFailed_ = false;
};

/// Leads what operator new takes through the gate. Needed on Windows only, where every library has an
/// operator new of its own; elsewhere the program's replaces them all.
void CountOperatorNew();

Gate& GateOf(Source source) noexcept;

}  // namespace allocations

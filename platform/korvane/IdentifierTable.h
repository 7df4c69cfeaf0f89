#pragma once

#include <cstddef>
#include <unordered_map>
#include <unordered_set>
#include <vector>

class CAEObject;

namespace korvane {

/// Which object an identifier means, and which identifier comes next.
///
/// Identifiers that the table itself gives out are close together, so they index an array; distant ones that
/// callers choose go into a hash table.
class IdentifierTable {
public:
    /// Null when the identifier means nothing.
    CAEObject* Find(int id) const noexcept;
    /// False, with nothing changed, for an identifier that is not positive or means an object already.
    bool Insert(int id, CAEObject& object);
    void Erase(int id) noexcept;

    /// An identifier that was never in the table and never given out; 0 when there is none left.
    int TakeNext() noexcept;
    /// The identifier that comes next in the sequence, unless a caller chose it already.
    int Next() const noexcept { return next_; }
    /// Makes the sequence skip the identifiers before this one. It never goes back.
    void SkipBefore(int next) noexcept;

private:
    std::vector<CAEObject*> near_;
    std::unordered_map<int, CAEObject*> far_;
    std::size_t count_ = 0;
    int next_ = 1;
    /// The identifiers from `next_` on that callers chose: the sequence skips them.
    std::unordered_set<int> taken_;
};

}  // namespace korvane

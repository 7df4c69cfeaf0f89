#pragma once

#include <cstddef>
#include <unordered_map>
#include <unordered_set>
#include <vector>

class CAEObject;

namespace korvane {

/// Which object an identifier means, and which identifier comes next.
///
/// Identifiers given out here lie close together, so that they index an array; those far out that callers
/// choose themselves go into a hash table beside it.
class IdentifierTable {
public:
    /// Null when the identifier means nothing.
    CAEObject* Find(int id) const noexcept;
    /// False, with nothing changed, for an identifier that is not positive or means an object already.
    bool Insert(int id, CAEObject& object);
    void Erase(int id) noexcept;

    /// An identifier that never was in the table and was never given out; 0 when there is none left.
    int TakeNext() noexcept;
    /// Where the sequence stands: the identifier that comes next, unless a caller chose it already.
    int Next() const noexcept { return next_; }
    /// Lets the sequence leave out the identifiers before this one. It never goes back.
    void SkipBefore(int next) noexcept;

private:
    std::vector<CAEObject*> near_;
    std::unordered_map<int, CAEObject*> far_;
    std::size_t count_ = 0;
    int next_ = 1;
    /// The identifiers from `next_` on that callers chose: the sequence leaves them out.
    std::unordered_set<int> taken_;
};

}  // namespace korvane

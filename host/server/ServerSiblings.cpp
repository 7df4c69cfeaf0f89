#include "ServerSiblings.h"

#include <algorithm>
#include <iterator>
#include <ranges>
#include <utility>

#include "ServerTables.h"

namespace host {

StoredSiblings::StoredSiblings(Statement& ownedBy, std::int64_t owner) {
    ownedBy.Begin(owner);
    while (ownedBy.Next()) {
        KnownObject known{ownedBy.Number(0), ownedBy.Text(1), ownedBy.Text(2)};
        const NodeName name{KeyPrefix(known.type), ownedBy.Text(4), ownedBy.Text(5)};
        Equal& equal = byName_[name.Text()];
        if (ownedBy.IsNull(3)) {
            equal.detached.emplace(ownedBy.Number(6), std::move(known));
        } else {
            equal.attached.push_back(std::move(known));
        }
    }
    ownedBy.Reset();
}

const KnownObject* StoredSiblings::Find(const std::string& name, std::int64_t ordinal,
                                        const IsFree& isFree) const {
    const auto found = byName_.find(name);
    if (found == byName_.end()) {
        return nullptr;
    }
    const Equal& equal = found->second;
    if (std::cmp_less(ordinal, equal.attached.size())) {
        const KnownObject& known = equal.attached[static_cast<std::size_t>(ordinal)];
        if (isFree(known.object)) {
            return &known;
        }
    }
    const auto [begin, end] = equal.detached.equal_range(ordinal);
    for (auto detached = end; detached != begin;) {
        if (isFree((--detached)->second.object)) {
            return &detached->second;
        }
    }
    return nullptr;
}

std::int64_t StoredSiblings::CountOf(const std::string& name) const {
    const auto found = byName_.find(name);
    return found == byName_.end() ? 0 : static_cast<std::int64_t>(found->second.attached.size());
}

}  // namespace host

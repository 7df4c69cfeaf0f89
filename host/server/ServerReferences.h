#pragma once

#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "host/system/DatabaseChecksum.h"

namespace host {

/// Follows what the nodes of a database refer to while its rows are read: the object that a node stands for,
/// the one that it shows, and the node above it.
class ReferenceReader final : public RowReader {
public:
    void Read(std::string_view table, const Row& row) override;

    /// Whether everything is there, and every node comes after the one above it. It may be false although
    /// that is so, if objects come after nodes or rows without order.
    bool IsSound() const { return isSound_; }

private:
    /// Numbers, as ranges: those of a table have few gaps.
    class Numbers {
    public:
        void Add(std::int64_t number);
        bool Has(std::int64_t number) const;

    private:
        using Range = std::pair<std::int64_t, std::int64_t>;
        std::vector<Range> ranges_;
    };

    void ReadNode(const Row& row);

    Numbers objects_;
    Numbers nodes_;
    bool isSound_ = true;
};

}  // namespace host

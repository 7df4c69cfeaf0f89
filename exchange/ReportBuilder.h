#pragma once

#include <korvaneexchange/Report.h>

#include <cstddef>
#include <string>

namespace korvane::exchange {

/// Fills in a report: counts everything, and lists entries until their texts are too long altogether.
class ReportBuilder {
public:
    explicit ReportBuilder(Report& report) : report_(report) {}

    /// Whether the next entry will be listed. If not, nobody needs to make its texts.
    bool IsListing() const { return bytes_ < kMostBytes; }

    /// Keeps room for a text of an entry that is added later, and gives it back.
    void Reserve(std::size_t bytes) { bytes_ += bytes; }
    void Release(std::size_t bytes) { bytes_ -= bytes; }

    void Add(Reason reason, std::string pointer, int identifier, std::string subject, std::string sentence);
    /// Counts without listing: what the report does not list, or not any more.
    void Count(Reason reason) { ++report_.counts[static_cast<std::size_t>(reason)]; }
    void CountUnlisted(Reason reason);

private:
    static constexpr std::size_t kMostBytes = std::size_t{256} << 20U;

    Report& report_;
    std::size_t bytes_ = 0;
};

}  // namespace korvane::exchange

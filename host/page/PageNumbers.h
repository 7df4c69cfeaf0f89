#pragma once

#include <EmbeddedModel.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "PageContent.h"
#include "host/query/Units.h"

namespace host {

/// The numbers of metadata entries in the units that a plot of them may have. A page has nothing to convert
/// units with, so its numbers come converted.
class PageNumbers {
public:
    explicit PageNumbers(const PageContent& content);

    /// A number in a unit.
    using Number = std::pair<std::string, double>;

    /// The number of the entry in its own unit and then in each other one that is usual for entries of this
    /// name and that it can be converted to. Empty if the page needs none of it: the entry is not a number,
    /// or a plain one with its unit beside it that is converted to no other.
    std::vector<Number> Of(const korvane::MetadataValues& entry);

private:
    void Count(const CAEObject& object);

    Units units_;
    /// By the name, in one letter case: how many numbers have each unit, and then the usual units.
    std::map<std::string, std::map<std::string, std::size_t>> counts_;
    std::map<std::string, std::vector<std::string>> usual_;
};

}  // namespace host

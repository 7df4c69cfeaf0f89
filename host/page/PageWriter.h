#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "PageContent.h"
#include "host/system/OutputFile.h"

namespace host {

/// A project of the page.
struct PageSide {
    std::string name;
    PageContent content;
};

/// A difference between the two projects of a page: `+` for what only the second has, `-` for what only the
/// first has, `>` for what was moved and `~` for what has changed.
struct PageChange {
    char mark = '~';
    /// The identifier in the second project; of what only the first has, that in the first.
    int identifier = 0;
    std::string text;
};

struct PageComparison {
    /// What is compared with each other: identifiers in the first project and in the second.
    std::vector<std::pair<int, int>> pairs;
    std::vector<PageChange> changes;
    /// In words: `3 differences: 1 added, 2 changed`.
    std::string summary;
};

/// What goes into a page.
struct Page {
    std::string title;
    /// One project, or two that are compared.
    std::vector<PageSide> sides;
    std::optional<PageComparison> comparison;
    /// How many bytes of pictures and of models may be embedded.
    std::uint64_t pictureLimit = 0;
    std::uint64_t modelLimit = 0;
    /// Told how many of the objects are written, now and then.
    std::function<void(std::size_t done, std::size_t total)> progress;
};

/// Writes the page: one HTML file that needs nothing else. Pictures are read when it is their turn; one that
/// cannot be read then is named in the page, without its content. Memory does not grow with the page, except
/// for one picture at a time.
///
/// The scripts of the page set every text as text, and its content security policy allows these scripts and
/// this style only, no request, and pictures only from the page itself.
std::error_code WritePage(const Page& page, const WritePiece& put);

}  // namespace host

#pragma once

#include <CAEObject.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <system_error>

#include "PageContent.h"
#include "host/system/OutputFile.h"

namespace host {

/// What goes into a page.
struct Page {
    std::string title;
    PageContent content;
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

/// Whether a text begins as pages do.
bool IsPage(std::string_view beginning);

}  // namespace host

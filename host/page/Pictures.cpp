#include "Pictures.h"

#include <algorithm>
#include <array>
#include <string>

#include "host/system/FileSystem.h"
#include "host/system/Text.h"

namespace host {
namespace {

constexpr std::string_view kSvg = ".SVG";
constexpr std::array<std::string_view, 9> kExtensions = {".PNG",  ".JPG", ".JPEG", ".JPE", ".JFIF",
                                                         ".WEBP", ".GIF", ".BMP",  kSvg};
constexpr std::size_t kHeadSize = 1024;

/// How a picture of a type begins.
struct Beginning {
    std::string_view bytes;
    std::string_view type;
};
constexpr std::array kBeginnings = {
    Beginning{"\x89PNG\r\n\x1A\n", "image/png"},
    Beginning{"\xFF\xD8\xFF", "image/jpeg"},
    Beginning{"GIF87a", "image/gif"},
    Beginning{"GIF89a", "image/gif"},
    Beginning{"BM", "image/bmp"},
};

bool IsWebp(std::string_view head) {
    return head.starts_with("RIFF") && head.size() >= 12 && head.substr(8, 4) == "WEBP";
}

/// The root element may come behind a declaration, a document type and comments.
bool IsSvg(std::string_view head) {
    const std::string_view text = Trim(head.starts_with("\xEF\xBB\xBF") ? head.substr(3) : head);
    return text.starts_with('<') && text.find("<svg") != std::string_view::npos;
}

}  // namespace

std::string_view PictureType(const std::filesystem::path& file) {
    const std::string extension = ToUpperAscii(Printable(file.extension()));
    FileSample sample;
    if (std::ranges::find(kExtensions, extension) == kExtensions.end() ||
        ReadSample(file, kHeadSize, 0, sample)) {
        return {};
    }
    for (const Beginning& beginning : kBeginnings) {
        if (sample.head.starts_with(beginning.bytes)) {
            return beginning.type;
        }
    }
    if (IsWebp(sample.head)) {
        return "image/webp";
    }
    return extension == kSvg && IsSvg(sample.head) ? "image/svg+xml" : "";
}

}  // namespace host

// Reads any bytes as the content of a file of a project that a page shows, and any text as the names in it: a
// file that is a picture is in the page byte for byte, and no text ends the string or the element that it is
// in. The first line has the title of the page and, behind its last point, what the name of the file ends
// with.

#include <EmbeddedModel.h>
#include <korvaneexchange/Text.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Expect.h"
#include "FuzzedFiles.h"
#include "Trip.h"
#include "host/page/PageWriter.h"
#include "host/page/Pictures.h"
#include "support/ModelBuilders.h"

namespace {

/// Less than inputs may have, so that there is not room for every picture.
constexpr std::uint64_t kRoom = 1500;

/// What the name of the file ends with: letters and digits only, so that it is a name everywhere.
std::string EndingOf(std::string_view line) {
    std::string ending;
    for (const char character : line.substr(std::min(line.rfind('.'), line.size()))) {
        const bool isLetter =
            (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
        if (isLetter || character == '.') {
            ending += character;
        }
    }
    return ending.size() <= 8 ? ending : "";
}

/// The type of a picture a second time: by what comes first in the content, whatever picture the name is of.
std::string TypeOf(std::string ending, std::string_view content) {
    std::ranges::transform(ending, ending.begin(), [](char letter) {
        return letter >= 'a' ? static_cast<char>(letter - 32) : letter;
    });
    constexpr std::array<std::string_view, 9> kEndings = {".PNG",  ".JPG", ".JPEG", ".JPE", ".JFIF",
                                                          ".WEBP", ".GIF", ".BMP",  ".SVG"};
    if (std::ranges::find(kEndings, ending) == kEndings.end()) {
        return "";
    }
    const auto has = [&](std::size_t place, std::string_view bytes) {
        return content.size() >= place + bytes.size() && content.substr(place, bytes.size()) == bytes;
    };
    if (has(0, "\x89PNG\r\n\x1A\n")) {
        return "image/png";
    }
    if (has(0, "\xFF\xD8\xFF")) {
        return "image/jpeg";
    }
    if (has(0, "GIF87a") || has(0, "GIF89a")) {
        return "image/gif";
    }
    if (has(0, "BM")) {
        return "image/bmp";
    }
    if (has(0, "RIFF") && has(8, "WEBP")) {
        return "image/webp";
    }
    // Only the beginning of a file is looked at.
    std::string_view head = content.substr(0, 1024);
    head.remove_prefix(has(0, "\xEF\xBB\xBF") ? 3 : 0);
    head.remove_prefix(std::min(head.find_first_not_of(" \t\r\n\f\v"), head.size()));
    const bool isSvg =
        ending == ".SVG" && head.starts_with("<") && head.find("<svg") != std::string_view::npos;
    return isSvg ? "image/svg+xml" : "";
}

std::string Decoded(std::string_view base64) {
    constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    Expect(base64.size() % 4 == 0, "four digits are three bytes");
    std::string bytes;
    std::uint32_t bits = 0;
    int count = 0;
    const std::string_view digits = base64.substr(0, base64.find('='));
    Expect(base64.size() - digits.size() <= 2, "at most two digits are missing");
    for (const char digit : digits) {
        const std::size_t value = kDigits.find(digit);
        Expect(value != std::string_view::npos, "a digit is one");
        bits = bits << 6U | static_cast<std::uint32_t>(value);
        count += 6;
        if (count >= 8) {
            count -= 8;
            bytes += static_cast<char>(bits >> static_cast<unsigned>(count) & 0xFFU);
        }
    }
    return bytes;
}

/// An element of a page, as a browser reads it: it ends with the next end of a script, whatever it is.
struct Script {
    std::string_view attributes;
    std::string_view content;
};

std::vector<Script> ScriptsOf(std::string_view page) {
    constexpr std::string_view kBegin = "<script";
    constexpr std::string_view kEnd = "</script>";
    std::vector<Script> scripts;
    while (page.find(kBegin) != std::string_view::npos) {
        page.remove_prefix(page.find(kBegin) + kBegin.size());
        const std::size_t open = page.find('>');
        const std::size_t close = page.find(kEnd);
        Expect(open < close && close != std::string_view::npos, "every script ends");
        scripts.push_back({page.substr(0, open), page.substr(open + 1, close - open - 1)});
        page.remove_prefix(close + kEnd.size());
    }
    return scripts;
}

/// What the page has of each kind; data is JSON.
struct Found {
    std::size_t data = 0;
    std::optional<std::string> picture;
    std::optional<std::string> model;
};

Found Read(std::string_view page) {
    Found found;
    for (const Script& script : ScriptsOf(page)) {
        if (script.attributes.find("application/json") != std::string_view::npos) {
            Expect(libjson::is_valid(json_string(script.content.data(), script.content.size())),
                   "the data of a page is JSON");
            Expect(script.content.find("<!--") == std::string_view::npos,
                   "no text hides the end of a script");
            ++found.data;
        } else if (script.attributes.find("picture-0-0") != std::string_view::npos) {
            found.picture = Decoded(script.content);
        } else if (script.attributes.find("model-0-0") != std::string_view::npos) {
            found.model = Decoded(script.content);
        }
    }
    return found;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::string_view line = input.substr(0, input.find('\n'));
    const std::string_view content = input.substr(std::min(line.size() + 1, size));
    const std::string ending = EndingOf(line);
    const std::filesystem::path file = PlaceInMemory("picture" + ending);
    WriteBytes(file, content);
    const std::string type(host::PictureType(file));
    Expect(type == TypeOf(ending, content), "a picture is one by its name and its first bytes");

    const std::unique_ptr<CAEProject> project = MakeProject();
    const OuString text = korvane::exchange::FromUtf8(line);
    SetMetadata(*project, L"Text", text, text, L"");
    const _tagFileType role = size % 2 == 0 ? CAE_FILE_CAD : CAE_FILE_MESH;
    CAEObject* const part = korvane::CreateObject(*project, CAE_PART, text);
    const CAEFile* const attached =
        korvane::CreateFile(*project, korvane::exchange::FromUtf8(file.string()), role, CAE_FORMAT_ASCII);
    AttachFile(*part, attached->getID(), role);
    host::PageRooms rooms{{kRoom}, {kRoom}};
    host::ReadableDirectories readable;
    readable.Add(file.parent_path());
    host::Page page;
    page.title = line;
    page.sides.push_back({std::string(line), host::ListPageContent(*project, readable, rooms)});
    const std::vector<host::PageFile>& files = page.sides.front().content.files;
    Expect(files.size() == 1 && files.front().pictureType == type, "the page has the file");
    const bool isEmbedded = !type.empty() && content.size() <= kRoom;
    Expect(files.front().isEmbedded == isEmbedded, "a picture is embedded if there is room");

    std::string written;
    const auto write = [&](const host::WritePiece& put) { return host::WritePage(page, put); };
    Expect(!host::CollectText(write, written), "a page is written");
    const Found found = Read(written);
    Expect(found.data == 3, "the page has its head, its files and its objects");
    Expect(found.picture.has_value() == isEmbedded && (!isEmbedded || *found.picture == content),
           "the page has the bytes of the picture");
    const auto& model = files.front().model;
    const bool hasModel = model && !model->bytes.empty();
    Expect(found.model.has_value() == hasModel && (!hasModel || *found.model == model->bytes),
           "the page has the bytes of the model");
    std::filesystem::remove(file);
    return 0;
}

#include "TableCodePage.h"

#include <iconv.h>

#include <cerrno>
#include <string_view>

#include "WideText.h"

namespace orsutl::detail {

namespace {

constexpr char32_t kNothing = 0xFFFFFFFF;
constexpr const char* kCodePoints = "UTF-32BE";

}  // namespace

/// One direction of iconv, for single characters.
class TableCodePage::Converter {
public:
    enum class Outcome { kConverted, kIncomplete, kRefused };

    Converter(const char* to, const char* from) : descriptor_(iconv_open(to, from)) {}
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;
    ~Converter() {
        if (IsOpen()) {
            iconv_close(descriptor_);
        }
    }

    // NOLINTNEXTLINE(performance-no-int-to-ptr): iconv's own way to say that it has failed.
    bool IsOpen() const { return descriptor_ != reinterpret_cast<iconv_t>(-1); }

    Outcome Convert(std::string input, std::string& output) {
        constexpr auto kFailed = static_cast<std::size_t>(-1);
        std::array<char, 64> room{};
        char* in = input.data();
        std::size_t inLeft = input.size();
        char* out = room.data();
        std::size_t outLeft = room.size();
        iconv(descriptor_, nullptr, nullptr, nullptr, nullptr);
        if (iconv(descriptor_, &in, &inLeft, &out, &outLeft) == kFailed) {
            return errno == EINVAL ? Outcome::kIncomplete : Outcome::kRefused;
        }
        // Some code pages hold a character back in case an accent follows.
        if (iconv(descriptor_, nullptr, nullptr, &out, &outLeft) == kFailed) {
            return Outcome::kRefused;
        }
        output.assign(room.data(), room.size() - outLeft);
        return Outcome::kConverted;
    }

    /// The one code point that the bytes mean; kNothing, though converted, when they mean several.
    Outcome ToCodePoint(std::string bytes, char32_t& codePoint) {
        std::string output;
        const Outcome outcome = Convert(std::move(bytes), output);
        codePoint = kNothing;
        if (outcome == Outcome::kConverted && output.size() == 4) {
            codePoint = 0;
            for (const char byte : output) {
                codePoint = (codePoint << 8) | static_cast<unsigned char>(byte);
            }
        }
        return outcome;
    }

private:
    iconv_t descriptor_;
};

std::unique_ptr<const TableCodePage> TableCodePage::Make(const std::string& iconvName) {
    // To iconv, an empty name means the locale's code page, and what follows a slash is an option.
    if (iconvName.empty() || iconvName.find('/') != std::string::npos) {
        return nullptr;
    }
    auto codePage = std::make_unique<TableCodePage>();
    return codePage->ReadTables(iconvName) ? std::move(codePage) : nullptr;
}

bool TableCodePage::ReadTables(const std::string& iconvName) {
    Converter converter(kCodePoints, iconvName.c_str());
    Converter back(iconvName.c_str(), kCodePoints);
    if (!converter.IsOpen() || !back.IsOpen()) {
        return false;
    }
    for (unsigned int number = 0; number < 256; ++number) {
        const auto byte = static_cast<unsigned char>(number);
        char32_t& codePoint = singles_[byte];
        const Converter::Outcome outcome =
            converter.ToCodePoint(std::string(1, static_cast<char>(byte)), codePoint);
        if (number < 0x80 && codePoint != number) {
            return false;
        }
        if (outcome == Converter::Outcome::kIncomplete) {
            if (!ReadTrails(converter, byte)) {
                return false;
            }
        } else if (codePoint == kNothing && number < 0xA0) {
            codePoint = number;
        }
    }
    for (unsigned int lead = 0x80; lead < 256; ++lead) {
        Learn(singles_[lead], {0, static_cast<unsigned char>(lead)}, back);
        for (std::size_t trail = 0; trail < doubles_[lead].size(); ++trail) {
            Learn(doubles_[lead][trail],
                  {static_cast<unsigned char>(lead), static_cast<unsigned char>(trail)}, back);
        }
    }
    return true;
}

bool TableCodePage::ReadTrails(Converter& converter, unsigned char lead) {
    std::vector<char32_t>& trails = doubles_[lead];
    trails.resize(256);
    for (std::size_t trail = 0; trail < trails.size(); ++trail) {
        const std::string bytes = {static_cast<char>(lead),
                                   static_cast<char>(static_cast<unsigned char>(trail))};
        if (converter.ToCodePoint(bytes, trails[trail]) == Converter::Outcome::kIncomplete) {
            return false;
        }
    }
    return true;
}

void TableCodePage::Learn(char32_t codePoint, Bytes bytes, Converter& back) {
    if (codePoint == kNothing || codePoint < 0x80 || bytesOf_.emplace(codePoint, bytes).second) {
        return;
    }
    // A code page may hold a character twice; iconv knows which bytes to write.
    std::string input;
    for (const int shift : {24, 16, 8, 0}) {
        input += static_cast<char>(static_cast<unsigned char>((codePoint >> shift) & 0xFF));
    }
    std::string preferred;
    if (back.Convert(input, preferred) != Converter::Outcome::kConverted) {
        return;
    }
    const std::string candidate =
        bytes.lead == 0 ? std::string{static_cast<char>(bytes.last)}
                        : std::string{static_cast<char>(bytes.lead), static_cast<char>(bytes.last)};
    if (candidate == preferred) {
        bytesOf_[codePoint] = bytes;
    }
}

/// The code point at an index below the text's length, or the escape of the one byte there; moves the index
/// on.
char32_t TableCodePage::Decode(std::string_view text, std::size_t& index) const {
    const auto byte = static_cast<unsigned char>(text[index++]);
    if (singles_[byte] != kNothing) {
        return singles_[byte];
    }
    if (!doubles_[byte].empty() && index < text.size()) {
        const char32_t codePoint = doubles_[byte][static_cast<unsigned char>(text[index])];
        if (codePoint != kNothing) {
            ++index;
            return codePoint;
        }
    }
    return kEscapeBase + byte;
}

TableCodePage::Bytes TableCodePage::Encode(char32_t codePoint) const {
    if (codePoint < 0x80) {
        return {0, static_cast<unsigned char>(codePoint)};
    }
    const auto known = bytesOf_.find(codePoint);
    if (known != bytesOf_.end()) {
        return known->second;
    }
    if (codePoint >= kEscapeBase + 0x80 && codePoint <= kEscapeBase + 0xFF &&
        singles_[codePoint - kEscapeBase] == kNothing) {
        return {0, static_cast<unsigned char>(codePoint - kEscapeBase)};
    }
    return {0, '?'};
}

std::size_t TableCodePage::WidenedLength(std::string_view text) const {
    std::size_t length = 0;
    for (std::size_t index = 0; index < text.size();) {
        length += WideLength(Decode(text, index));
    }
    return length;
}

void TableCodePage::Widen(std::string_view text, wchar_t* wide) const {
    for (std::size_t index = 0; index < text.size();) {
        wide = PutWide(Decode(text, index), wide);
    }
}

std::size_t TableCodePage::NarrowedLength(std::wstring_view text) const {
    std::size_t length = 0;
    for (std::size_t index = 0; index < text.size();) {
        length += Encode(NextCodePoint(text, index)).lead == 0 ? 1 : 2;
    }
    return length;
}

void TableCodePage::Narrow(std::wstring_view text, char* narrow) const {
    for (std::size_t index = 0; index < text.size();) {
        const Bytes bytes = Encode(NextCodePoint(text, index));
        if (bytes.lead != 0) {
            *narrow++ = static_cast<char>(bytes.lead);
        }
        *narrow++ = static_cast<char>(bytes.last);
    }
}

}  // namespace orsutl::detail

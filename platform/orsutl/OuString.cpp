#include "OuString.h"

#include <algorithm>
#include <cstdarg>
#include <cwchar>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

#include "CaseMapping.h"
#include "TextBuffer.h"
#include "TextFormat.h"
#include "WideText.h"

using orsutl::detail::TextBuffer;

namespace {

std::wstring_view View(const wchar_t* text) {
    return text == nullptr ? std::wstring_view() : std::wstring_view(text);
}

std::wstring_view View(const OuString& text) {
    return {text.GetBuffer(), text.GetLength()};
}

int CompareTexts(std::wstring_view left, std::wstring_view right) {
    const auto difference = std::mismatch(left.begin(), left.end(), right.begin(), right.end());
    if (difference.first == left.end() || difference.second == right.end()) {
        return left.size() < right.size() ? -1 : left.size() > right.size() ? 1 : 0;
    }
    return orsutl::detail::CodePoint(*difference.first) < orsutl::detail::CodePoint(*difference.second) ? -1
                                                                                                        : 1;
}

int CompareTextsNoCase(std::wstring_view left, std::wstring_view right) {
    std::size_t leftIndex = 0;
    std::size_t rightIndex = 0;
    while (leftIndex < left.size() && rightIndex < right.size()) {
        const char32_t leftFolded = orsutl::detail::FoldCase(orsutl::detail::NextCodePoint(left, leftIndex));
        const char32_t rightFolded =
            orsutl::detail::FoldCase(orsutl::detail::NextCodePoint(right, rightIndex));
        if (leftFolded != rightFolded) {
            return leftFolded < rightFolded ? -1 : 1;
        }
    }
    return leftIndex < left.size() ? 1 : rightIndex < right.size() ? -1 : 0;
}

}  // namespace

OuString::OuString(const wchar_t* text) : buffer_(TextBuffer::FromWide(View(text)).release()) {}

OuString::OuString(const wchar_t* text, std::size_t length)
    : buffer_(TextBuffer::FromWide(text == nullptr ? std::wstring_view() : std::wstring_view(text, length))
                  .release()) {}

OuString::OuString(const char* text, int /*flags*/)
    : buffer_(
          TextBuffer::FromNarrow(text == nullptr ? std::string_view() : std::string_view(text)).release()) {}

OuString OuString::FromAnsi(const char* text, std::size_t length) {
    OuString wide;
    wide.buffer_ = TextBuffer::FromNarrow(std::string_view(text, length)).release();
    return wide;
}

void OuString::AddReference() const noexcept {
    buffer_->AddReference();
}

void OuString::ReleaseReference() const noexcept {
    buffer_->ReleaseReference();
}

OuString& OuString::operator=(const wchar_t* text) {
    return *this = OuString(text);
}

OuString& OuString::operator=(const char* text) {
    return *this = OuString(text, 0);
}

const wchar_t* OuString::GetBuffer() const noexcept {
    return buffer_ == nullptr ? L"" : std::as_const(*buffer_).Characters();
}

const char* OuString::GetAnsiBuffer() const {
    return buffer_ == nullptr ? "" : buffer_->AnsiForm();
}

std::size_t OuString::GetLength() const noexcept {
    return buffer_ == nullptr ? 0 : buffer_->Text().size();
}

void OuString::Append(const wchar_t* text, std::size_t length) {
    const std::wstring_view other =
        text == nullptr || length == 0 ? View(text) : std::wstring_view(text, length);
    if (other.empty()) {
        return;
    }
    if (buffer_ != nullptr &&
        (buffer_->AppendInPlace(other) || TextBuffer::AppendInLargeBlock(buffer_, other))) {
        return;
    }
    OuString joined;
    joined.buffer_ =
        (buffer_ == nullptr ? TextBuffer::FromWide(other) : TextBuffer::Joined(View(*this), other)).release();
    std::swap(buffer_, joined.buffer_);
}

int OuString::Compare(const OuString& other) const noexcept {
    return buffer_ == other.buffer_ ? 0 : CompareTexts(View(*this), View(other));
}

int OuString::Compare(const wchar_t* other) const noexcept {
    return CompareTexts(View(*this), View(other));
}

int OuString::CompareNoCase(const OuString& other) const noexcept {
    return buffer_ == other.buffer_ ? 0 : CompareTextsNoCase(View(*this), View(other));
}

int OuString::CompareNoCase(const wchar_t* other) const noexcept {
    return CompareTextsNoCase(View(*this), View(other));
}

void OuString::MakeUpper() {
    OuString upper;
    upper.buffer_ = TextBuffer::FromWideInUpperCase(View(*this)).release();
    std::swap(buffer_, upper.buffer_);
}

void OuString::Format(const wchar_t* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    try {
        FormatV(format, arguments);
    } catch (...) {
        va_end(arguments);
        throw;
    }
    va_end(arguments);
}

void OuString::FormatV(const wchar_t* format, std::va_list arguments) {
    const std::wstring text = orsutl::detail::FormatText(View(format), arguments);
    *this = OuString(text.data(), text.size());
}

bool OuString::Split(const wchar_t* separator, OuString& before, OuString& after) const {
    const std::wstring_view text = View(*this);
    const std::wstring_view wanted = View(separator);
    const std::size_t place = wanted.empty() ? std::wstring_view::npos : text.find(wanted);
    if (place == std::wstring_view::npos) {
        OuString whole(*this);
        after = OuString();
        before = std::move(whole);
        return false;
    }
    // Both are made before either is assigned: one of them may be this text.
    OuString first(text.data(), place);
    OuString rest(text.data() + place + wanted.size(), text.size() - place - wanted.size());
    before = std::move(first);
    after = std::move(rest);
    return true;
}

int OuString::ToInt(int otherwise) const noexcept {
    const auto isDigit = [](wchar_t character) { return character >= L'0' && character <= L'9'; };
    const wchar_t* place = GetBuffer();
    while (*place == L' ' || (*place >= L'\t' && *place <= L'\r')) {
        ++place;
    }
    const bool negative = *place == L'-';
    if (negative || *place == L'+') {
        ++place;
    }
    if (!isDigit(*place)) {
        return otherwise;
    }
    constexpr long long kMost = std::numeric_limits<int>::max();
    const long long most = negative ? kMost + 1 : kMost;
    long long number = 0;
    for (; isDigit(*place); ++place) {
        number = std::min(most, number * 10 + (*place - L'0'));
    }
    return static_cast<int>(negative ? -number : number);
}

bool operator==(const OuString& left, const OuString& right) noexcept {
    return left.Compare(right) == 0;
}

bool operator==(const OuString& left, const wchar_t* right) noexcept {
    return left.Compare(right) == 0;
}

bool operator<(const OuString& left, const OuString& right) noexcept {
    return left.Compare(right) < 0;
}

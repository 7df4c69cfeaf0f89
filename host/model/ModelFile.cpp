#include "ModelFile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "host/system/FileSystem.h"
#include "host/system/Text.h"

namespace host {
namespace {

// No program reads longer lines, and files that are no text at all can have longer ones.
constexpr std::size_t kLongestLine = std::size_t{1} << 20U;
// Small enough that the time is looked at every few milliseconds.
constexpr std::size_t kBlock = std::size_t{64} * 1024;

}  // namespace

std::error_code ModelFile::Open(const std::filesystem::path& resolved) {
    // Opening anything else could wait without an end.
    Entry entry;
    if (const std::error_code error = InspectTarget(resolved, entry)) {
        return error;
    }
    if (entry.type != EntryType::File) {
        return std::make_error_code(entry.type == EntryType::Directory ? std::errc::is_a_directory
                                                                       : std::errc::not_supported);
    }
    path_ = resolved;
    size_ = entry.size;
    errno = 0;
    stream_.open(resolved, std::ios::binary);
    if (!stream_.is_open()) {
        return {errno != 0 ? errno : EIO, std::generic_category()};
    }
    return {};
}

/// Adds a block to what is in memory. Returns false if the reading was stopped.
bool ModelFile::Refill() {
    if (!stopReason_.empty()) {
        return false;
    }
    if (deadline_.IsOver()) {
        stopReason_ = kTimeIsOver;
        return false;
    }
    buffer_.erase(0, begin_);
    before_ += begin_;
    begin_ = 0;
    const std::size_t size = buffer_.size();
    buffer_.resize(size + kBlock);
    errno = 0;
    stream_.read(buffer_.data() + size, kBlock);
    const auto count = static_cast<std::size_t>(stream_.gcount());
    buffer_.resize(size + count);
    isAtEnd_ = count < kBlock;
    if (stream_.bad() || (count < kBlock && !stream_.eof())) {
        const std::error_code error(errno != 0 ? errno : EIO, std::generic_category());
        ThrowIfOutOfMemory(error);
        stopReason_ = "it cannot be read: " + error.message();
    } else if (content_ == Content::Text && std::memchr(buffer_.data() + size, '\0', count) != nullptr) {
        stopReason_ = "it is not text";
    }
    return stopReason_.empty();
}

bool ModelFile::NextLine(std::string_view& line) {
    std::size_t end = buffer_.find('\n', begin_);
    while (end == std::string::npos && !isAtEnd_) {
        const std::size_t searched = buffer_.size() - begin_;
        if (searched > kLongestLine) {
            ++line_;
            stopReason_ = "the line is longer than a megabyte";
        }
        if (!Refill()) {
            return false;
        }
        end = buffer_.find('\n', searched);
    }
    if (!stopReason_.empty() || (end == std::string::npos && begin_ == buffer_.size())) {
        return false;
    }
    end = std::min(end, buffer_.size());
    line = std::string_view(buffer_).substr(begin_, end - begin_);
    bytesBegin_ = before_ + begin_;
    begin_ = std::min(end + 1, buffer_.size());
    ++line_;
    if (line.ends_with('\r')) {
        line.remove_suffix(1);
    }
    return true;
}

std::string_view ModelFile::Peek(std::size_t count) {
    while (buffer_.size() - begin_ < count && !isAtEnd_ && Refill()) {
    }
    return stopReason_.empty() ? std::string_view(buffer_).substr(begin_, count) : std::string_view();
}

bool ModelFile::Next(std::size_t count, std::string_view& bytes) {
    bytes = Peek(count);
    isReadInBytes_ = true;
    bytesBegin_ = before_ + begin_;
    if (bytes.size() < count) {
        return false;
    }
    begin_ += count;
    return true;
}

bool ModelFile::SkipBehind(std::string_view text) {
    std::size_t found = buffer_.find(text, begin_);
    while (found == std::string::npos && !isAtEnd_) {
        // The text may begin at the end of what is in memory.
        begin_ = std::max(begin_, buffer_.size() - std::min(buffer_.size(), text.size()));
        if (!Refill()) {
            return false;
        }
        found = buffer_.find(text, begin_);
    }
    begin_ = found == std::string::npos ? buffer_.size() : found + text.size();
    return found != std::string::npos && stopReason_.empty();
}

std::string ModelFile::Place() const {
    const OuString name = ToOuString(path_.filename());
    return name.GetAnsiBuffer() +
           (isReadInBytes_ ? ", byte " + std::to_string(bytesBegin_) : ':' + std::to_string(line_));
}

}  // namespace host

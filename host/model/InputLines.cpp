#include "InputLines.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include "host/system/FileSystem.h"
#include "host/system/Text.h"

namespace host {
namespace {

using std::filesystem::path;

// More files at a time would only be a circle that goes through links.
constexpr std::size_t kMostFiles = 64;
// No solver reads longer lines, and files that are no text at all can have longer ones.
constexpr std::size_t kLongestLine = std::size_t{1} << 20U;
// Small enough that the time is looked at every few milliseconds.
constexpr std::size_t kBlock = std::size_t{64} * 1024;

}  // namespace

std::string FileReference(std::string_view text) {
    text = Trim(text);
    if (text.size() >= 2 && (text.front() == '"' || text.front() == '\'') && text.back() == text.front()) {
        text = text.substr(1, text.size() - 2);
    }
    std::string reference(Trim(text));
    std::ranges::replace(reference, '\\', '/');
    return reference;
}

InputLines::InputLines(const ModelLimits& limits) : limits_(limits), end_(limits.now() + limits.budget) {}

std::error_code InputLines::Open(const path& file) {
    std::error_code error;
    const path resolved = ResolvePath(file, error);
    if (error) {
        return error;
    }
    // Files that a link leads to include those beside the link.
    directory_ = file.parent_path();
    root_ = ResolvePath(limits_.root.empty() ? (directory_.empty() ? path(".") : directory_) : limits_.root,
                        error);
    return error ? error : Push(resolved);
}

std::error_code InputLines::Push(const path& resolved) {
    // Opening anything else could wait without an end.
    Entry entry;
    if (const std::error_code error = InspectTarget(resolved, entry)) {
        return error;
    }
    if (entry.type != EntryType::File) {
        return std::make_error_code(entry.type == EntryType::Directory ? std::errc::is_a_directory
                                                                       : std::errc::not_supported);
    }
    auto file = std::make_unique<OpenFile>();
    file->path = resolved;
    errno = 0;
    file->stream.open(resolved, std::ios::binary);
    if (!file->stream.is_open()) {
        return {errno != 0 ? errno : EIO, std::generic_category()};
    }
    files_.push_back(std::move(file));
    return {};
}

bool InputLines::MayInclude(const path& resolved) const {
    return files_.size() < kMostFiles && IsBelow(root_, resolved) &&
           (!limits_.mayRead || limits_.mayRead(resolved)) &&
           std::ranges::none_of(files_, [&](const auto& open) { return open->path == resolved; });
}

bool InputLines::Include(const std::string& name) {
    if (name.empty() || files_.empty() || IsTimeOver()) {
        return false;
    }
    const path relative = ToPath(OuString(name.c_str(), 0));
    // The solvers look beside the file that the run starts from, people beside the file that they read.
    const std::array<path, 2> places = {directory_ / relative, files_.back()->path.parent_path() / relative};
    return std::ranges::any_of(places, [&](const path& place) {
        std::error_code error;
        const path resolved = ResolvePath(place, error);
        error = error                   ? error
                : !MayInclude(resolved) ? std::make_error_code(std::errc::permission_denied)
                                        : Push(resolved);
        ThrowIfOutOfMemory(error);
        return !error;
    });
}

bool InputLines::IsTimeOver() {
    if (stopReason_.empty() && limits_.now() >= end_) {
        Stop("the time for reading it was over");
    }
    return !stopReason_.empty();
}

void InputLines::Stop(const std::string& reason) {
    stopReason_ = Place() + ": " + reason;
    files_.clear();
}

bool InputLines::Refill(OpenFile& file) {
    if (file.buffer.size() - file.begin > kLongestLine) {
        ++file.line;
        Stop("the line is longer than a megabyte");
    } else if (!IsTimeOver()) {
        file.buffer.erase(0, file.begin);
        file.begin = 0;
        const std::size_t size = file.buffer.size();
        file.buffer.resize(size + kBlock);
        errno = 0;
        file.stream.read(file.buffer.data() + size, kBlock);
        const auto count = static_cast<std::size_t>(file.stream.gcount());
        file.buffer.resize(size + count);
        file.isAtEnd = count < kBlock;
        if (file.stream.bad() || (count < kBlock && !file.stream.eof())) {
            Stop("it cannot be read: " +
                 std::error_code(errno != 0 ? errno : EIO, std::generic_category()).message());
        } else if (std::memchr(file.buffer.data() + size, '\0', count) != nullptr) {
            Stop("it is not text");
        }
    }
    return stopReason_.empty();
}

/// Returns false at the end of the file, and when the reading was stopped, which closes the file.
bool InputLines::NextOf(OpenFile& file, std::string_view& line) {
    std::size_t searched = file.begin;
    std::size_t end = file.buffer.find('\n', searched);
    while (end == std::string::npos && !file.isAtEnd) {
        searched = file.buffer.size() - file.begin;
        if (!Refill(file)) {
            return false;
        }
        end = file.buffer.find('\n', searched);
    }
    if (end == std::string::npos && file.begin == file.buffer.size()) {
        return false;
    }
    end = std::min(end, file.buffer.size());
    line = std::string_view(file.buffer).substr(file.begin, end - file.begin);
    file.begin = std::min(end + 1, file.buffer.size());
    ++file.line;
    if (line.ends_with('\r')) {
        line.remove_suffix(1);
    }
    return true;
}

bool InputLines::Next(std::string_view& line) {
    while (!files_.empty()) {
        if (NextOf(*files_.back(), line)) {
            return true;
        }
        if (!files_.empty()) {
            files_.pop_back();
        }
    }
    return false;
}

void InputLines::SkipFile() {
    if (!files_.empty()) {
        files_.pop_back();
    }
}

std::string InputLines::Place() const {
    if (files_.empty()) {
        return "the end";
    }
    const OuString name = ToOuString(files_.back()->path.filename());
    return std::string(name.GetAnsiBuffer()) + ':' + std::to_string(files_.back()->line);
}

}  // namespace host

#include "InputLines.h"

#include <algorithm>
#include <array>

#include "host/system/FileSystem.h"
#include "host/system/ServerPath.h"
#include "host/system/Text.h"

namespace host {
namespace {

using std::filesystem::path;

// More files at a time would only be a circle that goes through links.
constexpr std::size_t kMostFiles = 64;

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

InputLines::InputLines(const ModelLimits& limits) : limits_(limits), deadline_(limits) {}

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
    auto file = std::make_unique<ModelFile>(deadline_, ModelFile::Content::Text);
    if (const std::error_code error = file->Open(resolved)) {
        return error;
    }
    files_.push_back(std::move(file));
    return {};
}

bool InputLines::MayInclude(const path& resolved) const {
    return files_.size() < kMostFiles && IsBelow(root_, resolved) &&
           (!limits_.mayRead || limits_.mayRead(resolved)) &&
           std::ranges::none_of(files_, [&](const auto& open) { return open->Path() == resolved; });
}

bool InputLines::Include(const std::string& name) {
    if (name.empty() || files_.empty() || IsTimeOver()) {
        return false;
    }
    const path relative = ToPath(OuString(name.c_str(), 0));
    // The solvers look beside the file that the run starts from, people beside the file that they read.
    const std::array<path, 2> places = {directory_ / relative,
                                        files_.back()->Path().parent_path() / relative};
    return std::ranges::any_of(places, [&](const path& place) {
        if (IsOnOtherServer(place)) {
            return false;
        }
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
    if (stopReason_.empty() && deadline_.IsOver()) {
        Stop(kTimeIsOver);
    }
    return !stopReason_.empty();
}

void InputLines::Stop(const std::string& reason) {
    stopReason_ = Place() + ": " + reason;
    files_.clear();
}

bool InputLines::Next(std::string_view& line) {
    while (!files_.empty()) {
        ModelFile& file = *files_.back();
        if (file.NextLine(line)) {
            return true;
        }
        if (file.StopReason().empty()) {
            files_.pop_back();
        } else {
            Stop(file.StopReason());
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
    return files_.empty() ? "the end" : files_.back()->Place();
}

}  // namespace host

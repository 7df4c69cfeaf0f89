#include "OwnFiles.h"

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <optional>
#include <utility>

#include "format/MemberNames.h"

namespace host {

using namespace std::string_view_literals;

namespace {

bool IsOwnDatabase(std::string_view head) {
    constexpr std::string_view kBeginning = "SQLite format 3\0"sv;
    // The number of the application is in the header of the file, four bytes with the highest one first.
    constexpr std::size_t kApplication = 68;
    if (!head.starts_with(kBeginning) || head.size() < kApplication + 4) {
        return false;
    }
    std::uint32_t number = 0;
    for (const char byte : head.substr(kApplication, 4)) {
        number = (number << 8U) | static_cast<unsigned char>(byte);
    }
    return std::ranges::find(kOwnApplications, static_cast<std::int32_t>(number)) !=
           std::end(kOwnApplications);
}

/// Takes a mark of JSON from the beginning, with the blanks in front of it; returns false if it is not there.
bool Take(char mark, std::string_view& text) {
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos || text[first] != mark) {
        return false;
    }
    text.remove_prefix(first + 1);
    return true;
}

/// Takes a text in quotation marks, without them, and with its escapes as they are.
std::optional<std::string_view> TakeText(std::string_view& text) {
    if (!Take('"', text)) {
        return std::nullopt;
    }
    for (std::size_t at = 0; at < text.size(); at += text[at] == '\\' ? 2 : 1) {
        if (text[at] == '"') {
            const std::string_view taken = text.substr(0, at);
            text.remove_prefix(at + 1);
            return taken;
        }
    }
    return std::nullopt;
}

/// Whether an object in JSON begins with these members, all of which are texts.
bool BeginsWith(std::initializer_list<format::MemberName> members, std::string_view text) {
    char mark = '{';
    return std::ranges::all_of(members, [&](const format::MemberName& member) {
        return Take(std::exchange(mark, ','), text) && TakeText(text) == member.View() && Take(':', text) &&
               TakeText(text).has_value();
    });
}

}  // namespace

OwnFile OwnFileOf(std::string_view head) {
    namespace member = format::member;
    if (IsOwnDatabase(head)) {
        return OwnFile::Database;
    }
    if (head.starts_with(kPlotBeginning)) {
        return OwnFile::Plot;
    }
    if (head.find(kPageMark) != std::string_view::npos) {
        return OwnFile::Page;
    }
    if (BeginsWith({member::kId, member::kName, member::kCreatedDate, member::kCreatedBy}, head) ||
        BeginsWith({member::kId, member::kName, member::kStudyTypeName, member::kCreatedDate}, head)) {
        return OwnFile::Document;
    }
    return BeginsWith({member::kId, member::kDatabaseKey}, head) ? OwnFile::Answer : OwnFile::None;
}

std::string_view ReasonToLeaveOut(OwnFile kind) {
    switch (kind) {
        case OwnFile::None:
            break;
        case OwnFile::Database:
            return "it is a project file or a database of this program";
        case OwnFile::Page:
            return "it is a page of this program";
        case OwnFile::Plot:
            return "it is a plot of this program";
        case OwnFile::Document:
            return "it is a document of this program";
        case OwnFile::Answer:
            return "it is an answer of this program";
    }
    return {};
}

bool IsBesideDatabase(const std::filesystem::path& name,
                      const std::vector<std::filesystem::path>& databases) {
    return std::ranges::any_of(databases, [&](const std::filesystem::path& database) {
        return std::ranges::any_of(std::initializer_list<const char*>{"-journal", "-wal", "-shm"},
                                   [&](const char* ending) {
                                       std::filesystem::path beside = database;
                                       beside += ending;
                                       return name == beside;
                                   });
    });
}

}  // namespace host

#include "DatabaseJournal.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <system_error>

#include "DatabaseError.h"
#include "DatabaseSettings.h"
#include "FileSystem.h"

namespace host {
namespace {

using std::filesystem::path;

constexpr std::string_view kJournalEnding = "-journal";

// A journal begins with its magic number, and has the number of pages that the database had before and the
// size of a page in its header, big-endian. A journal that names a super-journal also ends with the magic
// number.
constexpr std::string_view kMagic("\xD9\xD5\x05\xF9\x20\xA1\x63\xD7", 8);
constexpr std::size_t kOldPageCountPosition = 16;
constexpr std::size_t kPageSizePosition = 24;
constexpr std::size_t kHeaderSize = 28;
constexpr std::uint32_t kLargestPage = 65536;

/// The number in four bytes, big-endian.
std::uint32_t NumberAt(std::string_view bytes, std::size_t position) {
    std::uint32_t number = 0;
    for (const char byte : bytes.substr(position, 4)) {
        number = number << 8U | static_cast<unsigned char>(byte);
    }
    return number;
}

path WithEnding(const path& database, std::string_view ending) {
    path name = database;
    name += ending;
    return name;
}

/// The database as SQLite names it, which on some platforms is not the link that leads to it.
path ResolvedName(const path& database) {
    std::error_code error;
    const path resolved = ResolvePath(database, error);
    return error ? database : resolved;
}

/// Whether the last bytes of the file are the magic number.
bool EndsWithMagic(const path& journal) {
    FileSample sample;
    if (ReadSample(journal, 0, kMagic.size(), sample)) {
        return false;
    }
    return sample.tail == kMagic;
}

/// The header of a journal that SQLite would read; empty if it has none.
std::string HeaderOf(const path& journal) {
    FileSample sample;
    const bool isWhole = !ReadSample(journal, kHeaderSize, 0, sample) && sample.head.size() == kHeaderSize;
    return isWhole && sample.head.starts_with(kMagic) ? sample.head : "";
}

/// Whether the journal gives the database more pages than there are in both files. A change only ever adds
/// pages, or keeps those that it takes away in its journal.
bool IsOfLargerFile(const path& journal, const path& database) {
    const std::string header = HeaderOf(journal);
    Entry databaseEntry;
    Entry journalEntry;
    if (header.empty() || InspectTarget(database, databaseEntry) || InspectTarget(journal, journalEntry)) {
        return false;
    }
    // A journal without a size of pages means the database's own, which may be any.
    const std::uint32_t given = NumberAt(header, kPageSizePosition);
    const std::uint64_t pageSize = given == 0 ? kLargestPage : std::min(given, kLargestPage);
    const std::uint64_t oldSize = NumberAt(header, kOldPageCountPosition) * pageSize;
    const std::uint64_t size = databaseEntry.size + journalEntry.size;
    // Another program may have gone on to its next change meanwhile; every journal has a random number.
    return oldSize > size && HeaderOf(journal) == header;
}

[[noreturn]] void RefuseJournal(const std::string& effect) {
    throw DatabaseError(
        "has a journal, the file with the same name and '-journal' at its end, that would " + effect +
        ". korvane-json did not write it: move it away. The database is read without it then");
}

}  // namespace

// SQLite expects names in UTF-8 on Windows, and as they are elsewhere. It gives some names a meaning, like
// ":memory:" and those that begin with "file:"; with "./" before it, a relative path is always a file.
std::string SqliteName(const std::filesystem::path& file) {
    const std::filesystem::path named = file.has_root_path() ? file : "." / file;
#if defined(_WIN32)
    const std::u8string name = named.u8string();
    return {name.begin(), name.end()};
#else
    return named.native();
#endif
}

path JournalOf(const path& database) {
    return WithEnding(ResolvedName(database), kJournalEnding);
}

void RefuseForeignJournal(const path& database) {
    for (const path& journal : {WithEnding(database, kJournalEnding), JournalOf(database)}) {
        if (EndsWithMagic(journal)) {
            RefuseJournal("delete another file");
        }
        if (IsOfLargerFile(journal, database)) {
            RefuseJournal("make the file larger than both are");
        }
    }
}

bool IsInterruptedCreation(const path& file) {
    const std::string header = HeaderOf(JournalOf(file));
    if (header.empty() || NumberAt(header, kOldPageCountPosition) != 0) {
        return false;
    }
    FileSample firstPage;
    const std::uint32_t pageSize = std::min(NumberAt(header, kPageSizePosition), kLargestPage);
    return !ReadSample(file, pageSize, 0, firstPage) && !firstPage.head.empty() &&
           std::ranges::all_of(firstPage.head, [](char byte) { return byte == '\0'; });
}

void RefuseLongName(const path& database) {
    const path whole = ResolvedName(database);
    std::error_code error;
    const path absolute = std::filesystem::absolute(whole, error);
    const path& known = error ? whole : absolute;
    const auto refuse = [](const char* what, std::size_t tooMany) {
        throw DatabaseError(
            std::string("has ") + what +
            " that is too long: while it is changed, there is a second file beside it, with the "
            "same name and '-journal' at its end. Make it at least " +
            std::to_string(tooMany) + (tooMany == 1 ? " byte" : " bytes") + " shorter");
    };
    const std::size_t nameSize = known.filename().native().size() + kJournalEnding.size();
    const std::size_t longestName = LongestName(known.parent_path());
    if (nameSize > longestName) {
        refuse("a name", nameSize - longestName);
    }
    SetUpSqlite();
    const sqlite3_vfs* const files = sqlite3_vfs_find(nullptr);
    const std::size_t pathSize = SqliteName(known).size() + kJournalEnding.size();
    const auto longestPath = static_cast<std::size_t>(files != nullptr ? files->mxPathname : 0);
    if (longestPath != 0 && pathSize > longestPath) {
        refuse("a path", pathSize - longestPath);
    }
}

void RefuseLeftoverJournal(const path& database) {
    for (const char* const ending : {"-journal", "-wal"}) {
        std::error_code ignored;
        if (std::filesystem::exists(WithEnding(database, ending), ignored) &&
            // Another program may have created the database and begun to change it since.
            !std::filesystem::exists(std::filesystem::symlink_status(database, ignored))) {
            throw DatabaseError(std::string("cannot be created: a file with the same name and '") + ending +
                                "' at its end is left over from an older one. Remove it first");
        }
    }
}

bool HasHotJournal(const path& database) {
    const path journal = JournalOf(database);
    std::error_code error;
    if (!std::filesystem::exists(journal, error) && !error) {
        return false;
    }
    // A first byte of zero says that the journal is not complete, and nothing has been changed.
    FileSample sample;
    return ReadSample(journal, 1, 0, sample) || (!sample.head.empty() && sample.head.front() != '\0');
}

}  // namespace host

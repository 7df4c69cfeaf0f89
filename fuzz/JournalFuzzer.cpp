// Puts any bytes as a journal beside a project file, as an interrupted change or somebody hostile leaves it:
// no other file is touched, a journal that names another file is refused with everything as it was, and what
// was read once is read again. Bytes that begin like a journal are one; others say how one is made.

#include <EmbeddedModel.h>
#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "Expect.h"
#include "FuzzedFiles.h"
#include "Trip.h"
#include "host/projectfile/ProjectFile.h"
#include "host/projectfile/ProjectTables.h"
#include "host/system/Database.h"
#include "host/system/DatabaseJournal.h"

namespace {

using std::filesystem::path;

constexpr std::string_view kMagic("\xD9\xD5\x05\xF9\x20\xA1\x63\xD7", 8);
constexpr std::size_t kPage = 4096;
constexpr std::size_t kHeader = 28;
constexpr std::string_view kPrecious = "a month of work";

/// The folder of the database, its journal, and a file that neither has to do with.
struct Folder {
    Folder() : place(PlaceInMemory("journal")), file(place / "p.kvp"), precious(place / "precious.txt") {
        std::filesystem::create_directory(place);
        const std::unique_ptr<CAEProject> project = MakeProject();
        AddTargets(*project);
        host::CreateProjectFile(file, *project, Silent());
        sound = BytesOf(file);
        std::filesystem::remove_all(place);
    }

    path place;
    path file;
    path precious;
    std::string sound;
};

std::string Number(std::uint32_t number) {
    std::string bytes;
    for (const unsigned shift : {24U, 16U, 8U, 0U}) {
        bytes += static_cast<char>(number >> shift & 0xFFU);
    }
    return bytes;
}

std::uint32_t NumberAt(std::string_view bytes, std::size_t place) {
    std::uint32_t number = 0;
    for (const char byte : bytes.substr(place, 4)) {
        number = number * 256 + static_cast<unsigned char>(byte);
    }
    return number;
}

/// The number that belongs there, mostly.
std::uint32_t NumberOr(FuzzedDataProvider& bytes, std::uint32_t right) {
    switch (bytes.ConsumeIntegralInRange(0, 9)) {
        case 0:
            return bytes.ConsumeIntegral<std::uint32_t>();
        case 1:
            return bytes.ConsumeIntegralInRange<std::uint32_t>(0, 70);
        case 2:
            return 1U << bytes.ConsumeIntegralInRange(0U, 31U);
        default:
            return right;
    }
}

/// One of the pages of the database, with some bytes changed.
std::string PageOf(const std::string& database, FuzzedDataProvider& bytes, std::uint32_t number) {
    const std::size_t place = (std::size_t{number} - 1) % (database.size() / kPage) * kPage;
    std::string page = database.substr(place, kPage);
    for (int count = bytes.ConsumeIntegralInRange(-4, 4); count > 0; --count) {
        page[bytes.ConsumeIntegralInRange<std::size_t>(0, kPage - 1)] = bytes.ConsumeIntegral<char>();
    }
    return page;
}

/// The sum that SQLite expects behind a page of a journal.
std::uint32_t SumOf(std::string_view page, std::uint32_t nonce) {
    for (std::size_t place = kPage - 200; place > 0 && place < kPage; place -= 200) {
        nonce += static_cast<unsigned char>(page[place]);
    }
    return nonce;
}

/// The end of a journal that names a super-journal.
std::string SuperJournal(std::string_view name, FuzzedDataProvider& bytes) {
    std::uint32_t sum = 0;
    for (const char character : name) {
        sum += static_cast<std::uint32_t>(static_cast<signed char>(character));
    }
    constexpr std::uint32_t kPageOfTheLock = 0x40000000 / kPage + 1;
    return Number(NumberOr(bytes, kPageOfTheLock)) + std::string(name) +
           Number(NumberOr(bytes, static_cast<std::uint32_t>(name.size()))) + Number(NumberOr(bytes, sum)) +
           std::string(kMagic);
}

std::string MakeJournal(const Folder& folder, FuzzedDataProvider& bytes) {
    const auto pages = static_cast<std::uint32_t>(folder.sound.size() / kPage);
    const auto count = bytes.ConsumeIntegralInRange<std::uint32_t>(0, 4);
    const auto nonce = bytes.ConsumeIntegral<std::uint32_t>();
    const std::uint32_t sector = NumberOr(bytes, 512);
    std::string journal(bytes.ConsumeIntegralInRange(0, 9) == 0 ? std::string(8, '\0') : std::string(kMagic));
    journal += Number(NumberOr(bytes, count)) + Number(nonce) + Number(NumberOr(bytes, pages)) +
               Number(sector) + Number(NumberOr(bytes, kPage));
    journal.resize(std::clamp<std::size_t>(sector, kHeader, 65536), '\0');
    for (std::uint32_t record = 0; record < count; ++record) {
        const auto number = bytes.ConsumeIntegralInRange<std::uint32_t>(1, pages + 2);
        const std::string page = PageOf(folder.sound, bytes, number);
        journal += Number(number) + page + Number(NumberOr(bytes, SumOf(page, nonce)));
    }
    if (bytes.ConsumeIntegralInRange(0, 3) == 0) {
        const std::string name =
            bytes.ConsumeBool() ? folder.precious.string() : folder.precious.string() + '\0' + "more";
        journal += SuperJournal(name, bytes);
    }
    if (bytes.ConsumeIntegralInRange(0, 7) == 0) {
        journal.resize(bytes.ConsumeIntegralInRange<std::size_t>(0, journal.size()));
    }
    return journal;
}

/// The database as an interrupted change may leave it.
std::string MakeDatabase(const Folder& folder, FuzzedDataProvider& bytes) {
    std::string database = folder.sound;
    switch (bytes.ConsumeIntegralInRange(0, 7)) {
        case 0:
            return std::string(bytes.ConsumeIntegralInRange<std::size_t>(0, 3) * kPage, '\0');
        case 1:
            return std::string(kPage, '\0') + database.substr(kPage);
        case 2:
            return database.substr(0, bytes.ConsumeIntegralInRange<std::size_t>(0, database.size()));
        case 3:
            return database + std::string(2 * kPage, 'x');
        case 4:
        case 5: {
            const auto page = bytes.ConsumeIntegralInRange<std::size_t>(0, database.size() / kPage - 1);
            database.replace(page * kPage, kPage, kPage, bytes.ConsumeIntegral<char>());
            return database;
        }
        default:
            return database;
    }
}

/// The text of the project; nothing where the file is refused.
std::optional<std::string> Read(const path& file) {
    try {
        const std::unique_ptr<CAEProject> project = host::ReadProjectFile(file, Silent());
        return std::string(ExportDocument(*project).write().c_str());
    } catch (const host::DatabaseError& refusal) {
        Expect(refusal.what()[0] != '\0', "a refusal has a reason");
        return std::nullopt;
    }
}

/// Whether the file is what is left of the creation of a database, said a second time.
bool IsCreation(std::string_view database, std::string_view journal) {
    if (!journal.starts_with(kMagic) || journal.size() < kHeader || NumberAt(journal, 16) != 0) {
        return false;
    }
    const std::string_view page =
        database.substr(0, std::min<std::size_t>(NumberAt(journal, 24), std::size_t{65536}));
    return !page.empty() && page.find_first_not_of('\0') == std::string_view::npos;
}

void ExpectNothingElse(const Folder& folder, const path& journal) {
    Expect(BytesOf(folder.precious) == kPrecious, "no other file is touched");
    for (const auto& entry : std::filesystem::directory_iterator(folder.place)) {
        Expect(entry.path() == folder.file || entry.path() == journal || entry.path() == folder.precious,
               "nothing is left beside the file");
    }
}

void ReadBeside(const Folder& folder, const std::string& database, const std::string& journal) {
    std::filesystem::create_directory(folder.place);
    WriteBytes(folder.precious, kPrecious);
    WriteBytes(folder.file, database);
    const path name = host::JournalOf(folder.file);
    WriteBytes(name, journal);
    Expect(name == folder.file.string() + "-journal", "a journal is beside its file");
    Expect(host::IsInterruptedCreation(folder.file) == IsCreation(database, journal),
           "an interrupted creation is known by its journal");
    Expect(host::HasHotJournal(folder.file) == (!journal.empty() && journal.front() != '\0'),
           "a journal is hot by its first byte");

    const std::optional<std::string> text = Read(folder.file);
    ExpectNothingElse(folder, name);
    Expect(BytesOf(folder.file).size() <= database.size() + journal.size(), "a file is not made much larger");
    if (journal.ends_with(kMagic)) {
        Expect(!text, "a journal that names another file is refused");
        Expect(BytesOf(folder.file) == database && BytesOf(name) == journal, "what is refused stays");
    }
    if (text) {
        Expect(!host::HasHotJournal(folder.file), "an interrupted change is undone");
        const std::string bytes = BytesOf(folder.file);
        Expect(Read(folder.file) == text, "what was read is read again");
        Expect(BytesOf(folder.file) == bytes, "reading changes nothing more");
    }

    // The same where a database is created, and where a new one would take the journal for its own.
    WriteBytes(folder.file, database);
    WriteBytes(name, journal);
    try {
        host::Database created(folder.file, host::DatabaseUse::Creating, host::kProjectFileKind);
    } catch (const host::DatabaseError&) {
        // It is no database, or one of another kind.
    }
    ExpectNothingElse(folder, name);
    Expect(BytesOf(folder.file).size() <= database.size() + journal.size(), "a file is not made much larger");
    RemoveDatabase(folder.file);
    WriteBytes(name, journal);
    const std::unique_ptr<CAEProject> project = MakeProject();
    try {
        host::CreateProjectFile(folder.file, *project, Silent());
        Expect(false, "a journal that is left over is not taken for a new one");
    } catch (const host::DatabaseError&) {
        Expect(BytesOf(name) == journal && !std::filesystem::exists(folder.file),
               "a journal that is left over stays");
    }
    ExpectNothingElse(folder, name);
    std::filesystem::remove_all(folder.place);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Folder folder;
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    if (input.starts_with(kMagic.substr(0, 1))) {
        ReadBeside(folder, size % 3 == 0 ? std::string(kPage, '\0') : folder.sound, std::string(input));
    } else {
        FuzzedDataProvider bytes(data, size);
        const std::string database = MakeDatabase(folder, bytes);
        ReadBeside(folder, database, MakeJournal(folder, bytes));
    }
    return 0;
}

#include <gtest/gtest.h>

#include <string>

#include "host/HostSupport.h"
#include "host/projectfile/ProjectFile.h"
#include "host/projectfile/ProjectTables.h"
#include "host/server/FetchSupport.h"
#include "host/server/Server.h"
#include "host/server/ServerTables.h"
#include "host/system/DatabaseCheck.h"
#include "support/ModelBuilders.h"
#include "support/SmallStack.h"
#include "support/TemporaryDirectory.h"

namespace host {
namespace {

class DatabaseCheckTest : public testing::Test {
protected:
    /// A project file with a part that has a metadata entry.
    std::filesystem::path MakeProjectFile() {
        TestProject project;
        SetMetadata(project.Add(CAE_PART, L"Arm"), L"Mass", L"5");
        const std::filesystem::path file = folder / "p.kvp";
        std::filesystem::remove(file);
        CreateProjectFile(file, *project, kept.console);
        return file;
    }
    /// What reading and changing say of a project file that was changed by statements of SQL.
    std::string ErrorAfter(const char* statements) {
        const std::filesystem::path file = MakeProjectFile();
        Database(file, DatabaseUse::Changing, kProjectFileKind).Run(statements);
        std::string reading = ErrorOf([&] { ReadProjectFile(file, kept.console); });
        EXPECT_EQ(ErrorOf([&] { ProjectFile::Open(file, true, kept.console); }), reading);
        return reading;
    }

    TemporaryDirectory folder;
    KeptConsole kept;
};

TEST_F(DatabaseCheckTest, NothingThatADatabaseBringsAlongRuns) {
    const std::string foreign = "is damaged or was made by another program: ";
    const std::string advice = ". Restore it from a copy";
    EXPECT_EQ(ErrorAfter("DROP TABLE metadata; CREATE VIEW metadata AS WITH RECURSIVE n (i) AS"
                         " (SELECT 1 UNION ALL SELECT i + 1 FROM n) SELECT 2 AS object, i AS position,"
                         " 'n' AS name, 'v' AS value, 't' AS type, 'u' AS unit FROM n"),
              foreign + "it has the view 'metadata', which korvane-json does not create" + advice);
    EXPECT_EQ(ErrorAfter("CREATE TRIGGER t AFTER DELETE ON object BEGIN SELECT 1; END"),
              foreign + "it has the trigger 't', which korvane-json does not create" + advice);
    EXPECT_EQ(ErrorAfter("CREATE INDEX i ON object (upper(name))"),
              foreign + "it has the index 'i', which korvane-json does not create" + advice);
    EXPECT_EQ(ErrorAfter("DROP TABLE metadata"), foreign + "the table 'metadata' is missing" + advice);
    EXPECT_EQ(ErrorAfter("ALTER TABLE metadata ADD COLUMN twice TEXT AS (value || value)"),
              foreign + "the table 'metadata' is not as korvane-json creates it" + advice);
    EXPECT_EQ(ErrorAfter("ALTER TABLE object RENAME COLUMN name TO names"),
              foreign + "the table 'object' is not as korvane-json creates it" + advice);
}

TEST_F(DatabaseCheckTest, AWriteAheadLogIsRefusedBeforeItIsRead) {
    const std::filesystem::path file = MakeProjectFile();
    Database(file, DatabaseUse::Changing, kProjectFileKind).Run("PRAGMA journal_mode = WAL");
    EXPECT_EQ(ErrorOf([&] { ReadProjectFile(file, kept.console); }),
              "is damaged or was made by another program: it has a write-ahead log. Restore it from a copy");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1);
}

/// Reading the database has an end, and its texts have a longest one, as long as there are limits.
void ExpectLimits(Database& database) {
    EXPECT_EQ(ErrorOf([&] {
                  const ReadingLimits limits(database);
                  Statement(database, "SELECT zeroblob(2000000)").Run();
              }),
              "cannot be used: string or blob too big");
    EXPECT_EQ(ErrorOf([&] { Statement(database, "SELECT zeroblob(2000000)").Run(); }), "no error");
    const char* const endless =
        "WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) SELECT i FROM n WHERE i < 0";
    EXPECT_EQ(ErrorOf([&] {
                  const ReadingLimits limits(database);
                  Statement(database, endless).Run();
              }),
              "is damaged: reading it does not come to an end. Restore it from a copy");
}

TEST_F(DatabaseCheckTest, ReadingHasAnEnd) {
    Database database(MakeProjectFile(), DatabaseUse::Reading, kProjectFileKind);
    ExpectLimits(database);
}

TEST_F(DatabaseCheckTest, ReadingACopyHasAnEnd) {
    Database database(MakeProjectFile(), DatabaseUse::Reading, kProjectFileKind);
    Database copy;
    copy.CopyFrom(database);
    ExpectLimits(copy);
}

TEST_F(DatabaseCheckTest, AnIndexFitsItsTable) {
    const std::filesystem::path file = folder / "s.db";
    const JSONNode document = libjson::parse(
        R"({"id":"1","type":"SIMULATION","children":[{"id":"3","type":"CAEPART","name":"Arm"}]})");
    StoreReport report;
    Server::OpenForStoring(file, false).Store(document, {"P"}, report, kept.console);
    const std::string bytes = ReadWholeFile(file);
    std::string key;
    {
        Database database(file, DatabaseUse::Reading, kServerKind);
        Statement keys(database, "SELECT key FROM object WHERE type = 'CAEPART'");
        ASSERT_TRUE(keys.Begin().Next());
        key = keys.Text(0);
    }
    int places = 0;
    for (std::size_t at = bytes.find(key); at != std::string::npos; at = bytes.find(key, at + 1)) {
        ++places;
        std::string damaged = bytes;
        damaged[at + 4] = '7';
        folder.Write("s.db", damaged);
        const std::string error =
            ErrorOf([&] { FetchText(Server::OpenForFetching(file), key, kept.console); });
        EXPECT_TRUE(error.starts_with("is damaged: ")) << error;
        for (const bool isDryRun : {false, true}) {
            const std::string storing = ErrorOf(
                [&] { Server::OpenForStoring(file, isDryRun).Store(document, {"P"}, report, kept.console); });
            EXPECT_TRUE(storing.starts_with("is damaged: ")) << storing;
        }
        EXPECT_EQ(ReadWholeFile(file), damaged);
    }
    EXPECT_EQ(places, 2) << "the key stands in the table and in its index";
}

TEST_F(DatabaseCheckTest, APageThatIsUsedTwiceIsFoundBeforeAnythingIsWritten) {
    const std::filesystem::path file = MakeProjectFile();
    std::string bytes = ReadWholeFile(file);
    // The header's list of unused pages begins at byte 32 and counts them at byte 36.
    bytes[35] = '\x03';
    bytes[39] = '\x01';
    folder.Write("p.kvp", bytes);
    EXPECT_EQ(ErrorOf([&] { ReadProjectFile(file, kept.console); }), "no error");
    const std::string error = ErrorOf([&] { ProjectFile::Open(file, true, kept.console); });
    EXPECT_TRUE(error.starts_with("is damaged: ")) << error;
    EXPECT_EQ(ReadWholeFile(file), bytes);
}

TEST_F(DatabaseCheckTest, AnImpossibleLengthIsNoLackOfMemory) {
    TestProject project;
    for (int part = 0; part < 200; ++part) {
        SetMetadata(project.Add(CAE_PART, L"Arm"), L"Mass", L"5");
    }
    const std::filesystem::path file = folder / "p.kvp";
    CreateProjectFile(file, *project, kept.console);
    const std::string bytes = ReadWholeFile(file);
    constexpr std::size_t kStep = 331;
    constexpr std::size_t kLength = 64;
    int damages = 0;
    for (std::size_t at = 4096; at + kLength < bytes.size(); at += kStep) {
        std::string damaged = bytes;
        damaged.replace(at, kLength, kLength, '\xFF');
        folder.Write("p.kvp", damaged);
        const std::string error = ErrorOf([&] { ReadProjectFile(file, kept.console); });
        damages += error.starts_with("is damaged: ") ? 1 : 0;
    }
    EXPECT_GT(damages, 20);
}

/// A page of a table that has only the page `below` below it.
std::string PageAbove(std::size_t below, std::size_t size) {
    const auto number = [](std::size_t value, int bytes) {
        std::string text;
        for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8) {
            text += static_cast<char>((value >> static_cast<unsigned>(shift)) & 0xFFU);
        }
        return text;
    };
    const std::string cell = number(below, 4) + '\x01';
    const std::string start = number(size - cell.size(), 2);
    std::string page = std::string("\x05\0\0\0\x01", 5) + start + '\0' + number(below, 4) + start;
    page.resize(size - cell.size(), '\0');
    return page + cell;
}

TEST_F(DatabaseCheckTest, PagesBelowEachOtherNeedNoStack) {
    constexpr std::size_t kDepth = 3000;
    constexpr std::size_t kPageSize = 4096;
    const std::filesystem::path file = MakeProjectFile();
    std::size_t root = 0;
    {
        Database database(file, DatabaseUse::Reading, kProjectFileKind);
        Statement pages(database, "SELECT rootpage FROM sqlite_schema WHERE name = 'numbering'");
        ASSERT_TRUE(pages.Begin().Next());
        root = static_cast<std::size_t>(pages.Number(0));
    }
    std::string bytes = ReadWholeFile(file);
    const std::size_t pageCount = bytes.size() / kPageSize;
    bytes.replace((root - 1) * kPageSize, kPageSize, PageAbove(pageCount + 1, kPageSize));
    for (std::size_t depth = 0; depth < kDepth; ++depth) {
        bytes += PageAbove(pageCount + depth + 2, kPageSize);
    }
    bytes += std::string("\x0D\0\0\0\0\x10\0\0", 8) + std::string(kPageSize - 8, '\0');
    // The header counts the pages at byte 28.
    const std::size_t newCount = bytes.size() / kPageSize;
    bytes[30] = static_cast<char>(newCount / 256);
    bytes[31] = static_cast<char>(newCount % 256);
    folder.Write("p.kvp", bytes);
    std::string reading;
    std::string changing;
    OnSmallStack([&] {
        reading = ErrorOf([&] { ReadProjectFile(file, kept.console); });
        changing = ErrorOf([&] { ProjectFile::Open(file, true, kept.console); });
    });
    EXPECT_EQ(reading, "is damaged: its pages do not fit together. Restore it from a copy");
    EXPECT_EQ(changing, "is damaged: its pages do not fit together. Restore it from a copy");
}

TEST_F(DatabaseCheckTest, ADatabaseThatLostItsTablesIsNotANewOne) {
    const std::filesystem::path file = folder / "s.db";
    Database(file, DatabaseUse::Creating, kServerKind).SetKind(kServerKind);
    const std::string bytes = ReadWholeFile(file);
    StoreReport report;
    EXPECT_EQ(ErrorOf([&] {
                  Server::OpenForStoring(file, false)
                      .Store(libjson::parse(R"({"type":"X"})"), {"P"}, report, kept.console);
              }),
              "is damaged or was made by another program: the table 'project' is missing. Restore it from a "
              "copy");
    EXPECT_EQ(ReadWholeFile(file), bytes);
}

}  // namespace
}  // namespace host

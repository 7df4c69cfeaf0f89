#include <gtest/gtest.h>

#include <array>
#include <cstdint>

#include "DatabaseSupport.h"
#include "host/HostSupport.h"
#include "host/projectfile/ProjectTables.h"
#include "host/system/Database.h"
#include "host/system/DatabaseJournal.h"
#include "host/system/FileSystem.h"
#include "support/LongRun.h"
#include "support/ProgramCommands.h"

namespace host {
namespace {

constexpr std::string_view kMagic("\xD9\xD5\x05\xF9\x20\xA1\x63\xD7", 8);

std::string Number(std::uint32_t number) {
    std::string bytes;
    for (const unsigned shift : {24U, 16U, 8U, 0U}) {
        bytes += static_cast<char>(number >> shift & 0xFFU);
    }
    return bytes;
}

/// A complete journal without pages, of a database that had so many pages of 4096 bytes.
std::string Journal(std::uint32_t oldPageCount, std::uint32_t pageSize = 4096) {
    std::string journal(kMagic);
    for (const std::uint32_t number : {0U, 0U, oldPageCount, 512U, pageSize}) {
        journal += Number(number);
    }
    journal.resize(512, '\0');
    return journal;
}

/// The end of a journal that names a super-journal.
std::string SuperJournal(const std::string& name) {
    constexpr std::uint32_t kPageOfTheLock = 0x40000000 / 4096 + 1;
    std::uint32_t sum = 0;
    for (const char character : name) {
        sum += static_cast<std::uint32_t>(static_cast<signed char>(character));
    }
    return Number(kPageOfTheLock) + name + Number(static_cast<std::uint32_t>(name.size())) + Number(sum) +
           std::string(kMagic);
}

class DatabaseJournalTest : public DatabaseFiles {
protected:
    /// A name of so many bytes.
    static std::string NameOf(std::size_t size) { return std::string(size - 4, 'n') + ".kvp"; }
};

TEST_F(DatabaseJournalTest, AJournalThatWouldDeleteAnotherFileIsRefusedByEveryCommand) {
    const auto run = [&](const std::vector<std::string>& arguments) {
        const ProcessResult result = Run(arguments);
        ASSERT_EQ(result.status, 0) << result.error;
    };
    folder.Write("given/studies/static/job.inp", kAbaqusDeck);
    folder.Write("given/other/modes/job.bdf", kNastranDeck);
    run({"new", "given/studies", "given/p.kvp"});
    run({"export", "given/other", "-o", "given/other.json"});
    CompleteCommandFolder(folder, run);
    ASSERT_FALSE(HasFatalFailure());
    const std::filesystem::path precious = folder.Write("precious.txt", "a month of work");
    const std::vector<ProgramCommand> all = CommandsWhere(&ProgramCommand::HasFile);
    for (const ProgramCommand& command : kIsSample && !IsLongRun() ? OneOfEach(all) : all) {
        SCOPED_TRACE(command.name);
        PutFileOf(command, folder);
        const std::string file = "work/" + command.file;
        const auto pages = static_cast<std::uint32_t>(std::filesystem::file_size(folder / file) / 4096);
        folder.Write(file + "-journal", Journal(pages) + SuperJournal(ToUtf8(precious)));
        const Content before = ContentOf(folder.Path());
        const ProcessResult result = Run(ArgumentsIn(folder, command));
        EXPECT_EQ(result.status, command.failure);
        EXPECT_NE(result.error.find("that would delete another file"), std::string::npos) << result.error;
        ASSERT_TRUE(std::filesystem::exists(precious));
        EXPECT_TRUE(ContentOf(folder.Path()) == before) << "files were changed";
        // The message says what to do.
        std::filesystem::remove(folder / (file + "-journal"));
        EXPECT_EQ(Run(ArgumentsIn(folder, command)).status, 0);
        std::filesystem::remove_all(folder / "out");
        folder.MakeDirectory("out");
    }
}

#if !defined(_WIN32)

TEST_F(DatabaseJournalTest, TheJournalIsThatOfTheFileWhichALinkLeadsTo) {
    ASSERT_EQ(Run({"new", "--empty", "p.kvp"}).status, 0);
    const std::filesystem::path precious = folder.Write("precious.txt", "a month of work");
    folder.Write("p.kvp-journal", Journal(1) + SuperJournal(ToUtf8(precious)));
    std::filesystem::create_directory(folder / "links");
    std::filesystem::create_symlink(folder / "p.kvp", folder / "links/q.kvp");
    EXPECT_EQ(Run({"tree", "links/q.kvp"}).status, 1);
    EXPECT_TRUE(std::filesystem::exists(precious));
}

#endif

TEST_F(DatabaseJournalTest, AJournalWithoutASuperJournalUndoesAChange) {
    ASSERT_EQ(Run({"new", "--empty", "p.kvp"}).status, 0);
    const std::string bytes = ReadWholeFile(folder / "p.kvp");
    // Half of a change: the file has grown.
    folder.Write("p.kvp", bytes + std::string(8192, 'x'));
    folder.Write("p.kvp-journal", Journal(static_cast<std::uint32_t>(bytes.size() / 4096)));
    EXPECT_EQ(Run({"tree", "p.kvp"}).status, 0);
    EXPECT_EQ(ReadWholeFile(folder / "p.kvp"), bytes);
    EXPECT_FALSE(std::filesystem::exists(folder / "p.kvp-journal"));
}

TEST_F(DatabaseJournalTest, AJournalOfALargerFileIsRefused) {
    ASSERT_EQ(Run({"new", "--empty", "p.kvp"}).status, 0);
    const std::string bytes = ReadWholeFile(folder / "p.kvp");
    const auto pages = static_cast<std::uint32_t>(bytes.size() / 4096);
    // The journal itself is smaller than a page.
    for (const std::uint32_t count : {pages + 1, 1U << 20U, ~0U}) {
        folder.Write("p.kvp-journal", Journal(count));
        const ProcessResult result = Run({"tree", "p.kvp"});
        EXPECT_EQ(result.status, 1) << count;
        EXPECT_NE(result.error.find("that would make the file larger than both are"), std::string::npos)
            << result.error;
        EXPECT_TRUE(ReadWholeFile(folder / "p.kvp") == bytes) << count;
        EXPECT_EQ(ReadWholeFile(folder / "p.kvp-journal"), Journal(count));
    }
    // One that leaves it to the database how large a page is.
    folder.Write("p.kvp-journal", Journal(1U << 20U, 0));
    EXPECT_EQ(Run({"tree", "p.kvp"}).status, 1);
    EXPECT_TRUE(ReadWholeFile(folder / "p.kvp") == bytes);
    // One that is as large as the pages that it gives back may have them, as after a change that took them
    // away.
    folder.Write("p.kvp-journal", Journal(pages + 1) + std::string(4096, '\0'));
    EXPECT_EQ(Run({"tree", "p.kvp"}).status, 0);
    EXPECT_FALSE(std::filesystem::exists(folder / "p.kvp-journal"));
    folder.Write("p.kvp", bytes);
    folder.Write("p.kvp-journal", Journal(pages));
    EXPECT_EQ(Run({"tree", "p.kvp"}).status, 0);
    EXPECT_TRUE(ReadWholeFile(folder / "p.kvp") == bytes);
}

TEST_F(DatabaseJournalTest, AnInterruptedCreationIsUndoneAndTheFileUsed) {
    folder.Write("d.json", R"({"id":"1","name":"P","type":"SIMULATION"})");
    const auto interrupt = [&] {
        folder.Write("s.db", std::string(4096, '\0') + std::string(4096, 'x'));
        folder.Write("s.db-journal", Journal(0));
    };
    interrupt();
    const ProcessResult fetched = Run({"fetch", "PRJ-1", "--db", "s.db"});
    EXPECT_EQ(fetched.error, "korvane-json: 's.db' is an empty file, not a server database\n");
    interrupt();
    EXPECT_EQ(Run({"store", "d.json", "--db", "s.db", "--dry-run"}).status, 0);
    interrupt();
    const ProcessResult stored = Run({"store", "d.json", "--db", "s.db"});
    EXPECT_EQ(stored.status, 0) << stored.error;
    EXPECT_FALSE(std::filesystem::exists(folder / "s.db-journal"));
    EXPECT_EQ(ErrorOf([&] {
                  const Database database(folder / "s.db", DatabaseUse::Reading,
                                          DatabaseKind{0x4B765376, 3, "server database"});
              }),
              "no error");
}

TEST_F(DatabaseJournalTest, AFileThatIsNotADatabaseStaysWhateverLiesBesideIt) {
    const std::string zeros(4096, '\0');
    struct Case {
        std::string content;
        std::string journal;
    };
    const Case cases[] = {
        {"a letter", Journal(0)},
        {zeros, ""},
        {zeros, "notes"},
        {zeros, std::string(512, '\0')},
        {zeros, Journal(3)},
        {std::string(100, '\0') + std::string(3996, 'x'), Journal(0)},
        {zeros, Journal(0).substr(0, 20)},
    };
    for (const Case& each : cases) {
        folder.Write("p.kvp", each.content);
        folder.Write("p.kvp-journal", each.journal);
        for (const DatabaseUse use : {DatabaseUse::Reading, DatabaseUse::Changing, DatabaseUse::Creating}) {
            EXPECT_EQ(ErrorOfOpening(folder / "p.kvp", use), "is not a SQLite database");
        }
        EXPECT_EQ(ReadWholeFile(folder / "p.kvp"), each.content);
        EXPECT_EQ(ReadWholeFile(folder / "p.kvp-journal"), each.journal);
    }
}

TEST_F(DatabaseJournalTest, ANameIsShortEnoughForItsJournalOrRefused) {
    const std::size_t longest = LongestName(folder.Path());
    folder.Write("d.json", R"({"id":"1","name":"P","type":"SIMULATION"})");
    std::string name = NameOf(longest - 8);
    if (Run({"new", "--empty", name}).status == 0) {
        EXPECT_EQ(Run({"import", "d.json", name}).status, 0);
        EXPECT_EQ(Run({"tree", name}).status, 0);
        std::filesystem::remove(folder / name);
    }
    for (const std::size_t tooMany : {1U, 2U, 8U}) {
        name = NameOf(longest - 8 + tooMany);
        for (const std::vector<std::string>& command :
             std::vector<std::vector<std::string>>{{"new", "--empty", name},
                                                   {"new", "--empty", name, "--dry-run"},
                                                   {"import", "d.json", name},
                                                   {"import", "d.json", name, "--dry-run"},
                                                   {"store", "d.json", "--db", name},
                                                   {"store", "d.json", "--db", name, "--dry-run"}}) {
            const ProcessResult result = Run(command);
            EXPECT_EQ(result.status, 1) << command.front();
            EXPECT_NE(result.error.find("that is too long"), std::string::npos) << result.error;
            EXPECT_NE(result.error.find(" shorter. Nothing was changed"), std::string::npos) << result.error;
        }
    }
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1);
}

#if !defined(_WIN32)

TEST_F(DatabaseJournalTest, AFileWhoseNameIsTooLongIsReadButNotChanged) {
    ASSERT_EQ(Run({"new", "--empty", "p.kvp"}).status, 0);
    folder.Write("d.json", R"({"id":"1","name":"P","type":"SIMULATION"})");
    const std::string name = NameOf(250);
    std::filesystem::rename(folder / "p.kvp", folder / name);
    EXPECT_EQ(Run({"tree", name}).status, 0);
    for (const std::vector<std::string>& command : std::vector<std::vector<std::string>>{
             {"import", "d.json", name}, {"import", "d.json", name, "--dry-run"}}) {
        const ProcessResult result = Run(command);
        EXPECT_EQ(result.status, 1);
        EXPECT_NE(result.error.find("Make it at least 3 bytes shorter. Nothing was changed"),
                  std::string::npos)
            << result.error;
    }
}

TEST_F(DatabaseJournalTest, APathIsShortEnoughForSqliteOrRefused) {
    std::string deep;
    while (folder.Path().native().size() + deep.size() < 430) {
        deep += "directory/";
    }
    folder.MakeDirectory(deep);
    const std::size_t left = 504 - (folder.Path().native().size() + 1 + deep.size());
    EXPECT_EQ(Run({"new", "--empty", deep + NameOf(left)}).status, 0);
    EXPECT_EQ(Run({"tree", deep + NameOf(left)}).status, 0);
    const ProcessResult result = Run({"new", "--empty", deep + NameOf(left + 1)});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.error.find("has a path that is too long"), std::string::npos) << result.error;
    EXPECT_FALSE(std::filesystem::exists(folder / (deep + NameOf(left + 1))));
}

#endif

}  // namespace
}  // namespace host

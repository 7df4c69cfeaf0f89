#include <gtest/gtest.h>

#include <limits>

#include "host/HostSupport.h"
#include "host/server/Server.h"
#include "host/server/ServerTables.h"
#include "host/system/Database.h"
#include "support/TemporaryDirectory.h"

namespace host {
namespace {

constexpr const char* kDocument =
    R"({"id":"1","name":"P","type":"SIMULATION","children":[{"id":"2","type":"CAEPART"}]})";

class ServerNewDatabaseTest : public testing::Test {
protected:
    std::filesystem::path File() const { return folder / "server.db"; }
    void Store(const std::string& document = kDocument, const StoreRequest& request = {"P"}) {
        Server::OpenForStoring(File(), false).Store(Parse(document), request, report, kept.console);
    }
    /// A console whose progress fails, which stands for everything that can fail in between.
    static Console FailingConsole() {
        return {[](std::string_view) {}, true,
                [calls = 0]() mutable {
                    if (++calls > 1) {
                        throw DatabaseError("is gone");
                    }
                    return Console::Clock::time_point();
                }};
    }
    std::size_t CountFiles() const {
        return static_cast<std::size_t>(
            std::distance(std::filesystem::directory_iterator(folder.Path()), {}));
    }
    std::int64_t CountObjects() const {
        Database database(File(), DatabaseUse::Reading, kServerKind);
        Statement count(database, "SELECT count(*) FROM object");
        count.Begin().Next();
        return count.Number(0);
    }

    TemporaryDirectory folder;
    KeptConsole kept;
    StoreReport report;
};

TEST_F(ServerNewDatabaseTest, HasItsNameOnlyWhenItIsComplete) {
    bool wasThere = false;
    Console console([](std::string_view) {}, true,
                    [&] {
                        wasThere = wasThere || std::filesystem::exists(File());
                        return Console::Clock::time_point();
                    });
    Server::OpenForStoring(File(), false).Store(Parse(kDocument), {"P"}, report, console);
    EXPECT_FALSE(wasThere);
    EXPECT_EQ(CountObjects(), 2);
    EXPECT_EQ(CountFiles(), 1U);
}

TEST_F(ServerNewDatabaseTest, OfTwoProgramsThatCreateItTheSecondStoresInTheDatabaseOfTheFirst) {
    Server second = Server::OpenForStoring(File(), false);
    Store(R"({"id":"7","name":"Q","type":"SIMULATION"})", {});
    second.Store(Parse(kDocument), {"P"}, report, kept.console);
    EXPECT_EQ(report.newKeys, 2U);
    EXPECT_EQ(CountObjects(), 3);
    EXPECT_EQ(CountFiles(), 1U);
    // The server can store again.
    second.Store(Parse(kDocument), {"P", true}, report, kept.console);
    EXPECT_EQ(report.newKeys, 0U);
}

TEST_F(ServerNewDatabaseTest, AServerThatCreatedItStoresAgain) {
    Server server = Server::OpenForStoring(File(), false);
    server.Store(Parse(kDocument), {"P"}, report, kept.console);
    EXPECT_EQ(report.newKeys, 2U);
    server.Store(Parse(kDocument), {"Q"}, report, kept.console);
    EXPECT_EQ(report.newKeys, 2U);
    EXPECT_EQ(CountObjects(), 4);
}

TEST_F(ServerNewDatabaseTest, AFailureLeavesNothing) {
    Console console = FailingConsole();
    EXPECT_EQ(ErrorOf([&] {
                  Server::OpenForStoring(File(), false).Store(Parse(kDocument), {"P"}, report, console);
              }),
              "is gone");
    EXPECT_EQ(CountFiles(), 0U);
}

TEST_F(ServerNewDatabaseTest, AnEmptyFileBecomesTheDatabaseAndStaysEmptyIfThatFails) {
    folder.Write("server.db", "");
    Console console = FailingConsole();
    EXPECT_EQ(ErrorOf([&] {
                  Server::OpenForStoring(File(), false).Store(Parse(kDocument), {"P"}, report, console);
              }),
              "is gone");
    EXPECT_EQ(std::filesystem::file_size(File()), 0U);
    EXPECT_EQ(CountFiles(), 1U);
    Store();
    EXPECT_EQ(CountObjects(), 2);
}

TEST_F(ServerNewDatabaseTest, AJournalThatIsLeftOverFromAnOlderDatabaseIsNotTaken) {
    folder.Write("server.db-journal", "x");
    EXPECT_NE(ErrorOf([&] { Store(); }).find("'-journal'"), std::string::npos);
    EXPECT_EQ(ReadWholeFile(folder / "server.db-journal"), "x");
    EXPECT_EQ(CountFiles(), 1U);
}

TEST_F(ServerNewDatabaseTest, ARefusalLeavesNothing) {
    EXPECT_EQ(ErrorOf([&] {
                  Store(kDocument, {"P", true});
              }),
              "has no project 'P': leave out --again to store a new one");
    EXPECT_EQ(CountFiles(), 0U);
}

TEST_F(ServerNewDatabaseTest, OfTwoProgramsThatCreateItWithTheSameProjectTheSecondIsRefused) {
    Server second = Server::OpenForStoring(File(), false);
    Store();
    const std::string bytes = ReadWholeFile(File());
    EXPECT_TRUE(ErrorOf([&] {
                    second.Store(Parse(kDocument), {"P"}, report, kept.console);
                }).starts_with("has a project 'P' already"));
    EXPECT_TRUE(ReadWholeFile(File()) == bytes);
    EXPECT_EQ(CountFiles(), 1U);
}

#if !defined(_WIN32)

TEST_F(ServerNewDatabaseTest, ALinkToAMissingFileGetsItsFile) {
    folder.MakeDirectory("elsewhere");
    std::filesystem::create_symlink("elsewhere/real.db", File());
    Store();
    EXPECT_TRUE(std::filesystem::is_symlink(File()));
    EXPECT_TRUE(std::filesystem::is_regular_file(folder / "elsewhere/real.db"));
    EXPECT_EQ(CountObjects(), 2);
}

#endif

TEST_F(ServerNewDatabaseTest, RefusesADatabaseWhoseNumbersLeaveNoRoom) {
    constexpr const char* kLarger = R"({"id":"1","name":"P","type":"SIMULATION","children":[)"
                                    R"({"id":"2","type":"CAEPART"},{"id":"3","type":"CAEPART"}]})";
    const std::string largest = std::to_string(std::numeric_limits<std::int64_t>::max());
    for (const std::string& change : {"UPDATE object SET number = " + largest + " WHERE number = 2",
                                      "UPDATE node SET number = " + largest + " WHERE number = 2",
                                      "UPDATE object SET number = " + largest + " - 1 WHERE number = 2",
                                      std::string("DELETE FROM origin")}) {
        std::filesystem::remove(File());
        Store();
        Database(File(), DatabaseUse::Changing, kServerKind).Run(change.c_str());
        const std::string bytes = ReadWholeFile(File());
        EXPECT_TRUE(ErrorOf([&] { Store(kLarger, {"Q"}); }).starts_with("is damaged: ")) << change;
        EXPECT_TRUE(ReadWholeFile(File()) == bytes) << change;
    }
}

}  // namespace
}  // namespace host

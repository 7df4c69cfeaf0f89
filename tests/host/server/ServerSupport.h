#pragma once

#include <gtest/gtest.h>
#include <libjson.h>

#include <filesystem>
#include <regex>
#include <string>

#include "FetchSupport.h"
#include "host/HostSupport.h"
#include "host/server/Server.h"
#include "host/server/ServerTables.h"
#include "host/system/Database.h"
#include "host/system/DatabaseCheck.h"
#include "support/TemporaryDirectory.h"

namespace host {

inline std::string ToText(const JSONNode& node) {
    const json_string text = node.write();
    return {text.data(), text.size()};
}

/// The text without the part of its keys that differs between databases.
inline std::string Plain(const std::string& text) {
    return std::regex_replace(text, std::regex("([A-Z]{3}-[0-9]+)-[0-9a-f]{6}"), "$1");
}

/// Tests that store documents in a database of their own. Unless they say something else, the project is "P".
class ServerInFolder : public testing::Test {
protected:
    std::filesystem::path File() const { return folder / "server.db"; }

    std::string StoreWhole(const std::string& document, const StoreRequest& request = {"P"}) {
        report = StoreReport();
        Server server = Server::OpenForStoring(File(), false);
        return ToText(server.Store(Parse(document), request, report, kept.console));
    }
    /// Stores it and gives the answer with plain keys.
    std::string Store(const std::string& document, const StoreRequest& request = {"P"}) {
        return Plain(StoreWhole(document, request));
    }
    /// The same with --again.
    std::string Again(const std::string& document, const std::string& project = "P") {
        return Store(document, {project, true});
    }
    /// Why the document is not stored; the database is as it was.
    std::string RefusalOf(const std::string& document, const StoreRequest& request = {"P"}) {
        const std::string bytes = ReadWholeFile(File());
        const std::string reason = ErrorOf([&] { StoreWhole(document, request); });
        EXPECT_TRUE(ReadWholeFile(File()) == bytes) << reason;
        return reason;
    }
    /// Changes the database so that its checksum fits what it has then.
    void Change(const std::string& statements) {
        Database database(File(), DatabaseUse::Changing, kServerKind);
        Transaction(database).Complete([&] {
            database.Run(statements.c_str());
            WriteChecksum(database, kServerKind);
        });
    }
    /// The key that ends as the database's keys do.
    std::string KeyOf(const std::string& plain) {
        Database database(File(), DatabaseUse::Reading, kServerKind);
        Statement origin(database, "SELECT text FROM origin");
        EXPECT_TRUE(origin.Begin().Next());
        return plain + "-" + origin.Text(0);
    }
    std::string FetchWhole(const std::string& plainKey) {
        return FetchText(Server::OpenForFetching(File()), KeyOf(plainKey), kept.console);
    }
    std::string Fetch(const std::string& plainKey) { return Plain(FetchWhole(plainKey)); }
    std::string Said() {
        kept.said.clear();
        report.Say("s", kept.console);
        return kept.said;
    }

    TemporaryDirectory folder;
    KeptConsole kept;
    StoreReport report;
};

}  // namespace host

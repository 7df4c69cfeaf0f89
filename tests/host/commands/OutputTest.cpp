#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "host/HostSupport.h"
#include "host/commands/Output.h"
#include "host/directory/OwnFiles.h"
#include "host/directory/WithoutPrivileges.h"
#include "support/TemporaryDirectory.h"

namespace host {
namespace {

class OutputOfCommand : public testing::Test {
protected:
    /// Whether a command that reads the folder may replace the file in it.
    bool MayReplace(std::string_view name) {
        return IsReplaceable(ToUtf8(folder / name), {ToUtf8(folder.Path())}, kept.console);
    }

    TemporaryDirectory folder;
    KeptConsole kept;
};

TEST_F(OutputOfCommand, ReplacesInADirectoryWhatTheProgramWroteAndEmptyFiles) {
    for (const std::string& content :
         {std::string(), std::string(kPlotBeginning), "<head>" + std::string(kPageMark),
          std::string(R"({"id":"1","name":"P","createdDate":"d","createdBy":"x"})"),
          std::string(R"({"id":"1","dbkey":"K"})")}) {
        folder.Write("study/out.json", content);
        EXPECT_TRUE(MayReplace("study/out.json")) << content;
    }
    EXPECT_TRUE(MayReplace("study/new.json"));
    EXPECT_EQ(kept.said, "");
}

TEST_F(OutputOfCommand, ReplacesNoOtherJsonInADirectory) {
    for (const char* const content :
         {"{}", "{", R"({"id":1})", R"({"name":"P","id":"1"})", "[]", "\n", R"({"load": 12.5})"}) {
        folder.Write("study/out.json", content);
        kept.said.clear();
        EXPECT_FALSE(MayReplace("study/out.json")) << content;
        EXPECT_NE(kept.said.find("it is a file of the project"), std::string::npos) << kept.said;
    }
}

#if !defined(_WIN32)

TEST_F(OutputOfCommand, DoesNotReplaceAFileOfADirectoryThatCannotBeRead) {
    using std::filesystem::perms;
    const std::filesystem::path file = folder.Write("study/result.csv", "1;2\n");
    std::filesystem::permissions(folder.Path(), perms::all);
    std::filesystem::permissions(folder / "study", perms::all);
    std::filesystem::permissions(file, perms::owner_write | perms::others_write);
    const WithoutPrivileges user;
    EXPECT_FALSE(MayReplace("study/result.csv"));
    EXPECT_NE(kept.said.find("it is a file of the project"), std::string::npos) << kept.said;
}

#endif

}  // namespace
}  // namespace host

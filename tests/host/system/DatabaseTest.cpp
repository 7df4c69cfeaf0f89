#include <gtest/gtest.h>

#include "DatabaseSupport.h"
#include "host/HostSupport.h"
#include "host/projectfile/ProjectTables.h"
#include "host/system/Database.h"

#if defined(_WIN32)
#include <windows.h>
#else
#include <sys/resource.h>
#include <unistd.h>

#include <system_error>
#endif

namespace host {
namespace {

using DatabaseTest = DatabaseFiles;

TEST_F(DatabaseTest, WhatOneProgramChangesAnotherOneOnlyReads) {
    ASSERT_EQ(Run({"new", "--empty", "p.kvp"}).status, 0);
    folder.Write("a.json", R"({"name":"P","type":"SIMULATION"})");
    {
        Database database(folder / "p.kvp", DatabaseUse::Changing, kProjectFileKind);
        const Transaction transaction(database);
        const ProcessResult refused = Run({"import", "a.json", "p.kvp"});
        EXPECT_EQ(refused.status, 1);
        EXPECT_EQ(refused.error,
                  "korvane-json: 'p.kvp' is in use by another program: try again when that program has "
                  "finished. Nothing was changed\n");
        EXPECT_EQ(Run({"tree", "p.kvp"}).status, 0);
    }
    EXPECT_EQ(Run({"import", "a.json", "p.kvp"}).status, 0);
}

TEST_F(DatabaseTest, NamesAreOfAllLanguages) {
    const std::filesystem::path file = folder /
                                       "Gr\xC3\xB6\xC3\x9F"
                                       "e \xE4\xB8\xAD \xF0\x9F\x94\xA7/Gr\xC3\xB6\xC3\x9F"
                                       "e \xE4\xB8\xAD.kvp";
    std::filesystem::create_directory(file.parent_path());
    {
        Database database(file, DatabaseUse::Creating, kProjectFileKind);
        database.SetKind(kProjectFileKind);
    }
    EXPECT_TRUE(std::filesystem::is_regular_file(file));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(file.parent_path()), {}), 1);
    EXPECT_EQ(ErrorOfOpening(file, DatabaseUse::Reading), "no error");
}

TEST_F(DatabaseTest, RefusesWhatIsNoFile) {
#if defined(_WIN32)
    const std::filesystem::path device = "NUL";
#else
    const std::filesystem::path device = "/dev/null";
#endif
    for (const DatabaseUse use : {DatabaseUse::Reading, DatabaseUse::Changing, DatabaseUse::Creating}) {
        EXPECT_EQ(ErrorOfOpening(device, use), "is not a file");
        EXPECT_EQ(ErrorOfOpening(folder.Path(), use), "is not a file");
        EXPECT_EQ(ErrorOfOpening({}, use), "is not a file name");
    }
    const std::filesystem::path below = folder.Write("file", "x") / "p.kvp";
    EXPECT_EQ(ErrorOfOpening(below, DatabaseUse::Reading), "does not exist");
    EXPECT_EQ(ErrorOfOpening(below, DatabaseUse::Creating),
              "cannot be opened or created: its directory must exist and be writable");
}

#if defined(_WIN32)

TEST_F(DatabaseTest, SaysThatAnotherProgramKeepsTheFileForItself) {
    ASSERT_EQ(Run({"new", "--empty", "p.kvp"}).status, 0);
    const std::filesystem::path file = folder / "p.kvp";
    HANDLE const handle = ::CreateFileW(file.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(handle, INVALID_HANDLE_VALUE);
    EXPECT_EQ(ErrorOfOpening(file, DatabaseUse::Changing),
              "cannot be read: " + std::system_category().message(ERROR_SHARING_VIOLATION));
    ::CloseHandle(handle);
}

#else

TEST_F(DatabaseTest, SaysThatTooManyFilesAreOpen) {
    const std::filesystem::path file = folder / "p.kvp";
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
    const int firstFree = ::dup(STDERR_FILENO);
    ::close(firstFree);
    rlimit narrow = before;
    narrow.rlim_cur = static_cast<rlim_t>(firstFree);
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &narrow), 0);
    const std::string error = ErrorOfOpening(file, DatabaseUse::Creating);
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &before), 0);
    EXPECT_EQ(error, "cannot be opened or created: " +
                         std::make_error_code(std::errc::too_many_files_open).message());
    EXPECT_FALSE(std::filesystem::exists(file));
}

#endif

}  // namespace
}  // namespace host

#include <gtest/gtest.h>

#include "host/system/InputFile.h"
#include "support/TemporaryDirectory.h"

#if !defined(_WIN32)
#include <sys/stat.h>

#include <fstream>
#include <thread>
#endif

namespace host {
namespace {

TEST(InputFile, ReadsBytesAsTheyAre) {
    const TemporaryDirectory folder;
    const std::string bytes("a\r\n\x1A\0b\xFF", 7);
    std::string text;
    EXPECT_FALSE(ReadInputFile(folder.Write("in.json", bytes), text));
    EXPECT_EQ(text, bytes);
}

TEST(InputFile, RefusesADirectoryAndAFileThatIsNotThere) {
    const TemporaryDirectory folder;
    std::string text;
    EXPECT_EQ(ReadInputFile(folder.Path(), text), std::errc::is_a_directory);
    EXPECT_EQ(ReadInputFile(folder / "missing", text), std::errc::no_such_file_or_directory);
}

TEST(InputFile, RefusesATextThatIsTooLong) {
    const TemporaryDirectory folder;
    const std::filesystem::path file = folder.Write("in.json", "12345");
    std::string text;
    EXPECT_FALSE(ReadInputFile(file, text, {5, 5}));
    const std::error_code error = ReadInputFile(file, text, {4, 4});
    EXPECT_EQ(error.message(),
              "it is longer than 8 GiB or than half of this machine's memory. Give a smaller document");
}

TEST(InputFile, KnowsALongFileBeforeItIsRead) {
    const TemporaryDirectory folder;
    const std::filesystem::path file = folder.Write("in.json", "");
    std::filesystem::resize_file(file, std::uintmax_t{16} << 30U);
    std::string text;
    EXPECT_TRUE(ReadInputFile(file, text));
    EXPECT_EQ(text, "");
}

#if !defined(_WIN32)

TEST(InputFile, StopsAtADeviceWithoutAnEnd) {
    std::string text;
    EXPECT_EQ(ReadInputFile("/dev/zero", text).message(),
              "it is a device that gives more than a megabyte. Give a file with the document");
    EXPECT_LE(text.size(), std::size_t{1} << 20U);
}

TEST(InputFile, ReadsADeviceThatEnds) {
    std::string text;
    EXPECT_FALSE(ReadInputFile("/dev/null", text));
    EXPECT_EQ(text, "");
}

TEST(InputFile, ReadsPipesUpToTheLimit) {
    const TemporaryDirectory folder;
    const std::filesystem::path pipe = folder / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const std::string whole(3000000, 'x');
    for (const std::uint64_t limit : {3000000U, 2999999U}) {
        std::thread writer([&] { std::ofstream(pipe) << whole << std::flush; });
        std::string text;
        const std::error_code error = ReadInputFile(pipe, text, {limit});
        writer.join();
        EXPECT_EQ(!error, limit == whole.size());
        EXPECT_EQ(text == whole, limit == whole.size());
    }
}

#endif

}  // namespace
}  // namespace host

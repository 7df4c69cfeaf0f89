#include "Documents.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>

void SaveDocument(std::string_view text) {
    const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
    ASSERT_NE(test, nullptr) << "documents belong to a test";
    std::string name = std::string(test->test_suite_name()) + '.' + test->name();
    // Instances of a parameterized test carry slashes.
    std::ranges::replace(name, '/', '-');
    static std::map<std::string, int> counts;
    const int number = ++counts[name];

    const std::filesystem::path folder = KORVANEJSON_DOCUMENTS;
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    ASSERT_FALSE(error) << folder << ": " << error.message();
    const std::filesystem::path path = folder / (name + '-' + std::to_string(number) + ".json");
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(text.data(), static_cast<std::streamsize>(text.size()));
    file.close();
    ASSERT_TRUE(file) << path << ": cannot be written";
}

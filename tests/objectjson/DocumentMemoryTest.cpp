#include <gtest/gtest.h>

#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <vector>

#include "objectjson/DocumentText.h"
#include "support/CountedMemory.h"
#include "support/LongRun.h"
#include "support/ModelBuilders.h"
#include "support/TemporaryDirectory.h"

namespace {

class CountingSink : public DocumentSink {
public:
    void Write(const char*, std::size_t length) override { bytes += length; }
    virtual ~CountingSink() = default;

    std::size_t bytes = 0;
};

class FileSink final : public CountingSink {
public:
    explicit FileSink(const std::filesystem::path& path) : file_(std::fopen(path.c_str(), "wb")) {}
    ~FileSink() override { std::fclose(file_); }
    FileSink(const FileSink&) = delete;
    FileSink& operator=(const FileSink&) = delete;

    void Write(const char* text, std::size_t length) override {
        CountingSink::Write(text, length);
        if (std::fwrite(text, 1, length, file_) != length) {
            throw std::runtime_error("the document's file takes no more");
        }
    }

private:
    std::FILE* file_;
};

struct Cost {
    std::size_t bytes;
    std::size_t memory;
};

/// What it takes to write a project with that many objects, eight below each.
Cost CostOf(int count, CountingSink& sink) {
    const TestProject project;
    std::vector<CAEObject*> objects{&*project};
    for (int number = 0; number < count; ++number) {
        CAEObject& parent = *objects[static_cast<std::size_t>(number / 8)];
        objects.push_back(korvane::CreateObject(parent, CAE_PART, L"part"));
        SetMetadata(*objects.back(), L"Mass", L"1250.5", L"kg");
    }
    const CountedMemory memory;
    WriteDocument(&*project, ExportMode::kEverything, sink);
    EXPECT_EQ(memory.InUse(), 0U);
    return {sink.bytes, memory.Most()};
}

}  // namespace

class DocumentMemory : public testing::Test {
protected:
    NodesInCountedMemory nodes_;
};

TEST_F(DocumentMemory, DoesNotGrowWithTheDocument) {
    CountingSink sink;
    const Cost small = CostOf(5'000, sink);
    // As deep as the other.
    CountingSink other;
    const Cost large = CostOf(30'000, other);
    EXPECT_GT(large.bytes, 5 * small.bytes);
    EXPECT_EQ(large.memory, small.memory);
    EXPECT_LT(large.memory, std::size_t{20} * 1024);
}

TEST_F(DocumentMemory, IsSmallForAFileOfTenMillionObjects) {
    const int count = IsLongRun() && !kIsSanitized ? 10'000'000 : 100'000;
    const TemporaryDirectory directory;
    const std::filesystem::path path = directory.Path() / "document.json";
    Cost cost{};
    {
        FileSink sink(path);
        cost = CostOf(count, sink);
    }
    EXPECT_GT(cost.bytes, static_cast<std::size_t>(count) * 150);
    EXPECT_EQ(std::filesystem::file_size(path), cost.bytes);
    EXPECT_LT(cost.memory, std::size_t{1024} * 1024);
}

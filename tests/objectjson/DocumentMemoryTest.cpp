#include <gtest/gtest.h>
#include <libjson.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <new>
#include <stdexcept>
#include <vector>

#include "objectjson/DocumentText.h"
#include "support/LongRun.h"
#include "support/ModelBuilders.h"
#include "support/TemporaryDirectory.h"

namespace {

std::size_t inUse = 0;
std::size_t most = 0;

/// Stored before every block.
struct alignas(alignof(std::max_align_t)) Header {
    std::size_t bytes;
};

void* Give(void* memory, std::size_t bytes) {
    if (memory == nullptr) {
        return nullptr;
    }
    inUse += bytes;
    most = std::max(most, inUse);
    return ::new (memory) Header{bytes} + 1;
}

Header* Take(void* block) {
    Header* const header = static_cast<Header*>(block) - 1;
    inUse -= header->bytes;
    return header;
}

void* Allocate(std::size_t bytes) {
    return Give(std::malloc(sizeof(Header) + bytes), bytes);
}

void* Reallocate(void* block, std::size_t bytes) {
    return Give(std::realloc(Take(block), sizeof(Header) + bytes), bytes);
}

void Free(void* block) {
    if (block != nullptr) {
        std::free(Take(block));
    }
}

}  // namespace

// NOLINTBEGIN(cppcoreguidelines-owning-memory): these are what owners are made of.
void* operator new(std::size_t size) {
    if (void* const memory = Allocate(size)) {
        return memory;
    }
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
    Free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    Free(memory);
}
// NOLINTEND(cppcoreguidelines-owning-memory)

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
    const std::size_t before = inUse;
    most = before;
    WriteDocument(&*project, ExportMode::kEverything, sink);
    EXPECT_EQ(inUse, before);
    return {sink.bytes, most - before};
}

}  // namespace

class DocumentMemory : public testing::Test {
protected:
    void SetUp() override { libjson::register_memory_callbacks(Allocate, Reallocate, Free); }
    void TearDown() override { libjson::register_memory_callbacks(nullptr, nullptr, nullptr); }
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

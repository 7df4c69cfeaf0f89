#include <gtest/gtest.h>
#include <korvaneexchange/WriteDocument.h>

#include <cstddef>
#include <vector>

#include "support/CountedMemory.h"
#include "support/ModelBuilders.h"

using korvane::exchange::Layout;
using korvane::exchange::WriteDocument;

namespace {

struct Cost {
    std::size_t bytes;
    std::size_t memory;
};

/// What it takes to write a project with that many objects, eight below each, with a file for every other.
Cost CostOf(int count, Layout layout) {
    TestProject project;
    std::vector<CAEObject*> objects{&*project};
    for (int number = 0; number < count; ++number) {
        CAEObject& part = project.Add(*objects[static_cast<std::size_t>(number / 8)], CAE_PART, L"part");
        objects.push_back(&part);
        SetMetadata(part, L"Mass", L"1250.5", L"kg");
        if (number % 2 == 0) {
            project.AddFile(part, L"part.step", CAE_FILE_CAD);
        }
    }
    std::size_t calls = 0;
    std::size_t bytes = 0;
    const CountedMemory memory;
    WriteDocument(*project, {.layout = layout, .progress = [&calls](const auto&) { return ++calls != 0; }},
                  [&bytes](std::string_view page) { bytes += page.size(); });
    EXPECT_EQ(memory.InUse(), 0U);
    EXPECT_GT(calls, static_cast<std::size_t>(count) / 256);
    return {bytes, memory.Most()};
}

}  // namespace

TEST(WriteDocumentMemory, DoesNotGrowWithTheDocument) {
    const NodesInCountedMemory nodes;
    for (const Layout layout : {Layout::kCompact, Layout::kIndented}) {
        const Cost small = CostOf(5'000, layout);
        // As deep as the other.
        const Cost large = CostOf(30'000, layout);
        EXPECT_GT(large.bytes, 5 * small.bytes);
        EXPECT_EQ(large.memory, small.memory);
        EXPECT_LT(large.memory, std::size_t{20} * 1024);
    }
}

#include <gtest/gtest.h>
#include <korvaneexchange/WriteDocument.h>
#include <korvanejson/JsonSerializer.h>

#include <algorithm>
#include <cstddef>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

#include "objectjson/ExportMode.h"
#include "objectjson/RecordingSupport.h"
#include "objectjson/TextWriter.h"
#include "support/LongRun.h"
#include "support/ModelBuilders.h"
#include "support/SmallStack.h"

using korvane::exchange::Layout;
using korvane::exchange::Progress;
using korvane::exchange::Stopped;
using korvane::exchange::WriteDocument;
using korvane::exchange::WriteOptions;
using korvane::exchange::WriteReport;
using Mode = korvane::exchange::ExportMode;

namespace {

/// What an installed JSON library makes before the sink gets anything.
constexpr bool kHasPages =
#if defined(KORVANEJSON_TEXT_WITHOUT_NODES)
    true;
#else
    false;
#endif

struct Written {
    WriteReport report;
    std::string text;
    std::vector<std::size_t> pages;
};

Written Write(CAEObject& object, const WriteOptions& options = {}) {
    Written written;
    written.report = WriteDocument(object, options, [&written](std::string_view page) {
        written.text += page;
        written.pages.push_back(page.size());
    });
    return written;
}

class WriteDocumentTest : public testing::Test {
protected:
    ~WriteDocumentTest() override { ModuleExportMode() = OuString(); }

    /// Objects of every kind in several levels, with files, metadata and names that need escapes.
    void Fill(int count) {
        std::vector<CAEObject*> objects{&*project_};
        for (int number = 0; number < count; ++number) {
            const auto kind = kObjectKinds[static_cast<std::size_t>(number) % std::size(kObjectKinds)];
            OuString name;
            name.Format(number % 3 == 0   ? L"Tr\u00E4ger %d/\"a\""
                        : number % 3 == 1 ? L""
                                          : L"part \\ %d\t\U0001F697",
                        number);
            CAEObject& object = project_.Add(*objects[static_cast<std::size_t>(number / 8)], kind, name);
            objects.push_back(&object);
            SetMetadata(object, L"Mass", L"1250.5", L"kg", L"double");
            if (number % 2 == 0) {
                object.setDBKey(L"KEY/1");
                project_.AddFile(object, L"mesh.inp", CAE_FILE_MESH, CAE_FORMAT_BINARY);
            }
        }
    }

    std::string ObjectNodeText(const wchar_t* mode, Layout layout) {
        JsonSerializer serializer(&*project_);
        serializer.SetExportMode(mode);
        const JSONNode document = serializer.GetJson();
        const json_string text = layout == Layout::kIndented ? document.write_formatted() : document.write();
        return {text.data(), text.size()};
    }

    TestProject project_;
};

const struct {
    const wchar_t* text;
    Mode mode;
} kModes[] = {{L"", Mode::kEverything}, {L"PROJECT", Mode::kProject}, {L"STUDY", Mode::kStudy}};

}  // namespace

TEST_F(WriteDocumentTest, GivesTheBytesOfTheNodeInEveryModeAndLayout) {
    Fill(300);
    std::vector<std::string> texts;
    for (const auto& mode : kModes) {
        for (const Layout layout : {Layout::kCompact, Layout::kIndented}) {
            texts.push_back(Write(*project_, {.mode = mode.mode, .layout = layout}).text);
            EXPECT_EQ(texts.back(), ObjectNodeText(mode.text, layout));
        }
    }
    std::ranges::sort(texts);
    EXPECT_EQ(std::ranges::adjacent_find(texts), texts.end());
}

TEST_F(WriteDocumentTest, WritesAnObjectWithNothingBelow) {
    const Written written = Write(project_.Add(CAE_PART, L"bracket"));
    EXPECT_EQ(written.text,
              R"({"id":"2","name":"bracket","createdDate":"2026-03-01T09:30:00Z","createdBy":"engineer",)"
              R"("type":"CAEPART","metaData":{},"children":[],"files":[],"subType":"SDM"})");
    EXPECT_EQ(written.report.objects, 1U);
    EXPECT_EQ(written.report.files, 0U);
    EXPECT_EQ(written.report.bytes, written.text.size());
}

TEST_F(WriteDocumentTest, CountsObjectNodesAndFileRecords) {
    CAEObject& part = project_.Add(CAE_PART, L"bracket");
    SetMetadata(part, L"Mass", L"1", L"kg");
    CAEFile& cad = project_.AddFile(part, L"bracket.step", CAE_FILE_CAD);
    project_.AddFile(part, L"bracket.inp", CAE_FILE_MESH);
    // An object node in a file record, and a file among the children: an object node as well.
    project_.Add(cad, CAE_TAG, L"tag");
    CAEObject& iterations = project_.Add(CAE_ITERATION_FOLDER, L"iterations");
    project_.Add(iterations, CAE_ITERATION_MODEL, L"model");
    project_.Add(iterations, CAE_FILE, L"note.txt");

    const WriteReport everything = Write(*project_).report;
    EXPECT_EQ(everything.objects, 6U);
    EXPECT_EQ(everything.files, 2U);
    const WriteReport study = Write(*project_, {.mode = Mode::kStudy}).report;
    EXPECT_EQ(study.objects, 5U);
    EXPECT_EQ(study.files, 2U);
    const WriteReport project = Write(*project_, {.mode = Mode::kProject}).report;
    EXPECT_EQ(project.objects, 1U);
    EXPECT_EQ(project.files, 0U);
    // The root is an object node, also where it is a file.
    const WriteReport file = Write(cad).report;
    EXPECT_EQ(file.objects, 2U);
    EXPECT_EQ(file.files, 0U);
}

TEST_F(WriteDocumentTest, ComesInPagesOfWhichNoneIsEmpty) {
    Fill(300);
    for (const Layout layout : {Layout::kCompact, Layout::kIndented}) {
        const Written written = Write(*project_, {.layout = layout});
        EXPECT_EQ(written.report.bytes, written.text.size());
        if (!kHasPages) {
            EXPECT_EQ(written.pages.size(), 1U);
            continue;
        }
        EXPECT_GT(written.pages.size(), 4U);
        for (const std::size_t length : written.pages) {
            EXPECT_GT(length, 0U);
            EXPECT_LE(length, std::size_t{16} * 1024);
        }
    }
}

TEST_F(WriteDocumentTest, HasAModeOfItsOwn) {
    Fill(100);
    const std::string everything = ObjectNodeText(L"", Layout::kCompact);
    ModuleExportMode() = L"PROJECT";
    EXPECT_EQ(Write(*project_).text, everything);
    Write(*project_, {.mode = Mode::kStudy});
    EXPECT_STREQ(ModuleExportMode().GetBuffer(), L"PROJECT");
}

TEST_F(WriteDocumentTest, AsksTheObjectModelInTheOrderOfTheNode) {
    Fill(60);
    for (const auto& mode : kModes) {
        const std::string ofNode = RecordingOf([&] { ObjectNodeText(mode.text, Layout::kCompact); });
        EXPECT_GT(ofNode.size(), 100U);
        EXPECT_EQ(RecordingOf([&] { Write(*project_, {.mode = mode.mode}); }), ofNode);
    }
}

TEST_F(WriteDocumentTest, PassesOnWhatTheSinkThrows) {
    Fill(300);
    for (const int room : kHasPages ? std::vector{0, 1, 3} : std::vector{0}) {
        int pages = 0;
        EXPECT_THROW(WriteDocument(*project_, {},
                                   [&pages, room](std::string_view) {
                                       if (pages++ == room) {
                                           throw std::runtime_error("no room");
                                       }
                                   }),
                     std::runtime_error);
        EXPECT_EQ(pages, room + 1);
    }
}

TEST_F(WriteDocumentTest, PassesOnWhatTheObjectModelThrowsWhereverThatIs) {
    Fill(200);
    const std::string whole = Write(*project_).text;
    int thrown = 0;
    bool hasEnded = false;
    for (int after = 0; !hasEnded; after += 97) {
        std::string text;
        const korvane::OddAnswer noMemory("", {.throws = true, .after = after});
        try {
            WriteDocument(*project_, {}, [&text](std::string_view page) { text += page; });
            hasEnded = true;
        } catch (const std::bad_alloc&) {
            ++thrown;
            EXPECT_LT(text.size(), whole.size());
        }
        EXPECT_EQ(text, whole.substr(0, text.size()));
    }
    EXPECT_GT(thrown, 20);
}

TEST_F(WriteDocumentTest, TellsItsProgressBetweenObjects) {
    Fill(1000);
    std::vector<Progress> seen;
    std::size_t bytes = 0;
    const WriteReport report = WriteDocument(*project_,
                                             {.progress =
                                                  [&](const Progress& progress) {
                                                      EXPECT_EQ(progress.bytes, bytes);
                                                      EXPECT_EQ(progress.total, 0U);
                                                      seen.push_back(progress);
                                                      return true;
                                                  }},
                                             [&bytes](std::string_view page) { bytes += page.size(); });
    ASSERT_GT(seen.size(), 4U);
    EXPECT_EQ(seen.front().objects, 0U);
    for (std::size_t at = 1; at < seen.size(); ++at) {
        EXPECT_GT(seen[at].objects, seen[at - 1].objects);
    }
    EXPECT_LT(seen.back().objects, report.objects + report.files);
    EXPECT_GT(seen.back().objects, (report.objects + report.files) / 2);
    EXPECT_EQ(seen.back().bytes > 0, kHasPages);
}

TEST_F(WriteDocumentTest, StopsWhereTheCallbackSaysSo) {
    Fill(1000);
    const std::string whole = Write(*project_).text;
    for (const int calls : {1, 2, 4}) {
        int left = calls;
        std::string text;
        EXPECT_THROW(WriteDocument(*project_, {.progress = [&left](const Progress&) { return --left != 0; }},
                                   [&text](std::string_view page) { text += page; }),
                     Stopped);
        EXPECT_EQ(left, 0);
        EXPECT_LT(text.size(), whole.size());
        EXPECT_EQ(text, whole.substr(0, text.size()));
        EXPECT_EQ(text.empty(), calls == 1 || !kHasPages);
    }
}

TEST_F(WriteDocumentTest, AsksTheObjectModelNothingWhenStoppedAtOnce) {
    EXPECT_EQ(RecordingOf([&] {
                  EXPECT_THROW(WriteDocument(*project_, {.progress = [](const Progress&) { return false; }},
                                             [](std::string_view) {}),
                               Stopped);
              }),
              "");
}

TEST_F(WriteDocumentTest, PassesOnWhatTheCallbackThrows) {
    EXPECT_THROW(
        WriteDocument(*project_, {.progress = [](const Progress&) -> bool { throw std::out_of_range("no"); }},
                      [](std::string_view) {}),
        std::out_of_range);
}

TEST_F(WriteDocumentTest, WritesManyLevelsOnASmallStack) {
    const auto levels = static_cast<std::size_t>(DeepLevels());
    CAEObject* object = &*project_;
    for (std::size_t level = 1; level < levels; ++level) {
        object = &project_.Add(*object, CAE_ASSEMBLY_FOLDER, L"a");
    }
    std::size_t opened = 0;
    std::size_t closed = 0;
    std::size_t bytes = 0;
    WriteReport report;
    OnSmallStack([&] {
        report = WriteDocument(*project_, {}, [&](std::string_view page) {
            opened += static_cast<std::size_t>(std::ranges::count(page, '{'));
            closed += static_cast<std::size_t>(std::ranges::count(page, '}'));
            bytes += page.size();
        });
    });
    EXPECT_EQ(report.objects, levels);
    EXPECT_EQ(report.bytes, bytes);
    // Of every level, and of its metadata.
    EXPECT_EQ(opened, 2 * levels);
    EXPECT_EQ(closed, opened);
}

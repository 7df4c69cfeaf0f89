#include <gtest/gtest.h>
#include <korvanejson/JsonSerializer.h>

#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

#include "objectjson/DocumentText.h"
#include "objectjson/TextWriter.h"
#include "support/ModelBuilders.h"

namespace {

class Pieces final : public DocumentSink {
public:
    void Write(const char* text, std::size_t length) override {
        all.append(text, length);
        lengths.push_back(length);
    }

    std::string all;
    std::vector<std::size_t> lengths;
};

/// Takes a number of pieces and throws at the next.
class FullSink final : public DocumentSink {
public:
    explicit FullSink(int room) : room_(room) {}

    void Write(const char*, std::size_t) override {
        ++pieces;
        if (room_-- == 0) {
            throw std::runtime_error("no room");
        }
    }

    int pieces = 0;

private:
    int room_;
};

class DocumentText : public testing::Test {
protected:
    /// Objects of every kind in three levels, with files, metadata and names that need escapes.
    void Fill(int count) {
        constexpr _tagCAEObjectType kKinds[] = {CAE_SUBASSEMBLY,
                                                CAE_PART,
                                                CAE_MODEL,
                                                CAE_ITERATION,
                                                CAE_ITERATION_FOLDER,
                                                CAE_ITERATION_MODEL,
                                                CAE_ASSEMBLY_FOLDER,
                                                CAE_VIEW_ITEM,
                                                CAE_TAG};
        std::vector<CAEObject*> objects{&*project_};
        for (int number = 0; number < count; ++number) {
            OuString name;
            name.Format(number % 3 == 0   ? L"Tr\u00E4ger %d/\"a\""
                        : number % 3 == 1 ? L""
                                          : L"part \\ %d\t\U0001F697",
                        number);
            const auto kind = kKinds[static_cast<std::size_t>(number) % std::size(kKinds)];
            CAEObject& object = project_.Add(*objects[static_cast<std::size_t>(number / 8)], kind, name);
            objects.push_back(&object);
            SetMetadata(object, L"Mass", L"1250.5", L"kg", L"double");
            SetMetadata(object, L"Description",
                        std::wstring(static_cast<std::size_t>(number), L'\u00FC').c_str());
            if (number % 2 == 0) {
                object.setDBKey(L"KEY/1");
                project_.AddFile(object, L"mesh.inp", CAE_FILE_MESH, CAE_FORMAT_BINARY);
            }
        }
    }

    std::string ObjectNodeText(const wchar_t* mode) {
        JsonSerializer serializer(&*project_);
        serializer.SetExportMode(mode);
        const json_string text = serializer.GetJson().write();
        return {text.data(), text.size()};
    }

    TestProject project_;
};

TEST_F(DocumentText, HasTheBytesThatTheNodeWrites) {
    Fill(200);
    const struct {
        const wchar_t* text;
        ExportMode mode;
    } kModes[] = {
        {L"", ExportMode::kEverything}, {L"PROJECT", ExportMode::kProject}, {L"STUDY", ExportMode::kStudy}};
    for (const auto& mode : kModes) {
        Pieces pieces;
        WriteDocument(&*project_, mode.mode, pieces);
        EXPECT_EQ(pieces.all, ObjectNodeText(mode.text));
        WideText wide;
        WriteDocument(&*project_, mode.mode, wide);
        EXPECT_EQ(std::string(wide.Take().GetAnsiBuffer()), pieces.all);
        EXPECT_TRUE(wide.Take().IsEmpty());
    }
}

TEST_F(DocumentText, HasOneMemberWithoutAnObject) {
    Pieces pieces;
    WriteDocument(nullptr, ExportMode::kEverything, pieces);
    EXPECT_EQ(pieces.all, R"({"subType":"SDM"})");
}

TEST_F(DocumentText, StopsAtWhatTheSinkThrows) {
    FullSink sink(0);
    EXPECT_THROW(WriteDocument(&*project_, ExportMode::kEverything, sink), std::runtime_error);
    EXPECT_EQ(sink.pieces, 1);
}

// An installed JSON library gives the text as one piece.
#if defined(KORVANEJSON_TEXT_WITHOUT_NODES)
TEST_F(DocumentText, ComesInPagesOfWhichNoneIsEmpty) {
    Fill(200);
    Pieces pieces;
    WriteDocument(&*project_, ExportMode::kEverything, pieces);
    ASSERT_GT(pieces.lengths.size(), 4U);
    for (const std::size_t length : pieces.lengths) {
        EXPECT_GT(length, 0U);
        EXPECT_LE(length, std::size_t{16} * 1024);
    }
}

TEST_F(DocumentText, StopsAtThePageThatTheSinkRefuses) {
    Fill(200);
    for (const int room : {0, 1, 3}) {
        FullSink sink(room);
        EXPECT_THROW(WriteDocument(&*project_, ExportMode::kEverything, sink), std::runtime_error);
        EXPECT_EQ(sink.pieces, room + 1);
    }
}
#endif

TEST(WideText, IsWhatWasWrittenWhateverThePieces) {
    std::string text;
    while (text.size() < 5000) {
        text += "{\"id\":\"" + std::to_string(text.size()) + "\"},";
    }
    for (const std::size_t length : {1U, 7U, 15U, 16U, 17U, 1023U, 1024U, 1025U, 2048U, 5000U}) {
        WideText wide;
        for (std::size_t at = 0; at < text.size(); at += length) {
            const std::string piece = text.substr(at, length);
            wide.Write(piece.data(), piece.size());
        }
        EXPECT_EQ(std::string(wide.Take().GetAnsiBuffer()), text) << length;
    }
}

}  // namespace

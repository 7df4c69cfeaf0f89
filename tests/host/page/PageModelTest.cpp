#include <gtest/gtest.h>

#include <string_view>

#include "host/model/MeshFiles.h"
#include "host/page/PageModel.h"
#include "support/TemporaryDirectory.h"

namespace host {
namespace {

constexpr std::string_view kTriangle =
    "*NODE\n1, 0, 10, -1\n2, 4, 10, -1\n3, 2, 20, -1\n*ELEMENT, TYPE=S3\n1, 1, 2, 3\n*STEP\n*STATIC\n*END "
    "STEP\n";
/// Three points in 18 bytes with two of padding, one triangle and three lines.
constexpr std::uint64_t kSizeOfTriangle = 20 + 12 + 24;

std::uint32_t NumberAt(const std::string& bytes, std::size_t place, std::size_t size) {
    std::uint32_t number = 0;
    for (std::size_t index = 0; index < size; ++index) {
        number |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes.at(place + index)))
                  << (8 * index);
    }
    return number;
}

class PageModels : public testing::Test {
protected:
    std::optional<PageModel> Read(std::string_view text, PageRoom& room) const {
        return ReadPageModel(folder.Write("job.inp", text), CAE_FILE_DECK, folder.Path(), Readable(), room);
    }

    ReadableDirectories Readable() const {
        ReadableDirectories readable;
        readable.Add(folder.Path());
        return readable;
    }

    TemporaryDirectory folder;
};

TEST_F(PageModels, HaveTheSurfaceInTheBoxAroundIt) {
    PageRoom room{1000};
    const std::optional<PageModel> model = Read(kTriangle, room);
    ASSERT_TRUE(model);
    EXPECT_EQ(model->nodes, 3U);
    EXPECT_EQ(model->elements, 1U);
    EXPECT_EQ(model->gap, "");
    EXPECT_EQ(model->low, (std::array{0.F, 10.F, -1.F}));
    EXPECT_EQ(model->high, (std::array{4.F, 20.F, -1.F}));
    ASSERT_EQ(model->points, 3U);
    ASSERT_EQ(model->triangles, 1U);
    ASSERT_EQ(model->lines, 3U);
    ASSERT_EQ(model->bytes.size(), kSizeOfTriangle);
    EXPECT_EQ(room.bytes, 1000 - kSizeOfTriangle);
    // Each point of the triangle has a place of its own, from 0 to 65535 in each direction.
    std::uint32_t places = 0;
    for (std::size_t corner = 0; corner < 3; ++corner) {
        const std::uint32_t point = NumberAt(model->bytes, 20 + 4 * corner, 4);
        ASSERT_LT(point, 3U);
        places |= 1U << point;
        const std::uint32_t x = NumberAt(model->bytes, std::size_t{6} * point, 2);
        const std::uint32_t y = NumberAt(model->bytes, std::size_t{6} * point + 2, 2);
        EXPECT_TRUE((x == 0 && y == 0) || (x == 65535 && y == 0) || (x == 32768 && y == 65535))
            << x << ' ' << y;
        EXPECT_EQ(NumberAt(model->bytes, std::size_t{6} * point + 4, 2), 0U);
    }
    EXPECT_EQ(places, 7U);
}

TEST_F(PageModels, ThatDoNotFitHaveCountsOnly) {
    PageRoom room{kSizeOfTriangle - 1};
    const std::optional<PageModel> model = Read(kTriangle, room);
    ASSERT_TRUE(model);
    EXPECT_EQ(model->nodes, 3U);
    EXPECT_EQ(model->bytes, "");
    EXPECT_EQ(room.bytes, kSizeOfTriangle - 1);
    PageRoom none;
    EXPECT_EQ(Read(kTriangle, none)->bytes, "");
}

TEST_F(PageModels, NeedSomethingToDraw) {
    PageRoom room{1000};
    EXPECT_FALSE(Read("*STEP\n*STATIC\n*END STEP\n", room));
    EXPECT_FALSE(Read("*NODE\n1, 0, 0, 0\n*STEP\n*STATIC\n*END STEP\n", room));
    EXPECT_FALSE(
        ReadPageModel(folder.Write("notes.txt", "x"), CAE_FILE_DECK, folder.Path(), Readable(), room));
    EXPECT_FALSE(ReadPageModel(folder / "missing.inp", CAE_FILE_DECK, folder.Path(), Readable(), room));
    EXPECT_EQ(room.bytes, 1000U);
}

TEST_F(PageModels, SayWhatTheyLack) {
    PageRoom room{1000};
    const std::optional<PageModel> model = Read("*INCLUDE, INPUT=more.inc\n" + std::string(kTriangle), room);
    ASSERT_TRUE(model);
    EXPECT_FALSE(model->nodes);
    EXPECT_NE(model->gap.find("more.inc"), std::string::npos) << model->gap;
    EXPECT_EQ(model->triangles, 1U);
}

TEST_F(PageModels, ShowMeshesAndGeometry) {
    PageRoom room{10000};
    const std::filesystem::path part = folder.Write("part.stl", BinaryStl(FacetsOfTetrahedron()));
    for (const _tagFileType type : {CAE_FILE_CAD, CAE_FILE_MESH, CAE_FILE_GRAPHIC}) {
        const std::optional<PageModel> model = ReadPageModel(part, type, folder.Path(), Readable(), room);
        ASSERT_TRUE(model);
        EXPECT_EQ(model->nodes, 4U);
        EXPECT_EQ(model->elements, 4U);
        EXPECT_EQ(model->points, 4U);
        EXPECT_EQ(model->triangles, 4U);
        EXPECT_EQ(model->lines, 6U);
        EXPECT_EQ(model->gap, "");
    }
    const std::filesystem::path mesh = folder.Write(
        "part.msh",
        "$MeshFormat\n2.2 0 8\n$EndMeshFormat\n$Nodes\n4\n1 0 0 0\n2 1 0 0\n3 0 1 0\n4 0 0 1\n$EndNodes\n"
        "$Elements\n2\n1 2 0 1 2 3\n2 4 0 1 2 3 4\n$EndElements\n");
    const std::optional<PageModel> solid =
        ReadPageModel(mesh, CAE_FILE_MESH, folder.Path(), Readable(), room);
    ASSERT_TRUE(solid);
    EXPECT_EQ(solid->elements, 2U);
    EXPECT_EQ(solid->triangles, 4U);
    EXPECT_FALSE(ReadPageModel(part, CAE_FILE_REPORT, folder.Path(), Readable(), room));
    EXPECT_FALSE(
        ReadPageModel(folder.Write("part.stl", "no STL"), CAE_FILE_CAD, folder.Path(), Readable(), room));
    // A deck that includes it shows it.
    EXPECT_FALSE(
        ReadPageModel(folder.Write("mesh.msh", kTriangle), CAE_FILE_MESH, folder.Path(), Readable(), room));
}

}  // namespace
}  // namespace host

#include <gtest/gtest.h>
#include <korvanejson/JsonSerializer.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <set>

#include "objectjson/CAEFileJson.h"
#include "objectjson/CAEObjectJson.h"
#include "support/ModelBuilders.h"

// The host and the library agree on these classes field by field: a table of virtual functions first, then
// the fields in their order, each of them one pointer wide.

namespace {

template <typename Object>
auto Words(const Object& object) {
    static_assert(sizeof(Object) % sizeof(std::uintptr_t) == 0);
    std::array<std::uintptr_t, sizeof(Object) / sizeof(std::uintptr_t)> words;
    std::memcpy(words.data(), static_cast<const void*>(&object), sizeof(Object));
    return words;
}

std::uintptr_t Word(const void* pointer) {
    return reinterpret_cast<std::uintptr_t>(pointer);
}

}  // namespace

TEST(Layout, ObjectConverterHoldsProjectObjectAndNode) {
    static_assert(sizeof(CAEObjectJson) == 4 * sizeof(void*));
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    const JSONNode node = libjson::parse(R"({"type":"CAEPART"})");
    const CAEObjectJson converter(node, &part);
    const auto words = Words(converter);
    EXPECT_EQ(words[1], Word(&*project));
    EXPECT_EQ(words[2], Word(&part));
    EXPECT_EQ(words[3], Words(node)[0]);

    const CAEObjectJson forExport(&part);
    EXPECT_EQ(Words(forExport)[1], Word(nullptr));
    EXPECT_EQ(Words(forExport)[2], Word(&part));
}

TEST(Layout, ConverterOfAnObjectThatIsAProjectHoldsItAsItsProject) {
    TestProject project;
    const CAEObjectJson converter(libjson::parse(R"({"type":"X"})"), &*project);
    EXPECT_EQ(Words(converter)[1], Word(&*project));
    EXPECT_EQ(Words(converter)[2], Word(static_cast<CAEObject*>(&*project)));
}

TEST(Layout, FileConverterAddsItsFile) {
    static_assert(sizeof(CAEFileJson) == 5 * sizeof(void*));
    TestProject project;
    CAEFile& file = project.AddFile(*project, L"a", CAE_FILE_DECK);
    const CAEFileJson converter(&file);
    const auto words = Words(converter);
    EXPECT_EQ(words[1], Word(nullptr));
    EXPECT_EQ(words[2], Word(static_cast<CAEObject*>(&file)));
    EXPECT_EQ(words[4], Word(&file));
}

TEST(Layout, SerializerHoldsObjectAndExportMode) {
    static_assert(sizeof(JsonSerializer) == 3 * sizeof(void*));
    TestProject project;
    JsonSerializer serializer(&*project);
    const OuString mode(L"STUDY");
    serializer.SetExportMode(mode);
    const auto words = Words(serializer);
    EXPECT_EQ(words[1], Word(static_cast<CAEObject*>(&*project)));
    EXPECT_EQ(words[2], Words(mode)[0]);
}

#if !defined(_MSC_VER)
// A pointer to a virtual member function holds the place in the table: 1 for the first slot.
TEST(Layout, ExportStandsInTheFirstVirtualSlotAndTheDestructorFollows) {
    const auto base = &CAEObjectJson::Export;
    const auto derived = &CAEFileJson::Export;
    EXPECT_EQ(Words(base)[0], 1U);
    EXPECT_EQ(Words(derived)[0], 1U);

    // Two destructors stand behind it. A compiler may give a class its base's where it has nothing more to
    // destroy.
    TestProject project;
    const CAEObjectJson object(&*project);
    const CAEFileJson file(nullptr);
    std::array<std::uintptr_t, 3> objectTable{};
    std::array<std::uintptr_t, 3> fileTable{};
    std::memcpy(objectTable.data(), reinterpret_cast<const void*>(Words(object)[0]), sizeof(objectTable));
    std::memcpy(fileTable.data(), reinterpret_cast<const void*>(Words(file)[0]), sizeof(fileTable));
    EXPECT_NE(objectTable[0], fileTable[0]);
    for (const auto& table : {objectTable, fileTable}) {
        const std::set<std::uintptr_t> functions(table.begin(), table.end());
        EXPECT_EQ(functions.size(), table.size());
        EXPECT_FALSE(functions.contains(0));
    }
}
#endif

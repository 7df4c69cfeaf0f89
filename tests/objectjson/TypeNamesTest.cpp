#include <CAEObject.h>
#include <gtest/gtest.h>

#include "format/Kinds.h"
#include "objectjson/CAEObjectJson.h"
#include "support/ModelBuilders.h"

namespace {

std::string Written(int type) {
    return CAEObjectJson::ObjectTypeName(static_cast<_tagCAEObjectType>(type)).GetAnsiBuffer();
}

int Read(const char* name) {
    return CAEObjectJson::ObjectTypeFromName(name);
}

}  // namespace

TEST(TypeNames, FiveKindsHaveNamesOfTheirOwn) {
    EXPECT_EQ(Written(6), "CAEITERATION");
    EXPECT_EQ(Written(7), "CAEITERATIONFOLDER");
    EXPECT_EQ(Written(8), "CAEITERATIONMODEL");
    EXPECT_EQ(Written(21), "CAELOADCASEVIEWFOLDER");
    EXPECT_EQ(Written(22), "CAELOADCASEVIEW");
    // The object model spells them in mixed case, so these names are the converter's.
    EXPECT_STRNE(CAEObject::getTypeName(CAE_ITERATION), "ITERATION");
}

TEST(TypeNames, EveryOtherKindIsNamedByTheObjectModel) {
    for (int type = -2; type < 60; ++type) {
        if (type == 6 || type == 7 || type == 8 || type == 21 || type == 22) {
            continue;
        }
        EXPECT_EQ(Written(type),
                  std::string("CAE") + CAEObject::getTypeName(static_cast<_tagCAEObjectType>(type)));
    }
    EXPECT_EQ(Written(0), "CAEPart");
    EXPECT_EQ(Written(4), "CAEProject");
    EXPECT_EQ(Written(43), "CAEUnknown");
}

TEST(TypeNames, FourteenNamesAreRead) {
    const std::pair<const char*, int> names[] = {{"CAEPART", 0},
                                                 {"CAESUBASSEMBLY", 1},
                                                 {"CAEFILE", 3},
                                                 {"CAEPROJECT", 4},
                                                 {"CAEPROGRAM", 4},
                                                 {"CAEMODEL", 5},
                                                 {"CAEITERATION", 6},
                                                 {"CAEITERATIONFOLDER", 7},
                                                 {"CAEITERATIONMODEL", 8},
                                                 {"CAEASSEMBLYFOLDER", 9},
                                                 {"CAELOADCASEVIEWFOLDER", 21},
                                                 {"CAELOADCASEVIEW", 22},
                                                 {"CAEVIEWITEM", 23},
                                                 {"CAETAG", 41}};
    for (const auto& [name, type] : names) {
        EXPECT_EQ(Read(name), type) << name;
    }
}

TEST(TypeNames, EveryOtherTextIsKind43) {
    for (const char* name : {"", "caepart", "CAEPart", "CAEPART ", " CAEPART", "CAEPAR", "CAEPARTS", "PART",
                             "CAEITERATIONFOLDERS", "CAEUNKNOWN", "SIMULATION", "CAE"}) {
        EXPECT_EQ(Read(name), 43) << name;
    }
    EXPECT_EQ(Read(nullptr), 43);
}

TEST(TypeNames, LongerNameIsNeverMatchedByItsPrefix) {
    EXPECT_EQ(Read("CAEITERATIONMODEL"), 8);
    EXPECT_EQ(Read("CAEITERATIONFOLDER"), 7);
    EXPECT_EQ(Read("CAEITERATION"), 6);
    EXPECT_EQ(Read("CAELOADCASEVIEW"), 22);
}

TEST(TypeNames, WrittenNamesReadBackOnceUpperCased) {
    for (const format::KindName& known : format::kKindNames) {
        OuString name = CAEObjectJson::ObjectTypeName(ToObjectType(known.kind));
        name.MakeUpper();
        EXPECT_EQ(Read(name.GetAnsiBuffer()), static_cast<int>(known.kind)) << known.name;
    }
}

TEST(TypeNames, EveryKindThatIsReadCanBeCreated) {
    for (const format::KindName& known : format::kKindNames) {
        const TestProject project;
        int id = 0;
        EXPECT_EQ(createCAEObject(&*project, project->getID(), ToObjectType(known.kind), id), 0)
            << known.name;
        CAEObject* const created = project->getCAEObject(id);
        ASSERT_NE(created, nullptr) << known.name;
        EXPECT_EQ(created->getType(), ToObjectType(known.kind));
    }
}

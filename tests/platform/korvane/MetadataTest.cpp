#include <gtest/gtest.h>

#include "Ask.h"
#include "support/ModelBuilders.h"

namespace {

std::vector<std::pair<std::string, std::string>> AllMetadataOf(const CAEObject& object) {
    OuTemplateArray<OuString, OuCRTAllocator> names;
    OuTemplateArray<OuString, OuCRTAllocator> values;
    EXPECT_EQ(object.getAllMetadata(names, values), 0);
    EXPECT_EQ(names.GetSize(), values.GetSize());
    std::vector<std::pair<std::string, std::string>> all;
    for (int i = 0; i < names.GetSize(); ++i) {
        all.emplace_back(TextOf(names[i]), TextOf(values[i]));
    }
    return all;
}

using Pairs = std::vector<std::pair<std::string, std::string>>;

TEST(Metadata, KeepsItsOrder) {
    TestProject project;
    EXPECT_EQ(AllMetadataOf(*project), Pairs{});
    SetMetadata(*project, L"Mass", L"1250", L"kg", L"double");
    SetMetadata(*project, L"Description", L"front crash");
    SetMetadata(*project, L"Mass", L"1300");
    EXPECT_EQ(AllMetadataOf(*project), (Pairs{{"Mass", "1300"}, {"Description", "front crash"}}));
}

TEST(Metadata, HasValueTypeAndUnit) {
    TestProject project;
    SetMetadata(*project, L"Mass", L"1250", L"kg", L"double");
    OuString text;
    EXPECT_EQ(project->getMetadataValue(L"Mass", text), 0);
    EXPECT_EQ(TextOf(text), "1250");
    EXPECT_EQ(project->getMetadataUnitString(L"Mass", text), 0);
    EXPECT_EQ(TextOf(text), "kg");
    EXPECT_EQ(project->getMetadataType(L"Mass", text), 0);
    EXPECT_EQ(TextOf(text), "double");
}

TEST(Metadata, IsLookedUpWithoutRegardToCase) {
    TestProject project;
    SetMetadata(*project, L"Description", L"old");
    EXPECT_EQ(MetadataValueOf(*project, L"description"), "old");
    project->setMetadataValue(L"DESCRIPTION", L"new");
    EXPECT_EQ(AllMetadataOf(*project), (Pairs{{"Description", "new"}}));
    SetMetadata(*project, L"\u00C4nderung", L"1");
    EXPECT_EQ(MetadataValueOf(*project, L"\u00E4NDERUNG"), "1");
    EXPECT_EQ(MetadataValueOf(*project, L"Descriptio"), "(none)");
}

TEST(Metadata, TakesTheEmptyNameAsAName) {
    TestProject project;
    EXPECT_EQ(MetadataValueOf(*project, L""), "(none)");
    project->setMetadataValue(L"", L"x");
    EXPECT_EQ(MetadataValueOf(*project, L""), "x");
    EXPECT_EQ(AllMetadataOf(*project), (Pairs{{"", "x"}}));
}

TEST(Metadata, GettersFailWithTheTextUntouched) {
    TestProject project;
    OuString text(L"before");
    EXPECT_NE(project->getMetadataValue(L"Mass", text), 0);
    EXPECT_NE(project->getMetadataType(L"Mass", text), 0);
    EXPECT_NE(project->getMetadataUnitString(L"Mass", text), 0);
    SetMetadata(*project, L"Other", L"1");
    EXPECT_NE(project->getMetadataValue(L"Mass", text), 0);
    EXPECT_EQ(TextOf(text), "before");
}

TEST(Metadata, EntriesAreCreatedByATypeAValueOrAUnit) {
    TestProject project;
    EXPECT_EQ(project->setMetadataType(L"A", L"double"), 0);
    EXPECT_EQ(project->setMetadataValue(L"B", L"1"), 0);
    korvane::SetMetadataUnit(*project, L"C", L"kg");
    EXPECT_EQ(AllMetadataOf(*project), (Pairs{{"A", ""}, {"B", "1"}, {"C", ""}}));
    OuString text(L"before");
    EXPECT_EQ(project->getMetadataUnitString(L"A", text), 0);
    EXPECT_EQ(TextOf(text), "");
}

TEST(Metadata, AppendsToTheArrays) {
    TestProject project;
    SetMetadata(*project, L"A", L"1");
    OuTemplateArray<OuString, OuCRTAllocator> names;
    OuTemplateArray<OuString, OuCRTAllocator> values;
    names.Add(L"before");
    project->getAllMetadata(names, values);
    EXPECT_EQ(names.GetSize(), 2);
    EXPECT_EQ(values.GetSize(), 1);
    EXPECT_EQ(TextOf(names[1]), "A");
}

TEST(Metadata, OfThousandsOfEntriesIsFoundAlike) {
    TestProject project;
    Pairs expected;
    for (int i = 0; i < 5000; ++i) {
        const std::string number = std::to_string((i * 7919) % 5000);
        project->setMetadataValue(OuString(("Entry " + number).c_str(), 0), OuString(number.c_str(), 0));
        expected.emplace_back("Entry " + number, number);
    }
    EXPECT_EQ(AllMetadataOf(*project), expected);
    for (int i = 0; i < 5000; ++i) {
        const std::string number = std::to_string(i);
        EXPECT_EQ(MetadataValueOf(*project, OuString(("eNTRY " + number).c_str(), 0)), number);
    }
    project->setMetadataValue(L"ENTRY 4999", L"changed");
    EXPECT_EQ(MetadataValueOf(*project, L"Entry 4999"), "changed");
    EXPECT_EQ(AllMetadataOf(*project).size(), 5000U);
    EXPECT_EQ(MetadataValueOf(*project, L"Entry 5000"), "(none)");
}

TEST(Metadata, OfManyEntriesIsCopiedWholeIntoAVersion) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"Door");
    for (int i = 0; i < 100; ++i) {
        const OuString number(std::to_string(i).c_str(), 0);
        part.setMetadataValue(number, number);
    }
    ASSERT_EQ(part.createNewVersion(1, 0, true, false), 0);
    CAEObject& version = *VersionOf(part, 1, 0);
    EXPECT_EQ(AllMetadataOf(version), AllMetadataOf(part));
    version.setMetadataValue(L"100", L"new");
    version.setMetadataValue(L"50", L"changed");
    EXPECT_EQ(MetadataValueOf(version, L"100"), "new");
    EXPECT_EQ(AllMetadataOf(version).size(), 101U);
    EXPECT_EQ(AllMetadataOf(part).size(), 100U);
    EXPECT_EQ(MetadataValueOf(part, L"50"), "50");
}

}  // namespace

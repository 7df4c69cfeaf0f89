#include <gtest/gtest.h>

#include "ConverterSupport.h"
#include "support/ModelBuilders.h"

namespace {

std::string MetadataText(CAEObject& object) {
    return TextOfSection(CAEObjectJson(&object).ExportMetadata());
}

}  // namespace

TEST(Metadata, ObjectWithoutEntriesHasAnEmptyObject) {
    TestProject project;
    EXPECT_EQ(MetadataText(*project), R"({"metaData":{}})");
}

TEST(Metadata, RecordsStandInTheOrderOfTheObjectModel) {
    TestProject project;
    SetMetadata(*project, L"Description", L"front crash");
    SetMetadata(*project, L"Mass", L"1250", L"kg");
    SetMetadata(*project, L"Alpha", L"1.5");
    EXPECT_EQ(MetadataText(*project),
              R"({"metaData":{"description":{"value":"front crash","metaDataType":""},)"
              R"("Mass":{"value":"1250","metaDataType":"kg"},)"
              R"("Alpha":{"value":"1.5","metaDataType":""}}})");
}

TEST(Metadata, OnlyTheExactNameDescriptionIsRenamed) {
    TestProject project;
    CAEObject& lower = project.Add(CAE_PART, L"lower");
    SetMetadata(lower, L"description", L"x");
    EXPECT_EQ(MetadataText(lower), R"({"metaData":{"description":{"value":"x","metaDataType":""}}})");
    CAEObject& upper = project.Add(CAE_PART, L"upper");
    SetMetadata(upper, L"DESCRIPTION", L"x");
    EXPECT_EQ(MetadataText(upper), R"({"metaData":{"DESCRIPTION":{"value":"x","metaDataType":""}}})");
    CAEObject& longer = project.Add(CAE_PART, L"longer");
    SetMetadata(longer, L"Descriptions", L"x");
    EXPECT_EQ(MetadataText(longer), R"({"metaData":{"Descriptions":{"value":"x","metaDataType":""}}})");
}

TEST(Metadata, ANameThatGoesOnBehindANulIsAnotherName) {
    TestProject project;
    SetMetadata(*project, OuString(L"Description\0of the run", 22), L"x", L"unit");
    // The text of a node ends at the NUL; what is asked for is the entry itself.
    EXPECT_EQ(MetadataText(*project), R"({"metaData":{"Description":{"value":"x","metaDataType":"unit"}}})");
}

TEST(Metadata, TypeMemberCarriesTheUnitAlsoWhenTheEntryHasATypeAndNoUnit) {
    TestProject project;
    SetMetadata(*project, L"Velocity", L"56", L"", L"double");
    SetMetadata(*project, L"Length", L"4.2", L"m", L"double");
    EXPECT_EQ(MetadataText(*project), R"({"metaData":{"Velocity":{"value":"56","metaDataType":""},)"
                                      R"("Length":{"value":"4.2","metaDataType":"m"}}})");
}

TEST(Metadata, EmptyNamesAndValuesAreWritten) {
    TestProject project;
    SetMetadata(*project, L"", L"");
    SetMetadata(*project, L"Reference To Program", L"No");
    EXPECT_EQ(MetadataText(*project), R"({"metaData":{"":{"value":"","metaDataType":""},)"
                                      R"("Reference To Program":{"value":"No","metaDataType":""}}})");
    EXPECT_TRUE(korvane::GetProgramReference(*project));
}

TEST(Metadata, ValueOfTenMegabytesIsWrittenWhole) {
    TestProject project;
    std::wstring value;
    value.resize(10'000'000, L'x');
    project->setMetadataValue(L"Log", OuString(value.c_str()));
    EXPECT_EQ(MetadataText(*project), R"({"metaData":{"Log":{"value":")" + std::string(value.size(), 'x') +
                                          R"(","metaDataType":""}}})");
}

TEST(Metadata, ManyEntriesKeepTheirOrder) {
    TestProject project;
    std::string expected;
    for (int entry = 0; entry < 5000; ++entry) {
        const std::string name = "entry " + std::to_string(entry);
        SetMetadata(*project, OuString(name.c_str(), 0), L"1");
        expected += (entry == 0 ? "\"" : ",\"") + name + R"(":{"value":"1","metaDataType":""})";
    }
    EXPECT_EQ(MetadataText(*project), R"({"metaData":{)" + expected + "}}");
}

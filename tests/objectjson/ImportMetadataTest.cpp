#include <gtest/gtest.h>

#include <string>

#include "ConverterSupport.h"
#include "platform/korvane/Ask.h"
#include "support/ModelBuilders.h"

namespace {

void ImportSection(const std::string& section, CAEObject& object) {
    ImportText(R"({"type":"X","metaData":)" + section + "}", object);
}

/// The value of the record, with an empty type.
std::string ProgramReference(const std::string& name, const std::string& value) {
    return "{\"" + name + R"(":{"value":)" + value + R"(,"metaDataType":""}})";
}

/// Every entry as name=value:type:unit, in the order of the object model.
std::string Entries(const CAEObject& object) {
    OuTemplateArray<OuString, OuCRTAllocator> names;
    OuTemplateArray<OuString, OuCRTAllocator> values;
    object.getAllMetadata(names, values);
    std::string entries;
    for (int index = 0; index < names.GetSize(); ++index) {
        OuString type;
        OuString unit;
        object.getMetadataType(names[index], type);
        object.getMetadataUnitString(names[index], unit);
        entries += (index == 0 ? "" : ", ") + TextOf(names[index]) + "=" + TextOf(values[index]) + ":" +
                   TextOf(type) + ":" + TextOf(unit);
    }
    return entries;
}

std::string EntriesFrom(const std::string& section) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    ImportSection(section, part);
    return Entries(part);
}

}  // namespace

TEST(ImportMetadata, UnitOfTheDocumentBecomesTheType) {
    EXPECT_EQ(EntriesFrom(R"({"Mass":{"value":"1250","metaDataType":"kg"},)"
                          R"("Velocity":{"metaDataType":"","value":"56"}})"),
              "Mass=1250:kg:, Velocity=56::");
}

TEST(ImportMetadata, EntriesThatAreThereAreOverwrittenAndKeepTheirUnit) {
    TestProject project;
    SetMetadata(*project, L"Mass", L"3", L"kg", L"double");
    SetMetadata(*project, L"Other", L"4", L"m", L"int");
    ImportSection(R"({"Mass":{"value":"5","metaDataType":"g"},"New":{"value":"6","metaDataType":"s"}})",
                  *project);
    EXPECT_EQ(Entries(*project), "Mass=5:g:kg, Other=4:int:m, New=6:s:");
}

TEST(ImportMetadata, NamesStandAsTheyAre) {
    EXPECT_EQ(EntriesFrom(R"({"description":{"value":"x","metaDataType":""}})"), "description=x::");
    EXPECT_EQ(EntriesFrom(R"({"Description":{"value":"x","metaDataType":""}})"), "Description=x::");
    EXPECT_EQ(EntriesFrom("{\"Tr\xC3\xA4gheit \\\"x\\\"\":{\"value\":\"\",\"metaDataType\":\"\"}}"),
              "Tr\xC3\xA4gheit \"x\"=::");
    EXPECT_EQ(EntriesFrom(R"({"":{"value":"x","metaDataType":"y"}})"), "=x:y:");
}

TEST(ImportMetadata, ReferenceToProgramWithNoClearsTheFlagAndIsStored) {
    for (const char* value : {R"("No")", R"("NO")", R"("no")", R"("nO")"}) {
        TestProject project;
        CAEObject& part = project.Add(CAE_PART, L"frame");
        ImportSection(ProgramReference("Reference To Program", value), part);
        EXPECT_FALSE(korvane::GetProgramReference(*project)) << value;
        EXPECT_EQ(std::string("\"") + MetadataValueOf(part, L"Reference To Program") + "\"", value);
    }
}

TEST(ImportMetadata, ReferenceToProgramWithAnyOtherValueIsStoredOnly) {
    for (const char* value : {R"("Yes")", R"("")", R"("N")", R"("No ")", R"(" No")", R"("None")", "false",
                              "0", "null", R"({"value":"No"})"}) {
        TestProject project;
        CAEObject& part = project.Add(CAE_PART, L"frame");
        ImportSection(ProgramReference("Reference To Program", value), part);
        EXPECT_TRUE(korvane::GetProgramReference(*project)) << value;
        EXPECT_NE(MetadataValueOf(part, L"Reference To Program"), "(none)") << value;
    }
}

TEST(ImportMetadata, NoValueSetsTheReferenceAgain) {
    TestProject project;
    project->SetProgramReference(false);
    for (const char* value : {R"("Yes")", R"("yes")", "true", R"("")"}) {
        ImportSection(ProgramReference("Reference To Program", value), *project);
        EXPECT_FALSE(korvane::GetProgramReference(*project)) << value;
    }
}

TEST(ImportMetadata, ReferenceToProgramInAnotherCaseIsAnOrdinaryEntry) {
    for (const char* name : {"reference to program", "REFERENCE TO PROGRAM", "Reference to Program",
                             "Reference To Program ", "Reference"}) {
        TestProject project;
        CAEObject& part = project.Add(CAE_PART, L"frame");
        ImportSection(ProgramReference(name, R"("No")"), part);
        EXPECT_TRUE(korvane::GetProgramReference(*project)) << name;
        EXPECT_EQ(MetadataValueOf(part, OuString(name, 0)), "No") << name;
    }
}

TEST(ImportMetadata, ReferenceIsThatOfTheObjectsOwnProject) {
    TestProject project;
    auto& nested = dynamic_cast<CAEProject&>(project.Add(CAE_PROJECT, L"nested"));
    ImportSection(ProgramReference("Reference To Program", R"("No")"), project.Add(nested, CAE_PART, L"p"));
    EXPECT_FALSE(korvane::GetProgramReference(nested));
    EXPECT_TRUE(korvane::GetProgramReference(*project));
}

TEST(ImportMetadata, ElementsOfAnArrayAreAppliedUnderTheEmptyName) {
    EXPECT_EQ(EntriesFrom(R"([{"value":"a","metaDataType":"1"}])"), "=a:1:");
    EXPECT_EQ(EntriesFrom(R"([{"value":"a","metaDataType":"1"},{"value":"b","metaDataType":"2"}])"), "=b:2:");
    EXPECT_EQ(EntriesFrom(R"([{"value":"a","metaDataType":"1"},"text"])"), "=::");
}

TEST(ImportMetadata, MissingValueOrTypeIsTheEmptyText) {
    EXPECT_EQ(EntriesFrom(R"({"a":{"value":"1"},"b":{"metaDataType":"kg"},"c":{},"d":{"Value":"1"}})"),
              "a=1::, b=:kg:, c=::, d=::");
    TestProject project;
    SetMetadata(*project, L"Mass", L"3", L"kg", L"double");
    ImportSection(R"({"Mass":{}})", *project);
    EXPECT_EQ(Entries(*project), "Mass=::kg");
}

TEST(ImportMetadata, RecordThatIsNoObjectIsAnEmptyOne) {
    EXPECT_EQ(EntriesFrom(R"({"a":"text","b":1,"c":true,"d":null,"e":[],"f":["value",{"value":"1"}]})"),
              "a=::, b=::, c=::, d=::, e=::, f=::");
}

TEST(ImportMetadata, SectionOfAnotherKindIsIgnored) {
    for (const char* section : {R"("text")", "1", "true", "null", "{}", "[]"}) {
        EXPECT_EQ(EntriesFrom(section), "") << section;
    }
}

TEST(ImportMetadata, ValuesAreTakenAsText) {
    EXPECT_EQ(EntriesFrom(R"({"a":{"value":1.50e2,"metaDataType":7},"b":{"value":true,"metaDataType":null},)"
                          R"("c":{"value":{"value":"x"},"metaDataType":["x"]},)"
                          R"("d":{"value":"x\u0000y","metaDataType":"\u0000"}})"),
              "a=1.50e2:7:, b=true:null:, c=::, d=x::");
}

TEST(ImportMetadata, FirstValueOfARecordAndLastRecordOfANameCount) {
    EXPECT_EQ(EntriesFrom(R"({"a":{"value":"1","value":"2","metaDataType":"x","metaDataType":"y"}})"),
              "a=1:x:");
    EXPECT_EQ(EntriesFrom(R"({"a":{"value":"1","metaDataType":"x"},"b":{"value":"2","metaDataType":""},)"
                          R"("a":{"value":"3","metaDataType":"z"}})"),
              "a=3:z:, b=2::");
}

TEST(ImportMetadata, FurtherMembersOfARecordHaveNoEffect) {
    EXPECT_EQ(EntriesFrom(R"({"a":{"unit":"m","name":"b","value":"1","metaDataType":"kg","children":[]}})"),
              "a=1:kg:");
}

TEST(ImportMetadata, ManyRecordsKeepTheirOrder) {
    std::string section = "{";
    std::string expected;
    for (int entry = 2000; entry > 0; --entry) {
        const std::string name = "entry " + std::to_string(entry);
        const char* separator = expected.empty() ? "" : ",";
        section += separator + ("\"" + name + R"(":{"value":"1","metaDataType":"t"})");
        expected += (expected.empty() ? "" : ", ") + name + "=1:t:";
    }
    EXPECT_EQ(EntriesFrom(section + "}"), expected);
}

TEST(ImportMetadata, AloneNeedsNoProjectAndLeavesTheReferenceThen) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    // A converter for export has no project.
    CAEObjectJson converter(&part);
    converter.ImportMetadata(libjson::parse(ProgramReference("Reference To Program", R"("No")").c_str()));
    EXPECT_EQ(Entries(part), "Reference To Program=No::");
    EXPECT_TRUE(korvane::GetProgramReference(*project));
}

TEST(ImportMetadata, AloneWalksAnArrayAndIgnoresEveryOtherValue) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    CAEObjectJson converter(libjson::parse("{}"), &part);
    for (const char* section : {R"("text")", "1", "true", "null"}) {
        converter.ImportMetadata(libjson::parse(section));
        EXPECT_EQ(Entries(part), "") << section;
    }
    converter.ImportMetadata(libjson::parse(R"([{"value":"a","metaDataType":"1"}])"));
    EXPECT_EQ(Entries(part), "=a:1:");
}

TEST(ImportMetadata, ExportedSectionComesBackWithItsUnitsAsTypes) {
    TestProject project;
    SetMetadata(*project, L"Description", L"front crash");
    SetMetadata(*project, L"Mass", L"1250", L"kg", L"double");
    TestProject rebuilt;
    ImportText(Exported(*project), *rebuilt);
    EXPECT_EQ(Entries(*rebuilt), "description=front crash::, Mass=1250:kg:");
}

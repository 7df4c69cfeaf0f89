#include <CAEFunctions.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "ConverterSupport.h"
#include "objectjson/CAEFileJson.h"
#include "platform/korvane/Ask.h"
#include "support/ModelBuilders.h"

// No parser makes an array whose elements carry names, but callers can: its elements are not members of it.

namespace {

struct NamedText {
    const char* name;
    const char* value;
};

/// A container whose children carry the names.
JSONNode Container(char type, const char* name, const std::vector<NamedText>& texts) {
    JSONNode container(type);
    container.set_name(name);
    for (const NamedText& text : texts) {
        container.push_back(JSONNode(text.name, text.value));
    }
    return container;
}

JSONNode Holder(char type, const char* name, const JSONNode& child) {
    JSONNode holder(type);
    holder.set_name(name);
    holder.push_back(child);
    return holder;
}

}  // namespace

TEST(ArrayElements, AreNoTypeField) {
    const JSONNode array = Container(JSON_ARRAY, "", {{"type", "CAETAG"}});
    EXPECT_TRUE(CAEObjectJson::ReadTypeField(array).IsEmpty());
}

TEST(ArrayElements, GiveAProjectNoAdditionalType) {
    TestProject project;
    const CAEObjectJson converter(Container(JSON_ARRAY, "", {{"type", "CAETAG"}}), &*project);
    EXPECT_TRUE(project->getAdditionalType().IsEmpty());
}

TEST(ArrayElements, MakeNoChildOfAnArrayAmongTheChildren) {
    TestProject project;
    CAEObjectJson converter(JSONNode(JSON_NODE), &*project);
    const std::string before = Exported(*project);
    converter.ImportChildren(
        Holder(JSON_ARRAY, "children", Container(JSON_ARRAY, "", {{"type", "CAETAG"}, {"name", "x"}})));
    EXPECT_EQ(Exported(*project), before);
}

TEST(ArrayElements, AreMetadataUnderTheEmptyName) {
    const JSONNode record = Container(JSON_NODE, "Mass", {{"value", "1250"}, {"metaDataType", "kg"}});
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    CAEObjectJson alone(JSONNode(JSON_NODE), &part);
    alone.ImportMetadata(Holder(JSON_ARRAY, "metaData", record));
    CAEObject& other = project.Add(CAE_PART, L"door");
    CAEObjectJson asMember(Holder(JSON_NODE, "", Holder(JSON_ARRAY, "metaData", record)), &other);
    asMember.ImportMembers();
    for (CAEObject* const object : {&part, &other}) {
        EXPECT_EQ(MetadataValueOf(*object, L""), "1250");
        EXPECT_EQ(MetadataValueOf(*object, L"Mass"), "(none)");
        EXPECT_EQ(TextOfSection(CAEObjectJson(object).ExportMetadata()),
                  R"({"metaData":{"":{"value":"1250","metaDataType":""}}})");
    }
}

TEST(ArrayElements, UnderTheEmptyNameClearNoProgramReference) {
    TestProject project;
    CAEObjectJson converter(JSONNode(JSON_NODE), &*project);
    converter.ImportMetadata(
        Holder(JSON_ARRAY, "metaData",
               Container(JSON_NODE, "Reference To Program", {{"value", "No"}, {"metaDataType", ""}})));
    EXPECT_TRUE(korvane::GetProgramReference(*project));
}

TEST(ArrayElements, AreNoValueAndNoTypeOfAMetadataRecord) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    CAEObjectJson converter(JSONNode(JSON_NODE), &part);
    converter.ImportMetadata(Holder(
        JSON_NODE, "metaData", Container(JSON_ARRAY, "Mass", {{"value", "1250"}, {"metaDataType", "kg"}})));
    EXPECT_EQ(MetadataValueOf(part, L"Mass"), "");
    EXPECT_EQ(TextOfSection(CAEObjectJson(&part).ExportMetadata()),
              R"({"metaData":{"Mass":{"value":"","metaDataType":""}}})");
}

TEST(ArrayElements, AreNoMembersOfAFileRecord) {
    TestProject project;
    CAEFile file(nullptr, CAE_FILE_UNKNOWN, CAE_FORMAT_UNKNOWN, false);
    const CAEFileJson converter(Container(JSON_ARRAY, "",
                                          {{"name", "x"},
                                           {"filePath", "/x"},
                                           {"fileType", "Mesh"},
                                           {"locationType", "Vault"},
                                           {"fileFormat", "ASCII"},
                                           {"isInCoordinateGlobalFrame", "true"},
                                           {"isFileDownloaded", "true"}}),
                                &file);
    OuString path;
    file.getFullPathName(path);
    EXPECT_TRUE(path.IsEmpty());
    EXPECT_EQ(file.getFileType(), CAE_FILE_UNKNOWN);
    EXPECT_EQ(file.getFileFormat(), CAE_FORMAT_UNKNOWN);
    EXPECT_TRUE(file.m_locationType.IsEmpty());
    EXPECT_FALSE(korvane::IsInGlobalFrame(file));
    EXPECT_FALSE(korvane::IsDownloaded(file));
}

TEST(ArrayElements, AreNoFilesOfTheNodeThatVersionsAreWrittenFor) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    ASSERT_EQ(part.createNewVersion(1, 0, true, false), 0);
    CAEObjectJson converter(Holder(JSON_ARRAY, "", Container(JSON_ARRAY, "files", {{"a", "1"}})), &part);
    const JSONNode section = converter.ExportVersions([](CAEObject*) {
        JSONNode node = Container(JSON_NODE, "", {{"files", ""}, {"versions", ""}});
        return node;
    });
    EXPECT_EQ(TextOfSection(section), R"({"versions":[{"files":[],"version":"1.0"}]})");
}

TEST(ArrayElements, AreNoFilesAndNoVersionsOfAVersionsNode) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    ASSERT_EQ(part.createNewVersion(1, 0, true, false), 0);
    CAEObjectJson converter(&part);
    EXPECT_THROW(converter.ExportVersions([](CAEObject*) {
        return Container(JSON_ARRAY, "", {{"files", ""}, {"versions", ""}});
    }),
                 std::out_of_range);
}

TEST(ArrayElements, MakeNoVersionOfAnArrayAmongTheVersions) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    CAEObjectJson converter(JSONNode(JSON_NODE), &part);
    converter.ImportVersions(
        Holder(JSON_ARRAY, "versions",
               Container(JSON_ARRAY, "", {{"type", "CAEPART"}, {"version", "1.0"}, {"name", "x"}})));
    OuArray majors(0);
    OuArray minors(0);
    part.getAvailableVersions(majors, minors);
    EXPECT_EQ(majors.GetSize(), 0);
    OuString name;
    part.getName(name);
    EXPECT_STREQ(name.GetBuffer(), L"frame");
}

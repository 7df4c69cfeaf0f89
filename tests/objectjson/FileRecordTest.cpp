#include <gtest/gtest.h>

#include "ConverterSupport.h"
#include "objectjson/CAEFileJson.h"
#include "platform/korvane/Ask.h"
#include "support/FileRecordMembers.h"
#include "support/ModelBuilders.h"
#include "support/ObjectText.h"

namespace {

JSONNode Record(CAEFile& file) {
    return CAEFileJson(&file).GetJsonNode();
}

}  // namespace

TEST(FileRecord, FileMembersFollowTheObjectNode) {
    TestProject project;
    CAEFile& file = project.AddFile(*project, L"mesh.dat", CAE_FILE_MESH, CAE_FORMAT_BINARY);
    file.setDBKey(L"F-9");
    file.m_locationType = L"vault";
    SetMetadata(file, L"Mass", L"3", L"kg");
    EXPECT_EQ(TextOfNode(Record(file)),
              R"({"id":"2","name":"mesh.dat","createdDate":"2026-03-01T09:30:00Z","createdBy":"engineer",)"
              R"("type":"CAEFILE","dbkey":"F-9","metaData":{"Mass":{"value":"3","metaDataType":"kg"}},)"
              R"("children":[],"files":[],"fileType":"Mesh","fileFormat":"Binary","locationType":"vault",)"
              R"("filePath":""})");
}

TEST(FileRecord, TypeIsNamedByTheObjectModel) {
    TestProject project;
    CAEFile& file = project.AddFile(*project, L"x", CAE_FILE_UNKNOWN);
    for (int type = -1; type < 20; ++type) {
        file.setFileType(static_cast<_tagFileType>(type));
        EXPECT_EQ(MemberText(Record(file), "fileType"), CAEGetFileTypeName(type));
    }
    file.setFileType(CAE_FILE_CAD);
    EXPECT_EQ(MemberText(Record(file), "fileType"), "CAD");
}

TEST(FileRecord, FormatIsAsciiBinaryOrUnknown) {
    TestProject project;
    CAEFile& file = project.AddFile(*project, L"x", CAE_FILE_DECK);
    for (const auto& [format, name] : {std::pair(1, "ASCII"),
                                       {2, "Binary"},
                                       {0, "Unknown"},
                                       {3, "Unknown"},
                                       {-1, "Unknown"},
                                       {99, "Unknown"}}) {
        file.setFileFormat(static_cast<_tagFileFormat>(format));
        EXPECT_EQ(MemberText(Record(file), "fileFormat"), name);
        EXPECT_STREQ(CAEFileJson(&file).GetFileFormatName().GetAnsiBuffer(), name);
    }
}

TEST(FileRecord, PathIsWrittenEmptyWhateverPathTheFileHas) {
    TestProject project;
    CAEFile& file = project.AddFile(*project, L"x.inp", CAE_FILE_DECK);
    for (const wchar_t* path : {L"/studies/x.inp", L"D:\\x.inp", L""}) {
        file.setFullPathName(path);
        EXPECT_EQ(MemberText(Record(file), "filePath"), "");
    }
}

TEST(FileRecord, EmptyLocationTypeIsWritten) {
    TestProject project;
    EXPECT_EQ(MemberText(Record(project.AddFile(*project, L"x", CAE_FILE_DECK)), "locationType"), "");
}

TEST(FileRecord, EveryMemberIsInAVersionOfTheFile) {
    const std::vector<std::string> members = FileRecordMembers();
    TestProject project;
    CAEFile& file = project.AddFile(*project, L"x", CAE_FILE_DECK);
    const CAEFileJson reader(libjson::parse(FileRecordWith(members).c_str()), &file);
    ASSERT_EQ(file.createNewVersion(1, 0, true, false), 0);
    const std::string text = TextOfNode(Record(dynamic_cast<CAEFile&>(*VersionOf(file, 1, 0))));
    for (const std::string& member : members) {
        EXPECT_NE(text.find(member), std::string::npos) << member << " is not in " << text;
    }
}

TEST(FileRecord, FlagsAreNeverWritten) {
    TestProject project;
    CAEFile& file = project.AddFile(*project, L"x", CAE_FILE_DECK);
    file.setGlobalFrameCoordinate(true);
    file.SetFileDownloadFlag(true);
    EXPECT_EQ(
        TextOfNode(Record(file)),
        ObjectNodeText({.id = "2", .name = "x", .type = "CAEFILE", .tail = RecordTail("Deck", "ASCII")}));
}

TEST(FileRecord, ConverterHandsOutItsFile) {
    TestProject project;
    CAEFile& file = project.AddFile(*project, L"x", CAE_FILE_DECK);
    EXPECT_EQ(CAEFileJson(&file).GetFile(), &file);
}

TEST(FileRecord, ConverterWithoutFileHasAnEmptyNode) {
    CAEFileJson converter(nullptr);
    EXPECT_EQ(TextOfNode(converter.GetJsonNode()), "{}");
    EXPECT_EQ(converter.GetFile(), nullptr);
    EXPECT_STREQ(converter.GetFileFormatName().GetAnsiBuffer(), "Unknown");
}

TEST(FileRecord, IsReachedThroughTheVirtualSlotOfTheBase) {
    TestProject project;
    CAEFileJson converter(&project.AddFile(*project, L"x", CAE_FILE_DECK));
    CAEObjectJson& base = converter;
    EXPECT_EQ(MemberText(base.GetJsonNode(), "fileType"), "Deck");
}

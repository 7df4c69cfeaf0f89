#include <gtest/gtest.h>

#include <string>

#include "ConverterSupport.h"
#include "objectjson/CAEFileJson.h"
#include "platform/korvane/Ask.h"
#include "support/ModelBuilders.h"

namespace {

/// A file that no project has yet, as one is while its record is read.
struct NewFile {
    CAEFile file{nullptr, CAE_FILE_UNKNOWN, CAE_FORMAT_UNKNOWN, false};

    CAEFile& Read(const std::string& record) {
        const CAEFileJson converter(libjson::parse(record.c_str()), &file);
        return file;
    }
};

int FormatFrom(const std::string& value) {
    NewFile file;
    file.file.setFileFormat(static_cast<_tagFileFormat>(7));
    return file.Read(R"({"fileFormat":)" + value + "}").getFileFormat();
}

int TypeFrom(const std::string& value) {
    NewFile file;
    file.file.setFileType(static_cast<_tagFileType>(77));
    return file.Read(R"({"fileType":)" + value + "}").getFileType();
}

/// The flags after a record with the value for both, of a file that had them both.
std::pair<bool, bool> FlagsFrom(const std::string& value, bool before) {
    NewFile file;
    file.file.setGlobalFrameCoordinate(before);
    file.file.SetFileDownloadFlag(before);
    file.Read(R"({"isInCoordinateGlobalFrame":)" + value + R"(,"isFileDownloaded":)" + value + "}");
    return {korvane::IsInGlobalFrame(file.file), korvane::IsDownloaded(file.file)};
}

}  // namespace

TEST(ImportFileRecord, ConstructionFillsTheFile) {
    NewFile file;
    file.Read(
        R"({"id":"7","name":"mesh.dat","createdDate":"then","createdBy":"you","type":"CAEFILE",)"
        R"("dbkey":"F-9","metaData":{"Mass":{"value":"3","metaDataType":"kg"}},"children":[],)"
        R"("files":[],"fileType":"Mesh","fileFormat":"Binary","locationType":"vault",)"
        R"("filePath":"/there/mesh.dat","isInCoordinateGlobalFrame":"true","isFileDownloaded":"true"})");
    EXPECT_EQ(file.file.getID(), 0);
    EXPECT_EQ(NameOf(file.file), "mesh.dat");
    EXPECT_EQ(CreatedDateOf(file.file), "then");
    EXPECT_EQ(CreatedUserNameOf(file.file), "");
    EXPECT_EQ(TextOf(file.file.getDBKey()), "F-9");
    EXPECT_EQ(MetadataValueOf(file.file, L"Mass"), "3");
    EXPECT_EQ(file.file.getFileType(), CAE_FILE_MESH);
    EXPECT_EQ(file.file.getFileFormat(), CAE_FORMAT_BINARY);
    EXPECT_EQ(TextOf(file.file.m_locationType), "vault");
    EXPECT_EQ(PathOf(file.file), "/there/mesh.dat");
    EXPECT_EQ(TextOf(file.file.m_fullPathCopy), "");
    EXPECT_TRUE(korvane::IsInGlobalFrame(file.file));
    EXPECT_TRUE(korvane::IsDownloaded(file.file));
}

TEST(ImportFileRecord, NeedsNoType) {
    NewFile file;
    EXPECT_EQ(NameOf(file.Read(R"({"name":"a"})")), "a");
}

TEST(ImportFileRecord, TakesTheLaterOfNameAndDisplayName) {
    EXPECT_EQ(NameOf(NewFile().Read(R"({"name":"a","displayName":"b"})")), "b");
    EXPECT_EQ(NameOf(NewFile().Read(R"({"displayName":"b","name":"a"})")), "a");
    EXPECT_EQ(NameOf(NewFile().Read(R"({"name":"a","name":"b"})")), "b");
}

TEST(ImportFileRecord, FormatIsAsciiBinaryOrZero) {
    EXPECT_EQ(FormatFrom(R"("ASCII")"), 1);
    EXPECT_EQ(FormatFrom(R"("Binary")"), 2);
    for (const char* value :
         {R"("Unknown")", R"("ascii")", R"("Ascii")", R"("binary")", R"("BINARY")", R"("ASCII ")",
          R"(" ASCII")", R"("")", R"("1")", "1", "2", "true", "null", "{}", R"(["ASCII"])"}) {
        EXPECT_EQ(FormatFrom(value), 0) << value;
    }
}

TEST(ImportFileRecord, TypeIsTheOneThatTheObjectModelKnowsByTheName) {
    for (int type = 0; type < 20; ++type) {
        const char* name = CAEGetFileTypeName(type);
        EXPECT_EQ(TypeFrom(std::string("\"") + name + "\""), GetCAEFileType(OuString(name, 0))) << name;
    }
    EXPECT_EQ(TypeFrom(R"("CAD")"), 1);
    EXPECT_EQ(TypeFrom(R"("Mesh")"), 2);
    EXPECT_EQ(TypeFrom(R"("Graphic")"), 3);
    EXPECT_EQ(TypeFrom(R"("Deck")"), 4);
    for (const char* value : {R"("cad")", R"("Nonsense")", R"("")", "1", R"("1")", "null", "{}"}) {
        EXPECT_EQ(TypeFrom(value), 0) << value;
    }
}

TEST(ImportFileRecord, LocationTypeIsFreeText) {
    for (const char* value : {"vault", "", "a b\tc"}) {
        NewFile file;
        file.file.m_locationType = L"before";
        JSONNode record(JSON_NODE);
        record.push_back(JSONNode("locationType", value));
        const CAEFileJson converter(record, &file.file);
        EXPECT_EQ(TextOf(file.file.m_locationType), value);
    }
}

TEST(ImportFileRecord, PathIsTakenAsItStands) {
    EXPECT_EQ(PathOf(NewFile().Read(R"({"filePath":"D:\\x//y\\a.dat"})")), R"(D:\x//y\a.dat)");
    NewFile file;
    file.file.setFullPathName(L"before");
    EXPECT_EQ(PathOf(file.Read(R"({"filePath":""})")), "");
}

TEST(ImportFileRecord, FlagIsSetByTheTextTrueOnly) {
    for (const bool before : {false, true}) {
        for (const char* value : {"true", R"("true")"}) {
            EXPECT_EQ(FlagsFrom(value, before), std::pair(true, true)) << value;
        }
        for (const char* value : {"false", R"("false")", R"("True")", R"("TRUE")", R"("1")", "1", "null",
                                  "{}", "[true]", R"("")", R"("true ")", R"("yes")"}) {
            EXPECT_EQ(FlagsFrom(value, before), std::pair(false, false)) << value;
        }
    }
}

TEST(ImportFileRecord, EachFlagHasItsOwnMember) {
    NewFile frame;
    frame.Read(R"({"isInCoordinateGlobalFrame":true})");
    EXPECT_TRUE(korvane::IsInGlobalFrame(frame.file));
    EXPECT_FALSE(korvane::IsDownloaded(frame.file));
    NewFile downloaded;
    downloaded.Read(R"({"isFileDownloaded":true})");
    EXPECT_FALSE(korvane::IsInGlobalFrame(downloaded.file));
    EXPECT_TRUE(korvane::IsDownloaded(downloaded.file));
}

TEST(ImportFileRecord, AbsentMembersLeaveTheFileAsItIs) {
    for (const char* record :
         {"{}", R"({"FilePath":"x","filetype":"Mesh","LocationType":"x","FILEFORMAT":"Binary",)"
                R"("isInCoordinateGlobalframe":false,"isFiledownloaded":false,"file":{"filePath":"x"},)"
                R"("filePath\u0000":"x","fileType\u0000":"Mesh"})"}) {
        TestProject project;
        CAEFile& file = project.AddFile(*project, L"a.dat", CAE_FILE_REPORT, CAE_FORMAT_ASCII);
        file.m_locationType = L"vault";
        file.setGlobalFrameCoordinate(true);
        file.SetFileDownloadFlag(true);
        const std::string before = Exported(*project);
        const CAEFileJson converter(libjson::parse(record), &file);
        EXPECT_EQ(Exported(*project), before);
        EXPECT_EQ(PathOf(file), "/studies/a.dat");
        EXPECT_TRUE(korvane::IsInGlobalFrame(file));
        EXPECT_TRUE(korvane::IsDownloaded(file));
    }
}

TEST(ImportFileRecord, FirstOccurrenceOfEachFileMemberCounts) {
    NewFile file;
    file.Read(R"({"filePath":"/1","fileType":"Mesh","locationType":"one","fileFormat":"ASCII",)"
              R"("isInCoordinateGlobalFrame":true,"isFileDownloaded":false,)"
              R"("filePath":"/2","fileType":"CAD","locationType":"two","fileFormat":"Binary",)"
              R"("isInCoordinateGlobalFrame":false,"isFileDownloaded":true})");
    EXPECT_EQ(PathOf(file.file), "/1");
    EXPECT_EQ(file.file.getFileType(), CAE_FILE_MESH);
    EXPECT_EQ(TextOf(file.file.m_locationType), "one");
    EXPECT_EQ(file.file.getFileFormat(), CAE_FORMAT_ASCII);
    EXPECT_TRUE(korvane::IsInGlobalFrame(file.file));
    EXPECT_FALSE(korvane::IsDownloaded(file.file));
}

TEST(ImportFileRecord, NodeThatIsNoObjectHasNoMembers) {
    for (const char* record : {"[]", R"(["name","filePath"])", R"("name")", "17", "true", "null"}) {
        NewFile file;
        file.file.setName(L"before");
        file.Read(record);
        EXPECT_EQ(NameOf(file.file), "before") << record;
        EXPECT_EQ(PathOf(file.file), "") << record;
        EXPECT_EQ(file.file.getFileType(), CAE_FILE_UNKNOWN) << record;
    }
}

TEST(ImportFileRecord, ChildrenFilesAndReferenceToProgramAreHarmlessBeforeTheFileHasAProject) {
    NewFile file;
    file.Read(R"({"children":[{"type":"CAETAG"},{"type":"CAEVIEWITEM","dbkey":"K"}],)"
              R"("files":[{"name":"inner","files":[{"name":"innermost"}]}],)"
              R"("metaData":{"Reference To Program":{"value":"No","metaDataType":"text"}},"name":"a"})");
    EXPECT_EQ(NameOf(file.file), "a");
    EXPECT_TRUE(ChildrenOf(file.file).empty());
    EXPECT_TRUE(FileIdsOf(file.file).empty());
    EXPECT_EQ(MetadataValueOf(file.file, L"Reference To Program"), "No");
    OuString type;
    file.file.getMetadataType(L"Reference To Program", type);
    EXPECT_EQ(TextOf(type), "text");
}

TEST(ImportFileRecord, ChildrenFilesAndReferenceToProgramTakeEffectOnAFileOfAProject) {
    TestProject project;
    CAEFile& file = project.AddFile(*project, L"a", CAE_FILE_DECK);
    const CAEFileJson converter(
        libjson::parse(R"({"children":[{"type":"CAETAG"}],"files":[{"name":"inner"}],)"
                       R"("metaData":{"Reference To Program":{"value":"No"}}})"),
        &file);
    EXPECT_EQ(ChildIdsOf(file), (std::vector<int>{3}));
    EXPECT_EQ(FileIdsOf(file), (std::vector<int>{4}));
    EXPECT_FALSE(korvane::GetProgramReference(*project));
}

TEST(ImportFileRecord, NullFileIsLeftOut) {
    const CAEFileJson converter(libjson::parse(R"({"name":"a","filePath":"/a","children":[{}]})"), nullptr);
    EXPECT_EQ(converter.GetFile(), nullptr);
}

TEST(ImportFileRecord, ConverterHandsOutItsFile) {
    NewFile file;
    EXPECT_EQ(CAEFileJson(libjson::parse("{}"), &file.file).GetFile(), &file.file);
}

TEST(ImportFileRecord, IsReadAgainWhenAskedTo) {
    NewFile file;
    CAEFileJson converter(libjson::parse(R"({"name":"a","fileType":"Mesh"})"), &file.file);
    file.file.setName(L"other");
    file.file.setFileType(CAE_FILE_CAD);
    converter.ImportFileRecord();
    EXPECT_EQ(NameOf(file.file), "a");
    EXPECT_EQ(file.file.getFileType(), CAE_FILE_MESH);
}

TEST(ImportFileRecord, CallersNodeIsLeftUnchanged) {
    NewFile file;
    const char* text = R"({"name":"a","children":[{"type":"CAETAG"}],"files":{"x":{}},"fileType":"Mesh"})";
    const JSONNode record = libjson::parse(text);
    const CAEFileJson converter(record, &file.file);
    EXPECT_EQ(TextOfNode(record), text);
}

TEST(ImportFileRecord, ExportedRecordGivesTheSameTypeLocationAndFormat) {
    for (int type = 0; type < 14; ++type) {
        for (int format = 0; format < 4; ++format) {
            TestProject project;
            CAEFile& file = project.AddFile(*project, L"a.dat", static_cast<_tagFileType>(type),
                                            static_cast<_tagFileFormat>(format));
            file.m_locationType = L"vault";
            CAEFileJson writer(&file);
            NewFile again;
            const CAEFileJson reader(writer.GetJsonNode(), &again.file);
            EXPECT_EQ(again.file.getFileType(), type);
            EXPECT_EQ(again.file.getFileFormat(), format == 3 ? 0 : format);
            EXPECT_EQ(TextOf(again.file.m_locationType), "vault");
            EXPECT_EQ(NameOf(again.file), "a.dat");
            EXPECT_EQ(PathOf(again.file), "");
        }
    }
}

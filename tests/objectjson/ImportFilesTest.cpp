#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

#include "ConverterSupport.h"
#include "objectjson/Sections.h"
#include "platform/korvane/Ask.h"
#include "support/ModelBuilders.h"

namespace {

using Ids = std::vector<int>;

void ImportFilesText(const std::string& files, CAEObject& object) {
    ImportText(R"({"type":"X","files":)" + files + "}", object);
}

/// The path of a file of that name imported into a project with that directory.
std::string PathIn(const wchar_t* directory, const std::string& record = R"({"name":"mesh.dat"})") {
    TestProject project;
    korvane::SetDirectory(*project, directory);
    ImportFilesText("[" + record + "]", *project);
    const auto files = korvane::GetProjectFiles(*project);
    EXPECT_EQ(files.size(), 1U);
    EXPECT_EQ(TextOf(files.at(0)->m_fullPathCopy), PathOf(*files.at(0)));
    return PathOf(*files.at(0));
}

/// The names of the project's files in the order of their coming, each with a blank in front.
std::string FileNames(const CAEProject& project) {
    std::string names;
    for (const CAEFile* file : korvane::GetProjectFiles(project)) {
        names += " " + NameOf(*file);
    }
    return names;
}

/// The roles that a file of the type has after its import onto an object of the kind.
struct Attached {
    Attached(_tagCAEObjectType kind, _tagFileType type) : object(project.Add(kind, L"object")) {
        ImportFilesText(std::string(R"([{"name":"f","fileType":")") + CAEGetFileTypeName(type) + R"("}])",
                        object);
        roles = korvane::GetFileRoles(object);
        EXPECT_NE(project->getFile(3), nullptr);
    }

    TestProject project;
    CAEObject& object;
    korvane::FileRoles roles;
};

constexpr bool HasRoles(_tagCAEObjectType kind) {
    return kind == CAE_PART || kind == CAE_SUBASSEMBLY || kind == CAE_ITERATION_MODEL;
}

/// The kinds of which no object has a file in a role.
std::vector<_tagCAEObjectType> OtherKinds() {
    std::vector<_tagCAEObjectType> others;
    std::ranges::remove_copy_if(kObjectKinds, std::back_inserter(others), HasRoles);
    return others;
}

}  // namespace

TEST(ImportFiles, FileWithARoleOnAPartOrSubAssembly) {
    for (const _tagCAEObjectType kind : {CAE_PART, CAE_SUBASSEMBLY}) {
        Attached mesh(kind, CAE_FILE_MESH);
        EXPECT_EQ(mesh.roles.meshes, (Ids{3}));
        EXPECT_EQ(mesh.roles.activeMesh, 3);
        EXPECT_EQ(mesh.roles.cadFile + mesh.roles.graphicFile + mesh.roles.feRepresentation, 0);
        EXPECT_EQ(mesh.roles.customFiles, Ids{});
        EXPECT_EQ(FileIdsOf(mesh.object), (Ids{3}));

        Attached cad(kind, CAE_FILE_CAD);
        EXPECT_EQ(cad.roles.cadFile, 3);
        EXPECT_EQ(cad.roles.graphicFile + cad.roles.activeMesh + cad.roles.feRepresentation, 0);
        EXPECT_EQ(cad.roles.customFiles, Ids{});
        EXPECT_EQ(FileIdsOf(cad.object), (Ids{3}));

        Attached graphic(kind, CAE_FILE_GRAPHIC);
        EXPECT_EQ(graphic.roles.graphicFile, 3);
        EXPECT_EQ(graphic.roles.cadFile + graphic.roles.activeMesh + graphic.roles.feRepresentation, 0);
        EXPECT_EQ(graphic.roles.customFiles, Ids{});
        EXPECT_EQ(FileIdsOf(graphic.object), (Ids{3}));
    }
}

TEST(ImportFiles, FileWithARoleOnARunAssemblyIsItsRepresentationOnly) {
    for (const _tagFileType type : {CAE_FILE_MESH, CAE_FILE_CAD, CAE_FILE_GRAPHIC}) {
        Attached run(CAE_ITERATION_MODEL, type);
        EXPECT_EQ(run.roles.feRepresentation, 3) << type;
        EXPECT_EQ(run.roles.customFiles, Ids{}) << type;
        EXPECT_EQ(run.roles.meshes, Ids{}) << type;
        EXPECT_EQ(FileIdsOf(run.object), (Ids{3})) << type;
    }
}

TEST(ImportFiles, FileWithARoleOnAnyOtherKindIsAttachedToNothing) {
    for (const _tagCAEObjectType kind : OtherKinds()) {
        for (const _tagFileType type : {CAE_FILE_MESH, CAE_FILE_CAD, CAE_FILE_GRAPHIC}) {
            Attached other(kind, type);
            EXPECT_EQ(FileIdsOf(other.object), Ids{}) << kind << " " << type;
            EXPECT_EQ(other.project->getFile(3)->getFileType(), type);
        }
    }
}

TEST(ImportFiles, WhatIsAttachedIsKnownBefore) {
    for (const _tagCAEObjectType kind : kObjectKinds) {
        for (int type = 0; type < 14; ++type) {
            Attached owner(kind, static_cast<_tagFileType>(type));
            EXPECT_EQ(IsAttached(static_cast<format::FileType>(type), KindOf(owner.object)),
                      !FileIdsOf(owner.object).empty())
                << kind << " " << type;
        }
    }
}

TEST(ImportFiles, FileWithoutARoleIsACustomFileOfEveryKind) {
    for (int type = 0; type < 14; ++type) {
        if (type >= CAE_FILE_CAD && type <= CAE_FILE_GRAPHIC) {
            continue;
        }
        for (const _tagCAEObjectType kind : OtherKinds()) {
            Attached other(kind, static_cast<_tagFileType>(type));
            EXPECT_EQ(other.roles.customFiles, (Ids{3})) << kind << " " << type;
        }
        for (const _tagCAEObjectType kind : {CAE_PART, CAE_SUBASSEMBLY, CAE_ITERATION_MODEL}) {
            Attached object(kind, static_cast<_tagFileType>(type));
            EXPECT_EQ(object.roles.customFiles, (Ids{3})) << kind << " " << type;
            EXPECT_EQ(object.roles.feRepresentation, kind == CAE_ITERATION_MODEL ? 3 : 0) << type;
            EXPECT_EQ(object.roles.cadFile + object.roles.graphicFile + object.roles.activeMesh, 0) << type;
            EXPECT_EQ(object.roles.meshes, Ids{}) << type;
        }
    }
}

TEST(ImportFiles, LastFileOfARoleIsTheCurrentOneAndAllStayInTheList) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    ImportFilesText(R"([{"name":"a","fileType":"CAD"},{"name":"b","fileType":"Mesh"},{"name":"c",)"
                    R"("fileType":"CAD"},{"name":"d","fileType":"Mesh"},{"name":"e"}])",
                    part);
    const korvane::FileRoles roles = korvane::GetFileRoles(part);
    EXPECT_EQ(roles.cadFile, 5);
    EXPECT_EQ(roles.activeMesh, 6);
    EXPECT_EQ(roles.meshes, (Ids{4, 6}));
    EXPECT_EQ(roles.customFiles, (Ids{7}));
    EXPECT_EQ(FileIdsOf(part), (Ids{3, 4, 5, 6, 7}));
    EXPECT_EQ(FileNames(*project), " a b c d e");
}

TEST(ImportFiles, PathIsTheNormalisedDirectoryAndTheName) {
    EXPECT_EQ(PathIn(L"D:/proj"), "D:/proj/mesh.dat");
    EXPECT_EQ(PathIn(L"D:\\proj"), "D:/proj/mesh.dat");
    EXPECT_EQ(PathIn(L"D:\\proj\\"), "D:/proj/mesh.dat");
    EXPECT_EQ(PathIn(L"D:/proj//sub\\\\deep//"), "D:/proj/sub/deep/mesh.dat");
    EXPECT_EQ(PathIn(L"\\\\server\\share"), "//server/share/mesh.dat");
    EXPECT_EQ(PathIn(L"/"), "/mesh.dat");
    EXPECT_EQ(PathIn(L"/tr\u00E4ger"), "/tr\xC3\xA4ger/mesh.dat");
    EXPECT_EQ(PathIn(L""), "mesh.dat");
}

TEST(ImportFiles, NameIsAppendedAsItStands) {
    EXPECT_EQ(PathIn(L"/p", R"({"name":"sub/../x y.dat"})"), "/p/sub/../x y.dat");
    EXPECT_EQ(PathIn(L"/p", R"({"name":"\\x"})"), "/p/\\x");
    EXPECT_EQ(PathIn(L"/p", R"({"name":7})"), "/p/7");
    EXPECT_EQ(PathIn(L"/p", R"({"name":"first","displayName":"second"})"), "/p/second");
    EXPECT_EQ(PathIn(L"/p", R"({"name":"K\u00FChler\u0000.dat"})"), "/p/K\xC3\xBChler");
}

TEST(ImportFiles, PathOfTheRecordNeverSurvives) {
    for (const char* path : {R"(D:\\other\\x.dat)", "/other/x.dat", "other/x.dat", "x.dat", ""}) {
        EXPECT_EQ(PathIn(L"D:\\proj", std::string(R"({"filePath":")") + path +
                                          R"(","name":"mesh.dat","fileType":"Mesh"})"),
                  "D:/proj/mesh.dat");
    }
}

TEST(ImportFiles, RecordWithoutNameGivesTheDirectoryAlone) {
    EXPECT_EQ(PathIn(L"/p", "{}"), "/p/");
    EXPECT_EQ(PathIn(L"/p", R"({"filePath":"/x/y.dat"})"), "/p/");
    EXPECT_EQ(PathIn(L"/p", R"({"name":""})"), "/p/");
    EXPECT_EQ(PathIn(L"", "{}"), "");
}

TEST(ImportFiles, DirectoryIsThatOfTheObjectsOwnProject) {
    TestProject project;
    auto& nested = dynamic_cast<CAEProject&>(project.Add(CAE_PROJECT, L"nested"));
    korvane::SetDirectory(nested, L"/inner");
    ImportFilesText(R"([{"name":"a"}])", project.Add(nested, CAE_PART, L"part"));
    ASSERT_EQ(FileNames(nested), " a");
    EXPECT_EQ(PathOf(*korvane::GetProjectFiles(nested)[0]), "/inner/a");
    EXPECT_EQ(FileNames(*project), "");
}

TEST(ImportFiles, FileBelongsToTheProjectUnderANewIdentifier) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    ImportFilesText(R"([{"id":"2","name":"a"},{"id":"77","name":"b"}])", part);
    EXPECT_EQ(FileIdsOf(part), (Ids{3, 4}));
    ASSERT_NE(project->getFile(3), nullptr);
    EXPECT_EQ(NameOf(*project->getFile(3)), "a");
    EXPECT_EQ(project->getFile(3)->getID(), 3);
    EXPECT_EQ(project->getFile(3)->getProject(), &*project);
    EXPECT_EQ(project->getFile(3)->getParent(), nullptr);
    EXPECT_EQ(NameOf(*project->getFile(4)), "b");
    EXPECT_EQ(project->getFile(77), nullptr);
    EXPECT_EQ(project->getCAEObject(2), &part);
}

TEST(ImportFiles, SameRecordTwiceAddsTwoFiles) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    const char* record = R"([{"name":"a","fileType":"CAD","dbkey":"K"}])";
    ImportFilesText(record, part);
    ImportFilesText(record, part);
    EXPECT_EQ(FileIdsOf(part), (Ids{3, 4}));
    EXPECT_EQ(FileNames(*project), " a a");
    EXPECT_EQ(PathOf(*project->getFile(3)), PathOf(*project->getFile(4)));
}

TEST(ImportFiles, FilesThatAreThereAreNeverMatched) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    CAEFile& old = project.AddFile(part, L"a", CAE_FILE_DECK);
    ImportFilesText(R"([{"name":"a","fileType":"Deck","dbkey":"K","locationType":"vault"}])", part);
    EXPECT_EQ(FileIdsOf(part), (Ids{3, 4}));
    EXPECT_EQ(TextOf(old.getDBKey()), "");
    EXPECT_EQ(TextOf(old.m_locationType), "");
}

TEST(ImportFiles, ObjectIsTheArrayOfItsMembersWithoutTheirNames) {
    TestProject project;
    ImportFilesText(R"({"name":{"name":"a"},"x":{"name":"b"},"":{"name":"c"},"filePath":"text"})", *project);
    EXPECT_EQ(FileNames(*project), " a b c ");
}

TEST(ImportFiles, AnyOtherValueImportsNothing) {
    for (const char* value : {R"("a")", "1", "true", "null", "[]", "{}", R"("")"}) {
        TestProject project;
        ImportFilesText(value, *project);
        EXPECT_EQ(FileNames(*project), "") << value;
        EXPECT_EQ(FileIdsOf(*project), Ids{}) << value;
    }
}

TEST(ImportFiles, ElementThatIsNoObjectIsAFileWithoutName) {
    for (const char* element : {"17", R"("mesh.dat")", "true", "null", "[]", R"([{"name":"a"}])"}) {
        TestProject project;
        CAEObject& part = project.Add(CAE_PART, L"frame");
        ImportFilesText(std::string("[") + element + "]", part);
        CAEFile* file = project->getFile(3);
        ASSERT_NE(file, nullptr) << element;
        EXPECT_EQ(NameOf(*file), "") << element;
        EXPECT_EQ(PathOf(*file), "/studies/") << element;
        EXPECT_EQ(TextOf(file->m_fullPathCopy), "/studies/") << element;
        EXPECT_EQ(file->getFileType(), CAE_FILE_UNKNOWN) << element;
        EXPECT_EQ(file->getFileFormat(), CAE_FORMAT_UNKNOWN) << element;
        EXPECT_EQ(korvane::GetFileRoles(part).customFiles, (Ids{3})) << element;
    }
}

TEST(ImportFiles, NewFileHasNothingButWhatItsRecordSays) {
    TestProject project;
    ImportFilesText(R"([{"createdBy":"you"},{"createdDate":"then"}])", *project);
    CAEFile& file = *project->getFile(2);
    EXPECT_EQ(CreatedUserNameOf(file), "");
    EXPECT_EQ(CreatedDateOf(file), "");
    EXPECT_EQ(TextOf(file.getDBKey()), "");
    EXPECT_EQ(TextOf(file.m_locationType), "");
    EXPECT_FALSE(korvane::IsInGlobalFrame(file));
    EXPECT_FALSE(korvane::IsDownloaded(file));
    EXPECT_EQ(CreatedDateOf(*project->getFile(3)), "then");
}

TEST(ImportFiles, ChildrenAndFilesOfARecordAreIgnored) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    ImportFilesText(R"([{"name":"a","children":[{"type":"CAETAG","name":"below"}],"files":[{"name":"inner"},)"
                    R"({"name":"other","files":[{"name":"innermost"}]}],"fileType":"Mesh"},{"name":"b"}])",
                    part);
    EXPECT_EQ(FileNames(*project), " a b");
    EXPECT_EQ(FileIdsOf(part), (Ids{3, 4}));
    CAEFile& file = *project->getFile(3);
    EXPECT_EQ(file.getFileType(), CAE_FILE_MESH);
    EXPECT_TRUE(ChildrenOf(file).empty());
    EXPECT_EQ(FileIdsOf(file), Ids{});
    EXPECT_EQ(ChildIdsOf(*project), (Ids{2}));
}

TEST(ImportFiles, ReferenceToProgramOfARecordLeavesTheProjectAlone) {
    TestProject project;
    ImportFilesText(R"([{"name":"a","metaData":{"Reference To Program":{"value":"No","metaDataType":"t"},)"
                    R"("Mass":{"value":"3","metaDataType":"kg"}}}])",
                    *project);
    EXPECT_TRUE(korvane::GetProgramReference(*project));
    const CAEFile& file = *project->getFile(2);
    EXPECT_EQ(MetadataValueOf(file, L"Reference To Program"), "No");
    EXPECT_EQ(MetadataValueOf(file, L"Mass"), "3");
    OuString type;
    file.getMetadataType(L"Reference To Program", type);
    EXPECT_EQ(TextOf(type), "t");
}

TEST(ImportFiles, FileTakesFilesLikeAnyObjectOnceItHasAProject) {
    TestProject project;
    CAEFile& file = project.AddFile(*project, L"deck", CAE_FILE_DECK);
    ImportFilesText(R"([{"name":"include","fileType":"Include"},{"name":"mesh","fileType":"Mesh"}])", file);
    EXPECT_EQ(FileIdsOf(file), (Ids{3}));
    EXPECT_EQ(FileNames(*project), " deck include mesh");
}

TEST(ImportFiles, WithoutProjectNothingIsImported) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    const JSONNode files = libjson::parse(R"([{"name":"a"}])");
    // A converter for export has no project.
    CAEObjectJson(&part).ImportFiles(files);
    EXPECT_EQ(FileIdsOf(part), Ids{});
    ASSERT_EQ(Detach(*project, part), 0);
    CAEObjectJson(libjson::parse("{}"), &part).ImportFiles(files);
    EXPECT_EQ(FileIdsOf(part), Ids{});
    EXPECT_EQ(FileNames(*project), "");
}

TEST(ImportFiles, AloneWalksArraysAndObjectsAndNothingElse) {
    TestProject project;
    CAEObjectJson converter(libjson::parse("{}"), &*project);
    for (const char* files : {R"("a")", "1", "true", "null", "[]", "{}"}) {
        converter.ImportFiles(libjson::parse(files));
        EXPECT_EQ(FileNames(*project), "") << files;
    }
    converter.ImportFiles(libjson::parse(R"([{"name":"a"},{"name":"b"}])"));
    converter.ImportFiles(libjson::parse(R"({"x":{"name":"c"},"name":{"name":"d"}})"));
    EXPECT_EQ(FileNames(*project), " a b c d");
    EXPECT_EQ(FileIdsOf(*project), (Ids{2, 3, 4, 5}));
}

TEST(ImportFiles, ExportAndImportGiveTheSameRecords) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    project.AddFile(part, L"frame.step", CAE_FILE_CAD, CAE_FORMAT_BINARY).setDBKey(L"F-1");
    project.AddFile(part, L"frame.msh", CAE_FILE_MESH);
    project.AddFile(part, L"frame.png", CAE_FILE_GRAPHIC, CAE_FORMAT_UNKNOWN).m_locationType = L"vault";
    project.AddFile(part, L"notes.txt", CAE_FILE_REPORT);
    TestProject rebuilt;
    CAEObject& again = rebuilt.Add(CAE_PART, L"frame");
    ImportText(Exported(part), again);
    for (CAEFile* file : korvane::GetProjectFiles(*rebuilt)) {
        EXPECT_EQ(CreatedUserNameOf(*file), "");
        korvane::SetCreatedUserName(*file, kTestUser);
    }
    EXPECT_EQ(Exported(again), Exported(part));
}

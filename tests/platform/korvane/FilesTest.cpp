#include <gtest/gtest.h>

#include "Ask.h"
#include "support/ModelBuilders.h"

namespace {

TEST(NewFile, HasNothingButWhatItWasGiven) {
    CAEFile file(nullptr, CAE_FILE_UNKNOWN, CAE_FORMAT_UNKNOWN, false);
    EXPECT_EQ(file.getID(), 0);
    EXPECT_EQ(NameOf(file), "");
    EXPECT_EQ(PathOf(file), "");
    EXPECT_EQ(file.getType(), CAE_FILE);
    EXPECT_EQ(file.getFileType(), CAE_FILE_UNKNOWN);
    EXPECT_EQ(file.getFileFormat(), CAE_FORMAT_UNKNOWN);
    EXPECT_FALSE(korvane::IsInGlobalFrame(file));
    EXPECT_FALSE(korvane::IsDownloaded(file));
    EXPECT_EQ(TextOf(file.m_locationType), "");
    EXPECT_EQ(TextOf(file.m_fullPathCopy), "");
    EXPECT_EQ(CreatedDateOf(file), "");
    EXPECT_EQ(CreatedUserNameOf(file), "");
    EXPECT_EQ(file.getParent(), nullptr);
    EXPECT_EQ(file.getProject(), nullptr);

    OuString path(L"/studies/door.stp");
    const CAEFile given(&path, CAE_FILE_CAD, CAE_FORMAT_BINARY, true);
    EXPECT_EQ(PathOf(given), "/studies/door.stp");
    EXPECT_EQ(NameOf(given), "");
    EXPECT_EQ(given.getFileType(), CAE_FILE_CAD);
    EXPECT_EQ(given.getFileFormat(), CAE_FORMAT_BINARY);
    EXPECT_TRUE(korvane::IsInGlobalFrame(given));
}

TEST(File, TakesAnyTypeAndFormat) {
    CAEFile file(nullptr, CAE_FILE_UNKNOWN, CAE_FORMAT_UNKNOWN, false);
    EXPECT_EQ(file.setFileType(static_cast<_tagFileType>(977)), 0);
    EXPECT_EQ(file.getFileType(), 977);
    file.setFileFormat(static_cast<_tagFileFormat>(-3));
    EXPECT_EQ(file.getFileFormat(), -3);
    file.setFullPathName(L"/a/b");
    EXPECT_EQ(PathOf(file), "/a/b");
    file.setGlobalFrameCoordinate(true);
    file.SetFileDownloadFlag(true);
    EXPECT_TRUE(korvane::IsInGlobalFrame(file));
    EXPECT_TRUE(korvane::IsDownloaded(file));
    file.setGlobalFrameCoordinate(false);
    file.SetFileDownloadFlag(false);
    EXPECT_FALSE(korvane::IsInGlobalFrame(file));
    EXPECT_FALSE(korvane::IsDownloaded(file));
}

TEST(File, KeepsKeysAndMetadataBeforeAProjectHasIt) {
    CAEFile file(nullptr, CAE_FILE_UNKNOWN, CAE_FORMAT_UNKNOWN, false);
    file.setName(L"door.stp");
    EXPECT_EQ(file.setDBKey(L"K"), 0);
    EXPECT_EQ(file.setLinkDBKey(L"L"), 0);
    EXPECT_EQ(file.setMetadataValue(L"Mass", L"12"), 0);
    EXPECT_EQ(file.attachCustomFile(7, nullptr), 0);
    EXPECT_EQ(NameOf(file), "door.stp");
    EXPECT_EQ(TextOf(file.getDBKey()), "K");
    EXPECT_EQ(TextOf(file.getLinkDBKey()), "L");
    EXPECT_EQ(MetadataValueOf(file, L"mass"), "12");
    EXPECT_EQ(FileIdsOf(file), std::vector<int>{7});
    EXPECT_NE(file.createNewVersion(1, 0, true, false), 0);
    EXPECT_TRUE(VersionsOf(file).empty());
}

TEST(AddFile, PutsTheFileIntoTheProject) {
    TestProject project;
    auto file = std::make_unique<CAEFile>(nullptr, CAE_FILE_DECK, CAE_FORMAT_ASCII, false);
    const int id = project->assignID(file.get());
    EXPECT_EQ(project->getFile(id), nullptr);
    ASSERT_EQ(project->addFile(file.get()), 0);
    CAEFile* const added = file.release();
    EXPECT_EQ(project->getFile(id), added);
    EXPECT_EQ(project->getCAEObject(id), added);
    EXPECT_EQ(added->getProject(), &*project);
    EXPECT_EQ(added->getParent(), nullptr);
    EXPECT_TRUE(ChildrenOf(*project).empty());
    EXPECT_TRUE(FileIdsOf(*project).empty());
    EXPECT_EQ(korvane::GetProjectFiles(*project), std::vector<CAEFile*>{added});
}

TEST(AddFile, FailsWithTheFileLeftToTheCaller) {
    TestProject project;
    TestProject otherProject;
    CAEFile file(nullptr, CAE_FILE_DECK, CAE_FORMAT_ASCII, false);
    EXPECT_NE(project->addFile(nullptr), 0);
    EXPECT_NE(project->addFile(&file), 0);
    file.setID(-4);
    EXPECT_NE(project->addFile(&file), 0);
    file.setID(1);
    EXPECT_NE(project->addFile(&file), 0);
    EXPECT_EQ(file.getProject(), nullptr);
    CAEFile* const added = korvane::CreateFile(*project, L"/a.dat", CAE_FILE_DECK, CAE_FORMAT_ASCII);
    EXPECT_NE(project->addFile(added), 0);
    EXPECT_NE(otherProject->addFile(added), 0);
    CAEObject& child = project.Add(CAE_FILE, L"");
    EXPECT_NE(project->addFile(dynamic_cast<CAEFile*>(&child)), 0);
    EXPECT_EQ(korvane::GetProjectFiles(*project), std::vector<CAEFile*>{added});
}

TEST(CreateFile, TakesItsNameFromThePath) {
    TestProject project;
    korvane::SetCreation(*project, L"2026-03-01T09:30:00Z", L"engineer");
    CAEFile& file = *korvane::CreateFile(*project, L"C:\\studies\\door.stp", CAE_FILE_CAD, CAE_FORMAT_BINARY);
    EXPECT_EQ(file.getID(), 2);
    EXPECT_EQ(NameOf(file), "door.stp");
    EXPECT_EQ(PathOf(file), "C:\\studies\\door.stp");
    EXPECT_EQ(file.getFileType(), CAE_FILE_CAD);
    EXPECT_EQ(file.getFileFormat(), CAE_FORMAT_BINARY);
    EXPECT_EQ(CreatedDateOf(file), "2026-03-01T09:30:00Z");
    EXPECT_EQ(CreatedUserNameOf(file), "engineer");
}

TEST(ProjectFiles, AreListedInTheOrderOfTheirComing) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"Door");
    CAEFile& attached = project.AddFile(part, L"a.stp", CAE_FILE_CAD);
    CAEFile* const loose = korvane::CreateFile(*project, L"/b.dat", CAE_FILE_DECK, CAE_FORMAT_ASCII);
    CAEFile* const last = korvane::CreateFile(*project, L"/c.dat", CAE_FILE_DECK, CAE_FORMAT_ASCII);
    EXPECT_EQ(korvane::GetProjectFiles(*project), (std::vector<CAEFile*>{&attached, loose, last}));
}

TEST(FileAmongTheChildren, IsFoundAsAFileAndHangsInTheTree) {
    TestProject project;
    CAEObject& child = project.Add(CAE_FILE, L"");
    EXPECT_EQ(project->getFile(child.getID()), &child);
    EXPECT_EQ(ChildrenOf(*project), std::vector<CAEObject*>{&child});
    EXPECT_TRUE(korvane::GetProjectFiles(*project).empty());
    EXPECT_EQ(Detach(*project, child), 0);
    EXPECT_EQ(project->getFile(child.getID()), nullptr);
    EXPECT_EQ(project->addChild(&child), 0);
    EXPECT_EQ(project->getFile(child.getID()), &child);
}

}  // namespace

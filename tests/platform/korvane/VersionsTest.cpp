#include <gtest/gtest.h>

#include "Ask.h"
#include "support/ModelBuilders.h"

namespace {

/// A part with all sorts of content: a tag below it, keys, metadata and two files.
struct Door {
    TestProject project;
    CAEPart& part = dynamic_cast<CAEPart&>(project.Add(CAE_PART, L"Door"));
    CAEObject& tag = project.Add(part, CAE_TAG, L"Tag");

    Door() {
        part.setDBKey(L"K");
        part.setLinkDBKey(L"L");
        SetMetadata(part, L"Mass", L"12", L"kg", L"double");
        project.AddFile(part, L"door.stp", CAE_FILE_CAD);
        project.AddFile(part, L"door.mesh", CAE_FILE_MESH);
    }
};

TEST(CreateNewVersion, CopiesTheObjectWithItsSubtreeAndIdentifiers) {
    Door door;
    ASSERT_EQ(door.part.createNewVersion(3, 14, true, false), 0);
    EXPECT_EQ(VersionsOf(door.part), (Numbers{{3, 14}}));
    const CAEObject* found = nullptr;
    EXPECT_EQ(door.part.getPointerToVersion(3, 14, found), 0);
    ASSERT_NE(found, nullptr);
    ASSERT_NE(found, &door.part);
    CAEObject& version = *VersionOf(door.part, 3, 14);
    EXPECT_NE(dynamic_cast<CAEPart*>(&version), nullptr);
    EXPECT_EQ(version.getType(), CAE_PART);
    EXPECT_EQ(version.getID(), door.part.getID());
    EXPECT_EQ(NameOf(version), "Door");
    EXPECT_EQ(TextOf(version.getDBKey()), "K");
    EXPECT_EQ(TextOf(version.getLinkDBKey()), "L");
    EXPECT_EQ(CreatedDateOf(version), CreatedDateOf(door.part));
    EXPECT_EQ(CreatedUserNameOf(version), CreatedUserNameOf(door.part));
    EXPECT_EQ(MetadataValueOf(version, L"Mass"), "12");
    OuString unit;
    version.getMetadataUnitString(L"Mass", unit);
    EXPECT_EQ(TextOf(unit), "kg");
    EXPECT_EQ(FileIdsOf(version), FileIdsOf(door.part));
    EXPECT_EQ(korvane::GetFileRoles(version).activeMesh, korvane::GetFileRoles(door.part).activeMesh);
    EXPECT_EQ(korvane::GetFileRoles(version).cadFile, korvane::GetFileRoles(door.part).cadFile);
    ASSERT_EQ(ChildIdsOf(version), ChildIdsOf(door.part));
    EXPECT_NE(ChildrenOf(version), ChildrenOf(door.part));
    EXPECT_EQ(NameOf(*ChildrenOf(version)[0]), "Tag");
    EXPECT_EQ(ChildrenOf(version)[0]->getParent(), &version);
}

TEST(CreateNewVersion, MakesACopyThatHangsNowhere) {
    Door door;
    door.part.createNewVersion(1, 0, true, false);
    const CAEObject& version = *VersionOf(door.part, 1, 0);
    EXPECT_EQ(version.getParent(), nullptr);
    EXPECT_EQ(version.getProject(), nullptr);
    EXPECT_EQ(ChildrenOf(version)[0]->getProject(), nullptr);
    EXPECT_EQ(door.project->getCAEObject(door.part.getID()), &door.part);
    EXPECT_EQ(door.project->getCAEObject(door.tag.getID()), &door.tag);
    EXPECT_EQ(ChildrenOf(*door.project), std::vector<CAEObject*>{&door.part});
    EXPECT_TRUE(VersionsOf(version).empty());
}

TEST(CreateNewVersion, IsIndependentOfTheObject) {
    Door door;
    door.part.createNewVersion(1, 0, true, false);
    CAEObject& version = *VersionOf(door.part, 1, 0);
    version.setName(L"Old door");
    version.setMetadataValue(L"Mass", L"13");
    version.attachCustomFile(900, nullptr);
    door.part.setMetadataValue(L"Mass", L"14");
    door.tag.setName(L"Changed");
    EXPECT_EQ(NameOf(door.part), "Door");
    EXPECT_EQ(MetadataValueOf(version, L"Mass"), "13");
    EXPECT_EQ(MetadataValueOf(door.part, L"Mass"), "14");
    EXPECT_EQ(FileIdsOf(door.part).size(), 2U);
    EXPECT_EQ(NameOf(*ChildrenOf(version)[0]), "Tag");
}

TEST(CreateNewVersion, ListsVersionsInTheOrderOfTheirCreation) {
    Door door;
    door.part.createNewVersion(2, 0, true, false);
    door.part.createNewVersion(1, 5, true, false);
    door.part.createNewVersion(2, 1, true, false);
    EXPECT_EQ(VersionsOf(door.part), (Numbers{{2, 0}, {1, 5}, {2, 1}}));
}

TEST(CreateNewVersion, TakesThePlaceOfAnOlderOneOfTheSameNumber) {
    Door door;
    door.part.createNewVersion(1, 0, true, false);
    door.part.createNewVersion(2, 0, true, false);
    door.part.setName(L"Better door");
    EXPECT_EQ(door.part.createNewVersion(1, 0, true, false), 0);
    EXPECT_EQ(VersionsOf(door.part), (Numbers{{1, 0}, {2, 0}}));
    EXPECT_EQ(NameOf(*VersionOf(door.part, 1, 0)), "Better door");
    EXPECT_EQ(NameOf(*VersionOf(door.part, 2, 0)), "Door");
}

TEST(CreateNewVersion, WithoutContentIsEmpty) {
    Door door;
    EXPECT_EQ(door.part.createNewVersion(1, 0, false, false), 0);
    CAEObject& version = *VersionOf(door.part, 1, 0);
    EXPECT_NE(dynamic_cast<CAEPart*>(&version), nullptr);
    EXPECT_EQ(version.getID(), door.part.getID());
    EXPECT_EQ(NameOf(version), "");
    EXPECT_EQ(TextOf(version.getDBKey()), "");
    EXPECT_TRUE(ChildrenOf(version).empty());
    EXPECT_TRUE(FileIdsOf(version).empty());
    EXPECT_FALSE(CreatedUserNameOf(version).empty());
    EXPECT_EQ(version.getProject(), nullptr);
}

TEST(CreateNewVersion, MadeCurrentGivesTheObjectItsNumber) {
    Door door;
    EXPECT_EQ(korvane::GetCurrentVersion(door.part).majorNumber, 0);
    door.part.createNewVersion(1, 7, true, false);
    EXPECT_EQ(korvane::GetCurrentVersion(door.part).majorNumber, 0);
    EXPECT_EQ(door.part.createNewVersion(2, 4, true, true), 0);
    EXPECT_EQ(korvane::GetCurrentVersion(door.part).majorNumber, 2);
    EXPECT_EQ(korvane::GetCurrentVersion(door.part).minorNumber, 4);
    EXPECT_EQ(NameOf(door.part), "Door");
    EXPECT_EQ(VersionsOf(door.part), (Numbers{{1, 7}, {2, 4}}));
}

TEST(CreateNewVersion, RefusesNegativeNumbers) {
    Door door;
    EXPECT_NE(door.part.createNewVersion(-1, 0, true, false), 0);
    EXPECT_NE(door.part.createNewVersion(0, -1, true, true), 0);
    EXPECT_TRUE(VersionsOf(door.part).empty());
}

TEST(CreateNewVersion, KeepsTheVersionsOfWhatLiesUnderTheObject) {
    Door door;
    door.tag.createNewVersion(1, 1, true, false);
    door.tag.setName(L"New tag");
    door.tag.createNewVersion(1, 2, true, true);
    door.part.createNewVersion(5, 0, true, false);
    const CAEObject& tag = *ChildrenOf(*VersionOf(door.part, 5, 0))[0];
    EXPECT_EQ(VersionsOf(tag), (Numbers{{1, 1}, {1, 2}}));
    EXPECT_EQ(korvane::GetCurrentVersion(tag).minorNumber, 2);
    EXPECT_NE(VersionOf(tag, 1, 1), VersionOf(door.tag, 1, 1));
    EXPECT_EQ(NameOf(*VersionOf(tag, 1, 1)), "Tag");
    EXPECT_EQ(NameOf(*VersionOf(tag, 1, 2)), "New tag");
}

TEST(Versions, AreNotFoundUnderAnotherNumber) {
    Door door;
    const CAEObject* version = &door.tag;
    EXPECT_NE(door.part.getPointerToVersion(0, 0, version), 0);
    door.part.createNewVersion(3, 14, true, false);
    EXPECT_NE(door.part.getPointerToVersion(14, 3, version), 0);
    EXPECT_EQ(version, &door.tag);
}

TEST(Versions, AreNumberedInTheLowHalvesOfTheSlots) {
    Door door;
    door.part.createNewVersion(2147483647, 0, true, false);
    OuArray majors(0);
    OuArray minors(0);
    door.part.getAvailableVersions(majors, minors);
    ASSERT_EQ(majors.GetSize(), 1);
    EXPECT_EQ(NumberIn(majors.GetAt(0)), 2147483647);
    EXPECT_EQ(NumberIn(minors.GetAt(0)), 0);
    // The high halves mean nothing and hold something, so that reading a whole slot shows at once.
    EXPECT_NE(reinterpret_cast<std::uintptr_t>(minors.GetAt(0)), 0U);
}

TEST(Versions, ChangePlacesWithTheCurrentObject) {
    Door door;
    door.part.createNewVersion(0, 0, true, false);
    CAEObject& version = *VersionOf(door.part, 0, 0);
    const int id = door.part.getID();
    EXPECT_EQ(Detach(*door.project, door.part), 0);
    version.setID(id);
    EXPECT_EQ(door.project->addChild(&version), 0);
    EXPECT_EQ(door.project->getCAEObject(id), &version);
    EXPECT_EQ(door.project->getCAEObject(door.tag.getID()), ChildrenOf(version)[0]);
    EXPECT_EQ(version.getProject(), &*door.project);
    EXPECT_EQ(VersionOf(door.part, 0, 0), &version);
    int added = 0;
    EXPECT_EQ(createCAEObject(&*door.project, id, CAE_TAG, added), 0);
    EXPECT_EQ(Detach(*door.project, version), 0);
    EXPECT_EQ(door.project->addChild(&door.part), 0);
    EXPECT_EQ(door.project->getCAEObject(id), &door.part);
    EXPECT_EQ(door.project->getCAEObject(door.tag.getID()), &door.tag);
    EXPECT_EQ(door.project->getCAEObject(added), nullptr);
    EXPECT_EQ(ChildIdsOf(version), (std::vector<int>{door.tag.getID(), added}));
    EXPECT_EQ(ChildIdsOf(door.part), std::vector<int>{door.tag.getID()});
}

TEST(OverwriteCurrentVersion, CopiesTheContentOntoTheObject) {
    Door door;
    const std::string date = CreatedDateOf(door.part);
    const std::vector<int> files = FileIdsOf(door.part);
    door.part.createNewVersion(1, 0, true, false);
    door.part.setName(L"Changed");
    door.part.setDBKey(L"Changed");
    door.part.setLinkDBKey(L"Changed");
    door.part.setCreatedDate(L"Changed");
    korvane::SetCreatedUserName(door.part, L"Changed");
    SetMetadata(door.part, L"Mass", L"Changed", L"Changed", L"Changed");
    SetMetadata(door.part, L"Another", L"Changed");
    door.part.setCADFile(901);
    const int added = door.project.Add(door.part, CAE_TAG, L"Changed").getID();
    ASSERT_EQ(overwriteCurrentVersionWithVersion(&*door.project, door.part.getID(), 1, 0), 0);
    EXPECT_EQ(NameOf(door.part), "Door");
    EXPECT_EQ(TextOf(door.part.getDBKey()), "K");
    EXPECT_EQ(TextOf(door.part.getLinkDBKey()), "L");
    EXPECT_EQ(CreatedDateOf(door.part), date);
    EXPECT_EQ(CreatedUserNameOf(door.part), "engineer");
    EXPECT_EQ(MetadataValueOf(door.part, L"Mass"), "12");
    EXPECT_EQ(MetadataValueOf(door.part, L"Another"), "(none)");
    EXPECT_EQ(FileIdsOf(door.part), files);
    EXPECT_EQ(korvane::GetFileRoles(door.part).cadFile, files[0]);
    EXPECT_EQ(door.project->getCAEObject(added), nullptr);
    EXPECT_EQ(VersionsOf(door.part), (Numbers{{1, 0}}));
    EXPECT_EQ(korvane::GetCurrentVersion(door.part).majorNumber, 1);
}

TEST(OverwriteCurrentVersion, CopiesTheSubtreeIntoTheProject) {
    Door door;
    const int tagId = door.tag.getID();
    door.part.createNewVersion(1, 0, true, false);
    door.tag.setName(L"Changed");
    overwriteCurrentVersionWithVersion(&*door.project, door.part.getID(), 1, 0);
    ASSERT_EQ(ChildIdsOf(door.part), std::vector<int>{tagId});
    CAEObject* const tag = ChildrenOf(door.part)[0];
    EXPECT_EQ(NameOf(*tag), "Tag");
    EXPECT_EQ(tag->getProject(), &*door.project);
    EXPECT_EQ(door.project->getCAEObject(tagId), tag);
    // The version keeps its own, to be taken over again.
    CAEObject& version = *VersionOf(door.part, 1, 0);
    EXPECT_NE(ChildrenOf(version)[0], tag);
    tag->setName(L"Changed again");
    overwriteCurrentVersionWithVersion(&*door.project, door.part.getID(), 1, 0);
    EXPECT_EQ(NameOf(*ChildrenOf(door.part)[0]), "Tag");
}

TEST(OverwriteCurrentVersion, KeepsTheIdentifier) {
    Door door;
    door.part.createNewVersion(1, 0, true, false);
    VersionOf(door.part, 1, 0)->setID(500);
    overwriteCurrentVersionWithVersion(&*door.project, door.part.getID(), 1, 0);
    EXPECT_EQ(door.part.getID(), 2);
    EXPECT_EQ(door.project->getCAEObject(2), &door.part);
    EXPECT_EQ(door.project->getCAEObject(500), nullptr);
}

TEST(OverwriteCurrentVersion, LetsMasterAssembliesBeFoundByTheirNewKey) {
    TestProject project;
    CAEObject& assembly = project.Add(CAE_SUBASSEMBLY, L"Assembly");
    assembly.setDBKey(L"Old");
    assembly.createNewVersion(1, 0, true, false);
    assembly.setDBKey(L"New");
    overwriteCurrentVersionWithVersion(&*project, assembly.getID(), 1, 0);
    int id = 0;
    EXPECT_NE(getMasterAssemblyCAEIDByITEMID(&*project, L"New", id), 0);
    EXPECT_EQ(getMasterAssemblyCAEIDByITEMID(&*project, L"Old", id), 0);
    EXPECT_EQ(id, assembly.getID());
}

TEST(OverwriteCurrentVersion, TakesWhatTheClassAdds) {
    TestProject project;
    auto& item = dynamic_cast<CAEViewItem&>(project.Add(CAE_VIEW_ITEM, L"Item"));
    item.setReferencedCAEObject(7);
    item.createNewVersion(1, 0, true, false);
    item.setReferencedCAEObject(8);
    overwriteCurrentVersionWithVersion(&*project, item.getID(), 1, 0);
    EXPECT_EQ(korvane::GetReferencedObject(item), 7);

    CAEFile& file = *korvane::CreateFile(*project, L"/a.dat", CAE_FILE_DECK, CAE_FORMAT_ASCII);
    file.m_locationType = L"vault";
    file.m_fullPathCopy = L"/copy";
    file.createNewVersion(1, 0, true, false);
    file.m_locationType = L"";
    file.m_fullPathCopy = L"";
    file.setFullPathName(L"/b.dat");
    file.setFileType(CAE_FILE_CAD);
    overwriteCurrentVersionWithVersion(&*project, file.getID(), 1, 0);
    OuString path;
    file.getFullPathName(path);
    EXPECT_EQ(TextOf(path), "/a.dat");
    EXPECT_EQ(file.getFileType(), CAE_FILE_DECK);
    EXPECT_EQ(TextOf(file.m_locationType), "vault");
    EXPECT_EQ(TextOf(file.m_fullPathCopy), "/copy");
}

TEST(OverwriteCurrentVersion, FailsWithNothingChanged) {
    Door door;
    const int id = door.part.getID();
    EXPECT_NE(overwriteCurrentVersionWithVersion(&*door.project, id, 1, 0), 0);
    door.part.createNewVersion(1, 0, true, false);
    door.part.setName(L"Changed");
    EXPECT_NE(overwriteCurrentVersionWithVersion(nullptr, id, 1, 0), 0);
    EXPECT_NE(overwriteCurrentVersionWithVersion(&*door.project, id, 1, 1), 0);
    EXPECT_NE(overwriteCurrentVersionWithVersion(&*door.project, 999, 1, 0), 0);
    EXPECT_NE(overwriteCurrentVersionWithVersion(&*door.project, 0, 1, 0), 0);
    EXPECT_EQ(NameOf(door.part), "Changed");
    EXPECT_EQ(ChildrenOf(door.part), std::vector<CAEObject*>{&door.tag});
}

TEST(VersionOfAProject, HasCopiesOfItsFiles) {
    TestProject project;
    auto& inner = dynamic_cast<CAEProject&>(project.Add(CAE_PROJECT, L"Inner"));
    inner.SetDisplayName(L"Shown");
    inner.setAdditionalType(L"Study");
    inner.SetProgramReference(false);
    CAEFile& file = *korvane::CreateFile(inner, L"/a.dat", CAE_FILE_DECK, CAE_FORMAT_ASCII);
    inner.attachCustomFile(file.getID(), nullptr);
    const int partId = project.Add(inner, CAE_PART, L"Door").getID();
    inner.createNewVersion(0, 0, true, false);
    auto& version = dynamic_cast<CAEProject&>(*VersionOf(inner, 0, 0));
    EXPECT_EQ(version.getProject(), &version);
    EXPECT_EQ(ChildrenOf(version)[0]->getProject(), &version);
    EXPECT_EQ(TextOf(korvane::GetDisplayName(version)), "Shown");
    EXPECT_EQ(TextOf(version.getAdditionalType()), "Study");
    EXPECT_FALSE(korvane::GetProgramReference(version));
    EXPECT_EQ(DirectoryOf(version), "/studies");
    ASSERT_EQ(korvane::GetProjectFiles(version).size(), 1U);
    CAEFile& copy = *korvane::GetProjectFiles(version)[0];
    EXPECT_EQ(copy.getID(), file.getID());
    EXPECT_EQ(copy.getProject(), &version);
    EXPECT_EQ(project->getFile(file.getID()), &file);

    // What an import adds to the version while it is in the tree is copied by the overwriting.
    Detach(*project, inner);
    project->addChild(&version);
    EXPECT_EQ(project->getFile(file.getID()), &copy);
    const int fileId = korvane::CreateFile(version, L"/b.dat", CAE_FILE_DECK, CAE_FORMAT_ASCII)->getID();
    Detach(*project, version);
    project->addChild(&inner);
    EXPECT_EQ(project->getFile(file.getID()), &file);
    EXPECT_EQ(project->getFile(fileId), nullptr);
    EXPECT_EQ(overwriteCurrentVersionWithVersion(&*project, inner.getID(), 0, 0), 0);
    ASSERT_EQ(korvane::GetProjectFiles(inner).size(), 2U);
    EXPECT_EQ(project->getFile(fileId), korvane::GetProjectFiles(inner)[1]);
    EXPECT_EQ(project->getFile(fileId)->getProject(), &inner);
    EXPECT_EQ(ChildrenOf(inner)[0]->getProject(), &inner);
    EXPECT_EQ(ChildIdsOf(inner), std::vector<int>{partId});
}

TEST(VersionOfTheRoot, IsMadeAndTakenOver) {
    TestProject project;
    CAEObject& model = project.Add(CAE_MODEL, L"Model");
    const int fileId = project.AddFile(model, L"a.dat", CAE_FILE_DECK).getID();
    EXPECT_EQ(project->createNewVersion(1, 0, true, false), 0);
    model.setName(L"Changed");
    project->setName(L"Changed");
    EXPECT_EQ(overwriteCurrentVersionWithVersion(&*project, 1, 1, 0), 0);
    EXPECT_EQ(NameOf(*project), "Project");
    EXPECT_EQ(NameOf(*project->getCAEObject(2)), "Model");
    EXPECT_EQ(project->getFile(fileId)->getProject(), &*project);
    EXPECT_EQ(korvane::GetProjectFiles(*project).size(), 1U);
    EXPECT_EQ(project.Add(CAE_PART, L"").getID(), 4);
}

}  // namespace

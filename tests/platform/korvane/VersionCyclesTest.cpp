#include <gtest/gtest.h>

#include "Ask.h"
#include "support/ModelBuilders.h"

/// Versions that callers put in unexpected places: nothing is destroyed twice, lost or copied
/// without end. Under the sanitizers these tests also find what is never freed.
namespace {

struct Model {
    TestProject project;
    CAEObject& model = project.Add(CAE_MODEL, L"Model");
    CAEObject& part = project.Add(model, CAE_PART, L"Door");

    CAEObject& MakeVersion() {
        EXPECT_EQ(model.createNewVersion(1, 0, true, false), 0);
        return *VersionOf(model, 1, 0);
    }
};

TEST(HangingVersion, IsDestroyedLikeAnyObjectOfItsPlace) {
    Model m;
    CAEObject& version = m.MakeVersion();
    EXPECT_EQ(m.project->addChild(&version), 0);
    EXPECT_EQ(Detach(*m.project, version, true), 0);
    EXPECT_TRUE(VersionsOf(m.model).empty());
    const CAEObject* found = nullptr;
    EXPECT_NE(m.model.getPointerToVersion(1, 0, found), 0);
}

TEST(HangingVersion, OutlivesItsObject) {
    Model m;
    CAEObject& version = m.MakeVersion();
    EXPECT_EQ(m.project->addChild(&version), 0);
    EXPECT_EQ(Detach(*m.project, m.model, true), 0);
    EXPECT_EQ(ChildrenOf(*m.project), std::vector<CAEObject*>{&version});
    EXPECT_EQ(NameOf(version), "Model");
    EXPECT_EQ(Detach(*m.project, version, true), 0);
}

TEST(HangingVersion, StaysWhereItIsWhenAnotherTakesItsNumber) {
    Model m;
    CAEObject& first = m.MakeVersion();
    EXPECT_EQ(m.project->addChild(&first), 0);
    CAEObject& second = m.MakeVersion();
    EXPECT_NE(&first, &second);
    EXPECT_EQ(NameOf(first), "Model");
    EXPECT_EQ(ChildrenOf(*m.project), (std::vector<CAEObject*>{&m.model, &first}));
    EXPECT_EQ(Detach(*m.project, first), 0);
    EXPECT_EQ(VersionOf(m.model, 1, 0), &second);
}

TEST(HangingVersion, UnderItsOwnObjectIsTakenOverAndDestroyed) {
    Model m;
    CAEObject& version = m.MakeVersion();
    version.setName(L"Old");
    EXPECT_EQ(m.model.addChild(&version), 0);
    EXPECT_EQ(overwriteCurrentVersionWithVersion(&*m.project, m.model.getID(), 1, 0), 0);
    EXPECT_EQ(NameOf(m.model), "Old");
    EXPECT_EQ(ChildIdsOf(m.model), std::vector<int>{3});
    EXPECT_TRUE(VersionsOf(m.model).empty());
}

TEST(HangingVersion, IsNotCopiedAsAVersion) {
    Model m;
    CAEObject& folder = m.project.Add(CAE_ASSEMBLY_FOLDER, L"Folder");
    Detach(*m.project, m.model);
    EXPECT_EQ(folder.addChild(&m.model), 0);
    CAEObject& version = m.MakeVersion();
    EXPECT_EQ(folder.addChild(&version), 0);
    EXPECT_EQ(folder.createNewVersion(1, 0, true, false), 0);
    const std::vector<CAEObject*> copies = ChildrenOf(*VersionOf(folder, 1, 0));
    ASSERT_EQ(copies.size(), 2U);
    EXPECT_TRUE(VersionsOf(*copies[0]).empty());
    EXPECT_EQ(NameOf(*copies[1]), "Model");
}

TEST(DetachedVersion, DoesNotTakeItsOwnObjectBelowIt) {
    Model m;
    CAEObject& version = m.MakeVersion();
    Detach(*m.project, m.model);
    EXPECT_EQ(m.project->addChild(&version), 0);
    EXPECT_EQ(Detach(*m.project, version), 0);
    // A version that is not in the tree is part of its object.
    EXPECT_NE(version.addChild(&m.model), 0);
    EXPECT_NE(ChildrenOf(version)[0]->addChild(&m.model), 0);
    EXPECT_EQ(m.project->addChild(&m.model), 0);
}

TEST(DetachedVersion, ThatHasItsObjectBelowItIsNoVersionOfItAnyMore) {
    Model m;
    CAEObject& version = m.MakeVersion();
    Detach(*m.project, m.model);
    EXPECT_EQ(m.project->addChild(&version), 0);
    EXPECT_EQ(version.addChild(&m.model), 0);
    EXPECT_EQ(VersionsOf(m.model), (Numbers{{1, 0}}));
    EXPECT_EQ(Detach(*m.project, version), 0);
    EXPECT_TRUE(VersionsOf(m.model).empty());
    EXPECT_EQ(m.model.createNewVersion(1, 0, true, false), 0);
    EXPECT_EQ(m.project->addChild(&version), 0);
    EXPECT_EQ(m.project->createNewVersion(1, 0, true, false), 0);
    EXPECT_EQ(Detach(*m.project, version, true), 0);
    EXPECT_TRUE(ChildrenOf(*m.project).empty());
}

TEST(DetachedVersion, ThatHasItsObjectBelowItIsDestroyedWithIt) {
    Model m;
    CAEObject& version = m.MakeVersion();
    Detach(*m.project, m.model);
    EXPECT_EQ(m.project->addChild(&version), 0);
    EXPECT_EQ(version.addChild(&m.model), 0);
    EXPECT_EQ(Detach(*m.project, version, true), 0);
    EXPECT_TRUE(ChildrenOf(*m.project).empty());
    EXPECT_EQ(m.project.Add(CAE_PART, L"Door").getProject(), &*m.project);
}

TEST(DetachedVersion, WithItsObjectBelowItIsOverwrittenFromWithin) {
    Model m;
    CAEObject& version = m.MakeVersion();
    version.setName(L"Old");
    Detach(*m.project, m.model);
    version.setID(40);
    EXPECT_EQ(m.project->addChild(&version), 0);
    EXPECT_EQ(version.addChild(&m.model), 0);
    EXPECT_EQ(m.project->getCAEObject(m.model.getID()), &m.model);
    EXPECT_EQ(overwriteCurrentVersionWithVersion(&*m.project, m.model.getID(), 1, 0), 0);
    EXPECT_EQ(NameOf(m.model), "Old");
    EXPECT_EQ(m.model.getParent(), &version);
    EXPECT_EQ(ChildrenOf(m.model).size(), 2U);
}

TEST(DestroyedObject, TakesItsVersionsAlong) {
    Model m;
    m.part.createNewVersion(1, 0, true, false);
    CAEObject& partVersion = *VersionOf(m.part, 1, 0);
    partVersion.createNewVersion(2, 0, true, false);
    m.MakeVersion();
    EXPECT_EQ(Detach(*m.project, m.model, true), 0);
    EXPECT_TRUE(ChildrenOf(*m.project).empty());
    EXPECT_EQ(m.project.Add(CAE_PART, L"").getID(), 4);
}

TEST(DestroyedProject, TakesEverythingThatEverWasInItAlong) {
    auto project = korvane::CreateProject(L"Crash", L"/studies");
    CAEObject& model = *korvane::CreateObject(*project, CAE_MODEL, L"Model");
    CAEObject& part = *korvane::CreateObject(model, CAE_PART, L"Door");
    auto& inner = dynamic_cast<CAEProject&>(*korvane::CreateObject(model, CAE_PROJECT, L"Inner"));
    CAEFile& file = *korvane::CreateFile(inner, L"/a.dat", CAE_FILE_DECK, CAE_FORMAT_ASCII);
    korvane::CreateFile(*project, L"/b.dat", CAE_FILE_DECK, CAE_FORMAT_ASCII);
    file.createNewVersion(1, 0, true, false);
    model.createNewVersion(1, 0, true, false);
    model.createNewVersion(1, 1, false, false);
    Detach(model, part);
    Detach(*project, model);
    EXPECT_EQ(part.createNewVersion(1, 0, true, false), 0);
    EXPECT_EQ(NameOf(part), "Door");
    project.reset();
}

}  // namespace

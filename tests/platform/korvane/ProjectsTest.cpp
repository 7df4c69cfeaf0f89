#include <gtest/gtest.h>

#include "Ask.h"
#include "support/ModelBuilders.h"

namespace {

CAEProject& AddProject(const TestProject& project, CAEObject& parent) {
    int id = 0;
    EXPECT_EQ(createCAEObject(&*project, parent.getID(), CAE_PROJECT, id), 0);
    return dynamic_cast<CAEProject&>(*project->getCAEObject(id));
}

TEST(CreatedProject, AnswersItselfToItsObjects) {
    TestProject project;
    CAEObject& folder = project.Add(CAE_ASSEMBLY_FOLDER, L"Folder");
    CAEProject& inner = AddProject(project, folder);
    CAEObject& part = project.Add(inner, CAE_PART, L"Door");
    EXPECT_EQ(inner.getProject(), &inner);
    EXPECT_EQ(part.getProject(), &inner);
    EXPECT_EQ(folder.getProject(), &*project);
    EXPECT_EQ(inner.getParent(), &folder);
}

TEST(CreatedProject, HasANameOfItsOwnAndTheDirectoryOfTheOther) {
    TestProject project;
    project->setAdditionalType(L"Outer");
    CAEProject& inner = AddProject(project, *project);
    EXPECT_EQ(TextOf(korvane::GetDisplayName(inner)), "");
    EXPECT_EQ(TextOf(inner.getAdditionalType()), "");
    EXPECT_EQ(DirectoryOf(inner), "/studies");
    inner.SetDisplayName(L"Inner");
    inner.setAdditionalType(L"Study");
    inner.SetProgramReference(false);
    korvane::SetDirectory(inner, L"/elsewhere");
    EXPECT_EQ(TextOf(korvane::GetDisplayName(inner)), "Inner");
    EXPECT_EQ(TextOf(inner.getAdditionalType()), "Study");
    EXPECT_FALSE(korvane::GetProgramReference(inner));
    EXPECT_EQ(DirectoryOf(inner), "/elsewhere");
    EXPECT_EQ(TextOf(korvane::GetDisplayName(*project)), "Project");
    EXPECT_EQ(TextOf(project->getAdditionalType()), "Outer");
    EXPECT_TRUE(korvane::GetProgramReference(*project));
    EXPECT_EQ(DirectoryOf(*project), "/studies");
    project->SetProgramReference(false);
    EXPECT_FALSE(korvane::GetProgramReference(*project));
}

TEST(CreatedProject, HasTheDirectoryOfTheProjectThatWasAsked) {
    TestProject project;
    CAEProject& inner = AddProject(project, *project);
    korvane::SetDirectory(inner, L"/elsewhere");
    int id = 0;
    createCAEObject(&inner, inner.getID(), CAE_PROJECT, id);
    EXPECT_EQ(DirectoryOf(dynamic_cast<CAEProject&>(*project->getCAEObject(id))), "/elsewhere");
}

TEST(CreatedProject, SharesNumberingAndRegistry) {
    TestProject project;
    CAEProject& inner = AddProject(project, *project);
    CAEObject& outerPart = project.Add(CAE_PART, L"Outer part");
    int id = 0;
    EXPECT_EQ(createCAEObject(&inner, inner.getID(), CAE_PART, id), 0);
    EXPECT_EQ(id, 4);
    CAEObject* const innerPart = inner.getCAEObject(id);
    EXPECT_EQ(project->getCAEObject(id), innerPart);
    EXPECT_EQ(inner.getCAEObject(1), &*project);
    EXPECT_EQ(inner.getCAEObject(outerPart.getID()), &outerPart);
    CAEFile file(nullptr, CAE_FILE_DECK, CAE_FORMAT_ASCII, false);
    EXPECT_EQ(inner.assignID(&file), 5);
    EXPECT_EQ(project.Add(CAE_PART, L"").getID(), 6);
}

TEST(CreatedProject, CreatesBelowObjectsOfAnotherProjectOfItsTree) {
    TestProject project;
    CAEProject& inner = AddProject(project, *project);
    int id = 0;
    EXPECT_EQ(createCAEObject(&inner, 1, CAE_PART, id), 0);
    EXPECT_EQ(inner.getCAEObject(id)->getProject(), &*project);
}

TEST(CreatedProject, HasFilesOfItsOwnThatEveryProjectFinds) {
    TestProject project;
    CAEProject& inner = AddProject(project, *project);
    CAEFile* const innerFile = korvane::CreateFile(inner, L"/studies/a.dat", CAE_FILE_DECK, CAE_FORMAT_ASCII);
    CAEFile* const outerFile =
        korvane::CreateFile(*project, L"/studies/b.dat", CAE_FILE_DECK, CAE_FORMAT_ASCII);
    EXPECT_EQ(korvane::GetProjectFiles(inner), std::vector<CAEFile*>{innerFile});
    EXPECT_EQ(korvane::GetProjectFiles(*project), std::vector<CAEFile*>{outerFile});
    EXPECT_EQ(innerFile->getProject(), &inner);
    EXPECT_EQ(project->getFile(innerFile->getID()), innerFile);
    EXPECT_EQ(inner.getFile(outerFile->getID()), outerFile);
}

TEST(CreatedProject, TakesObjectsAndFilesAlongWhenDetachedAndBackWhenAdded) {
    TestProject project;
    CAEObject& folder = project.Add(CAE_ASSEMBLY_FOLDER, L"Folder");
    CAEProject& inner = AddProject(project, folder);
    CAEObject& part = project.Add(inner, CAE_PART, L"Door");
    CAEFile& file = *korvane::CreateFile(inner, L"/studies/a.dat", CAE_FILE_DECK, CAE_FORMAT_ASCII);
    CAEObject& note = project.Add(file, CAE_TAG, L"Below a file");
    const std::vector<CAEObject*> all{&folder, &inner, &part, &file, &note};
    EXPECT_EQ(Detach(*project, folder), 0);
    for (const CAEObject* const object : all) {
        EXPECT_EQ(project->getCAEObject(object->getID()), nullptr) << object->getID();
    }
    EXPECT_EQ(folder.getProject(), nullptr);
    EXPECT_EQ(inner.getProject(), &inner);
    EXPECT_EQ(part.getProject(), &inner);
    EXPECT_EQ(file.getProject(), &inner);
    EXPECT_EQ(note.getProject(), &inner);
    EXPECT_EQ(korvane::GetProjectFiles(inner), std::vector<CAEFile*>{&file});
    EXPECT_EQ(project->addChild(&folder), 0);
    for (CAEObject* const object : all) {
        EXPECT_EQ(project->getCAEObject(object->getID()), object) << object->getID();
    }
    EXPECT_EQ(folder.getProject(), &*project);
    EXPECT_EQ(part.getProject(), &inner);
}

TEST(CreatedProject, GivesItsObjectsAnotherProjectWhenTheyMove) {
    TestProject project;
    CAEProject& inner = AddProject(project, *project);
    CAEProject& innermost = AddProject(project, inner);
    CAEObject& model = project.Add(inner, CAE_MODEL, L"Model");
    CAEObject& part = project.Add(model, CAE_PART, L"Door");
    CAEObject& deep = project.Add(innermost, CAE_PART, L"Deep");
    Detach(inner, model);
    Detach(inner, innermost);
    EXPECT_EQ(project->addChild(&model), 0);
    EXPECT_EQ(model.addChild(&innermost), 0);
    EXPECT_EQ(model.getProject(), &*project);
    EXPECT_EQ(part.getProject(), &*project);
    EXPECT_EQ(innermost.getProject(), &innermost);
    EXPECT_EQ(deep.getProject(), &innermost);
}

TEST(CreatedProject, IsDestroyedWithItsFiles) {
    TestProject project;
    CAEProject& inner = AddProject(project, *project);
    const int fileId =
        korvane::CreateFile(inner, L"/studies/a.dat", CAE_FILE_DECK, CAE_FORMAT_ASCII)->getID();
    EXPECT_EQ(Detach(*project, inner, true), 0);
    EXPECT_EQ(project->getFile(fileId), nullptr);
    EXPECT_TRUE(korvane::GetProjectFiles(*project).empty());
}

TEST(CreatedProject, WhileDetachedFillsWithoutShowing) {
    TestProject project;
    CAEProject& inner = AddProject(project, *project);
    Detach(*project, inner);
    CAEFile* const file = korvane::CreateFile(inner, L"/studies/a.dat", CAE_FILE_DECK, CAE_FORMAT_ASCII);
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(file->getProject(), &inner);
    EXPECT_EQ(project->getFile(file->getID()), nullptr);
    EXPECT_EQ(korvane::CreateObject(inner, CAE_PART, L"Door"), nullptr);
    project->addChild(&inner);
    EXPECT_EQ(project->getFile(file->getID()), file);
}

}  // namespace

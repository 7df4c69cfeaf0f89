#include <gtest/gtest.h>

#include <string>

#include "host/HostSupport.h"
#include "host/projectfile/FileNesting.h"
#include "host/projectfile/ProjectFile.h"
#include "host/projectfile/ProjectTables.h"
#include "support/ModelBuilders.h"
#include "support/TemporaryDirectory.h"

namespace host {
namespace {

std::string ErrorOfNesting(TestProject& project) {
    return ErrorOf([&] { CheckFileNesting(*project); });
}

CAEFile& AddBelow(TestProject& project, CAEObject& owner) {
    return project.AddFile(owner, L"deck.inp", CAE_FILE_DECK);
}

}  // namespace

TEST(FileNesting, FilesMayHaveFilesAndObjects) {
    TestProject project;
    CAEObject& study = project.Add(CAE_MODEL, L"study");
    CAEFile& deck = AddBelow(project, study);
    CAEFile& include = AddBelow(project, deck);
    AttachFile(study, include.getID(), CAE_FILE_DECK);
    project.AddFile(project.Add(include, CAE_PART, L"part"), L"part.step", CAE_FILE_CAD);
    EXPECT_EQ(ErrorOfNesting(project), "no error");
}

TEST(FileNesting, AFileBelowItselfIsDamage) {
    TestProject itself;
    CAEFile& file = AddBelow(itself, *itself);
    AttachFile(file, file.getID(), CAE_FILE_DECK);
    EXPECT_EQ(ErrorOfNesting(itself),
              "is damaged: the file or object 2 is attached below itself. Restore it from a copy");

    TestProject pair;
    CAEFile& first = AddBelow(pair, *pair);
    CAEFile& second = AddBelow(pair, first);
    AttachFile(second, first.getID(), CAE_FILE_DECK);
    EXPECT_EQ(ErrorOfNesting(pair),
              "is damaged: the file or object 2 is attached below itself. Restore it from a copy");

    TestProject part;
    CAEFile& deck = AddBelow(part, *part);
    AttachFile(part.Add(deck, CAE_MODEL, L"study"), deck.getID(), CAE_FILE_DECK);
    EXPECT_EQ(ErrorOfNesting(part),
              "is damaged: the file or object 2 is attached below itself. Restore it from a copy");
}

TEST(FileNesting, AFileBelowItselfIsDamageEvenWhereNoObjectHasIt) {
    TestProject project;
    CAEFile* const file = korvane::CreateFile(*project, L"deck.inp", CAE_FILE_DECK, CAE_FORMAT_ASCII);
    ASSERT_NE(file, nullptr);
    AttachFile(*file, file->getID(), CAE_FILE_DECK);
    EXPECT_EQ(ErrorOfNesting(project),
              "is damaged: the file or object 2 is attached below itself. Restore it from a copy");
}

TEST(FileNesting, FilesThatMultiplyAreDamage) {
    // Each of two files has the two of the next level: 2^30 records below the project.
    TestProject project;
    std::vector<CAEObject*> owners = {&*project};
    for (int level = 0; level < 30; ++level) {
        std::vector<CAEObject*> files;
        for (int count = 0; count < 2; ++count) {
            CAEFile& file = AddBelow(project, *owners.front());
            for (CAEObject* const owner : owners) {
                AttachFile(*owner, file.getID(), CAE_FILE_DECK);
            }
            files.push_back(&file);
        }
        owners = files;
    }
    EXPECT_NE(ErrorOfNesting(project).find("are attached too many times below each other"), std::string::npos)
        << ErrorOfNesting(project);
}

TEST(FileNesting, IsSeenInAProjectFile) {
    const TemporaryDirectory folder;
    KeptConsole kept;
    TestProject project;
    CAEFile& file = AddBelow(project, *project);
    AttachFile(file, file.getID(), CAE_FILE_DECK);
    CreateProjectFile(folder / "p.kvp", *project, kept.console);
    try {
        ReadProjectFile(folder / "p.kvp", kept.console);
        FAIL() << "a project without end was read";
    } catch (const DatabaseError& error) {
        EXPECT_STREQ(error.what(),
                     "is damaged: the file or object 2 is attached below itself. Restore it from a copy");
    }
}

}  // namespace host

#include <EmbeddedModel.h>
#include <gtest/gtest.h>

#include "host/document/ObjectWalk.h"

namespace host {
namespace {

class ObjectWalkTest : public testing::Test {
protected:
    CAEFile& AddFile(const OuString& path) {
        return *korvane::CreateFile(*project, path, CAE_FILE_PICTURE, CAE_FORMAT_BINARY);
    }
    std::vector<std::string> Paths() const {
        std::vector<std::string> paths;
        WalkObjects(*project, [&](const WalkedObject& walked) {
            paths.push_back(std::to_string(walked.depth) + " " + walked.Path());
        });
        return paths;
    }

    std::unique_ptr<CAEProject> project = korvane::CreateProject(L"Demo", L"/data/demo/");
};

TEST_F(ObjectWalkTest, FilesAreToldApartByTheirFoldersInTheStudy) {
    CAEObject& folder = *korvane::CreateObject(*project, CAE_ASSEMBLY_FOLDER, L"Linear");
    CAEObject& study = *korvane::CreateObject(folder, CAE_MODEL, L"Plates");
    study.attachCustomFile(AddFile(L"/data/demo/Linear/Plates/mesh.png").getID(), nullptr);
    study.attachCustomFile(AddFile(L"/data/demo/Linear/Plates/Refs/mesh.png").getID(), nullptr);
    CAEObject& part = *korvane::CreateObject(study, CAE_PART, L"Plate");
    part.attachCustomFile(AddFile(L"/data/demo/Linear/Plates/Refs/plate.png").getID(), nullptr);
    part.attachCustomFile(AddFile(L"/data/demo/Linear/else.png").getID(), nullptr);
    part.attachCustomFile(AddFile(L"/elsewhere/far.png").getID(), nullptr);
    EXPECT_EQ(Paths(), (std::vector<std::string>{
                           "0 .", "1 Linear", "2 Linear/Plates", "3 Linear/Plates/mesh.png",
                           "3 Linear/Plates/Refs/mesh.png", "3 Linear/Plates/Plate",
                           "4 Linear/Plates/Plate/Refs/plate.png", "4 Linear/Plates/Plate/Linear/else.png",
                           "4 Linear/Plates/Plate/far.png"}));
}

TEST_F(ObjectWalkTest, AFileIsVisitedOnce) {
    CAEObject& study = *korvane::CreateObject(*project, CAE_MODEL, L"Study");
    CAEObject& part = *korvane::CreateObject(study, CAE_PART, L"Part");
    const int file = AddFile(L"/data/demo/a.png").getID();
    study.attachCustomFile(file, nullptr);
    part.attachCustomFile(file, nullptr);
    EXPECT_EQ(Paths(), (std::vector<std::string>{"0 .", "1 Study", "2 Study/a.png", "2 Study/Part"}));
}

TEST_F(ObjectWalkTest, NamesMayBeEmptyOrHaveSlashes) {
    CAEObject& nameless = *korvane::CreateObject(*project, CAE_ASSEMBLY_FOLDER, L"");
    korvane::CreateObject(nameless, CAE_PART, L"a/b");
    korvane::CreateObject(*project, CAE_PART, L"c");
    EXPECT_EQ(Paths(), (std::vector<std::string>{"0 .", "1 ", "2 /a/b", "1 c"}));
}

TEST_F(ObjectWalkTest, DeepPathsHaveTheirLastNamesAndNeedNoStack) {
    CAEObject* object = project.get();
    for (int level = 1; level <= 100000; ++level) {
        object = korvane::CreateObject(*object, CAE_ASSEMBLY_FOLDER, std::to_wstring(level).c_str());
    }
    object->attachCustomFile(AddFile(L"").getID(), nullptr);
    const std::vector<std::string> paths = Paths();
    ASSERT_EQ(paths.size(), 100002U);
    EXPECT_TRUE(paths[100].starts_with("100 1/2/3/"));
    EXPECT_TRUE(paths[101].starts_with("101 .../2/3/"));
    EXPECT_TRUE(paths[100000].starts_with("100000 .../99901/99902/"));
    EXPECT_TRUE(paths[100000].ends_with("/99999/100000"));
    EXPECT_TRUE(paths[100001].starts_with("100001 .../99902/"));
    EXPECT_TRUE(paths[100001].ends_with("/99999/100000/"));
}

}  // namespace
}  // namespace host

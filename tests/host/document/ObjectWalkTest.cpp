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
    /// With one run, which has the deck.
    CAEObject& AddStudy(CAEObject& parent, const OuString& name, const OuString& deck) {
        CAEObject& study = *korvane::CreateObject(parent, CAE_MODEL, name);
        CAEObject& iterations = *korvane::CreateObject(study, CAE_ITERATION_FOLDER, L"Iterations");
        CAEObject& iteration = *korvane::CreateObject(iterations, CAE_ITERATION, L"1");
        CAEObject& model = *korvane::CreateObject(iteration, CAE_ITERATION_MODEL, L"run");
        dynamic_cast<CAERunAssembly&>(model).setFERepresentationFile(AddFile(deck).getID());
        return study;
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

TEST_F(ObjectWalkTest, ADirectoryIsMoreThanABeginning) {
    CAEObject& folder = *korvane::CreateObject(*project, CAE_ASSEMBLY_FOLDER, L"a");
    CAEObject& study = *korvane::CreateObject(folder, CAE_MODEL, L"b");
    for (const wchar_t* const path :
         {L"/data/demo/a/b/1.png", L"/data/demo/a/bc/2.png", L"/data/demo/a/b", L"/data/demo/a/b/",
          L"/data/demo/a/c/3.png", L"/data/demo/a", L"/data/demonstration/a/b/4.png"}) {
        study.attachCustomFile(AddFile(path).getID(), nullptr);
    }
    EXPECT_EQ(Paths(),
              (std::vector<std::string>{"0 .", "1 a", "2 a/b", "3 a/b/1.png", "3 a/b/a/bc/2.png", "3 a/b/a/b",
                                        "3 a/b/a/b/", "3 a/b/a/c/3.png", "3 a/b/a", "3 a/b/4.png"}));
}

TEST_F(ObjectWalkTest, AStudyThatAUserNamedHasTheDirectoryOfItsDeck) {
    CAEObject& folder = *korvane::CreateObject(*project, CAE_ASSEMBLY_FOLDER, L"Linear");
    CAEObject& study = AddStudy(folder, L"Second", L"/data/demo/Linear/Plates/deck.inp");
    CAEObject& below = *korvane::CreateObject(study, CAE_ASSEMBLY_FOLDER, L"Refs");
    below.attachCustomFile(AddFile(L"/data/demo/Linear/Plates/Refs/1.png").getID(), nullptr);
    below.attachCustomFile(AddFile(L"/data/demo/Linear/Plates/RefsOfOthers/2.png").getID(), nullptr);
    below.attachCustomFile(AddFile(L"/data/demo/Linear/Second/Refs/3.png").getID(), nullptr);
    below.attachCustomFile(AddFile(L"/data/demo/Linear/Plates/4.png").getID(), nullptr);
    study.attachCustomFile(AddFile(L"/data/demo/Linear/Plates/5.png").getID(), nullptr);
    study.attachCustomFile(AddFile(L"/data/demo/Linear/6.png").getID(), nullptr);
    EXPECT_EQ(
        Paths(),
        (std::vector<std::string>{
            "0 .", "1 Linear", "2 Linear/Second", "3 Linear/Second/5.png", "3 Linear/Second/Linear/6.png",
            "3 Linear/Second/Iterations", "4 Linear/Second/Iterations/1", "5 Linear/Second/Iterations/1/run",
            "6 Linear/Second/Iterations/1/run/deck.inp", "3 Linear/Second/Refs", "4 Linear/Second/Refs/1.png",
            "4 Linear/Second/Refs/Linear/Plates/RefsOfOthers/2.png",
            "4 Linear/Second/Refs/Linear/Second/Refs/3.png", "4 Linear/Second/Refs/Linear/Plates/4.png"}));
}

TEST_F(ObjectWalkTest, TheDirectoryOfAStudyMayBeginWithItsName) {
    CAEObject& study = AddStudy(*project, L"Plates", L"/data/demo/Plates2/deck.inp");
    study.attachCustomFile(AddFile(L"/data/demo/Plates2/Refs/1.png").getID(), nullptr);
    EXPECT_EQ(Paths(),
              (std::vector<std::string>{"0 .", "1 Plates", "2 Plates/Refs/1.png", "2 Plates/Iterations",
                                        "3 Plates/Iterations/1", "4 Plates/Iterations/1/run",
                                        "5 Plates/Iterations/1/run/deck.inp"}));
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

#include <gtest/gtest.h>

#include <chrono>
#include <ctime>
#include <regex>

#include "Ask.h"

namespace {

const auto kDirectory = L"/studies";

TEST(CreateProject, GivesIdentifierNameDisplayNameAndDirectory) {
    const auto project = korvane::CreateProject(L"Crash", kDirectory);
    EXPECT_EQ(project->getID(), 1);
    EXPECT_EQ(NameOf(*project), "Crash");
    EXPECT_EQ(TextOf(korvane::GetDisplayName(*project)), "Crash");
    EXPECT_EQ(TextOf(project->getAdditionalType()), "");
    EXPECT_EQ(DirectoryOf(*project), "/studies");
    EXPECT_EQ(project->getType(), CAE_PROJECT);
    EXPECT_EQ(project->getParent(), nullptr);
    EXPECT_EQ(project->getProject(), project.get());
    EXPECT_EQ(project->getCAEObject(1), project.get());
    EXPECT_TRUE(korvane::GetProgramReference(*project));
}

TEST(CreateObject, AppendsToTheParentsChildren) {
    const auto project = korvane::CreateProject(L"Crash", kDirectory);
    int first = 0;
    int second = 0;
    int below = 0;
    EXPECT_EQ(createCAEObject(project.get(), 1, CAE_PART, first), 0);
    EXPECT_EQ(createCAEObject(project.get(), 1, CAE_MODEL, second), 0);
    EXPECT_EQ(createCAEObject(project.get(), first, CAE_TAG, below), 0);
    EXPECT_EQ(first, 2);
    EXPECT_EQ(second, 3);
    EXPECT_EQ(below, 4);
    EXPECT_EQ(ChildIdsOf(*project), (std::vector<int>{2, 3}));
    CAEObject* const part = project->getCAEObject(first);
    ASSERT_NE(part, nullptr);
    EXPECT_EQ(ChildIdsOf(*part), std::vector<int>{4});
    EXPECT_EQ(part->getParent(), project.get());
    EXPECT_EQ(project->getCAEObject(below)->getParent(), part);
    EXPECT_EQ(project->getCAEObject(below)->getProject(), project.get());
}

TEST(CreateObject, MakesTheClassOfTheKind) {
    const auto project = korvane::CreateProject(L"Crash", kDirectory);
    const auto create = [&](_tagCAEObjectType type) {
        int id = 0;
        EXPECT_EQ(createCAEObject(project.get(), 1, type, id), 0) << type;
        CAEObject* const object = project->getCAEObject(id);
        EXPECT_EQ(object->getType(), type);
        return object;
    };
    EXPECT_NE(dynamic_cast<CAEPart*>(create(CAE_PART)), nullptr);
    EXPECT_NE(dynamic_cast<CAESubAssembly*>(create(CAE_SUBASSEMBLY)), nullptr);
    EXPECT_NE(dynamic_cast<CAEFile*>(create(CAE_FILE)), nullptr);
    EXPECT_NE(dynamic_cast<CAEProject*>(create(CAE_PROJECT)), nullptr);
    EXPECT_NE(dynamic_cast<CAERunAssembly*>(create(CAE_ITERATION_MODEL)), nullptr);
    EXPECT_NE(dynamic_cast<CAEViewItem*>(create(CAE_VIEW_ITEM)), nullptr);
    for (const _tagCAEObjectType type :
         {CAE_MODEL, CAE_ITERATION, CAE_ITERATION_FOLDER, CAE_ASSEMBLY_FOLDER, CAE_LOADCASE_VIEW_FOLDER,
          CAE_LOADCASE_VIEW, CAE_SESSION_OBJECT, CAE_TAG}) {
        const CAEObject& object = *create(type);
        EXPECT_EQ(typeid(object), typeid(CAEObject)) << type;
    }
}

TEST(CreateObject, StartsWithNothingButDateAndUser) {
    const auto project = korvane::CreateProject(L"Crash", kDirectory);
    int id = 0;
    createCAEObject(project.get(), 1, CAE_PART, id);
    CAEObject& part = *project->getCAEObject(id);
    EXPECT_EQ(NameOf(part), "");
    EXPECT_EQ(TextOf(part.getDBKey()), "");
    EXPECT_EQ(TextOf(part.getLinkDBKey()), "");
    EXPECT_TRUE(ChildrenOf(part).empty());
    EXPECT_TRUE(FileIdsOf(part).empty());
    EXPECT_TRUE(VersionsOf(part).empty());
    EXPECT_FALSE(CreatedUserNameOf(part).empty());
    EXPECT_EQ(CreatedUserNameOf(part), CreatedUserNameOf(*project));
}

TEST(CreateObject, CarriesThePresentTimeInUtc) {
    const std::time_t before = std::time(nullptr);
    const auto project = korvane::CreateProject(L"Crash", kDirectory);
    int id = 0;
    createCAEObject(project.get(), 1, CAE_PART, id);
    const std::time_t after = std::time(nullptr);
    const std::string date = CreatedDateOf(*project->getCAEObject(id));
    std::smatch match;
    ASSERT_TRUE(std::regex_match(date, match, std::regex(R"((\d{4})-(\d\d)-(\d\d)T(\d\d):(\d\d):(\d\d)Z)")))
        << date;
    const auto number = [&](std::size_t group) { return std::stoi(match[group]); };
    const std::chrono::sys_days day(std::chrono::year(number(1)) / number(2) / number(3));
    const std::time_t created = std::chrono::system_clock::to_time_t(day + std::chrono::hours(number(4)) +
                                                                     std::chrono::minutes(number(5)) +
                                                                     std::chrono::seconds(number(6)));
    EXPECT_GE(created, before);
    EXPECT_LE(created, after);
}

TEST(CreateObject, FailsWithNothingChanged) {
    const auto project = korvane::CreateProject(L"Crash", kDirectory);
    int id = 77;
    EXPECT_NE(createCAEObject(nullptr, 1, CAE_PART, id), 0);
    EXPECT_NE(createCAEObject(project.get(), 2, CAE_PART, id), 0);
    EXPECT_NE(createCAEObject(project.get(), 0, CAE_PART, id), 0);
    EXPECT_NE(createCAEObject(project.get(), -1, CAE_PART, id), 0);
    for (const int type : {43, 2, 10, 20, 24, 25, 27, 40, 42, 44, -1}) {
        EXPECT_NE(createCAEObject(project.get(), 1, static_cast<_tagCAEObjectType>(type), id), 0) << type;
    }
    EXPECT_EQ(id, 77);
    EXPECT_TRUE(ChildrenOf(*project).empty());
    EXPECT_EQ(createCAEObject(project.get(), 1, CAE_PART, id), 0);
    EXPECT_EQ(id, 2);
}

TEST(CreateObject, TakesItsParentIdentifierFromTheVariableThatItFills) {
    const auto project = korvane::CreateProject(L"Crash", kDirectory);
    int id = 1;
    EXPECT_EQ(createCAEObject(project.get(), id, CAE_MODEL, id), 0);
    EXPECT_EQ(createCAEObject(project.get(), id, CAE_PART, id), 0);
    EXPECT_EQ(ChildIdsOf(*project->getCAEObject(2)), std::vector<int>{3});
}

TEST(SetCreation, HoldsForWhatIsCreatedFromThenOn) {
    const auto project = korvane::CreateProject(L"Crash", kDirectory);
    korvane::SetCreation(*project, L"2026-03-01T09:30:00Z", L"engineer");
    int id = 0;
    createCAEObject(project.get(), 1, CAE_PROJECT, id);
    createCAEObject(project.get(), id, CAE_PART, id);
    EXPECT_EQ(CreatedDateOf(*project->getCAEObject(id)), "2026-03-01T09:30:00Z");
    EXPECT_EQ(CreatedUserNameOf(*project->getCAEObject(id)), "engineer");
    EXPECT_NE(CreatedDateOf(*project), "2026-03-01T09:30:00Z");
    korvane::SetCreation(*project, L"", L"");
    createCAEObject(project.get(), 1, CAE_PART, id);
    EXPECT_NE(CreatedDateOf(*project->getCAEObject(id)), "2026-03-01T09:30:00Z");
    EXPECT_EQ(CreatedUserNameOf(*project->getCAEObject(id)), CreatedUserNameOf(*project));
}

}  // namespace

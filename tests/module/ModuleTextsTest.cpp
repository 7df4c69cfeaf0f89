#include <gtest/gtest.h>
#include <korvanejson/Module.h>

#include <algorithm>
#include <regex>
#include <string>
#include <vector>

#include "module/ModuleInformation.h"

TEST(ModuleTexts, HoldWhatTheBuildKnows) {
    const ModuleTexts& texts = LoadedModuleTexts();
    EXPECT_EQ(texts.buildRunner, KORVANEJSON_BUILD_RUNNER_NAME);
    EXPECT_EQ(texts.buildRunner.size(), 15U);
    EXPECT_EQ(texts.rightsNotice, KORVANEJSON_RIGHTS_NOTICE);
    EXPECT_EQ(texts.rightsNotice.size(), 31U);
    const std::string rest = texts.rightsNotice.substr(texts.rightsNotice.find(' '));
    EXPECT_EQ(texts.wideRightsNotice, L"\u00C2\u00A9" + std::wstring(rest.begin(), rest.end()));
    EXPECT_EQ(texts.wideRightsNotice.size(), 24U);
    EXPECT_EQ(texts.dependency, "OrsUtl");
    EXPECT_EQ(texts.sourceBranch, "develop");
    EXPECT_EQ(texts.releaseCandidate, "-rc1");
    EXPECT_EQ(texts.empty, "");
    EXPECT_TRUE(std::regex_match(texts.revision, std::regex("[0-9a-f]{40}"))) << texts.revision;
}

TEST(ModuleTexts, RevisionBeginsAsTheVersionEnds) {
    const std::string version = KorvaneJson_get_module_info(1);
    EXPECT_EQ(version.substr(version.size() - 11), LoadedModuleTexts().revision.substr(0, 11));
}

TEST(ModuleTexts, AreMadeInOrderAndReleasedInTheReverseOrder) {
    // Members are constructed in their order in the object, and destroyed in the reverse order.
    const ModuleTexts& texts = LoadedModuleTexts();
    const std::vector<const void*> members = {
        &texts.buildRunner, &texts.rightsNotice, &texts.wideRightsNotice,
        &texts.dependency,  &texts.sourceBranch, &texts.releaseCandidate,
        &texts.empty,       &texts.revision};
    EXPECT_TRUE(std::ranges::is_sorted(members, std::less<>()));
    EXPECT_EQ(members.front(), &texts);
}

#include <gtest/gtest.h>
#include <korvanejson/Module.h>

#include <limits>
#include <regex>
#include <string>
#include <string_view>

// Through the library, as a host asks it.

namespace {

const std::string kVersionForm = R"([0-9]+\.[0-9]+\.[0-9]+\.[0-9a-f]{11})";

}  // namespace

TEST(ModuleInformation, TellsTheKindOfModule) {
    EXPECT_STREQ(KorvaneJson_get_module_info(0), "Dynamic linked library");
}

TEST(ModuleInformation, VersionIsTheReleaseNumberAndTheStartOfTheRevision) {
    const std::string version = KorvaneJson_get_module_info(1);
    EXPECT_TRUE(std::regex_match(version, std::regex(kVersionForm))) << version;
    EXPECT_TRUE(version.starts_with(KORVANEJSON_VERSION ".")) << version;
}

TEST(ModuleInformation, EveryOtherSelectorGivesTheBanner) {
    const char* const banner = KorvaneJson_get_module_info(2);
    EXPECT_TRUE(std::string_view(banner).starts_with("KorvaneJson version ")) << banner;
    for (const int selector :
         {-1, 3, 1000, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        EXPECT_STREQ(KorvaneJson_get_module_info(selector), banner) << selector;
    }
}

TEST(ModuleInformation, BannerIsJoinedFromItsPieces) {
    const std::string banner = KorvaneJson_get_module_info(2);
    const std::regex form(
        "KorvaneJson version (" + kVersionForm +
        R"re() \(More informations on (https?://[^ ()]+)\), built on ([^ ()]+) )re"
        R"re(\(((Jan|Feb|Mar|Apr|May|Jun|Jul|Aug|Sep|Oct|Nov|Dec) [ 1-3][0-9] [0-9]{4}) at )re"
        R"re(([0-2][0-9]:[0-5][0-9]:[0-6][0-9])\)([^)]{31}))re");
    std::smatch pieces;
    ASSERT_TRUE(std::regex_match(banner, pieces, form)) << banner;
    EXPECT_EQ(pieces[1], KorvaneJson_get_module_info(1));
    EXPECT_EQ(pieces[2], KORVANEJSON_WEB_ADDRESS);
    EXPECT_EQ(pieces[3], KORVANEJSON_BUILD_HOST_NAME);
    EXPECT_EQ(pieces[7], KORVANEJSON_RIGHTS_NOTICE);
}

TEST(ModuleInformation, BannerIsTheNinthCharacterOnOfTheMarkedText) {
    // The mark is in the same text, in front of what the query returns.
    EXPECT_EQ(std::string_view(KorvaneJson_get_module_info(2) - 8, 20),
              "@(#)" KORVANEJSON_MAKER_PREFIX ":KorvaneJson ");
}

TEST(ModuleInformation, TextsAreTheSameAtEveryCall) {
    for (const int selector : {0, 1, 2}) {
        EXPECT_EQ(KorvaneJson_get_module_info(selector), KorvaneJson_get_module_info(selector));
    }
}

TEST(Lifecycle, FunctionsDoNothingInAnyOrder) {
    const std::string banner = KorvaneJson_get_module_info(2);
    KorvaneJsonTerminate();
    KorvaneJsonInitialize();
    KorvaneJsonInitialize();
    __localFnToKeepKorvaneJsonDllLoaded();
    KorvaneJsonTerminate();
    EXPECT_EQ(KorvaneJson_get_module_info(2), banner);
}

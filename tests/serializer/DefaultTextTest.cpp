#include <gtest/gtest.h>
#include <korvanejson/JsonSerializer.h>

#include <string>

#include "support/ModelBuilders.h"

// What a first program writes that sets neither a code page nor text units.

TEST(DefaultText, IsWrittenByCodePoints) {
    const TestProject project(L"Pr\u00FCfstand \u20AC");
    const std::string text = JsonSerializer(&*project).GetJsonString().GetAnsiBuffer();
    EXPECT_NE(text.find(R"("name":"Pr\u00FCfstand \u20AC")"), std::string::npos) << text;
}

#include <gtest/gtest.h>
#include <korvanejson/JsonSerializer.h>

#include <string>

#include "support/ModelBuilders.h"

// The same on a Western Windows, in a program whose manifest does not ask for UTF-8: escapes are bytes of the
// code page, as the object model's texts are.

TEST(DefaultText, IsWrittenByBytesOfTheCodePage) {
    const TestProject project(L"Pr\u00FCfstand \u20AC");
    const std::string text = JsonSerializer(&*project).GetJsonString().GetAnsiBuffer();
    EXPECT_NE(text.find(R"("name":"Pr\u00FCfstand \u0080")"), std::string::npos) << text;
}

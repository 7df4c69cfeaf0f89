#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ServerSupport.h"
#include "support/LongRun.h"

namespace host {
namespace {

// Each of these is done in time that grows with the document. With its square, none would come to an end.
constexpr int kMany = kIsSanitized ? 6000 : 30'000;

class ServerScale : public ServerInFolder {
protected:
    /// Stores the project with these children, and again, and without the first child, which has so many
    /// objects that nothing else has.
    void StoreAndChange(const std::vector<std::string>& children, std::size_t inFirst = 1) {
        const std::string first = Store(ProjectOf(children, 0));
        EXPECT_EQ(Again(ProjectOf(children, 0)), first);
        EXPECT_EQ(report.newKeys, 0U);
        EXPECT_EQ(report.detached, 0U);
        Again(ProjectOf(children, 1));
        EXPECT_EQ(report.newKeys, 0U);
        EXPECT_EQ(report.detached, inFirst);
        EXPECT_EQ(Again(ProjectOf(children, 0)), first);
    }

private:
    static std::string ProjectOf(const std::vector<std::string>& children, std::size_t from) {
        std::string text = R"({"name":"P","type":"SIMULATION","children":[)";
        for (std::size_t index = from; index < children.size(); ++index) {
            text += (index == from ? "" : ",") + children[index];
        }
        return text + "]}";
    }
};

TEST_F(ServerScale, ManySiblings) {
    std::vector<std::string> children;
    for (int number = 0; number < kMany; ++number) {
        children.push_back(R"({"name":")" + std::to_string(number) + R"(","type":"CAEPART"})");
    }
    StoreAndChange(children);
}

TEST_F(ServerScale, ManyEqualSiblings) {
    StoreAndChange(std::vector<std::string>(kMany, R"({"name":"A","type":"CAEPART"})"));
}

TEST_F(ServerScale, ManyPlacesOfAFile) {
    std::vector<std::string> children;
    for (int number = 0; number < kMany / 2; ++number) {
        children.push_back(R"({"name":")" + std::to_string(number) +
                           R"(","type":"CAEPART","files":[{"id":"7","name":"f","files":[{"name":"g"}]}]})");
    }
    StoreAndChange(children, 2);
}

TEST_F(ServerScale, ManyLevelsOfFilesInFiles) {
    constexpr int kDepth = kMany / 2;
    std::string child = R"({"name":"A","type":"CAEPART")";
    for (int depth = 0; depth < kDepth; ++depth) {
        child += R"(,"files":[{"name":"f","id":")" + std::to_string(depth % 3) + "\"";
    }
    for (int depth = 0; depth < kDepth; ++depth) {
        child += "}]";
    }
    StoreAndChange({child + "}", R"({"name":"B","type":"CAEPART"})"});
}

}  // namespace
}  // namespace host

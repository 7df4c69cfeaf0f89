#include <gtest/gtest.h>

#include "format/MemberNames.h"
#include "objectjson/NodeWriter.h"

namespace member = format::member;

TEST(NodeWriter, WritesTheEmptyTextForNull) {
    JSONNode node(JSON_NODE);
    NodeWriter writer(node);
    writer.Text(member::kFileType, static_cast<const char*>(nullptr));
    writer.Text(member::kFileFormat, "ASCII");
    EXPECT_STREQ(node.write().c_str(), R"({"fileType":"","fileFormat":"ASCII"})");
}

#include <gtest/gtest.h>

#include "format/MemberNames.h"
#include "objectjson/DocumentText.h"
#include "objectjson/NodeWriter.h"
#include "objectjson/TextWriter.h"

namespace member = format::member;

namespace {

constexpr const char* kNull = nullptr;

/// Whatever the object model may answer with null.
void WriteNulls(DocumentWriter& writer) {
    writer.Text(member::kFileType, kNull);
    writer.Text(member::kFileFormat, "ASCII");
    writer.OpenObject(kNull);
    writer.End();
}

constexpr const char* kWithoutNulls = R"({"fileType":"","fileFormat":"ASCII","":{}})";

}  // namespace

TEST(NodeWriter, WritesTheEmptyTextForNull) {
    JSONNode node(JSON_NODE);
    NodeWriter writer(node);
    WriteNulls(writer);
    EXPECT_STREQ(node.write().c_str(), kWithoutNulls);
}

#if defined(KORVANEJSON_TEXT_WITHOUT_NODES)
TEST(TextWriter, WritesTheEmptyTextForNull) {
    WideText text;
    TextWriter writer(text);
    WriteNulls(writer);
    writer.Finish();
    EXPECT_STREQ(text.Take().GetAnsiBuffer(), kWithoutNulls);
}
#endif

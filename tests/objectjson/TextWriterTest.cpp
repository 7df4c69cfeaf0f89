#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "format/MemberNames.h"
#include "objectjson/DocumentText.h"
#include "objectjson/NodeWriter.h"
#include "objectjson/TextWriter.h"

#if defined(KORVANEJSON_TEXT_WITHOUT_NODES)

namespace member = format::member;

namespace {

class Pages final : public DocumentSink {
public:
    void Write(const char* text, std::size_t length) override { pages.emplace_back(text, length); }

    std::vector<std::string> pages;
};

/// Every call that a section can make, within a root that is open already.
void WriteEveryKind(DocumentWriter& out) {
    out.Text(member::kName, "a \"frame\" / \\ \n");
    out.Text(member::kCreatedBy, OuString(L"J\u00F6rg"));
    out.OpenObject(member::kMetaData);
    out.OpenObject("its \"mass\"");
    out.Text(member::kValue, "12");
    out.End();
    out.End();
    out.OpenArray(member::kChildren);
    out.OpenElement();
    out.Text(member::kId, "2");
    out.End();
    out.OpenElement();
    out.End();
    out.End();
    out.OpenArray(member::kFiles);
    out.End();
}

}  // namespace

TEST(TextWriter, WritesWhatNodesAreWrittenAs) {
    JSONNode node(JSON_NODE);
    NodeWriter nodes(node);
    WriteEveryKind(nodes);

    Pages sink;
    TextWriter text(sink);
    WriteEveryKind(text);
    text.Finish();
    ASSERT_EQ(sink.pages.size(), 1U);
    EXPECT_EQ(sink.pages.front(), node.write().c_str());
    EXPECT_NE(sink.pages.front().find(R"("children":[{"id":"2"},{}],"files":[]})"), std::string::npos);
}

TEST(WideText, CollectsPagesOfAnyLengthUntilItIsTaken) {
    WideText text;
    std::string written;
    std::wstring expected;
    // Longer and shorter than the ones before.
    for (const std::size_t length : {3U, 1024U, 7U, 1025U, 5000U}) {
        const char letter = static_cast<char>('a' + length % 26);
        written.assign(length, letter);
        expected.append(length, static_cast<wchar_t>(letter));
        text.Write(written.data(), written.size());
    }
    EXPECT_EQ(text.Take().GetBuffer(), expected);
    EXPECT_TRUE(text.Take().IsEmpty());
    text.Write("again", 5);
    EXPECT_STREQ(text.Take().GetBuffer(), L"again");
}

#endif

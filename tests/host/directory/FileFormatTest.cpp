#include <gtest/gtest.h>

#include <string>

#include "host/directory/FileFormat.h"

namespace host {
namespace {

using namespace std::string_view_literals;

TEST(DetectFormat, TakesTextsOfEvery8BitEncodingAsText) {
    EXPECT_EQ(DetectFormat("*NODE\r\n1, 0., 0., 0.\n"), CAE_FORMAT_ASCII);
    EXPECT_EQ(DetectFormat("K\xC3\xBChlk\xC3\xB6rper"), CAE_FORMAT_ASCII);
    EXPECT_EQ(DetectFormat("K\xFChlk\xF6rper"), CAE_FORMAT_ASCII);
    EXPECT_EQ(DetectFormat("\xEF\xBB\xBF*NODE\n"), CAE_FORMAT_ASCII);
    EXPECT_EQ(DetectFormat(""), CAE_FORMAT_ASCII);
}

TEST(DetectFormat, AllowsTheControlCharactersThatTextsHold) {
    EXPECT_EQ(DetectFormat("page\fprogress\b\b\x1B[1mdone\x1A"), CAE_FORMAT_ASCII);
}

TEST(DetectFormat, TakesEveryOtherControlCharacterAsBinary) {
    EXPECT_EQ(DetectFormat("abc\0def"sv), CAE_FORMAT_BINARY);
    EXPECT_EQ(DetectFormat("\x89PNG\r\n\x1A\n\0\0\0\rIHDR"sv), CAE_FORMAT_BINARY);
    EXPECT_EQ(DetectFormat("\x01"), CAE_FORMAT_BINARY);
}

TEST(DetectFormat, TakesWideEncodingsAsBinary) {
    EXPECT_EQ(DetectFormat("\xFF\xFE*\0N\0"sv), CAE_FORMAT_BINARY);
    EXPECT_EQ(DetectFormat("\xFE\xFF\x4E\x2D"), CAE_FORMAT_BINARY);
    EXPECT_EQ(DetectFormat("*\0N\0O\0"sv), CAE_FORMAT_BINARY);
}

TEST(DetectFormat, TakesPdfAsBinaryThoughItOpensLikeAText) {
    EXPECT_EQ(DetectFormat("%PDF-1.4\n1 0 obj\n"), CAE_FORMAT_BINARY);
}

}  // namespace
}  // namespace host

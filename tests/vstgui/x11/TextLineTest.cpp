// Editing a line by whole characters.
#include "vstgui/platform/x11/textline.h"

#include "platform/Utf8.h"

#include <gtest/gtest.h>

using namespace VSTGUI;

namespace {

TEST(TextLine, TypingReplacesTheSelectionAndStopsAtTheLimitInCharacters)
{
    TextLine line(4);
    line.setText("old name, longer than it may be");
    EXPECT_TRUE(line.insert("\xC3\xA4"));
    EXPECT_EQ(line.getText(), "\xC3\xA4");
    EXPECT_TRUE(line.insert("\xE2\x82\xAC\xF0\x9F\x8E\x9B\r\b\x7Fxyz"));
    EXPECT_EQ(line.getText(), "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x8E\x9Bx");
    EXPECT_FALSE(line.insert("y"));
    EXPECT_FALSE(line.insert("\r\n\t"));
}

TEST(TextLine, ASelectionCollapsesToTheSideOfTheArrow)
{
    TextLine line(20);
    line.setText("abcd");
    line.moveTo(1, false);
    line.moveRight(true);
    line.moveRight(true);
    EXPECT_EQ(line.selectedText(), "bc");
    line.moveRight(false);
    EXPECT_EQ(line.getCaret(), 3u);
    line.moveHome(true);
    line.moveLeft(false);
    EXPECT_EQ(line.getCaret(), 0u);
    EXPECT_FALSE(line.hasSelection());
}

TEST(TextLine, InvalidUtf8BecomesReplacementCharacters)
{
    const std::string r = "\xEF\xBF\xBD";
    EXPECT_EQ(platform::validUtf8("a\xFFz"), "a" + r + "z");
    EXPECT_EQ(platform::validUtf8("\xC3"), r);
    EXPECT_EQ(platform::validUtf8("\xE2\x82"), r + r);
    EXPECT_EQ(platform::validUtf8("\xC0\xAF"), r + r);
    EXPECT_EQ(platform::validUtf8("\xED\xA0\x80"), r + r + r);
    EXPECT_EQ(platform::validUtf8("\xF4\x90\x80\x80"), r + r + r + r);
    EXPECT_EQ(platform::validUtf8(nullptr), "");
}

}  // namespace

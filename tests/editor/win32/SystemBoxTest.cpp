// The name field's text box as Windows has it, used by keyboard and mouse.
#include "CZKRTextEdit.h"
#include "HostWindow.h"

#include "vstgui/vstgui.h"

#include <gtest/gtest.h>

using namespace VSTGUI;

namespace {

struct SystemBox : testing::Test, IControlListener {
    SystemBox()
    {
        field->setMaxCharacters(24);
        field->setFontColor(CColor(0x24, 0x24, 0x20));
        field->setBackColor(CColor(0xD1, 0xE3, 0xEE));
        frame->addView(field);
        EXPECT_TRUE(frame->open(host.handle()));
        pump();
    }
    ~SystemBox() override { close(); }

    void close()
    {
        if (frame)
            std::exchange(frame, nullptr)->close();
    }
    void valueChanged(CControl*) override { committed.push_back(field->getText()); }
    HWND frameWindow() const
    {
        return static_cast<HWND>(frame->getPlatformFrame()->getPlatformRepresentation());
    }
    HWND box() const { return frame ? GetWindow(frameWindow(), GW_CHILD) : nullptr; }
    void openBox()
    {
        host.click(70, 47);
        ASSERT_TRUE(pumpUntil([&] { return box() != nullptr; }));
        ASSERT_EQ(GetFocus(), box());
        ASSERT_TRUE(field->isEditingText());
    }
    void expectClosed()
    {
        EXPECT_TRUE(pumpUntil([&] { return !field->isEditingText(); }));
        EXPECT_EQ(box(), nullptr);
    }

    HostWindow host;
    CFrame* frame{new CFrame(CRect(0, 0, 200, 150), nullptr)};
    CZKRTextEdit* field{new CZKRTextEdit(CRect(20, 40, 136, 56), this, 1000, "before")};
    std::vector<std::string> committed;
};

TEST_F(SystemBox, IsAnEditWindowInTheMiddleOfTheFieldInItsColours)
{
    openBox();
    char name[16] = {};
    GetClassNameA(box(), name, 16);
    EXPECT_STRCASEEQ(name, "edit");
    RECT at{};
    GetWindowRect(box(), &at);
    MapWindowPoints(nullptr, frameWindow(), reinterpret_cast<POINT*>(&at), 2);
    EXPECT_EQ(at.left, 20);
    EXPECT_EQ(at.right, 136);
    EXPECT_EQ(at.bottom - at.top, 15);  // the font's 12 and 3
    EXPECT_GE(at.top, 40);
    EXPECT_LE(at.bottom, 56);
    pump(200);
    EXPECT_EQ(host.screenshot().at(22, 48), CColor(0xD1, 0xE3, 0xEE));
    field->setViewSize(CRect(30, 60, 146, 76));
    GetWindowRect(box(), &at);
    MapWindowPoints(nullptr, frameWindow(), reinterpret_cast<POINT*>(&at), 2);
    EXPECT_EQ(at.left, 30);
    EXPECT_GE(at.top, 60);
}

TEST_F(SystemBox, TypedTextReplacesTheSelectedOneAndIsTakenOverWithReturn)
{
    openBox();
    HostWindow::type(L"Gr\u00fc\u00dfe \U0001F600");
    HostWindow::pressKey(VK_RETURN);
    expectClosed();
    EXPECT_EQ(committed, std::vector<std::string>{u8"Gr\u00fc\u00dfe \U0001F600"});
    EXPECT_TRUE(field->bWasReturnPressed);
    EXPECT_EQ(GetFocus(), frameWindow());
}

TEST_F(SystemBox, EscapeKeepsTheOldText)
{
    openBox();
    HostWindow::type(L"x");
    HostWindow::pressKey(VK_ESCAPE);
    expectClosed();
    EXPECT_TRUE(committed.empty());
    EXPECT_STREQ(field->getText(), "before");
}

TEST_F(SystemBox, KeyboardGoingElsewhereTakesTheTextOver)
{
    openBox();
    HostWindow::type(L"elsewhere");
    ASSERT_TRUE(pumpUntil([&] { return GetWindowTextLengthW(box()) == 9; }));
    host.takeFocus();
    expectClosed();
    EXPECT_EQ(committed, std::vector<std::string>{"elsewhere"});
    EXPECT_EQ(GetFocus(), host.handle());  // it is not taken back
}

TEST_F(SystemBox, TypingStopsAtTheFieldsLimit)
{
    openBox();
    HostWindow::type(L"123456789012345678901234567890");
    HostWindow::pressKey(VK_RETURN);
    expectClosed();
    EXPECT_EQ(committed, std::vector<std::string>{"123456789012345678901234"});
}

TEST_F(SystemBox, AtMostAHundredCharactersAreRead)
{
    openBox();
    SetWindowTextW(box(), (std::wstring(99, L'a') + L"\U0001F600").c_str());
    HostWindow::pressKey(VK_RETURN);
    expectClosed();
    ASSERT_EQ(committed.size(), 1u);
    EXPECT_EQ(committed[0], std::string(99, 'a'));  // not half of the last one
}

TEST_F(SystemBox, WindowThatTheHostDestroysFirstStillHandsItsTextOver)
{
    openBox();
    HostWindow::type(L"late");
    ASSERT_TRUE(pumpUntil([&] { return GetWindowTextLengthW(box()) == 4; }));
    host.destroy();
    pump();
    EXPECT_FALSE(field->isEditingText());
    EXPECT_STREQ(field->getText(), "late");
    close();
    EXPECT_EQ(committed, std::vector<std::string>{"late"});
}

TEST_F(SystemBox, ClosingTheFrameTakesTheTextOver)
{
    openBox();
    HostWindow::type(L"one");
    ASSERT_TRUE(pumpUntil([&] { return GetWindowTextLengthW(box()) == 3; }));
    close();
    pump();
    EXPECT_EQ(committed, std::vector<std::string>{"one"});
}

}  // namespace

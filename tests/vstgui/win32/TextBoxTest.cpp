// The text box of the system, used by keyboard and mouse.
#include "HostWindow.h"
#include "vstgui/vstgui.h"

#include <gtest/gtest.h>

using namespace VSTGUI;

namespace {

struct TextBox : testing::Test, IControlListener {
    TextBox()
    {
        frame->addView(edit);
        edit->setHoriAlign(kLeftText);
        frame->addView(other);
        EXPECT_TRUE(frame->open(host.handle()));
        pump();
    }
    ~TextBox() override { close(); }

    void close()
    {
        if (frame)
            frame->close();
        frame = nullptr;
    }
    void valueChanged(CControl* control) override
    {
        committed.push_back(static_cast<CTextEdit*>(control)->getText());
    }
    HWND frameWindow() const
    {
        return static_cast<HWND>(frame->getPlatformFrame()->getPlatformRepresentation());
    }
    HWND box() const { return GetWindow(frameWindow(), GW_CHILD); }
    void openBox()
    {
        host.click(30, 50);
        ASSERT_TRUE(pumpUntil([&] { return box() != nullptr; }));
        ASSERT_EQ(GetFocus(), box());
    }

    HostWindow host;
    CFrame* frame{new CFrame(CRect(0, 0, 200, 150), nullptr)};
    CTextEdit* edit{new CTextEdit(CRect(20, 40, 180, 70), this, 1, "before")};
    CTextEdit* other{new CTextEdit(CRect(20, 100, 180, 130), this, 2, "other")};
    std::vector<std::string> committed;
};

}  // namespace

TEST_F(TextBox, TypedTextReplacesTheSelectedOneAndIsTakenOverWithReturn)
{
    openBox();
    HostWindow::type(L"Gr\u00fc\u00dfe \u4f60 \U0001F600");
    HostWindow::pressKey(VK_RETURN);
    ASSERT_TRUE(pumpUntil([&] { return box() == nullptr; }));
    EXPECT_EQ(committed, std::vector<std::string>{u8"Gr\u00fc\u00dfe \u4f60 \U0001F600"});
    EXPECT_TRUE(edit->bWasReturnPressed);
    EXPECT_EQ(GetFocus(), frameWindow());
}

TEST_F(TextBox, EscapeLeavesTheTextAsItWas)
{
    openBox();
    HostWindow::type(L"x");
    HostWindow::pressKey(VK_ESCAPE);
    ASSERT_TRUE(pumpUntil([&] { return box() == nullptr; }));
    EXPECT_TRUE(committed.empty());
    EXPECT_STREQ(edit->getText(), "before");
}

TEST_F(TextBox, TabGoesOnToTheNextField)
{
    openBox();
    HostWindow::type(L"x");
    HostWindow::pressKey(VK_TAB);
    ASSERT_TRUE(pumpUntil([&] { return frame->getFocusView() == other && box(); }));
    EXPECT_EQ(committed, std::vector<std::string>{"x"});
    HostWindow::type(L"y");
    HostWindow::pressKey(VK_RETURN);
    ASSERT_TRUE(pumpUntil([&] { return box() == nullptr; }));
    EXPECT_STREQ(other->getText(), "y");
}

TEST_F(TextBox, KeyboardGoingToTheHostEndsTheEditing)
{
    openBox();
    HostWindow::type(L"x");
    pump();
    host.takeFocus();
    ASSERT_TRUE(pumpUntil([&] { return box() == nullptr; }));
    EXPECT_EQ(committed, std::vector<std::string>{"x"});
    EXPECT_EQ(GetFocus(), host.handle());
}

TEST_F(TextBox, PressElsewhereInTheFrameEndsTheEditing)
{
    openBox();
    HostWindow::type(L"x");
    pump();
    host.click(190, 10);
    ASSERT_TRUE(pumpUntil([&] { return box() == nullptr; }));
    EXPECT_EQ(committed, std::vector<std::string>{"x"});
}

TEST_F(TextBox, LimitCountsCharactersAndRefusesWhatIsTooMuch)
{
    struct Short : CTextEdit {
        using CTextEdit::CTextEdit;
        int32_t platformGetMaxCharacters() const override { return 5; }
    };
    auto* narrow = new Short(CRect(20, 5, 180, 35), this, 3, "");
    frame->addView(narrow);
    host.click(30, 20);
    ASSERT_TRUE(pumpUntil([&] { return box() != nullptr; }));
    // Beyond 16 bits each; then too many in front of what is there.
    HostWindow::type(L"\U0001F600\U0001F601\U0001F602");
    HostWindow::pressKey(VK_HOME);
    HostWindow::type(L"abcd");
    HostWindow::type(L"\U0001F603");
    HostWindow::pressKey(VK_RETURN);
    ASSERT_TRUE(pumpUntil([&] { return box() == nullptr; }));
    EXPECT_EQ(committed, std::vector<std::string>{u8"ab\U0001F600\U0001F601\U0001F602"});
}

TEST_F(TextBox, TextThatIsTooLongFromTheStartCanBeShortened)
{
    struct Short : CTextEdit {
        using CTextEdit::CTextEdit;
        int32_t platformGetMaxCharacters() const override { return 5; }
    };
    frame->addView(new Short(CRect(20, 5, 180, 35), this, 3, "abcdefgh"));
    host.click(30, 20);
    ASSERT_TRUE(pumpUntil([&] { return box() != nullptr; }));
    HostWindow::pressKey(VK_END);
    HostWindow::pressKey(VK_BACK);
    HostWindow::type(L"x");
    HostWindow::pressKey(VK_RETURN);
    ASSERT_TRUE(pumpUntil([&] { return box() == nullptr; }));
    EXPECT_EQ(committed, std::vector<std::string>{"abcdefg"});
}

TEST_F(TextBox, LooksLikeItsControlAndFollowsIt)
{
    edit->setBackColor(CColor(10, 60, 20));
    edit->setFontColor(kYellowCColor);
    openBox();
    pump();
    const CColor inside = host.screenshot().at(170, 55);
    EXPECT_EQ(inside, CColor(10, 60, 20));
    RECT before;
    GetWindowRect(box(), &before);
    EXPECT_EQ(before.left, kHostX + 20);
    EXPECT_EQ(before.right, kHostX + 180);
    // Centred, up to half a pixel.
    EXPECT_NEAR((before.top + before.bottom) / 2., kHostY + 55, 0.5);
    edit->setViewSize(CRect(30, 60, 150, 90));
    RECT after;
    GetWindowRect(box(), &after);
    EXPECT_EQ(after.left, kHostX + 30);
    EXPECT_EQ(after.top, before.top + 20);
    EXPECT_EQ(after.right, kHostX + 150);
}

TEST_F(TextBox, KeepsItsKeysFromADialogAround)
{
    openBox();
    EXPECT_TRUE(SendMessageW(box(), WM_GETDLGCODE, VK_RETURN, 0) & DLGC_WANTALLKEYS);
}

TEST_F(TextBox, FrameClosesWithTheBoxOpen)
{
    openBox();
    HostWindow::type(L"x");
    pump();
    close();
    pump();
    EXPECT_EQ(committed, std::vector<std::string>{"x"});
    EXPECT_EQ(GetWindow(host.handle(), GW_CHILD), nullptr);
}

TEST_F(TextBox, HostDestroysTheWindowWithTheBoxOpen)
{
    openBox();
    HostWindow::type(L"x");
    pump();
    host.destroy();
    pump();
    // Read from the box that has no window any more.
    close();
    EXPECT_EQ(committed, std::vector<std::string>{"x"});
}

// The text boxes that Windows gives the toolkit's text field and the editor's name field, used by
// keyboard and mouse.
#include "CZKRTextEdit.h"
#include "OpenFrame.h"

#include <windows.h>

namespace {

// The host's window, which has the keyboard, and the user who works in it.
struct TestHost : HostWindow {
    TestHost() : HostWindow(kHost, 400, 300)
    {
        takeFocus();
        pump();
    }
    ~TestHost()
    {
        destroy();
        pump(10);
    }

    HWND handle() const { return static_cast<HWND>(HostWindow::handle()); }
    void takeFocus() { SetFocus(handle()); }
    static void click(int x, int y)
    {
        hands::movePointer({kHost.x + x, kHost.y + y});
        hands::button(hands::Button::Left, true);
        hands::button(hands::Button::Left, false);
    }
    static void pressKey(WORD virtualKey) { sendKey(virtualKey, 0, 0); }
    // UTF-16 units as an input method sends them.
    static void type(const std::wstring& text)
    {
        for (const wchar_t unit : text)
            sendKey(0, unit, KEYEVENTF_UNICODE);
    }
    static void sendKey(WORD virtualKey, WORD unit, DWORD flags)
    {
        for (const DWORD up : {DWORD(0), DWORD(KEYEVENTF_KEYUP)}) {
            INPUT input{};
            input.type = INPUT_KEYBOARD;
            input.ki = {virtualKey, unit, flags | up, 0, 0};
            SendInput(1, &input, sizeof input);
        }
    }
};

enum class Kind { Toolkit, NameField };

struct ShortTextEdit : CTextEdit {
    using CTextEdit::CTextEdit;
    int32_t platformGetMaxCharacters() const override { return 5; }
};

struct TextBox : testing::TestWithParam<Kind>, IControlListener {
    TextBox()
    {
        frame->addView(field);
        frame->addView(other);
        EXPECT_TRUE(frame->open(host.handle()));
        pump();
    }
    ~TextBox() override { close(); }

    CTextEdit* makeField()
    {
        const CRect rect(20, 40, 180, 70);
        if (GetParam() == Kind::NameField)
            return new CZKRTextEdit(rect, this, 1000, "before");
        return new CTextEdit(rect, this, 1000, "before");
    }
    // Takes the first field's place.
    template <class Field>
    Field* replaceField(const char* text)
    {
        frame->removeView(field);
        auto* const narrow = new Field(CRect(20, 40, 180, 70), this, 1000, text);
        field = narrow;
        frame->addView(field);
        return narrow;
    }
    void close()
    {
        if (frame)
            std::exchange(frame, nullptr)->close();
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
    RECT place() const
    {
        RECT at{};
        GetWindowRect(box(), &at);
        MapWindowPoints(nullptr, frameWindow(), reinterpret_cast<POINT*>(&at), 2);
        return at;
    }
    void openBox()
    {
        host.click(70, 55);
        ASSERT_TRUE(pumpUntil([&] { return box() != nullptr; }));
        ASSERT_EQ(GetFocus(), box());
    }
    void typeAndWait(const std::wstring& text)
    {
        TestHost::type(text);
        const auto length = static_cast<int>(text.size());
        ASSERT_TRUE(pumpUntil([&] { return GetWindowTextLengthW(box()) == length; }));
    }
    void pressAndWait(WORD virtualKey)
    {
        TestHost::pressKey(virtualKey);
        ASSERT_TRUE(pumpUntil([&] { return box() == nullptr; }));
    }
    void expectCommitted(const std::string& text) const
    {
        EXPECT_EQ(committed, std::vector<std::string>{text});
    }

    TestHost host;
    CFrame* frame{new CFrame(CRect(0, 0, 200, 150), nullptr)};
    CTextEdit* field{makeField()};
    CTextEdit* other{new CTextEdit(CRect(20, 100, 180, 130), this, 2, "other")};
    std::vector<std::string> committed;
};

INSTANTIATE_TEST_SUITE_P(Both, TextBox, testing::Values(Kind::Toolkit, Kind::NameField),
                         [](const auto& kind) {
                             return kind.param == Kind::Toolkit ? "Toolkit" : "NameField";
                         });

TEST_P(TextBox, LooksLikeItsFieldAndFollowsIt)
{
    field->setBackColor(CColor(10, 60, 20));
    field->setFontColor(kYellowCColor);
    openBox();
    pump(200);
    EXPECT_EQ(screenshot(kHost, 400, 300).at(170, 55), CColor(10, 60, 20));
    const RECT before = place();
    EXPECT_EQ(before.left, 20);
    EXPECT_EQ(before.right, 180);
    EXPECT_NEAR((before.top + before.bottom) / 2., 55, 0.5);
    if (GetParam() == Kind::NameField) {
        EXPECT_EQ(before.bottom - before.top, 15);  // the font's 12 and 3
    }
    field->setViewSize(CRect(30, 60, 150, 90));
    const RECT after = place();
    EXPECT_EQ(after.left, 30);
    EXPECT_EQ(after.top, before.top + 20);
    EXPECT_EQ(after.right, 150);
}

TEST_P(TextBox, TypedTextReplacesTheSelectedOneAndIsTakenOverWithReturn)
{
    openBox();
    EXPECT_TRUE(SendMessageW(box(), WM_GETDLGCODE, VK_RETURN, 0) & DLGC_WANTALLKEYS)
        << "a dialog around would take Return";
    TestHost::type(L"Gr\u00fc\u00dfe \u4f60 \U0001F600");
    pressAndWait(VK_RETURN);
    expectCommitted(u8"Gr\u00fc\u00dfe \u4f60 \U0001F600");
    EXPECT_TRUE(field->bWasReturnPressed);
    EXPECT_EQ(GetFocus(), host.handle()) << "who had the keyboard before has it again";
    // The one who had it is gone: it goes to the host's window.
    const HWND passing = CreateWindowExW(0, L"BUTTON", L"", WS_CHILD | WS_VISIBLE, 0, 200, 20, 20,
                                         host.handle(), nullptr, nullptr, nullptr);
    SetFocus(passing);
    openBox();
    DestroyWindow(passing);
    pressAndWait(VK_ESCAPE);
    EXPECT_EQ(GetFocus(), host.handle());
}

TEST_P(TextBox, EscapeKeepsTheOldText)
{
    openBox();
    TestHost::type(L"x");
    pressAndWait(VK_ESCAPE);
    EXPECT_TRUE(committed.empty());
    EXPECT_STREQ(field->getText(), "before");
}

TEST_P(TextBox, TabGoesOnToTheNextField)
{
    openBox();
    TestHost::type(L"x");
    TestHost::pressKey(VK_TAB);
    ASSERT_TRUE(pumpUntil([&] { return frame->getFocusView() == other && box(); }));
    expectCommitted("x");
    TestHost::type(L"y");
    pressAndWait(VK_RETURN);
    EXPECT_STREQ(other->getText(), "y");
}

TEST_P(TextBox, KeyboardGoingElsewhereTakesTheTextOver)
{
    openBox();
    typeAndWait(L"elsewhere");
    host.takeFocus();
    ASSERT_TRUE(pumpUntil([&] { return box() == nullptr; }));
    expectCommitted("elsewhere");
    EXPECT_EQ(GetFocus(), host.handle()) << "it was taken back";
}

TEST_P(TextBox, ClosingTheFrameTakesTheTextOver)
{
    openBox();
    typeAndWait(L"one");
    close();
    pump();
    expectCommitted("one");
    EXPECT_EQ(GetWindow(host.handle(), GW_CHILD), nullptr);
}

TEST_P(TextBox, WindowThatTheHostDestroysFirstStillHandsItsTextOver)
{
    openBox();
    typeAndWait(L"late");
    host.destroy();
    pump();
    if (GetParam() == Kind::NameField) {
        EXPECT_FALSE(static_cast<CZKRTextEdit*>(field)->isEditingText());
        EXPECT_STREQ(field->getText(), "late");
    }
    close();
    expectCommitted("late");
}

using OfTheToolkit = TextBox;
INSTANTIATE_TEST_SUITE_P(Own, OfTheToolkit, testing::Values(Kind::Toolkit));

TEST_P(OfTheToolkit, LimitCountsCharactersAndRefusesWhatIsTooMuch)
{
    replaceField<ShortTextEdit>("");
    openBox();
    // Beyond 16 bits each; then too many in front of what is there.
    TestHost::type(L"\U0001F600\U0001F601\U0001F602");
    TestHost::pressKey(VK_HOME);
    TestHost::type(L"abcd\U0001F603");
    pressAndWait(VK_RETURN);
    expectCommitted(u8"ab\U0001F600\U0001F601\U0001F602");
}

TEST_P(OfTheToolkit, TextThatIsTooLongFromTheStartCanBeShortened)
{
    replaceField<ShortTextEdit>("abcdefgh");
    openBox();
    TestHost::pressKey(VK_END);
    TestHost::pressKey(VK_BACK);
    TestHost::type(L"x");
    pressAndWait(VK_RETURN);
    expectCommitted("abcdefg");
}

using OfTheNameField = TextBox;
INSTANTIATE_TEST_SUITE_P(Own, OfTheNameField, testing::Values(Kind::NameField));

TEST_P(OfTheNameField, TypingStopsAtItsLimit)
{
    static_cast<CZKRTextEdit*>(field)->setMaxCharacters(24);
    openBox();
    TestHost::type(L"123456789012345678901234567890");
    pressAndWait(VK_RETURN);
    expectCommitted("123456789012345678901234");
}

TEST_P(OfTheNameField, AtMostAHundredCharactersAreRead)
{
    openBox();
    SetWindowTextW(box(), (std::wstring(99, L'a') + L"\U0001F600").c_str());
    pressAndWait(VK_RETURN);
    expectCommitted(std::string(99, 'a'));  // not half of the last one
}

}  // namespace

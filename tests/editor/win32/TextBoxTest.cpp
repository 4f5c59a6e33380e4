// The text boxes that Windows gives the toolkit's text field and the editor's name field: what
// shows beyond typing ASCII into the editor.
#include "CZKRTextEdit.h"
#include "OpenFrame.h"

#include <windows.h>

namespace {

struct ShortTextEdit : CTextEdit {
    using CTextEdit::CTextEdit;
    int32_t platformGetMaxCharacters() const override { return 5; }
};

struct TextBox : OpenFrame {
    TextBox() { host.takeKeyboard(); }
    template <class Field>
    Field* add(const char* text = "before")
    {
        auto* const field = new Field(CRect(20, 40, 180, 70), this, 1000, text);
        frame->addView(field);
        return field;
    }
    HWND frameWindow() const
    {
        return static_cast<HWND>(frame->getPlatformFrame()->getPlatformRepresentation());
    }
    HWND box() const { return GetWindow(frameWindow(), GW_CHILD); }
    void openBox()
    {
        click(70, 55);
        ASSERT_TRUE(pumpUntil([&] { return box() && GetFocus() == box(); }));
    }
    // UTF-16 as an input method hands it over.
    void type(const std::wstring& text)
    {
        for (const wchar_t unit : text)
            PostMessageW(box(), WM_CHAR, unit, 0);
        pump();
    }
    void end(hands::Key key)
    {
        tap(key);
        ASSERT_TRUE(pumpUntil([&] { return box() == nullptr; }));
    }
    void expectBox(CTextEdit* field)
    {
        field->setBackColor(CColor(10, 60, 20));
        openBox();
        pump(200);
        EXPECT_EQ(picture().at(170, 55), CColor(10, 60, 20));
        RECT at{};
        GetWindowRect(box(), &at);
        MapWindowPoints(nullptr, frameWindow(), reinterpret_cast<POINT*>(&at), 2);
        EXPECT_EQ(at.left, 20);
        EXPECT_EQ(at.right, 180);
        EXPECT_NEAR((at.top + at.bottom) / 2., 55, 0.5);
        EXPECT_TRUE(SendMessageW(box(), WM_GETDLGCODE, VK_RETURN, 0) & DLGC_WANTALLKEYS)
            << "a dialog around would take Return";
        type(L"Gr\u00fc\u00dfe \u4f60 \U0001F600");
        end(hands::Key::Return);
        EXPECT_STREQ(field->getText(), u8"Gr\u00fc\u00dfe \u4f60 \U0001F600");
        EXPECT_EQ(values.size(), 1u);
        EXPECT_EQ(GetFocus(), host.handle()) << "who had the keyboard before has it again";
        // The one who had it is gone: it goes to the host's window.
        const HWND passing =
            CreateWindowExW(0, L"BUTTON", L"", WS_CHILD | WS_VISIBLE, 0, 250, 20, 20,
                            static_cast<HWND>(host.handle()), nullptr, nullptr, nullptr);
        SetFocus(passing);
        openBox();
        DestroyWindow(passing);
        end(hands::Key::Escape);
        EXPECT_EQ(GetFocus(), host.handle());
        openBox();
        host.takeKeyboard();
        EXPECT_TRUE(pumpUntil([&] { return box() == nullptr; }));
        EXPECT_EQ(GetFocus(), host.handle()) << "it was taken back";
    }
};

TEST_F(TextBox, OfTheToolkitLooksLikeItsFieldAndGivesTheKeyboardBack)
{
    expectBox(add<CTextEdit>());
}

TEST_F(TextBox, OfTheNameLooksLikeItsFieldAndGivesTheKeyboardBack)
{
    expectBox(add<CZKRTextEdit>());
}

TEST_F(TextBox, OfTheToolkitStopsAtItsLimitInCharacters)
{
    CTextEdit* const field = add<ShortTextEdit>("");
    openBox();
    // Beyond 16 bits each; then too many in front of what is there.
    type(L"\U0001F600\U0001F601\U0001F602");
    SendMessageW(box(), EM_SETSEL, 0, 0);
    type(L"abcd\U0001F603");
    end(hands::Key::Return);
    EXPECT_STREQ(field->getText(), u8"ab\U0001F600\U0001F601\U0001F602");
}

TEST_F(TextBox, OfTheNameStopsAtItsLimitAndReadsAHundred)
{
    auto* const field = add<CZKRTextEdit>();
    field->setMaxCharacters(24);
    openBox();
    type(L"123456789012345678901234567890");
    EXPECT_EQ(GetWindowTextLengthW(box()), 24);
    SetWindowTextW(box(), (std::wstring(99, L'a') + L"\U0001F600").c_str());
    end(hands::Key::Return);
    EXPECT_EQ(field->getText(), std::string(99, 'a'));  // not half of the last one
}

}  // namespace

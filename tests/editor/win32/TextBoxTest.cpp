// The Windows text boxes of the toolkit's text field and of the editor's name field: appearance,
// focus, Unicode input and length limits.
#include "editor/controls/CZKRTextEdit.h"
#include "tests/vstgui/OpenFrame.h"

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
    // Sends UTF-16 code units as an input method does.
    void type(const std::wstring& text)
    {
        for (const wchar_t unit : text)
            PostMessageW(box(), WM_CHAR, unit, 0);
        pump();
    }
    void end(userinput::Key key)
    {
        tap(key);
        ASSERT_TRUE(pumpUntil([&] { return box() == nullptr; }));
    }
    void expectBox(CTextEdit* field)
    {
        const auto font = owned(new CFontDesc("Arial", 16));
        field->setFont(font);
        field->setFontColor(CColor(250, 200, 0));
        field->setBackColor(CColor(10, 60, 20));
        openBox();
        pump(200);
        EXPECT_EQ(picture().at(170, 55), CColor(10, 60, 20));
        LOGFONTW used{};
        GetObjectW(reinterpret_cast<HFONT>(SendMessageW(box(), WM_GETFONT, 0, 0)), sizeof used,
                   &used);
        EXPECT_EQ(used.lfHeight, -16);
        EXPECT_EQ(GetWindowLongW(box(), GWL_STYLE) & (ES_CENTER | ES_RIGHT), ES_CENTER);
        const HDC device = CreateCompatibleDC(nullptr);
        SendMessageW(frameWindow(), WM_CTLCOLOREDIT, reinterpret_cast<WPARAM>(device),
                     reinterpret_cast<LPARAM>(box()));
        EXPECT_EQ(GetTextColor(device), RGB(250, 200, 0));
        DeleteDC(device);
        RECT at{};
        GetWindowRect(box(), &at);
        MapWindowPoints(nullptr, frameWindow(), reinterpret_cast<POINT*>(&at), 2);
        EXPECT_EQ(at.left, 20);
        EXPECT_EQ(at.right, 180);
        EXPECT_NEAR((at.top + at.bottom) / 2., 55, 0.5);
        EXPECT_TRUE(SendMessageW(box(), WM_GETDLGCODE, VK_RETURN, 0) & DLGC_WANTALLKEYS)
            << "an enclosing dialog would take Return";
        type(L"Gr\u00fc\u00dfe \u4f60 \U0001F600");
        end(userinput::Key::Return);
        EXPECT_STREQ(field->getText(), u8"Gr\u00fc\u00dfe \u4f60 \U0001F600");
        EXPECT_EQ(values.size(), 1u);
        EXPECT_EQ(GetFocus(), host.handle()) << "the previous owner did not get the focus back";
        // The previous owner is gone: the host's window gets the focus.
        const HWND passing =
            CreateWindowExW(0, L"BUTTON", L"", WS_CHILD | WS_VISIBLE, 0, 250, 20, 20,
                            static_cast<HWND>(host.handle()), nullptr, nullptr, nullptr);
        SetFocus(passing);
        openBox();
        DestroyWindow(passing);
        end(userinput::Key::Escape);
        EXPECT_EQ(GetFocus(), host.handle());
        openBox();
        host.takeKeyboard();
        EXPECT_TRUE(pumpUntil([&] { return box() == nullptr; }));
        EXPECT_EQ(GetFocus(), host.handle()) << "the focus was taken back";
        // The handles of graphics objects are numbered, and free numbers are used again.
        const auto highestOfMany = [] {
            HBRUSH many[500];
            std::uintptr_t highest = 0;
            for (HBRUSH& brush : many) {
                brush = CreateSolidBrush(1);
                highest = std::max(highest, reinterpret_cast<std::uintptr_t>(brush) & 0xFFFF);
            }
            for (const HBRUSH brush : many)
                DeleteObject(brush);
            return highest;
        };
        const auto before = highestOfMany();
        for (int round = 0; round < 20; ++round) {
            openBox();
            end(userinput::Key::Escape);
        }
        EXPECT_LT(highestOfMany(), before + 5) << "the box leaves something behind";
    }
};

TEST_F(TextBox, OfTheToolkitLooksLikeItsFieldAndReturnsTheFocus)
{
    expectBox(add<CTextEdit>());
}

TEST_F(TextBox, OfTheNameLooksLikeItsFieldAndReturnsTheFocus)
{
    expectBox(add<CZKRTextEdit>());
}

TEST_F(TextBox, OfTheNameShowsItsTextWhereTheFieldDrawsIt)
{
    auto* const field = new CZKRTextEdit(CRect(20, 48.5, 180, 63.5), this, 1000, "HHHHHHHH");
    const auto font = owned(new CFontDesc("Arial", 11));
    field->setFont(font);
    field->setFontColor(kGreenCColor);
    field->setBackColor(kBlackCColor);
    frame->addView(field);
    field->invalid();
    const auto rowsWithText = [] {
        const Pixels shown = picture();
        std::vector<int> rows;
        for (int y = 45; y < 67; ++y)
            for (int x = 60; x < 140; ++x)
                if (shown.at(x, y).green > 150 && (rows.empty() || rows.back() != y))
                    rows.push_back(y);
        return rows;
    };
    pump(200);
    const std::vector<int> drawn = rowsWithText();
    ASSERT_FALSE(drawn.empty());
    openBox();
    SendMessageW(box(), EM_SETSEL, 0, 0);
    HideCaret(box());
    pump(200);
    const std::vector<int> edited = rowsWithText();
    ASSERT_FALSE(edited.empty());
    EXPECT_NEAR(edited.front(), drawn.front(), 1);
    EXPECT_NEAR(edited.back(), drawn.back(), 1);
}

TEST_F(TextBox, OfTheToolkitStopsAtItsLimitInCharacters)
{
    CTextEdit* const field = add<ShortTextEdit>("");
    openBox();
    // Surrogate pairs; then more characters than fit before them.
    type(L"\U0001F600\U0001F601\U0001F602");
    SendMessageW(box(), EM_SETSEL, 0, 0);
    type(L"abcd\U0001F603");
    end(userinput::Key::Return);
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
    end(userinput::Key::Return);
    EXPECT_EQ(field->getText(), std::string(99, 'a'));  // without half a surrogate pair
}

}  // namespace

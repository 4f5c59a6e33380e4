// Frames in a host's window, the parts specific to X11: keyboard, grabs, message windows.
#include "tests/support/TemporaryFolder.h"
#include "tests/vstgui/Traces.h"
#include "tests/vstgui/x11/User.h"
#include "vstgui/platform/iplatformfont.h"
#include "vstgui/platform/iplatformsurface.h"
#include "vstgui/platform/x11/x11errors.h"

#include <X11/keysym.h>
#include <clocale>
#include <filesystem>
#include <future>

Traces traces()
{
    const std::filesystem::directory_iterator files("/proc/self/fd");
    return {static_cast<int>(std::distance(begin(files), end(files)))};
}

namespace {

struct X11Window : OpenFrame {
    Desktop desktop;
};

TEST_F(X11Window, ReportsShiftTheMiddleButtonAndTheHorizontalWheel)
{
    record.onPress = [] { return kMouseDownEventHandledButDontNeedMovedOrUpEvents; };
    user(to(20, 20) + " click 2 keydown shift click 1 keyup shift click 6 click 7");
    // No double click, since the pointer moved away.
    user("sleep 0.5 click 1 mousemove_relative 9 9 sleep 0.1"
         " mousemove_relative -- -9 -9 click 1");
    for (const char* const event : {"down 20,20 M", "down 20,20 L shift"})
        EXPECT_TRUE(record.has(event)) << event;
    EXPECT_EQ(std::count(record.events.begin(), record.events.end(), "down 20,20 L"), 2);
    EXPECT_TRUE(record.has("wheel 20,20 x -1"));
    EXPECT_TRUE(record.has("wheel 20,20 x 1"));
}

TEST_F(X11Window, TypingIntoTheTextBoxIsUtf8)
{
    desktop.addKeys({XK_adiaeresis, XK_EuroSign});
    auto* edit = addEdit();
    user(to(100, 70) + " click 1");
    ASSERT_NE(edit->getPlatformTextEdit(), nullptr);
    const auto modifiers = [] {
        const char* const set = XSetLocaleModifiers(nullptr);
        return std::string(set ? set : "");
    };
    const std::string hosts = modifiers();
    user("type --delay 20 {}", "x \xC3\xA4\xE2\x82\xAC\xE2\x82\xAC");
    EXPECT_STREQ(edit->getPlatformTextEdit()->getText(), "x \xC3\xA4\xE2\x82\xAC\xE2\x82\xAC");
    EXPECT_EQ(modifiers(), hosts) << "those of the host";
    user("key BackSpace key Left key Left key Left key Right key Delete key Home key BackSpace key "
         "End key Delete");
    EXPECT_STREQ(edit->getPlatformTextEdit()->getText(), "x \xE2\x82\xAC");
    EXPECT_TRUE(values.empty());
    user("key Return");
    EXPECT_EQ(edit->getPlatformTextEdit(), nullptr);
    EXPECT_STREQ(edit->getText(), "x \xE2\x82\xAC");
    EXPECT_EQ(values.size(), 1u);

    user(to(100, 70) + " click 1 type z");
    user("click 3 key Escape");
    EXPECT_STREQ(edit->getText(), "x \xE2\x82\xAC");
    EXPECT_EQ(values.size(), 1u);

    user(to(100, 70) + " click 1 type abcd");
    user("key KP_Home key KP_Delete key End key shift+Left type d");
    user("key alt+e key ctrl+e");
    EXPECT_STREQ(edit->getPlatformTextEdit()->getText(), "bcd");
    user("key ctrl+a type f");
    user("key KP_Enter");
    EXPECT_STREQ(edit->getText(), "f");
}

TEST_F(X11Window, TheServerOfTheInputMethodMayEndWhileTextIsTyped)
{
    desktop.addKeys({XK_dead_acute});
    setenv("XMODIFIERS", "@im=uim", 1);
    ASSERT_TRUE(setlocale(LC_CTYPE, "C.UTF-8"));
    TemporaryFolder folder;
    const std::string pid = "'" + (folder / "pid") + "'";
    ASSERT_EQ(std::system(("uim-xim >/dev/null 2>&1 & echo $! >" + pid
                           + "; for i in $(seq 50); do xprop -root XIM_SERVERS | grep -q uim"
                             " && exit; sleep 0.1; done; exit 1")
                              .c_str()),
              0);
    auto* const edit = addEdit();
    user(to(100, 70) + " click 1 type ab");
    EXPECT_STREQ(edit->getPlatformTextEdit()->getText(), "ab");
    EXPECT_EQ(std::system(("kill $(cat " + pid + "); sleep 0.3").c_str()), 0);
    user("type cd");
    EXPECT_STREQ(edit->getPlatformTextEdit()->getText(), "abcd");
    // Xlib's built-in method takes its place.
    user("key Return");
    user(to(100, 70) + " click 1 key End key dead_acute key e");
    EXPECT_STREQ(edit->getPlatformTextEdit()->getText(), "abcd\u00e9");
    closeFrame();
    setlocale(LC_CTYPE, "C");
    unsetenv("XMODIFIERS");
}

TEST_F(X11Window, TheTextBoxCopiesCutsAndPastes)
{
    const std::string note = "\xE2\x99\xAA";
    const std::size_t inParts = std::size_t{2} << 20;  // bytes, which arrive in parts
    auto* const edit = addEdit(60, ("a" + note + "b").c_str());
    user(to(100, 70) + " click 1");
    const auto text = [&] { return std::string(edit->getPlatformTextEdit()->getText()); };
    const struct {
        std::string clipboard, keys, text;
    } rows[] = {
        {"x\n" + note, "key ctrl+a key ctrl+v", "x" + note},
        {"", "key ctrl+x key ctrl+v", "x" + note},  // nothing is selected
        {"y", "key Home key shift+Right key ctrl+v", "y" + note},
        {std::string(inParts, 'V'), "key ctrl+a key ctrl+v", std::string(255, 'V')},
        {std::string(inParts, 'W'), "key ctrl+a key ctrl+v", std::string(255, 'W')},
        {"z", "key ctrl+a key ctrl+v", "z"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.keys);
        setClipboard(row.clipboard);
        user(row.keys);
        EXPECT_TRUE(pumpUntil([&] { return text() == row.text; })) << text();
    }
    // What another program gets.
    const auto taken = [] {
        auto other = std::async(std::launch::async, clipboard);
        pumpUntil(
            [&] { return other.wait_for(std::chrono::seconds(0)) == std::future_status::ready; });
        return other.get();
    };
    // With Shift, or with Caps Lock, the letters are capitals.
    for (const std::string shift : {"", "shift+"}) {
        setClipboard("x" + note + "y");
        user("key ctrl+a key ctrl+" + shift + "v");
        user("key Left key shift+Left key ctrl+" + shift + "c");
        EXPECT_EQ(taken(), note);
        EXPECT_EQ(text(), "x" + note + "y");
        user("key ctrl+a key ctrl+" + shift + "x");
        EXPECT_EQ(taken(), "x" + note + "y");
        EXPECT_EQ(text(), "");
    }
    // The middle button takes what is selected elsewhere, and puts it where it is pressed.
    EXPECT_EQ(std::system("echo -n middle | xclip -selection primary >/dev/null 2>&1"), 0);
    user("type end");
    user(to(30, 70) + " click 2");
    EXPECT_TRUE(pumpUntil([&] { return text() == "middleend"; })) << text();
}

TEST_F(X11Window, TextInScriptsThatTheFontLacksComesFromOtherFonts)
{
    // A letter that no font has, "sound" in Chinese, and a Hebrew letter: all look different.
    const std::string texts[] = {"\xF4\x8F\xBF\xBD", "\xE5\xA3\xB0", "\xE9\x9F\xB3", "\xD7\x90"};
    std::vector<std::vector<uint8_t>> pictures;
    const auto font = owned(new CFontDesc("Arial", 14));
    CCoord width = font->getPlatformFont()->getStringWidth("a");
    for (const std::string& text : texts) {
        const auto surface = owned(IPlatformSurface::create(40, 20));
        surface->fillRect(CRect(0, 0, 40, 20), kWhiteCColor);
        surface->drawString(font->getPlatformFont(), text.c_str(), CPoint(5, 15), kBlackCColor,
                            true);
        pictures.push_back(surface->readPixels().rgba);
        for (std::size_t i = 0; i + 1 < pictures.size(); ++i)
            EXPECT_NE(pictures[i], pictures.back()) << text;
        width += font->getPlatformFont()->getStringWidth(text.c_str());
    }
    const std::string all = texts[0] + texts[1] + texts[2] + texts[3] + "a";
    EXPECT_NEAR(font->getPlatformFont()->getStringWidth(all.c_str()), width, 1e-6);
}

TEST_F(X11Window, TheMouseSetsTheCaretAndSelectsInTheTextBox)
{
    auto* edit = addEdit();
    // The colours in a row of pixels: between the text and the box's edge, or through the text.
    constexpr int kThrough = 70;
    const auto count = [](CColor colour, int y = 63) {
        const Pixels shown = picture();
        int found = 0;
        for (int x = 20; x < 180; ++x)
            found += shown.at(x, y) == colour;
        return found;
    };
    user(to(100, 70) + " click 1 sleep 0.5");
    EXPECT_GT(count(kBlackCColor), 20) << "the selection";
    EXPECT_LT(count(kBlackCColor, kThrough), count(kBlackCColor)) << "the selected text";
    // The text is centred: this is before it.
    user(to(60, 70) + " click 1 sleep 0.5 type a");
    EXPECT_STREQ(edit->getPlatformTextEdit()->getText(), "aname");
    EXPECT_EQ(count(kBlackCColor), 1) << "the caret";
    EXPECT_LT(count(kWhiteCColor, kThrough), count(kWhiteCColor)) << "the text";
    user(to(175, 70) + " keydown shift click 1 keyup shift sleep 0.5 type b");
    EXPECT_STREQ(edit->getPlatformTextEdit()->getText(), "ab");
    user(to(175, 70) + " mousedown 1" + to(0, 70) + " mouseup 1 type c");
    EXPECT_STREQ(edit->getPlatformTextEdit()->getText(), "c");
    user(to(100, 70) + " sleep 0.5 click --repeat 2 --delay 50 1 type d");
    EXPECT_STREQ(edit->getPlatformTextEdit()->getText(), "d");
    user("key BackSpace type W");
    user(to(103, 70) + " sleep 0.5 click 1 sleep 0.5 type x");
    EXPECT_STREQ(edit->getPlatformTextEdit()->getText(), "Wx") << "right half of the letter";
    record.events.clear();
    user(to(5, 5));
    EXPECT_TRUE(record.has("move 5,5")) << "the button is still pressed";
    const IPlatformFont* const font = edit->getFont()->getPlatformFont();
    EXPECT_GT(font->getStringWidth("d "), font->getStringWidth("d") + 1.0);
}

TEST_F(X11Window, TheTextBoxStopsAtItsLimitAndScrollsToTheCaret)
{
    struct LimitedEdit : CTextEdit {
        using CTextEdit::CTextEdit;
        int32_t platformGetMaxCharacters() const override { return 40; }
    };
    auto* const edit = new LimitedEdit(CRect(20, 60, 180, 80), this, 9, "");
    frame->addView(edit);
    user(to(100, 70) + " click 1 type {}", std::string(42, 'W'));
    EXPECT_EQ(edit->getPlatformTextEdit()->getText(), std::string(40, 'W'));
    user("key BackSpace" + to(25, 70) + " sleep 0.5 click 1 type x");
    EXPECT_GT(std::string(edit->getPlatformTextEdit()->getText()).find('x'), 15u);
}

TEST_F(X11Window, AnEmbedderMapsTheWindowAndMovesItsFocus)
{
    void* const window = frame->getPlatformFrame()->getPlatformRepresentation();
    const auto notify = [&](long message) {
        desktop.send(desktop.asWindow(window), "_XEMBED", CurrentTime, message);
    };
    desktop.unmap(window);
    notify(0);
    EXPECT_TRUE(pumpUntil([&] { return desktop.isMapped(window); }));
    for (const auto& [message, event] : {std::pair(4, "active"), {5, "inactive"}}) {
        record.events.clear();
        notify(message);
        const Log expected = {event};
        EXPECT_TRUE(pumpUntil([&] { return record.eventsButMoves() == expected; })) << event;
    }
    auto* const edit = addEdit();
    user(to(100, 70) + " click 1");
    host.takeKeyboard();
    EXPECT_TRUE(pumpUntil([&] { return !edit->getPlatformTextEdit(); }));
    notify(4);
    user("sleep 0.1");
    EXPECT_EQ(edit->getPlatformTextEdit(), nullptr) << "opened again by the embedder";
}

TEST_F(X11Window, TheFocusReturnsToItsPreviousOwnerOrElseToTheHost)
{
    addEdit();
    auto* next = addEdit(100, "next");
    HostWindow other({750, 200}, 100, 100);
    other.takeKeyboard();
    user(to(100, 70) + " click 1");
    EXPECT_FALSE(desktop.hasKeyboard(other));
    // The next field's box stays open between the two inputs: "y" must not replace "x".
    user(to(100, 110) + " click 1 type x");
    user("type y");
    user("key Return");
    EXPECT_STREQ(next->getText(), "xy");
    EXPECT_TRUE(desktop.hasKeyboard(other));
    // In another editor's box after the first one's.
    HostWindow second({750, 400}, 100, 100);
    auto* const neighbour = new RecordingFrame(record, {100, 100});
    EXPECT_TRUE(neighbour->open(second.handle()));
    neighbour->addView(new CTextEdit(CRect(0, 0, 90, 90), this, 9, "z"));
    user(to(100, 70) + " click 1 mousemove 790 440 click 1 sleep 0.1 key Return");
    EXPECT_TRUE(desktop.hasKeyboard(other));
    neighbour->close();
    user(to(100, 70) + " click 1");
    record.events.clear();
    desktop.focusDuringGrab(other);
    const Log expected = {"inactive"};
    EXPECT_TRUE(pumpUntil([&] { return record.eventsButMoves() == expected; }));
    EXPECT_TRUE(desktop.hasKeyboard(other)) << "the focus was taken back";
    user(to(100, 70) + " click 1");
    closeFrame();
    EXPECT_TRUE(desktop.hasKeyboard(other));

    open();
    auto* edit = addEdit();
    HostWindow last({750, 400}, 100, 100);
    for (HostWindow* const owner : {&other, &last}) {
        owner->takeKeyboard();
        user(to(100, 70) + " click 1");
        ASSERT_NE(edit->getPlatformTextEdit(), nullptr);
        owner == &last ? owner->destroy() : desktop.unmap(owner->handle());
        user("key Escape");
        EXPECT_TRUE(desktop.hasKeyboard(host));
    }
}

TEST_F(X11Window, AMenuGrabsClicksAndKeysAndReleasesThem)
{
    auto* const menu = addMenu();
    const std::string open = to(25, 40) + " click 1 sleep 0.3";
    // The list opens over the control; rows are 20 high below a border of 3.
    const struct {
        std::string commands;
        float value;
    } choices[] = {{open + to(60, 30 + 3 + 10) + " click 1", 0},
                   {open + " key Down key Right key KP_Enter", 4},
                   {open + " key Left key Up key Return", 0},
                   // Outside the entries nothing is highlighted.
                   {open + to(290, 190) + " key Up key Return", 5},
                   {open + to(290, 190) + " key Right key Return", 0},
                   {open + to(60, 30 + 3 + 30) + " click 4 key Escape", 0},
                   {open + " key Escape", 0},
                   {open + to(290, 290) + " mousemove_relative 200 50 click 1", 0}};
    for (const auto& choice : choices) {
        user(choice.commands);
        EXPECT_EQ(menu->getValue(), choice.value) << choice.commands;
        EXPECT_EQ(gestures, 0);
        EXPECT_TRUE(desktop.inputIsFree());
        record.events.clear();
        user(to(5, 5));
        EXPECT_TRUE(record.has("move 5,5")) << "a button is still pressed";
    }
    EXPECT_EQ(menu->getLastResult(), -1);
    EXPECT_EQ(values.size(), 5u);

    bool held = false, ended = false;
    Pixels shown;
    menu->setCurrent(1);
    Script script({[&] {
                       held = !desktop.inputIsFree();
                       shown = picture();
                   },
                   [&] { closeFrame(); }, [] {}, [&] { ended = desktop.inputIsFree(); }},
                  menuIsOpen());
    user(open);
    EXPECT_TRUE(pumpUntil([&] { return script.finished(); }));
    EXPECT_TRUE(held);
    EXPECT_TRUE(ended);
    EXPECT_EQ(shown.at(20 + 3 + 60, 30 + 3 + 50), kGreyCColor) << "the separator";
    EXPECT_EQ(shown.at(20 + 3 + 77, 30 + 3 + 39), kWhiteCColor) << "the highlight";
    EXPECT_EQ(shown.at(20 + 3 + 10, 30 + 3 + 30), kBlackCColor) << "the check mark";
}

TEST_F(X11Window, AMenuStaysOnTheScreen)
{
    auto* const menu = addMenu();
    menu->removeAllEntry();
    menu->setNbItemsPerColumn(30);
    for (int i = 0; i < 150; ++i)
        menu->addEntry("one of a hundred and fifty, which are too wide together");
    // The last entry lies in the screen's corner.
    user(to(25, 40) + " click 1 sleep 0.3 mousemove 1010 755 click 1");
    EXPECT_EQ(menu->getValue(), 149.f);
}

TEST_F(X11Window, AMessageStaysInFrontOfTheHostUntilTheUserOrTheFrameClosesIt)
{
    const auto show = [this](const char* caption) {
        frame->getPlatformFrame()->showMessage("One line,\nand another one.", caption);
        pump();
    };
    // Points on the text and near the edge of the button; the frame has 300 by 200 pixels.
    const std::string text = to(150, 70), button = to(188, 129);
    for (const std::string& closing :
         {text + " key Return", text + " key Escape", text + " key space", button + " click 1"}) {
        show("Load bank");
        user(text + " mousedown 1 key a" + button + " mouseup 1 mousedown 1" + text + " mouseup 1");
        EXPECT_EQ(desktop.titlesInFront(host), Log{"Load bank"});
        user(closing);
        EXPECT_EQ(desktop.titlesInFront(host), Log{}) << closing;
    }
    for (const auto& [x, y] : {std::pair(-290, -190), {1014, 758}, {kHost.x, kHost.y}}) {
        desktop.move(host, x, y);
        show("Beside the edge");
        EXPECT_EQ(desktop.titlesInFront(host), Log{"Beside the edge"}) << x;
        user("key Return");
    }
    show("First");
    show("Second");
    EXPECT_EQ(desktop.titlesInFront(host, true), Log{"Second"});
    pump();
    EXPECT_EQ(desktop.titlesInFront(host), Log{});
    show("Third");
    closeFrame();
    EXPECT_EQ(desktop.titlesInFront(host), Log{});
}

TEST_F(X11Window, TheHostsErrorHandlerGetsTheHostsErrorsAlsoDuringOurCalls)
{
    static int heard;
    heard = 0;
    const XErrorHandler previous =
        XSetErrorHandler([](::Display*, XErrorEvent*) { return ++heard; });
    closeFrame();
    open();
    desktop.causeError();
    EXPECT_EQ(heard, 1);
    ::Display* const own = XOpenDisplay(nullptr);
    {
        const X11::X11ErrorGuard outer(own), inner(own);
        desktop.causeError();
        EXPECT_EQ(heard, 2);
        XDestroyWindow(own, 0);
        XSync(own, False);
        EXPECT_EQ(heard, 2) << "an error of our own";
    }
    XCloseDisplay(own);
    XSetErrorHandler(previous);
}

TEST_F(X11Window, AHostThatHidesItsWindowEndsAGesture)
{
    frame->addView(new CVerticalSwitch(CRect(100, 100, 140, 140), this, 1, nullptr));
    movePointer(120, 105);
    press();
    EXPECT_TRUE(pumpUntil([&] { return gestures == 1; }));
    desktop.unmap(host.handle());
    EXPECT_TRUE(pumpUntil([&] { return gestures == 0; }));
    release();
    // A window above the host's: the pointer tells so when it is back.
    HostWindow above(kHost, 400, 300);
    desktop.show(host.handle(), above.handle());
    press();
    EXPECT_TRUE(pumpUntil([&] { return gestures == 1; }));
    desktop.unmap(above.handle());
    release();
    desktop.show(above.handle(), nullptr);
    userinput::movePointer({110, 110});
    EXPECT_TRUE(pumpUntil([&] { return gestures == 0; }));
    desktop.show(host.handle(), nullptr);
}

}  // namespace

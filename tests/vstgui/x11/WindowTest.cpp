// Frames in a host's window, under a user's hands.
#include "HostWindow.h"

#include "vstgui/vstgui.h"

#include <X11/keysym.h>
#include <filesystem>

using namespace VSTGUI;

namespace {

using Log = std::vector<std::string>;

class Recorder : public CView {
public:
    Recorder(const CRect& rect, Log& l) : CView(rect), log(l) { }

    CColor color{kRedCColor};
    CMouseEventResult pressResult{kMouseEventHandled};
    std::function<void()> onPress;

    void draw(CDrawContext* context) override
    {
        context->setFillColor(color);
        context->drawRect(getViewSize(), kDrawFilled);
        setDirty(false);
    }
    CMouseEventResult onMouseDown(CPoint& where, const CButtonState& buttons) override
    {
        note("down", where, buttons);
        if (onPress)
            onPress();
        return pressResult;
    }
    CMouseEventResult onMouseMoved(CPoint& where, const CButtonState& buttons) override
    {
        if (buttons.getButtonState() != 0)
            note("drag", where, buttons);
        return kMouseEventHandled;
    }
    CMouseEventResult onMouseUp(CPoint& where, const CButtonState& buttons) override
    {
        note("up", where, buttons);
        return kMouseEventHandled;
    }
    CMouseEventResult onMouseEntered(CPoint&, const CButtonState&) override
    {
        log.push_back("enter");
        return kMouseEventHandled;
    }
    CMouseEventResult onMouseExited(CPoint&, const CButtonState&) override
    {
        log.push_back("exit");
        return kMouseEventHandled;
    }
    using CView::onWheel;
    bool onWheel(const CPoint&, const float& distance, const CButtonState& buttons) override
    {
        log.push_back("wheel " + std::to_string(static_cast<int>(distance)) + " "
                      + std::to_string(buttons()));
        return true;
    }

private:
    void note(const char* what, const CPoint& where, const CButtonState& buttons)
    {
        log.push_back(std::string(what) + " " + std::to_string(static_cast<int>(where.x)) + ","
                      + std::to_string(static_cast<int>(where.y)) + " "
                      + std::to_string(buttons()));
    }

    Log& log;
};

struct Listener : CControlListener {
    void valueChanged(CControl* control) override { values.push_back(control->getValue()); }
    void controlBeginEdit(CControl*) override { ++gestures; }
    void controlEndEdit(CControl*) override { --gestures; }
    std::vector<float> values;
    int gestures{0};
};

class OpenFrame : public ::testing::Test {
protected:
    OpenFrame()
    {
        CView::kDirtyCallAlwaysOnMainThread = true;
        EXPECT_TRUE(frame->open(host.handle()));
        pumpFor(60);
    }
    ~OpenFrame() override
    {
        closeFrame();
        pumpFor(20);
        CView::kDirtyCallAlwaysOnMainThread = false;
    }

    void closeFrame()
    {
        if (frame)
            std::exchange(frame, nullptr)->close();
    }

    // Runs in the middle of whatever waits then.
    SharedPointer<CVSTGUITimer> after(uint32_t milliseconds, std::function<void()> action)
    {
        return owned(new CVSTGUITimer(
            [action = std::move(action)](CVSTGUITimer* timer) {
                timer->stop();
                action();
            },
            milliseconds));
    }

    COptionMenu* addMenu()
    {
        auto* menu = new COptionMenu(CRect(20, 20, 40, 40), &listener, 12, nullptr, nullptr,
                                     kPopupStyle | kCheckStyle | kNoTextStyle | kNoDrawStyle);
        for (int i = 1; i <= 24; ++i)
            menu->addEntry(new CMenuItem(("Preset & " + std::to_string(i)).c_str()));
        menu->setNbItemsPerColumn(12);
        menu->setCurrent(2);
        frame->addView(menu);
        return menu;
    }

    CTextEdit* addEdit()
    {
        auto* edit = new CTextEdit(CRect(20, 60, 180, 80), &listener, 9, "name");
        edit->setBackColor(kWhiteCColor);
        edit->setFontColor(kBlackCColor);
        frame->addView(edit);
        return edit;
    }

    Log log;
    Listener listener;
    HostWindow host{100, 80, 400, 300};
    CFrame* frame{new CFrame(CRect(0, 0, 300, 200), nullptr)};
};

TEST_F(OpenFrame, ItIsTheHostsOnlyChildAndShowsWhatIsDrawnAtOnceAndAfterChanges)
{
    auto* view = new Recorder(CRect(10, 10, 50, 50), log);
    frame->addView(view);
    pumpFor(60);
    EXPECT_EQ(host.countChildren(), 1u);
    Pixels picture = host.screenshot(400, 300);
    EXPECT_EQ(picture.at(10, 10), kRedCColor);
    EXPECT_EQ(picture.at(50, 50), kBlackCColor);
    EXPECT_EQ(picture.at(299, 199), kBlackCColor);
    EXPECT_EQ(picture.at(300, 200), kWhiteCColor);
    view->color = kBlueCColor;
    view->setDirty();
    pumpFor(60);
    EXPECT_EQ(host.screenshot(20, 20).at(12, 12), kBlueCColor);
    EXPECT_TRUE(frame->setSize(350, 250));
    view->setViewSize(CRect(300, 200, 350, 250));
    pumpFor(60);
    picture = host.screenshot(400, 300);
    EXPECT_EQ(picture.at(349, 249), kBlueCColor);
    EXPECT_EQ(picture.at(20, 20), kBlackCColor);
    CPoint position;
    frame->getPosition(position.x, position.y);
    EXPECT_EQ(position, CPoint(100, 80));
}

TEST_F(OpenFrame, ADragGoesOnOutsideTheWindowUntilItsRelease)
{
    frame->addView(new Recorder(CRect(10, 10, 50, 50), log));
    user(host.move(20, 20) + " mousedown 1" + host.move(-30, 250) + " mouseup 1");
    EXPECT_EQ(log, (Log{"enter", "down 20,20 2", "drag -30,250 2", "up -30,250 2", "exit"}));
    CPoint where;
    EXPECT_TRUE(frame->getCurrentMouseLocation(where));
    EXPECT_EQ(where, CPoint(-30, 250));
}

TEST_F(OpenFrame, ModifiersButtonsAndDoubleClicksArriveInTheToolkitsWords)
{
    auto* view = new Recorder(CRect(10, 10, 50, 50), log);
    view->pressResult = kMouseDownEventHandledButDontNeedMovedOrUpEvents;
    frame->addView(view);
    user(host.move(20, 20));
    log.clear();
    user("click 1 click 1 click 1 sleep 0.5 click 2 click 3");
    EXPECT_EQ(
        log,
        (Log{"down 20,20 2", "down 20,20 1026", "down 20,20 2", "down 20,20 4", "down 20,20 8"}));
    log.clear();
    user("keydown shift click 1 keyup shift keydown ctrl click 4 keyup ctrl click 5 click 6 click "
         "7");
    EXPECT_EQ(log, (Log{"down 20,20 18", "wheel 1 32", "wheel -1 0", "wheel -1 0", "wheel 1 0"}));
}

TEST_F(OpenFrame, TypingIntoTheTextBoxIsUtf8)
{
    host.addKeys({XK_adiaeresis, XK_EuroSign});
    auto* edit = addEdit();
    user(host.move(100, 70) + " click 1");
    ASSERT_NE(edit->getPlatformTextEdit(), nullptr);
    user("type --delay 20 {}", "x\xC3\xA4\xE2\x82\xAC y");
    EXPECT_STREQ(edit->getPlatformTextEdit()->getText(), "x\xC3\xA4\xE2\x82\xAC y");
    user("key BackSpace key Home key Right key Delete key End");
    EXPECT_STREQ(edit->getPlatformTextEdit()->getText(), "x\xE2\x82\xAC ");
    EXPECT_TRUE(listener.values.empty());
    user("key Return");
    EXPECT_EQ(edit->getPlatformTextEdit(), nullptr);
    EXPECT_STREQ(edit->getText(), "x\xE2\x82\xAC ");
    EXPECT_EQ(listener.values.size(), 1u);

    user(host.move(100, 70) + " click 1 type z");
    user("key Escape");
    EXPECT_STREQ(edit->getText(), "x\xE2\x82\xAC ");
    user(host.move(100, 70) + " click 1 type {}", "again");
    user(host.move(250, 150) + " click 1");
    EXPECT_STREQ(edit->getText(), "again");
    EXPECT_EQ(listener.values.size(), 2u);
}

TEST_F(OpenFrame, TheMouseSetsTheCaretAndSelectsInTheTextBox)
{
    auto* edit = addEdit();
    edit->setHoriAlign(kLeftText);
    user(host.move(100, 70) + " click 1 sleep 0.5");
    user(host.move(21, 70) + " click 1 sleep 0.5 type a");
    EXPECT_STREQ(edit->getPlatformTextEdit()->getText(), "aname");
    user(host.move(175, 70) + " mousedown 1" + host.move(0, 70) + " mouseup 1 type b");
    EXPECT_STREQ(edit->getPlatformTextEdit()->getText(), "b");
}

TEST_F(OpenFrame, LosingTheKeyboardCommits)
{
    auto* edit = addEdit();
    HostWindow other(600, 80, 100, 100);
    host.takeKeyboard();
    user(host.move(100, 70) + " click 1 type done");
    other.takeKeyboard();
    pumpFor(60);
    EXPECT_EQ(edit->getPlatformTextEdit(), nullptr);
    EXPECT_STREQ(edit->getText(), "done");
    EXPECT_TRUE(other.hasKeyboard()) << "it was taken back";
}

TEST_F(OpenFrame, TheKeyboardGoesBackToWhoeverHadItOrElseToTheHost)
{
    auto* edit = addEdit();
    auto* next = new CTextEdit(CRect(20, 100, 180, 120), &listener, 10, "next");
    frame->addView(next);
    auto other = std::make_unique<HostWindow>(600, 80, 100, 100);
    other->takeKeyboard();
    user(host.move(100, 70) + " click 1");
    EXPECT_FALSE(other->hasKeyboard());
    // On to the next field, whose box does not open anew with all text selected meanwhile.
    user(host.move(100, 110) + " click 1 type x");
    user("type y");
    user("key Return");
    EXPECT_STREQ(next->getText(), "xy");
    EXPECT_TRUE(other->hasKeyboard());
    user(host.move(100, 70) + " click 1");
    closeFrame();
    EXPECT_TRUE(other->hasKeyboard());

    frame = new CFrame(CRect(0, 0, 300, 200), nullptr);
    frame->open(host.handle());
    edit = addEdit();
    user(host.move(100, 70) + " click 1");
    ASSERT_NE(edit->getPlatformTextEdit(), nullptr);
    other.reset();
    user("key Escape");
    EXPECT_TRUE(host.hasKeyboard());
}

TEST_F(OpenFrame, AMenuIsChosenFromByClickDragAndKeysAndCancelledOtherwise)
{
    auto* menu = addMenu();
    // The list opens over the control; rows are 20 high below a border of 3.
    user(host.move(25, 25) + " mousedown 1 sleep 0.2 mouseup 1 sleep 0.2"
         + host.move(60, 20 + 3 + 5 * 20 + 10) + " click 1");
    EXPECT_EQ(menu->getValue(), 5.f);
    user(host.move(25, 25) + " mousedown 1 sleep 0.1" + host.move(60, 20 + 3 + 10) + " mouseup 1");
    EXPECT_EQ(menu->getValue(), 0.f);
    user(host.move(25, 25) + " click 1 sleep 0.1 key Down key Right key Return");
    EXPECT_EQ(menu->getValue(), 13.f);
    EXPECT_EQ(listener.values.size(), 3u);
    user(host.move(25, 25) + " click 1 sleep 0.1 key Escape");
    user(host.move(25, 25) + " click 1 sleep 0.1" + host.move(290, 290)
         + " mousemove_relative 200 50 click 1");
    EXPECT_EQ(menu->getLastResult(), -1);
    EXPECT_EQ(listener.values.size(), 3u);
    EXPECT_EQ(listener.gestures, 0);
    EXPECT_TRUE(host.inputIsFree());
}

TEST_F(OpenFrame, TimersAndPaintingGoOnWhileAMenuIsOpen)
{
    addMenu();
    auto* view = new Recorder(CRect(200, 150, 250, 190), log);
    frame->addView(view);
    CColor shown;
    const auto change = after(100, [&] {
        view->color = kGreenCColor;
        view->setDirty();
    });
    const auto look = after(250, [&] { shown = host.screenshot(300, 200).at(240, 180); });
    user(host.move(25, 25) + " click 1 sleep 0.4 key Escape");
    EXPECT_EQ(shown, kGreenCColor);
}

TEST_F(OpenFrame, AMenuEndsWithItsFrame)
{
    addMenu();
    bool ended = false;
    const auto closing = after(150, [&] { closeFrame(); });
    const auto look = after(350, [&] { ended = host.inputIsFree(); });
    user(host.move(25, 25) + " click 1 sleep 0.6 key Escape");
    EXPECT_TRUE(ended);
    EXPECT_EQ(frame, nullptr);
    EXPECT_EQ(listener.gestures, 0);
    EXPECT_EQ(host.countChildren(), 0u);
}

TEST_F(OpenFrame, AMessageStaysInFrontOfTheHostUntilTheUserClosesItOrTheFrameGoes)
{
    using Titles = std::vector<std::string>;
    const auto show = [this](const char* caption) {
        frame->getPlatformFrame()->showMessage("One line,\nand another one.", caption);
        pumpFor(60);
    };
    // Over the text, the button and the text once more; the frame has 300 by 200 pixels.
    const std::string text = host.move(150, 70), button = host.move(150, 129);
    for (const std::string& closing :
         {text + " key Return", text + " key Escape", text + " key space", button + " click 1"}) {
        show("Load bank");
        user(text + " click 1 key a" + button + " mousedown 1" + text + " mouseup 1");
        EXPECT_EQ(host.titlesInFront(), Titles{"Load bank"});
        user(closing);
        EXPECT_EQ(host.titlesInFront(), Titles{}) << closing;
    }
    show("First");
    show("Second");
    EXPECT_EQ(host.titlesInFront(true), Titles{"Second"});
    pumpFor(30);
    EXPECT_EQ(host.titlesInFront(), Titles{});
    show("Third");
    closeFrame();
    EXPECT_EQ(host.titlesInFront(), Titles{});
}

TEST_F(OpenFrame, TheFrameMayCloseInItsOwnPress)
{
    auto* view = new Recorder(CRect(10, 10, 50, 50), log);
    frame->addView(view);
    view->onPress = [&] { closeFrame(); };
    user(host.move(20, 20) + " click 1");
    EXPECT_EQ(frame, nullptr);
    EXPECT_EQ(host.countChildren(), 0u);
}

TEST_F(OpenFrame, AHostMayTakeItsWindowAwayFirst)
{
    auto* knob = new CKnob(CRect(100, 100, 140, 140), &listener, 1, nullptr, nullptr);
    frame->addView(knob);
    user(host.move(120, 105) + " mousedown 1");
    host.unmap();
    pumpFor(30);
    EXPECT_EQ(listener.gestures, 0);
    user("mouseup 1");
    host.destroy();
    // Calls before and after the news has come.
    CPoint where;
    frame->getCurrentMouseLocation(where);
    frame->invalid();
    frame->setSize(200, 150);
    pumpFor(60);
    frame->invalid();
    pumpFor(60);
    closeFrame();
    auto* late = new CFrame(CRect(0, 0, 50, 50), nullptr);
    EXPECT_FALSE(late->open(host.handle()));
    late->close();
}

TEST_F(OpenFrame, AHundredOpensAndClosesLeaveNoWindowAndNoFileBehind)
{
    closeFrame();
    const auto openFiles = [] {
        const std::filesystem::directory_iterator files("/proc/self/fd");
        return std::distance(begin(files), end(files));
    };
    const auto before = openFiles();
    for (int i = 0; i < 100; ++i) {
        frame = new CFrame(CRect(0, 0, 300, 200), nullptr);
        ASSERT_TRUE(frame->open(host.handle()));
        frame->addView(new Recorder(CRect(10, 10, 50, 50), log));
        auto* edit = addEdit();
        if (i % 2 == 0)
            edit->takeFocus();
        if (i % 3 == 0)
            pumpFor(20);
        closeFrame();
    }
    EXPECT_EQ(host.countChildren(), 0u);
    EXPECT_EQ(openFiles(), before);
}

}  // namespace

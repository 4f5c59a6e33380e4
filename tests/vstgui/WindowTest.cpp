// Frames in a host's window under real user input.
#include "tests/vstgui/OpenFrame.h"
#include "tests/vstgui/Traces.h"

namespace {

using Window = OpenFrame;

CMouseEventResult takePress()
{
    return kMouseEventHandled;
}

std::function<void(CDrawContext&, const CRect&)> filling(CColor color)
{
    return [color](CDrawContext& context, const CRect& rect) {
        context.setFillColor(color);
        context.drawRect(rect, kDrawFilled);
    };
}

TEST_F(Window, ShowsWhatIsDrawnAtOnceAndAfterChangesOfColourAndSize)
{
    EXPECT_EQ(host.childWidth(), 300);
    EXPECT_EQ(picture().at(299, 199), kBlackCColor);
    EXPECT_EQ(picture().at(300, 200), kWhiteCColor);
    record.onDraw = filling(kBlueCColor);
    record.drawn.clear();
    frame->invalidRect(CRect(10.1, 10.9, 19.1, 19.1));
    EXPECT_TRUE(pumpUntil([] { return picture().at(10, 10) == kBlueCColor; }));
    EXPECT_EQ(picture().at(9, 10), kBlackCColor);
    EXPECT_EQ(picture().at(20, 19), kBlackCColor);
    EXPECT_EQ(record.drawn, std::vector<CRect>{CRect(10, 10, 20, 20)});
    for (int i = 0; i < 20; ++i)
        frame->invalidRect(CRect(15 * i, 100, 15 * i + 5, 105));
    pump();
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(picture().at(15 * i + 4, 104), kBlueCColor) << i;

    EXPECT_TRUE(frame->setSize(350, 250));
    EXPECT_TRUE(pumpUntil([] { return picture().at(349, 249) == kBlueCColor; }));
    EXPECT_EQ(picture().at(0, 0), kBlueCColor);
    CRect size;
    CPoint position;
    EXPECT_TRUE(frame->getPlatformFrame()->getSize(size));
    EXPECT_EQ(size, CRect(0, 0, 350, 250));
    frame->getPosition(position.x, position.y);
    EXPECT_EQ(position, CPoint(kHost.x, kHost.y));
}

TEST_F(Window, ADragGoesOnOutsideUntilItsRelease)
{
    record.onPress = takePress;
    movePointer(20, 30);
    press();
    EXPECT_TRUE(pumpUntil([&] { return record.has("down 20,30 L"); }));
    movePointer(-40, -50);
    EXPECT_TRUE(pumpUntil([&] { return record.has("move -40,-50 L"); }));
    CButtonState buttons(kShift);
    EXPECT_TRUE(frame->getPlatformFrame()->getCurrentMouseButtons(buttons));
    EXPECT_EQ(buttons(), kShift | kLButton);
    release();
    EXPECT_TRUE(pumpUntil([&] { return record.has("exit"); }));
    pump();
    EXPECT_EQ(record.eventsButMoves(), (Log{"down 20,30 L", "up -40,-50 L", "exit"}));
    CPoint where;
    EXPECT_TRUE(frame->getCurrentMouseLocation(where));
    EXPECT_EQ(where, CPoint(-40, -50));
}

TEST_F(Window, TheSecondOfThreePressesIsADoubleClickAndControlAndWheelArrive)
{
    record.onPress = [] { return kMouseDownEventHandledButDontNeedMovedOrUpEvents; };
    for (int i = 0; i < 3; ++i)
        click(60, 70);
    userinput::button(userinput::Button::Right, true);
    userinput::button(userinput::Button::Right, false);
    userinput::key(userinput::Key::Control, true);
    userinput::wheel(true);
    EXPECT_TRUE(pumpUntil([&] { return record.has("wheel 60,70 control y 1"); }));
    userinput::key(userinput::Key::Control, false);
    userinput::wheel(false);
    EXPECT_TRUE(pumpUntil([&] { return record.has("wheel 60,70 y -1"); }));
    for (const char* const event : {"down 60,70 L double", "down 60,70 R"})
        EXPECT_TRUE(record.has(event)) << event;
    EXPECT_EQ(std::count(record.events.begin(), record.events.end(), "down 60,70 L"), 2);
}

TEST_F(Window, MayCloseInsideAPress)
{
    record.onPress = [&] {
        closeFrame();
        return kMouseEventHandled;
    };
    click(20, 30);
    EXPECT_TRUE(pumpUntil([&] { return frame == nullptr; }));
    pump();
    EXPECT_EQ(host.childWidth(), 0);
    EXPECT_EQ(record.eventsButMoves(), Log{"down 20,30 L"});
}

TEST_F(Window, AHostMayDestroyItDuringADrag)
{
    record.onPress = takePress;
    movePointer(20, 30);
    press();
    ASSERT_TRUE(pumpUntil([&] { return record.has("down 20,30 L"); }));
    void* const handle = host.handle();
    host.destroy();
    // Before and after the frame has processed the destruction.
    for (int i = 0; i < 2; ++i) {
        IPlatformFrame& platform = *frame->getPlatformFrame();
        CPoint where;
        const bool answers = platform.invalidRect(CRect(0, 0, 10, 10))
            || platform.getCurrentMousePosition(where) || platform.getGlobalPosition(where)
            || platform.setSize(CRect(0, 0, 200, 150));
        EXPECT_FALSE(answers && i == 1);
        pump();
    }
    release();
    EXPECT_TRUE(pumpUntil([&] { return record.has("cancel"); }));
    EXPECT_EQ(frame->getPlatformFrame()->createPlatformOptionMenu(), nullptr);
    EXPECT_EQ(frame->getPlatformFrame()->createPlatformTextEdit(nullptr), nullptr);
    auto* const late = new CFrame(CRect(0, 0, 50, 50), nullptr);
    EXPECT_FALSE(late->open(handle));
    late->close();
}

TEST_F(Window, TheReleaseOfThePressThatOpensAMenuChoosesNothing)
{
    addMenu();
    Script script(
        {[] { release(); }, [&] { EXPECT_EQ(gestures, 1); }, [] { tap(userinput::Key::Escape); }},
        menuIsOpen());
    movePointer(40, 38);  // where the first entry will be
    press();
    EXPECT_TRUE(pumpUntil([&] { return script.finished() && gestures == 0; }));
    EXPECT_TRUE(values.empty());
}

TEST_F(Window, AMenuEntryCanBeChosenByDraggingFromTheOpeningPress)
{
    addMenu();
    Script script({[] { movePointer(40, 65); }, [] { movePointer(42, 60); }, [] { release(); }},
                  menuIsOpen());
    movePointer(40, 38);
    press();
    EXPECT_TRUE(pumpUntil([&] { return script.finished() && gestures == 0; }));
    EXPECT_EQ(values, std::vector<float>{1.f});
}

TEST_F(Window, AMenuHasItsControlsColoursAndExchangesThemUnderThePointer)
{
    constexpr CColor kText(250, 200, 0), kBack(10, 60, 20);
    COptionMenu* const menu = addMenu();
    menu->setFontColor(kText);
    menu->setBackColor(kBack);
    // Counts in the rectangle of an entry's title, which starts near the list's left edge.
    const auto count = [](int row, CColor colour) {
        const Pixels shown = picture();
        int found = 0;
        for (int y = 30 + 5 + 20 * row; y < 30 + 20 + 20 * row; ++y)
            for (int x = 20 + 24; x < 20 + 80; ++x)
                found += shown.at(x, y) == colour;
        return found;
    };
    int backOfFirst = 0, backOfSecond = 0;
    bool checked = false;
    Script script({[] { movePointer(70, 78); }, [] {}, [] { movePointer(70, 70); }, [] {},
                   [&] {
                       backOfFirst = count(0, kBack);
                       backOfSecond = count(1, kText);
                       checked = picture().at(20 + 3 + 10, 30 + 3 + 30) == kBack;
                   },
                   [] { tap(userinput::Key::Escape); }},
                  menuIsOpen());
    click(60, 40);
    EXPECT_TRUE(pumpUntil([&] { return script.finished() && gestures == 0; }));
    constexpr int kPixels = 56 * 15;
    for (const int back : {backOfFirst, backOfSecond}) {
        EXPECT_GT(back, kPixels / 2);
        EXPECT_LT(back, kPixels * 19 / 20) << "no title";
    }
    EXPECT_TRUE(checked);
}

TEST_F(Window, TimersAndPaintingGoOnWhileAMenuIsOpenAndTheFrameMayClose)
{
    addMenu();
    bool shown = false;
    std::vector<Script::Step> steps{[&] {
        record.onDraw = filling(kGreenCColor);
        frame->invalidRect(CRect(200, 150, 250, 190));
    }};
    steps.insert(steps.end(), 15, [&] { shown |= picture().at(240, 180) == kGreenCColor; });
    steps.emplace_back([&] { closeFrame(); });
    Script script(steps, menuIsOpen());
    click(60, 40);
    EXPECT_TRUE(pumpUntil([&] { return script.finished() && gestures == 0; }));
    EXPECT_TRUE(shown);
    EXPECT_EQ(host.childWidth(), 0);
    EXPECT_TRUE(values.empty());
}

TEST_F(Window, LosingTheKeyboardCommitsTheTextBox)
{
    auto* const edit = addEdit(60, "Pr\xE4sent");
    const auto opens = [&] {
        host.takeKeyboard();
        click(100, 70);
        return pumpUntil([&] { return edit->getPlatformTextEdit(); });
    };
    ASSERT_TRUE(opens());
    host.takeKeyboard();
    EXPECT_TRUE(pumpUntil([&] { return !edit->getPlatformTextEdit(); }));
    EXPECT_STREQ(edit->getText(), "Pr\xE4sent") << "text that is not UTF-8, left as it was";
    ASSERT_TRUE(opens());
    userinput::type("done");
    EXPECT_TRUE(
        pumpUntil([&] { return std::string(edit->getPlatformTextEdit()->getText()) == "done"; }));
    EXPECT_TRUE(values.empty());
    host.takeKeyboard();
    EXPECT_TRUE(pumpUntil([&] { return !edit->getPlatformTextEdit(); }));
    EXPECT_STREQ(edit->getText(), "done");
    EXPECT_EQ(values.size(), 1u);
}

TEST_F(Window, AHundredOpensAndClosesLeaveNothingBehind)
{
    const auto openAndClose = [&](bool typing) {
        open();
        CTextEdit* const edit = addEdit();
        frame->invalid();
        if (typing) {
            edit->takeFocus();
            pump(5);
        }
        closeFrame();
    };
    closeFrame();
    openAndClose(true);
    pump(20);
    const Traces before = traces();
    for (int i = 0; i < 100; ++i)
        openAndClose(i % 3 == 0);
    pump(20);
    EXPECT_EQ(traces(), before);
    EXPECT_EQ(host.childWidth(), 0);
}

TEST(Timer, TicksUntilStoppedAlsoFromInsideATick)
{
    int ticks = 0;
    const auto timer = owned(new CVSTGUITimer(
        [&](CVSTGUITimer* self) {
            if (++ticks == 3)
                self->stop();
        },
        1000000));
    EXPECT_TRUE(timer->setFireTime(15));
    EXPECT_TRUE(pumpUntil([&] { return ticks == 3; }));
    pump(100);
    EXPECT_EQ(ticks, 3);
    EXPECT_FALSE(timer->stop());
}

}  // namespace

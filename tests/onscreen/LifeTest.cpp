// The editor's window: repaints, closing during user input, size and processor time.
#include "tests/onscreen/EditorOnScreen.h"
#include "tests/support/Times.h"

#include <ctime>

namespace {

// Processor time of this process.
double processorSeconds()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

TEST_F(EditorOnScreen, RepaintsNothingUnlessSomethingChangesAndAKnobAlone)
{
    const VSTGUI::CRect knob(44, 247, 165, 348);
    const Place middle = host->at(kKnobX, kKnobY);
    const struct {
        const char* what;
        std::function<void()> action;
        bool repaints;
    } rows[] = {
        {"rest", [] { Host::idleFor(200); }, false},
        {"drag", [&] { Host::user([&](User& user) { user.drag(middle, 0, -40); }); }, true},
        {"automation", [&] { host->automate(kLGainL, 0.9); }, true},
    };
    Host::user([&](User& user) { user.moveTo(middle); });
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Host::idleFor(250);
        host->window->paintChildOver();
        host->heard();
        row.action();
        Host::idleFor(200);
        const VSTGUI::Pixels picture = host->picture();
        int inside = 0, outside = 0;
        for (int y = 0; y < picture.height; ++y)
            for (int x = 0; x < picture.width; ++x)
                if (picture.at(x, y) != kScribble)
                    ++(knob.pointInside(VSTGUI::CPoint(x, y)) ? inside : outside);
        EXPECT_EQ(inside > 1000, row.repaints);
        EXPECT_EQ(outside, 0);
    }
    EXPECT_TRUE(host->heard().empty()) << "automation was reported back to the host";
}

TEST_F(EditorOnScreen, ClosesDuringADragATextInputAndAMenuAndOpensAgain)
{
    const Place knob = host->at(kKnobX, kKnobY);
    for (const bool windowFirst : {false, true}) {
        SCOPED_TRACE(windowFirst);
        // During a drag.
        host->heard();
        Host::user([&](User& user) {
            user.press(knob);
            user.moveTo({knob.x, knob.y - 20});
        });
        host->closeEditor(windowFirst);
        EXPECT_EQ(host->heard(), gesture(kLGainL)) << "the gesture was left open";
        Host::user([](User& user) { user.release(); });
        host->openEditor();
        // While a name is typed.
        const std::string name = windowFirst ? "First" : "Second";
        Host::user([&](User& user) {
            clickToOpen(user, field);
            user.type(name);
        });
        host->closeEditor(windowFirst);
        EXPECT_EQ(host->programName(), name);
        host->openEditor();
    }
    // The window is destroyed while the menu is open.
    Host::user([&](User& user) {
        clickToOpen(user, menu);
        const int turns = Host::turns;
        host->window->destroyFromOutside();
        EXPECT_TRUE(user.waitFor([&] { return Host::turns > turns; })) << "the menu stays open";
        user.tap(userinput::Key::Escape);
    });
    host->closeEditor();
    host->openEditor();
    host->heard();
    Host::user([&](User& user) { user.drag(knob, 0, 10); });
    EXPECT_EQ(host->heard(), gesture(kLGainL));
}

TEST_F(EditorOnScreen, TheSizeFollowsTheProjectAlsoWhileClosed)
{
    host->automate(kQB11, 1);
    EXPECT_TRUE(Host::soon([&] { return host->window->childWidth() == 644; }));
    EXPECT_EQ(host->width, 644);
    host->closeEditor();
    const auto project = host->bankChunk();
    host->automate(kQB11, 0);
    Host::idleFor(60);
    EXPECT_EQ(host->toldSize().x, 394);
    host->setBankChunk(project);
    EXPECT_EQ(host->toldSize().x, 644);
    host->resizes = 0;
    host->openEditor();
    EXPECT_EQ(host->window->childWidth(), 644);
    EXPECT_EQ(host->resizes, 0) << "the window had the wrong size";
}

// Measures processor time, which does not include other processes.
TEST_F(EditorOnScreen, OpensQuicklyFiftyTimes)
{
    std::vector<double> times;  // ms, until all is painted
    for (int round = 0; round < 50; ++round) {
        host->closeEditor(round % 3 == 2);
        const double before = processorSeconds();
        host->openEditor();
        ASSERT_TRUE(Host::soon([this] {
            return screenshot(host->at(kKnobX, kKnobY), 1, 1).at(0, 0) != VSTGUI::kWhiteCColor;
        }));
        times.push_back(1000 * (processorSeconds() - before));
    }
    std::nth_element(times.begin(), times.begin() + 25, times.end());
    std::printf("opening: %.1f ms, median of 50\n", times[25]);
    EXPECT_LT(times[25], ZKR_SLOW ? 2000.0 : kOnWindows ? 200.0 : 100.0);
    Host::user([&](User& user) { user.drag(host->at(kKnobX, kKnobY), 0, -20); });
    EXPECT_NEAR(host->value(kLGainL), 0.6, 0.01);
}

TEST_F(EditorOnScreen, AnIdleEditorTakesLittleProcessorTime)
{
    const int seconds = asked("ZKR_IDLE_SECONDS", 2);
    double share[2];  // of a core, with the editor closed and open
    for (const bool open : {false, true}) {
        open ? host->openEditor() : host->closeEditor();
        Host::idleFor(200);
        const double before = processorSeconds();
        Host::idleFor(1000 * seconds);
        share[open] = (processorSeconds() - before) / seconds;
    }
    std::printf("idle: %.2f %% of a core, and %.2f %% without the editor\n", 100 * share[1],
                100 * share[0]);
    EXPECT_LT(share[1] - share[0], ZKR_SLOW ? 0.3 : 0.03);
}

}  // namespace

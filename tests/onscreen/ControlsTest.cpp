// One control of each kind under a real mouse, and the edits that the host gets.
#include "tests/onscreen/EditorOnScreen.h"

namespace {

TEST_F(EditorOnScreen, ControlsTakeClicksDragsAndTheWheel)
{
    host->automate(kQB11, 1);
    host->automate(k2x, 1);
    EXPECT_TRUE(Host::soon([this] { return host->width == 894; }));
    Host::idleFor(60);
    const Place knob = host->at(742, 294), ring{knob.x + 28, knob.y};
    const auto clickPanel = [&](double y) {
        return [this, y](User& user) { user.click(host->at(host->width - 62, y)); };
    };
    const struct {
        const char* what;
        std::function<void(User&)> action;
        unsigned tag, id;
        double value, tolerance;
        int width;
    } steps[] = {
        // 20 pixels of 200; the law is close to the identity.
        {"knob", [&](User& u) { u.drag(knob, 0, -20); }, kLGainR2, kLGainR2, 0.6, 0.01, 894},
        {"ring", [&](User& u) { u.drag(ring, 0, -24); }, kLGainR2, kLFreqR2, 0.25, 1e-6, 894},
        {"wheel", [&](User& u) { u.wheel(ring, true); }, kLGainR2, kLFreqR2, 0.361, 1e-3, 894},
        {"double", [&](User& u) { u.doubleClick(knob); }, kLGainR2, kLGainR2, 0.5, 1e-3, 894},
        {"button", [&](User& u) { u.click(host->at(125, 369)); }, kPhaseL, kPhaseL, 1, 0, 894},
        {"switch", clickPanel(180), kChannel, kChannel, 0, 0, 894},
        {"preamps", clickPanel(104), kQB11, kQB11, 0, 0, 644},
    };
    for (const auto& step : steps) {
        SCOPED_TRACE(step.what);
        host->heard();
        host->resizes = 0;
        const int before = host->width;
        Host::user(step.action);
        EXPECT_NEAR(host->value(step.id), step.value, step.tolerance);
        const std::vector<std::string> heard = host->heard();
        ASSERT_FALSE(heard.empty());
        EXPECT_EQ(heard.front(), "begin " + std::to_string(step.tag));
        EXPECT_EQ(heard.back(), "end " + std::to_string(step.tag));
        EXPECT_EQ(host->width, step.width);
        EXPECT_EQ(host->window->childWidth(), step.width);
        EXPECT_EQ(host->resizes, step.width != before);
    }
}

}  // namespace

// Keyboard focus, and opening and closing of text boxes.
#include "tests/vstgui/Probe.h"

namespace {

class Focus : public FrameTest {
protected:
    Focus() { frame->addView(edit); }

    CTextEdit* edit{new CTextEdit(CRect(10, 10, 110, 30), &listener, 9, "old")};
};

TEST_F(Focus, APressOpensTheBoxAndAnyEndButEscapeCommitsTheText)
{
    const struct {
        const char* what;
        std::function<void()> action;
    } ends[] = {
        {"Escape", [&] { host.pressEscapeInTextBox(); }},
        {"Return", [&] { host.pressReturnInTextBox(); }},
        {"a press elsewhere",
         [&] {
             host.mouseDown({150, 90});
         }},
        {"the window", [&] { host.activate(false); }},
        {"Tab",
         [&] {
             host.keyDown({0, VKEY_TAB, 0});
         }},
        {"the frame", [&] { frame->setFocusView(nullptr); }},
        {"removal", [&] { frame->removeView(edit, false); }},
    };
    for (const auto& end : ends) {
        SCOPED_TRACE(end.what);
        const bool commits = &end != ends, keepsFocus = end.what == std::string("the window");
        host.mouseDown({20, 20});
        EXPECT_EQ(frame->getFocusView(), edit);
        edit->setText("outside");
        ASSERT_STREQ(host.textBoxText(), "outside");
        const std::string typed = std::string("n\xC3\xA9w ") + end.what;
        host.typeText(typed.c_str());
        EXPECT_EQ(listener.log, Log{});
        end.action();
        EXPECT_EQ(host.textBoxText(), nullptr);
        EXPECT_EQ(edit->getText(), commits ? typed : "outside");
        EXPECT_EQ(std::exchange(listener.log, {}),
                  commits ? (Log{"begin", "value", "end"}) : Log{});
        EXPECT_EQ(edit->bWasReturnPressed, end.what == std::string("Return"));
        host.activate(true);
        EXPECT_EQ(host.textBoxText() != nullptr, keepsFocus);
        EXPECT_EQ(host.keyDown({0, VKEY_TAB, 0}), keepsFocus) << "the key is the host's";
    }
    edit->forget();
}

TEST_F(Focus, AListenerMayRemoveTheFieldOrCloseTheFrameWhileItCommits)
{
    host.mouseDown({20, 20});
    host.typeText("a");
    listener.onValue = [&] { frame->removeView(edit); };
    host.pressReturnInTextBox();
    EXPECT_EQ(listener.log, (Log{"begin", "value", "end"}));

    edit = new CTextEdit(CRect(10, 10, 110, 30), &listener, 9, "old");
    frame->addView(edit);
    host.mouseDown({20, 20});
    host.typeText("b");
    listener.onValue = [&] { closeFrame(); };
    host.mouseDown({150, 90});
    EXPECT_FALSE(host.isOpen());
}

TEST_F(Focus, TabGoesRoundTheFieldsAndWithShiftBack)
{
    CTextEdit* fields[3]{edit};
    for (int i = 1; i < 3; ++i)
        frame->addView(fields[i] = new CTextEdit(CRect(10, 10, 110, 30), &listener, 9, ""));
    host.mouseDown({20, 20});  // the last one is on top
    for (const int next : {0, 1, 2}) {
        EXPECT_TRUE(host.keyDown({0, VKEY_TAB, 0}));
        EXPECT_EQ(frame->getFocusView(), fields[next]);
    }
    EXPECT_FALSE(host.keyDown({0, VKEY_TAB, MODIFIER_CONTROL})) << "the key is the host's";
    EXPECT_TRUE(host.keyDown({0, VKEY_TAB, MODIFIER_SHIFT}));
    EXPECT_EQ(frame->getFocusView(), fields[1]);
    host.activate(false);
    frame->removeView(fields[1], false);
    frame->addView(fields[1]);
    host.activate(true);
    EXPECT_EQ(frame->getFocusView(), nullptr);
}

TEST_F(Focus, APressWorksInAFrameWhoseWindowIsNotActive)
{
    host.mouseDown({20, 20});
    host.typeText("one");
    host.activate(false);
    host.mouseDown({150, 90});
    host.activate(true);
    EXPECT_EQ(host.textBoxText(), nullptr) << "a field that lost the focus opened again";
    host.activate(false);
    host.mouseDown({20, 20});
    host.typeText("two");
    EXPECT_EQ(frame->getFocusView(), edit);
    host.mouseDown({150, 90});
    EXPECT_EQ(host.textBoxText(), nullptr);
    EXPECT_STREQ(edit->getText(), "two");
}

}  // namespace

// Keyboard focus, and opening and closing of text boxes.
#include "tests/vstgui/Probe.h"

namespace {

class Focus : public FrameTest {
protected:
    Focus() { frame->addView(edit); }

    CTextEdit* edit{new CTextEdit(CRect(10, 10, 110, 30), &listener, 9, "old")};
};

TEST_F(Focus, APressOpensTheBoxReturnCommitsTheTextAndEscapeDiscardsIt)
{
    host.mouseDown({20, 20});
    ASSERT_STREQ(host.textBoxText(), "old");
    EXPECT_EQ(frame->getFocusView(), edit);
    host.typeText("other");
    host.pressEscapeInTextBox();
    host.mouseDown({20, 20});
    EXPECT_STREQ(host.textBoxText(), "old");
    host.pressReturnInTextBox();
    EXPECT_STREQ(edit->getText(), "old");
    host.mouseDown({20, 20});
    edit->setText("outside");
    EXPECT_STREQ(host.textBoxText(), "outside");
    host.typeText("n\xC3\xA9w");
    EXPECT_EQ(listener.log, Log{});
    host.pressReturnInTextBox();
    EXPECT_EQ(host.textBoxText(), nullptr);
    EXPECT_EQ(frame->getFocusView(), nullptr);
    EXPECT_TRUE(edit->bWasReturnPressed);
    EXPECT_STREQ(edit->getText(), "n\xC3\xA9w");
    EXPECT_EQ(listener.log, (Log{"begin", "value", "end"}));
    EXPECT_FALSE(host.keyDown({0, VKEY_TAB, 0})) << "without a focus view the key is the host's";
}

TEST_F(Focus, WhateverTakesTheFocusAwayCommits)
{
    const std::function<void()> ways[] = {
        [&] { host.mouseDown({150, 90}); },      [&] { host.activate(false); },
        [&] { host.keyDown({0, VKEY_TAB, 0}); }, [&] { frame->setFocusView(nullptr); },
        [&] { frame->removeView(edit); },
    };
    for (const auto& way : ways) {
        SCOPED_TRACE(&way - ways);
        host.activate(true);
        host.mouseDown({20, 20});
        ASSERT_NE(host.textBoxText(), nullptr);
        host.typeText(std::to_string(&way - ways).c_str());
        listener.log.clear();
        way();
        EXPECT_EQ(host.textBoxText(), nullptr);
        EXPECT_EQ(listener.log, (Log{"begin", "value", "end"}));
        if (&way == &ways[1]) {
            host.activate(true);  // reopens the box
            EXPECT_NE(host.textBoxText(), nullptr);
            host.pressEscapeInTextBox();
        }
    }
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

// Keyboard focus and the life of a text box.
#include "Probe.h"

namespace {

class Focus : public FrameTest {
protected:
    Focus() { frame->addView(edit); }

    CTextEdit* edit{new CTextEdit(CRect(10, 10, 110, 30), &listener, 9, "old")};
};

TEST_F(Focus, APressOpensTheBoxAndReturnTakesTheTextOver)
{
    host.mouseDown({20, 20});
    ASSERT_STREQ(host.textBoxText(), "old");
    EXPECT_EQ(frame->getFocusView(), edit);
    host.typeText("n\xC3\xA9w");
    EXPECT_TRUE(listener.log.empty());
    host.pressReturnInTextBox();
    EXPECT_EQ(host.textBoxText(), nullptr);
    EXPECT_EQ(frame->getFocusView(), nullptr);
    EXPECT_TRUE(edit->bWasReturnPressed);
    EXPECT_STREQ(edit->getText(), "n\xC3\xA9w");
    EXPECT_EQ(listener.log, (Log{"begin", "value 9", "end"}));
    EXPECT_EQ(edit->getValue(), 0.f);
}

TEST_F(Focus, EscapeRestoresAndAnUnchangedTextTellsNobody)
{
    host.mouseDown({20, 20});
    host.typeText("other");
    host.pressEscapeInTextBox();
    host.mouseDown({20, 20});
    EXPECT_STREQ(host.textBoxText(), "old");
    host.pressReturnInTextBox();
    EXPECT_STREQ(edit->getText(), "old");
    EXPECT_TRUE(listener.log.empty());
}

TEST_F(Focus, WhateverTakesTheFocusAwayCommits)
{
    const std::vector<std::function<void()>> ways{
        [&] { host.mouseDown({150, 90}); },      [&] { host.activate(false); },
        [&] { host.keyDown({0, VKEY_TAB, 0}); }, [&] { frame->setFocusView(nullptr); },
        [&] { frame->removeView(edit); },
    };
    int count = 0;
    for (const auto& way : ways) {
        SCOPED_TRACE(count);
        host.activate(true);
        host.mouseDown({20, 20});
        ASSERT_NE(host.textBoxText(), nullptr);
        host.typeText(std::to_string(++count).c_str());
        way();
        EXPECT_EQ(host.textBoxText(), nullptr);
        EXPECT_EQ(listener.values.size(), static_cast<size_t>(count));
        if (count == 2) {
            host.activate(true);  // back where it was
            EXPECT_NE(host.textBoxText(), nullptr);
            host.pressEscapeInTextBox();
        }
    }
}

TEST_F(Focus, ClosingTheFrameCommitsWhileTheListenerIsThere)
{
    host.mouseDown({20, 20});
    host.typeText("last words");
    std::string heard;
    listener.onValue = [&](CControl* control) {
        heard = static_cast<CTextEdit*>(control)->getText();
    };
    closeFrame();
    EXPECT_EQ(heard, "last words");
    EXPECT_EQ(host.textBoxText(), nullptr);
}

TEST_F(Focus, AListenerMayRemoveTheFieldOrCloseTheFrameWhileItCommits)
{
    host.mouseDown({20, 20});
    host.typeText("a");
    listener.onValue = [&](CControl*) { frame->removeView(edit); };
    host.pressReturnInTextBox();
    EXPECT_EQ(listener.log, (Log{"begin", "value 9", "end"}));

    edit = new CTextEdit(CRect(10, 10, 110, 30), &listener, 9, "old");
    frame->addView(edit);
    host.mouseDown({20, 20});
    host.typeText("b");
    listener.onValue = [&](CControl*) { closeFrame(); };
    host.mouseDown({150, 90});
    EXPECT_FALSE(host.isOpen());
}

TEST_F(Focus, AValueReplacesTheTextAlsoInTheBox)
{
    edit->setValue(0.25f);
    EXPECT_STREQ(edit->getText(), "0.25");
    host.mouseDown({20, 20});
    edit->setText("outside");
    EXPECT_STREQ(host.textBoxText(), "outside");
}

TEST_F(Focus, ImmediateChangesAreHeardOneByOne)
{
    edit->setImmediateTextChange(true);
    host.mouseDown({20, 20});
    host.typeText("x");
    host.typeText("xy");
    EXPECT_EQ(listener.values.size(), 2u);
    EXPECT_STREQ(edit->getText(), "xy");
    EXPECT_NE(host.textBoxText(), nullptr);
}

TEST_F(Focus, TheDoubleClickStyleOpensOnADoubleClickOnly)
{
    edit->setStyle(kDoubleClickStyle);
    host.mouseDown({20, 20});
    EXPECT_EQ(host.textBoxText(), nullptr);
    host.mouseDown({20, 20}, kLButton | kDoubleClick);
    EXPECT_NE(host.textBoxText(), nullptr);
}

TEST_F(Focus, APressIsEnoughToWorkInAFrameWhoseWindowHasNotTheKeyboard)
{
    host.mouseDown({20, 20});
    host.typeText("one");
    host.activate(false);
    host.mouseDown({150, 90});
    host.activate(true);
    EXPECT_EQ(host.textBoxText(), nullptr) << "a field that was left opens again";
    host.activate(false);
    host.mouseDown({20, 20});
    host.typeText("two");
    EXPECT_EQ(frame->getFocusView(), edit);
    host.mouseDown({150, 90});
    EXPECT_EQ(host.textBoxText(), nullptr);
    EXPECT_STREQ(edit->getText(), "two");
}

TEST_F(Focus, TabMovesOnFromAFocusAndRoundAndBackWithShift)
{
    auto* second = new CKnob(CRect(10, 50, 30, 70), &listener, 1, nullptr, nullptr);
    auto* third = new CKnob(CRect(40, 50, 60, 70), &listener, 2, nullptr, nullptr);
    frame->addView(second);
    frame->addView(third);
    EXPECT_FALSE(host.keyDown({0, VKEY_TAB, 0})) << "without a focus it is the host's";
    EXPECT_EQ(frame->getFocusView(), nullptr);
    host.mouseDown({20, 60});
    EXPECT_TRUE(host.keyDown({0, VKEY_TAB, MODIFIER_SHIFT}));
    EXPECT_EQ(frame->getFocusView(), edit);
    host.keyDown({0, VKEY_TAB, MODIFIER_SHIFT});
    EXPECT_EQ(frame->getFocusView(), third);
    host.keyDown({0, VKEY_TAB, 0});
    EXPECT_EQ(frame->getFocusView(), edit);
    second->setWantsFocus(false);
    host.keyDown({0, VKEY_TAB, 0});
    EXPECT_EQ(frame->getFocusView(), third);
}

TEST_F(Focus, TheRectangleOfTheBoxIsInFrameCoordinatesAndCutByParents)
{
    auto* box = new CViewContainer(CRect(50, 40, 100, 60));
    frame->addView(box);
    auto* inner = new CTextEdit(CRect(30, 5, 80, 15), &listener, 1, "");
    box->addView(inner);
    EXPECT_EQ(inner->platformGetSize(), CRect(80, 45, 130, 55));
    EXPECT_EQ(inner->platformGetVisibleSize(), CRect(80, 45, 100, 55));
}

}  // namespace

// Menus and file dialogs, and what may happen while they wait.
#include "Probe.h"

namespace {

class Menu : public FrameTest {
protected:
    Menu()
    {
        for (const char* title : {"one", "-", "two", "three"})
            menu->addEntry(title);
        menu->setCurrent(0);
        frame->addView(menu);
        host.paint();
    }

    COptionMenu* menu{new COptionMenu(CRect(10, 10, 22, 22), &listener, 12, nullptr, nullptr,
                                      kPopupStyle | kCheckStyle | kNoTextStyle | kNoDrawStyle)};
};

TEST_F(Menu, AChoiceIsHeardAlsoWhenItIsTheSameAgainAndACancelIsNot)
{
    int32_t answer = 2;
    host.onMenu = [&](COptionMenu&) { return answer; };
    EXPECT_EQ(host.mouseDown({15, 15}), kMouseDownEventHandledButDontNeedMovedOrUpEvents);
    EXPECT_EQ(menu->getValue(), 2.f);
    EXPECT_EQ(menu->getCurrentIndex(true), 2);
    EXPECT_EQ(menu->getCurrentIndex(), 1);
    host.mouseDown({15, 15}, kRButton);
    answer = -1;
    host.mouseDown({15, 15});
    EXPECT_EQ(menu->getLastResult(), -1);
    EXPECT_EQ(listener.log,
              (Log{"begin", "value 12", "end", "begin", "value 12", "end", "begin", "end"}));
}

TEST_F(Menu, SeparatorsAreNoChoiceAndEntriesMayBeCalledDash)
{
    EXPECT_FALSE(menu->setCurrent(1));
    EXPECT_TRUE(menu->setCurrent(1, false));
    EXPECT_STREQ(menu->getCurrent()->getTitle(), "two");
    menu->addEntry(new CMenuItem("-"));
    EXPECT_TRUE(menu->setCurrent(4));
    EXPECT_EQ(menu->getEntry(5), nullptr);
    EXPECT_EQ(menu->getEntry(-1), nullptr);
    menu->setValue(17.f);
    EXPECT_EQ(menu->getCurrentIndex(true), 4);
    EXPECT_EQ(menu->getMax(), 4.f);
}

TEST_F(Menu, ArrowKeysStepOverSeparators)
{
    frame->setFocusView(menu);
    host.keyDown({0, VKEY_DOWN, 0});
    EXPECT_EQ(menu->getValue(), 2.f);
    host.keyDown({0, VKEY_UP, 0});
    EXPECT_EQ(menu->getValue(), 0.f);
    host.keyDown({0, VKEY_UP, 0});
    EXPECT_EQ(menu->getValue(), 0.f);
}

TEST_F(Menu, TheMenuOrTheWholeFrameMayGoWhileItIsOpen)
{
    host.onMenu = [&](COptionMenu& m) {
        frame->removeView(&m);
        return 2;
    };
    host.mouseDown({15, 15});
    EXPECT_EQ(listener.log, (Log{"begin", "end"}));

    menu = new COptionMenu(CRect(10, 10, 22, 22), &listener, 12);
    menu->addEntry("one");
    frame->addView(menu);
    host.onMenu = [&](COptionMenu&) {
        closeFrame();
        return 0;
    };
    listener.log.clear();
    host.mouseDown({15, 15});
    EXPECT_EQ(listener.log, (Log{"begin", "end"}));
}

TEST_F(Menu, RepaintsGoOnWhileItIsOpen)
{
    auto* v = addProbe(CRect(50, 50, 60, 60), "v");
    host.onMenu = [&](COptionMenu&) {
        host.clearInvalidRects();
        v->invalid();
        EXPECT_EQ(host.invalidRects(), (std::vector<CRect>{CRect(50, 50, 60, 60)}));
        return -1;
    };
    host.mouseDown({15, 15});
}

TEST_F(FrameTest, AFileDialogIsAskedAsSetUpAndAnsweredInPaths)
{
    FileDialogRequest asked;
    host.onFileDialog = [&](const FileDialogRequest& request) {
        asked = request;
        return std::vector<std::string>{"/tmp/B\xC3\xA4nke/x.zkb"};
    };
    const auto selector = owned(CNewFileSelector::create(frame, CNewFileSelector::kSelectFile));
    selector->setTitle("Load bank");
    selector->setInitialDirectory("/tmp/");
    selector->addFileExtension(CFileExtension("ZKR Bank", "zkb"));
    EXPECT_TRUE(selector->runModal());
    selector->cancel();
    EXPECT_EQ(asked.title, "Load bank");
    EXPECT_EQ(asked.initialDirectory, "/tmp/");
    EXPECT_FALSE(asked.allowSeveral);
    ASSERT_EQ(asked.extensions.size(), 1u);
    ASSERT_EQ(selector->getNumSelectedFiles(), 1u);
    EXPECT_STREQ(selector->getSelectedFile(0), "/tmp/B\xC3\xA4nke/x.zkb");
    EXPECT_EQ(selector->getSelectedFile(1), nullptr);
    host.onFileDialog = nullptr;
    EXPECT_FALSE(selector->runModal());
    EXPECT_EQ(selector->getNumSelectedFiles(), 0u);
}

TEST_F(FrameTest, ASavedNameGetsTheDefaultExtensionOnlyWhenItHasNone)
{
    for (const auto& [typed, expected] :
         std::vector<std::pair<std::string, std::string>>{{"/a.b/name", "/a.b/name.zkr"},
                                                          {"/a/name.x", "/a/name.x"},
                                                          {"/a/.name", "/a/.name.zkr"}}) {
        host.onFileDialog = [&](const FileDialogRequest& request) {
            EXPECT_EQ(request.extensions.size(), 2u);
            EXPECT_EQ(request.selectedExtension, 1);
            return std::vector<std::string>{typed};
        };
        const auto s = owned(CNewFileSelector::create(frame, CNewFileSelector::kSelectSaveFile));
        s->addFileExtension(CFileExtension("All", "zkb"));
        s->setDefaultExtension(CFileExtension("ZKR Preset", "zkr"));
        s->setDefaultExtension(CFileExtension("Other", "xyz"));  // too late
        EXPECT_TRUE(s->runModal());
        EXPECT_EQ(s->getSelectedFile(0), expected);
    }
}

TEST_F(FrameTest, ADialogSurvivesTheFrameItBelongsTo)
{
    const auto selector = owned(CNewFileSelector::create(frame));
    host.onFileDialog = [&](const FileDialogRequest&) {
        closeFrame();
        return std::vector<std::string>{"/x"};
    };
    EXPECT_FALSE(selector->runModal());
    EXPECT_FALSE(selector->runModal());
    selector->cancel();
    EXPECT_EQ(CNewFileSelector::create(nullptr), nullptr);
}

}  // namespace

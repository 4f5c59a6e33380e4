// A fixture: the editor of the built library in a VST 2 host's window, with cleared settings and
// unlinked channels.
#pragma once

#include "params/ids/ParameterIds.h"
#include "platform/SettingsStore.h"
#include "tests/support/Pictures.h"
#include "tests/support/User.h"
#include "tools/host/NativePlugin.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <utility>

#ifdef _WIN32
constexpr bool kOnWindows = true;
#else
constexpr bool kOnWindows = false;
#endif

// The low band's knob in the smallest layout.
constexpr double kKnobX = 42 + 62.5, kKnobY = 7 + 287.5;

class Host : public host::NativePlugin {
public:
    // `place` is the editor's upper left corner on the screen.
    explicit Host(Place place = {20, 10}) : NativePlugin(ZKR_PLUGIN), corner(place)
    {
        hosts.push_back(this);
    }
    ~Host() override
    {
        closeEditor();
        hosts.erase(std::find(hosts.begin(), hosts.end(), this));
    }

    // The editor's size as the library reports it.
    VSTGUI::CPoint toldSize()
    {
        ERect* rect = nullptr;
        effect()->dispatcher(effect(), effEditGetRect, 0, 0, &rect, 0.0f);
        return rect ? VSTGUI::CPoint(rect->right, rect->bottom) : VSTGUI::CPoint();
    }
    void openEditor()
    {
        const VSTGUI::CPoint size = toldSize();
        width = static_cast<int>(size.x);
        height = static_cast<int>(size.y);
        window = std::make_unique<HostWindow>(corner, width, height);
        EXPECT_EQ(effect()->dispatcher(effect(), effEditOpen, 0, 0, window->handle(), 0.0f), 1);
    }
    // Destroys the window after closing the editor, or before.
    void closeEditor(bool windowFirst = false)
    {
        if (!window)
            return;
        if (windowFirst)
            window->destroy();
        dispatch(effEditClose);
        window.reset();
    }

    float value(unsigned id) { return parameter(static_cast<VstInt32>(id)); }
    void automate(unsigned id, double value)
    {
        setParameter(static_cast<VstInt32>(id), static_cast<float>(value));
    }
    // The editor's calls since the previous call of heard(), as "begin 5", "change 5", "end 5",
    // without consecutive repeats.
    std::vector<std::string> heard()
    {
        std::vector<std::string> calls = std::exchange(told, {});
        calls.erase(std::unique(calls.begin(), calls.end()), calls.end());
        return calls;
    }

    Place at(double x, double y) const
    {
        return {corner.x + static_cast<int>(x), corner.y + static_cast<int>(y)};
    }
    VSTGUI::Pixels picture() const { return screenshot(corner, width, height); }

    // Runs a script of user input while all hosts' idle calls go on, and a little longer.
    static void user(const std::function<void(User&)>& script)
    {
        User::act(script, idleAll);
        // Time for repaints and their consequences.
        idleFor(40);
    }
    static void idleFor(int milliseconds)
    {
        using Clock = std::chrono::steady_clock;
        const auto end = Clock::now() + std::chrono::milliseconds(milliseconds);
        while (Clock::now() < end)
            idleAll();
    }
    // Waits up to half a minute; returns whether the condition holds.
    static bool soon(const std::function<bool()>& condition)
    {
        return turnUntil(condition, idleAll);
    }

    int width = 0, height = 0;
    int resizes = 0;  // calls of sizeWindow
    std::unique_ptr<HostWindow> window;
    // Iterations of the idle loop, which stops while a menu or dialog runs its own.
    static inline std::atomic<int> turns{0};

private:
    VstIntPtr answer(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                     float opt) override
    {
        if (opcode == audioMasterBeginEdit)
            told.push_back("begin " + std::to_string(index));
        if (opcode == audioMasterAutomate)
            told.push_back("change " + std::to_string(index));
        if (opcode == audioMasterEndEdit)
            told.push_back("end " + std::to_string(index));
        if (opcode == audioMasterSizeWindow) {
            // From another thread a host could deadlock with its interface thread.
            EXPECT_EQ(std::this_thread::get_id(), ownThread);
            ++resizes;
            width = index;
            height = static_cast<int>(value);
            if (window)
                window->resize(width, height);
        }
        return NativePlugin::answer(opcode, index, value, ptr, opt);
    }
    static void idleAll()
    {
        ++turns;
        turnMessageLoop();
        for (Host* const host : hosts)
            host->dispatch(effEditIdle);
    }

    static inline std::vector<Host*> hosts;
    const Place corner;
    std::vector<std::string> told;
    const std::thread::id ownThread = std::this_thread::get_id();
};

// A gesture that changed this parameter, as Host::heard returns it.
inline std::vector<std::string> gesture(unsigned id)
{
    const std::string number = std::to_string(id);
    return {"begin " + number, "change " + number, "end " + number};
}

struct EditorOnScreen : testing::Test {
    EditorOnScreen()
    {
        for (const char* const name : {"DefaultBank", "DefaultPreset", "ManualPath"})
            platform::userSettings().remove(name);
        host = std::make_unique<Host>();
        host->automate(kLink, 0);
        host->openEditor();
        // Outside all windows.
        Host::user([](User& user) { user.moveTo({1000, 740}); });
    }

    // Clicks on what opens a menu or a text box and waits until more pixels than a key's have
    // changed.
    void clickToOpen(User& user, Place where)
    {
        const VSTGUI::Pixels before = host->picture();
        user.click(where);
        EXPECT_TRUE(user.waitFor([&] { return difference(host->picture(), before).pixels > 250; }));
        user.pause(60);
    }

    std::unique_ptr<Host> host;
    // The name field and the menu key, on the screen.
    static constexpr Place field{217, 506}, menu{284, 504};
};

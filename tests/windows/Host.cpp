// Host: the library's life, its questions, and the user's thread.
#include "Host.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <stdexcept>
#include <thread>
#include <utility>

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kDoubleClickTime(520);
constexpr std::chrono::seconds kPatience(30);
constexpr int kSettling = 40;  // ms: a repaint and what follows
// ms: where the pointer enters a window, Wine sets its keys and its place to those of the X server,
// of which it hears a little later.
constexpr int kEntering = 60;

Host* beingOpened = nullptr;
std::vector<Host*> hosts;

}  // namespace

void User::press(Place where, hands::Button which)
{
    static Place lastPlace{};
    static Clock::time_point lastTime;
    if (std::abs(where.x - lastPlace.x) < 8 && std::abs(where.y - lastPlace.y) < 8)
        std::this_thread::sleep_until(lastTime + kDoubleClickTime);
    moveTo(where);
    hands::button(which, true);
    lastPlace = where;
    lastTime = Clock::now();
}

void User::click(Place where, hands::Button which)
{
    press(where, which);
    release(which);
}

void User::doubleClick(Place where)
{
    click(where);
    hands::button(hands::Button::Left, true);
    release();
}

void User::drag(Place from, int dx, int dy)
{
    constexpr int kSteps = 4;
    moveTo(from);
    pause(kEntering);
    press(from);
    for (int step = 1; step <= kSteps; ++step)
        moveTo({from.x + dx * step / kSteps, from.y + dy * step / kSteps});
    // A slow machine may otherwise hear of the button before the last step.
    pause(kSettling);
    release();
}

void User::wheel(Place where, bool up)
{
    moveTo(where);
    hands::wheel(up);
}

void User::tap(hands::Key which)
{
    hands::key(which, true);
    hands::key(which, false);
}

void User::holdingControl(const std::function<void()>& action)
{
    pause(kEntering);
    hands::key(hands::Key::Control, true);
    action();
    hands::key(hands::Key::Control, false);
}

void User::pause(int milliseconds)
{
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

bool User::waitFor(const std::function<bool()>& condition)
{
    for (const auto end = Clock::now() + kPatience; Clock::now() < end; pause(10))
        if (condition())
            return true;
    return false;
}

Host::Host(Place place) : effect(nullptr), library(ZKR_PLUGIN), corner(place)
{
    using Entry = AEffect* (*)(audioMasterCallback);
    const auto entry = reinterpret_cast<Entry>(library.find("VSTPluginMain"));
    beingOpened = this;
    effect = entry ? entry(callback) : nullptr;
    if (!effect)
        throw std::runtime_error("the library does not start");
    effect->user = this;
    beingOpened = nullptr;
    effect->dispatcher(effect, effOpen, 0, 0, nullptr, 0.0f);
    hosts.push_back(this);
}

Host::~Host()
{
    closeEditor();
    hosts.erase(std::find(hosts.begin(), hosts.end(), this));
    effect->dispatcher(effect, effClose, 0, 0, nullptr, 0.0f);
}

ERect Host::toldRect()
{
    ERect* rect = nullptr;
    effect->dispatcher(effect, effEditGetRect, 0, 0, &rect, 0.0f);
    if (!rect)
        throw std::runtime_error("the editor has no size");
    return *rect;
}

int Host::toldWidth()
{
    const ERect rect = toldRect();
    return rect.right - rect.left;
}

void Host::openEditor()
{
    const ERect rect = toldRect();
    width = rect.right - rect.left;
    height = rect.bottom - rect.top;
    window = std::make_unique<HostWindow>(corner, width, height);
    EXPECT_EQ(effect->dispatcher(effect, effEditOpen, 0, 0, window->handle(), 0.0f), 1);
}

void Host::closeEditor(bool windowFirst)
{
    if (!window)
        return;
    if (windowFirst)
        window->destroy();
    effect->dispatcher(effect, effEditClose, 0, 0, nullptr, 0.0f);
    window.reset();
}

void Host::automate(unsigned id, double value)
{
    effect->setParameter(effect, static_cast<VstInt32>(id), static_cast<float>(value));
}

std::string Host::programName()
{
    char name[64] = {};
    effect->dispatcher(effect, effGetProgramName, 0, 0, name, 0.0f);
    return name;
}

std::vector<std::string> Host::heard()
{
    std::vector<std::string> calls = std::exchange(told, {});
    calls.erase(std::unique(calls.begin(), calls.end()), calls.end());
    return calls;
}

Place Host::at(double x, double y) const
{
    return {corner.x + static_cast<int>(x), corner.y + static_cast<int>(y)};
}

void Host::user(const std::function<void(User&)>& script)
{
    std::atomic<bool> done{false};
    std::thread thread([&] {
        User user;
        script(user);
        done = true;
    });
    while (!done)
        idleAll();
    thread.join();
    idleFor(kSettling);
}

void Host::idleFor(int milliseconds)
{
    const auto end = Clock::now() + std::chrono::milliseconds(milliseconds);
    while (Clock::now() < end)
        idleAll();
}

bool Host::soon(const std::function<bool()>& condition)
{
    for (const auto end = Clock::now() + kPatience; Clock::now() < end; idleAll())
        if (condition())
            return true;
    return false;
}

void Host::idleAll()
{
    ++turns;
    turnMessageLoop();
    for (Host* const host : hosts)
        host->effect->dispatcher(host->effect, effEditIdle, 0, 0, nullptr, 0.0f);
}

VstIntPtr Host::callback(AEffect* asking, VstInt32 opcode, VstInt32 index, VstIntPtr value, void*,
                         float)
{
    auto* const self = asking && asking->user ? static_cast<Host*>(asking->user) : beingOpened;
    return self ? self->answer(opcode, index, value) : 0;
}

VstIntPtr Host::answer(VstInt32 opcode, VstInt32 index, VstIntPtr value)
{
    switch (opcode) {
    case audioMasterVersion:
        return 2400;
    case audioMasterBeginEdit:
        note("begin", index);
        return 1;
    case audioMasterAutomate:
        note("change", index);
        return 0;
    case audioMasterEndEdit:
        note("end", index);
        return 1;
    case audioMasterSizeWindow:
        // Hosts wait there for their interface thread, which may wait for the one that asks.
        EXPECT_EQ(std::this_thread::get_id(), ownThread);
        ++resizes;
        width = index;
        height = static_cast<int>(value);
        if (window)
            window->resize(width, height);
        return 1;
    default:
        return 0;
    }
}

void Host::note(const char* what, VstInt32 index)
{
    told.push_back(what + (" " + std::to_string(index)));
}

std::vector<std::string> gesture(unsigned id, const std::vector<unsigned>& changed)
{
    std::vector<std::string> calls{"begin " + std::to_string(id)};
    for (const unsigned each : changed)
        calls.push_back("change " + std::to_string(each));
    calls.push_back("end " + std::to_string(id));
    return calls;
}

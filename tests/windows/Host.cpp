// Host: the editor's window, and what the plug-in asks and tells.
#include "Host.h"

#include <algorithm>
#include <chrono>
#include <stdexcept>
#include <utility>

Host::Host(Place place) : NativePlugin(ZKR_PLUGIN), corner(place)
{
    hosts.push_back(this);
}

Host::~Host()
{
    closeEditor();
    hosts.erase(std::find(hosts.begin(), hosts.end(), this));
}

ERect Host::toldRect()
{
    ERect* rect = nullptr;
    effect()->dispatcher(effect(), effEditGetRect, 0, 0, &rect, 0.0f);
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
    EXPECT_EQ(effect()->dispatcher(effect(), effEditOpen, 0, 0, window->handle(), 0.0f), 1);
}

void Host::closeEditor(bool windowFirst)
{
    if (!window)
        return;
    if (windowFirst)
        window->destroy();
    dispatch(effEditClose);
    window.reset();
}

void Host::automate(unsigned id, double value)
{
    setParameter(static_cast<VstInt32>(id), static_cast<float>(value));
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
    User::act(script, idleAll);
    // A repaint and what follows.
    idleFor(40);
}

void Host::idleFor(int milliseconds)
{
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::milliseconds(milliseconds);
    while (Clock::now() < end)
        idleAll();
}

bool Host::soon(const std::function<bool()>& condition)
{
    return turnUntil(condition, idleAll);
}

void Host::idleAll()
{
    ++turns;
    turnMessageLoop();
    for (Host* const host : hosts)
        host->dispatch(effEditIdle);
}

VstIntPtr Host::answer(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr, float opt)
{
    switch (opcode) {
    case audioMasterBeginEdit:
        told.push_back("begin " + std::to_string(index));
        return 1;
    case audioMasterAutomate:
        told.push_back("change " + std::to_string(index));
        return 0;
    case audioMasterEndEdit:
        told.push_back("end " + std::to_string(index));
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
        return NativePlugin::answer(opcode, index, value, ptr, opt);
    }
}

std::vector<std::string> gesture(unsigned id)
{
    const std::string number = std::to_string(id);
    return {"begin " + number, "change " + number, "end " + number};
}

// A view in its window.
#include "HostFrame.h"

namespace vst3 {

HostFrame::HostFrame(IPlugView* plugView, Place place) : view(plugView), corner(place)
{
    EXPECT_EQ(view->getSize(&size), kResultTrue);
    window = std::make_unique<HostWindow>(corner, size.getWidth(), size.getHeight());
}

tresult HostFrame::attach()
{
    view->setFrame(this);
    const tresult result = view->attached(window->handle(), windowType());
    attached = attached || result == kResultTrue;
    return result;
}

void HostFrame::remove()
{
    if (std::exchange(attached, false)) {
        view->setFrame(nullptr);
        EXPECT_EQ(view->removed(), kResultTrue);
    }
}

void HostFrame::forget()
{
    attached = false;
    view = nullptr;
}

bool HostFrame::soon(const std::function<bool()>& condition)
{
    return turnUntil(condition, turnLoop);
}

tresult PLUGIN_API HostFrame::resizeView(IPlugView* asking, ViewRect* wanted)
{
    EXPECT_EQ(asking, view.get());
    EXPECT_EQ(std::this_thread::get_id(), ownThread);
    size = *wanted;
    window->resize(size.getWidth(), size.getHeight());
    return view->onSize(wanted);
}

tresult PLUGIN_API HostFrame::queryInterface(const TUID _iid, void** obj)
{
    QUERY_INTERFACE(_iid, obj, FUnknown::iid, IPlugFrame)
    QUERY_INTERFACE(_iid, obj, IPlugFrame::iid, IPlugFrame)
    *obj = nullptr;
    FUnknown* const loop = offersLoop ? eventLoop() : nullptr;
    return loop ? loop->queryInterface(_iid, obj) : kNoInterface;
}

}  // namespace vst3

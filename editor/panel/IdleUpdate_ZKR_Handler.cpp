#include "editor/panel/IdleUpdate_ZKR_Handler.h"

#include "vstgui/lib/cview.h"

namespace Steinberg {

namespace {
constexpr uint32 kPeriodMs = 33;
}

IdleUpdate_ZKR_Handler::IdleUpdate_ZKR_Handler()
{
    // Registered before this object, and so released before it.
    UpdateHandler::instance();
    timer = Timer::create(this, kPeriodMs);
    VSTGUI::CView::kDirtyCallAlwaysOnMainThread = true;
}

IdleUpdate_ZKR_Handler::~IdleUpdate_ZKR_Handler()
{
    if (timer) {
        timer->stop();
        timer->release();
    }
}

void IdleUpdate_ZKR_Handler::onTimer(Timer* /*timer*/)
{
    if (UpdateHandler* const updates = UpdateHandler::instance(false))
        updates->triggerDeferedUpdates(nullptr);
}

}  // namespace Steinberg

// IdleUpdate_ZKR_Handler: brings deferred updates on their way, 30 times a second, for as long as
// the library is loaded once an editor has been made.
#pragma once

#include "base/source/fobject.h"
#include "base/source/timer.h"
#include "base/source/updatehandler.h"

namespace Steinberg {

class IdleUpdate_ZKR_Handler : public FObject, public ITimerCallback {
public:
    IdleUpdate_ZKR_Handler();
    ~IdleUpdate_ZKR_Handler() override;

    void onTimer(Timer* timer) override;

    // The only one; made by the first call, and null when the library is being unloaded.
    SINGLETON(IdleUpdate_ZKR_Handler)
    OBJ_METHODS(IdleUpdate_ZKR_Handler, FObject)

private:
    Timer* timer;  // null where the system offers none
};

}  // namespace Steinberg

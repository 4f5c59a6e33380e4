// IdleUpdate_ZKR_Handler: sends deferred updates 30 times a second. It is made with the first
// editor and stays until the library is unloaded.
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

    // The only instance, made by the first call; null while the library is being unloaded.
    SINGLETON(IdleUpdate_ZKR_Handler)
    OBJ_METHODS(IdleUpdate_ZKR_Handler, FObject)

private:
    Timer* timer;  // null where the system offers none
};

}  // namespace Steinberg

// A base of the SDK's interfaces on a host's side. The objects are not reference-counted: the test
// owns them.
#pragma once

#include "pluginterfaces/base/funknown.h"

template <typename First, typename... Others>
class HostObject : public First, public Others... {
public:
    Steinberg::tresult PLUGIN_API queryInterface(const Steinberg::TUID wanted, void** obj) override
    {
        using namespace Steinberg;
        const auto is = [&](const TUID id) { return FUnknownPrivate::iidEqual(wanted, id); };
        *obj = is(FUnknown::iid) || is(First::iid) ? static_cast<First*>(this) : nullptr;
        ((is(Others::iid) ? void(*obj = static_cast<Others*>(this)) : void()), ...);
        return *obj ? kResultOk : kNoInterface;
    }
    Steinberg::uint32 PLUGIN_API addRef() override { return 1; }
    Steinberg::uint32 PLUGIN_API release() override { return 1; }
};

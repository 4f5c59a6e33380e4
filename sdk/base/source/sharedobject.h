// SharedObject: objects of the SDK that several threads release, such as an editor that the host
// drops on one thread while another still closes its window.
#pragma once

#include "base/source/fobject.h"

namespace Steinberg {

// `Base` is an FObject. FObject::release reads the count again after it lowered it, when another
// thread may have deleted the object already.
template <class Base>
class SharedObject : public Base {
public:
    using Base::Base;

    uint32 PLUGIN_API release() override
    {
        const int32 left = FUnknownPrivate::atomicAdd(this->refCount, -1);
        if (left == 0) {
            // Keeps destructors from deleting the object again.
            this->refCount = kDeleted;
            delete this;
        }
        return static_cast<uint32>(left);
    }

protected:
    // How many references there are; negative while the object is destroyed.
    int32 references() const
    {
        return FUnknownPrivate::atomicAdd(const_cast<SharedObject*>(this)->refCount, 0);
    }

private:
    static constexpr int32 kDeleted = -1000;
};

}  // namespace Steinberg

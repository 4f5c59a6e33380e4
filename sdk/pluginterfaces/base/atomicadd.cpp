// Reference counting that is safe between threads. The packaged SDK's function for Linux adds
// atomically but then reads the sum again, when another thread may have changed it: of two threads
// that release an object, both may see that no reference is left, or neither.
#include "pluginterfaces/base/funknown.h"

#include <atomic>

namespace Steinberg {
namespace FUnknownPrivate {

static_assert(sizeof(std::atomic<int32>) == sizeof(int32) && std::atomic<int32>::is_always_lock_free);

int32 PLUGIN_API atomicAdd(int32& value, int32 change)
{
    return reinterpret_cast<std::atomic<int32>&>(value).fetch_add(change) + change;
}

}  // namespace FUnknownPrivate
}  // namespace Steinberg

// ParameterTransfer: transfers the latest value of every parameter to one reading thread.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace Steinberg {
namespace Vst {

// A lock-free table of latest values, one per slot, each with a stamp of its last change. Any
// number of threads write, one thread at a time reads. Does not allocate after construction. Of any
// number of writes between two reads the last one of every slot arrives, and changed slots are read
// in the order of their last change.
class ParameterTransfer {
public:
    struct Change {
        std::size_t slot;
        double value;
        std::uint64_t stamp;
    };

    explicit ParameterTransfer(std::size_t slotCount)
        : slots(slotCount ? new Slot[slotCount] : nullptr), delivered(slotCount, 0)
    {
        changes.reserve(slotCount);
    }

    // Writes from any thread. `slot` is below the slot count.
    void set(std::size_t slot, double value)
    {
        slots[slot].value.store(value, std::memory_order_relaxed);
        const std::uint64_t stamp = lastStamp.fetch_add(1, std::memory_order_acq_rel) + 1;
        // An exchange, not a store: the reader that sees this stamp then also sees the values of
        // writers whose stamps were overwritten.
        slots[slot].stamp.exchange(stamp, std::memory_order_acq_rel);
        published.fetch_add(1, std::memory_order_release);
    }

    // Whether a slot has been written since its last change was taken. For the reader only.
    bool hasChange(std::size_t slot) const
    {
        return slots[slot].stamp.load(std::memory_order_acquire) != delivered[slot];
    }

    // The changes since the last call, oldest first. Valid until the next call.
    const std::vector<Change>& takeChanges()
    {
        changes.clear();
        const std::uint64_t now = published.load(std::memory_order_acquire);
        if (now == seen)
            return changes;
        seen = now;
        // Later writes are left for the next call, so that of two slots written one after the other
        // the second never arrives first.
        const std::uint64_t newest = lastStamp.load(std::memory_order_acquire);
        for (std::size_t i = 0; i < delivered.size(); ++i) {
            const std::uint64_t stamp = slots[i].stamp.load(std::memory_order_acquire);
            if (stamp == delivered[i] || stamp > newest)
                continue;
            delivered[i] = stamp;
            insert({i, slots[i].value.load(std::memory_order_relaxed), stamp});
        }
        return changes;
    }

private:
    static_assert(std::atomic<double>::is_always_lock_free
                      && std::atomic<std::uint64_t>::is_always_lock_free,
                  "the audio thread must not lock");

    struct Slot {
        std::atomic<double> value{0.0};
        std::atomic<std::uint64_t> stamp{0};
    };

    // Insertion by stamp; the table is short and mostly in order.
    void insert(const Change& change)
    {
        changes.push_back(change);
        for (std::size_t i = changes.size() - 1; i > 0 && changes[i - 1].stamp > changes[i].stamp;
             --i)
            std::swap(changes[i - 1], changes[i]);
    }

    std::unique_ptr<Slot[]> slots;
    std::atomic<std::uint64_t> lastStamp{0};
    std::atomic<std::uint64_t> published{0};

    // Used only by the reader.
    std::uint64_t seen = 0;
    std::vector<std::uint64_t> delivered;
    std::vector<Change> changes;
};

}  // namespace Vst
}  // namespace Steinberg

// ParameterTransfer: no value is lost and the order is kept, with one thread and with several.
#include "public.sdk/source/vst/vst2wrapper/parametertransfer.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <thread>

using Steinberg::Vst::ParameterTransfer;

namespace {

using Clock = std::chrono::steady_clock;
using Delivery = std::vector<std::pair<std::size_t, double>>;

Delivery take(ParameterTransfer& transfer)
{
    Delivery delivery;
    for (const auto& change : transfer.takeChanges())
        delivery.emplace_back(change.slot, change.value);
    return delivery;
}

TEST(ParameterTransfer, SlotsArriveOnceWithTheirLastValueInTheOrderOfTheirLastChange)
{
    ParameterTransfer transfer(6);
    transfer.set(4, 0.1);
    transfer.set(1, 0.2);
    transfer.set(5, 0.3);
    transfer.set(4, 0.4);
    transfer.set(0, 0.5);
    transfer.set(1, 0.2);
    EXPECT_EQ(take(transfer), (Delivery{{5, 0.3}, {4, 0.4}, {0, 0.5}, {1, 0.2}}));
    EXPECT_EQ(take(transfer), Delivery());
}

TEST(ParameterTransfer, WritersThatNeverPauseLoseNoLastValueAndTheLastWrittenSlotArrivesLast)
{
    constexpr std::size_t kWriters = 3, kShared = 2 * kWriters;
    for (int round = 0; round < 40; ++round) {
        ParameterTransfer transfer(kShared + 1);
        std::atomic<std::size_t> finished{0};
        std::vector<std::thread> writers;
        for (std::size_t w = 0; w < kWriters; ++w)
            writers.emplace_back([&transfer, &finished, w] {
                // Every other writer writes last the slot that the reader visits first.
                const std::size_t first = 2 * w + (w & 1), last = 2 * w + 1 - (w & 1);
                for (int i = 1; i <= 2000; ++i) {
                    transfer.set(first, i);
                    transfer.set(kShared, 10000.0 * static_cast<double>(w) + i);
                    transfer.set(last, i);
                }
                ++finished;
            });

        double values[kShared + 1] = {};
        std::size_t arrival[kShared + 1] = {}, arrivals = 0;
        for (bool last = false; !last; std::this_thread::yield()) {
            last = finished == kWriters;
            for (const auto& [slot, value] : take(transfer)) {
                values[slot] = value;
                arrival[slot] = ++arrivals;
            }
        }
        for (std::thread& writer : writers)
            writer.join();
        for (std::size_t w = 0; w < kWriters; ++w) {
            EXPECT_EQ(values[2 * w], 2000.0);
            EXPECT_EQ(values[2 * w + 1], 2000.0);
            EXPECT_LT(arrival[2 * w + (w & 1)], arrival[2 * w + 1 - (w & 1)]) << "writer " << w;
        }
        EXPECT_EQ(std::fmod(values[kShared], 10000.0), 2000.0);
    }
}

TEST(ParameterTransfer, OfTwoSlotsWrittenOneAfterTheOtherTheSecondNeverArrivesFirstAndBothArrive)
{
    // In both orders, since a reader that walks the table meets one pair in the order of writing
    // and the other against it; and far apart, so that the walk takes long. The writer continues
    // once its pair has arrived.
    for (const std::size_t first : {0u, 255u}) {
        ParameterTransfer transfer(256);
        std::atomic<bool> stop{false};
        std::atomic<int> written{0}, arrived{0};
        std::thread writer([&] {
            for (int i = 1; !stop; ++i) {
                transfer.set(first, i);
                transfer.set(255 - first, i);
                written = i;
                while (arrived < i && !stop)
                    std::this_thread::yield();
            }
        });

        int values[2] = {}, overtaken = 0, lost = 0;
        // At least 0.5 s and a hundred pairs, however busy the machine; a lost value ends the loop.
        const auto start = Clock::now();
        while (lost == 0
               && (Clock::now() - start < std::chrono::milliseconds(500) || arrived <= 100)) {
            const int complete = written;
            for (const auto& [slot, value] : take(transfer)) {
                values[slot == first ? 0 : 1] = static_cast<int>(value);
                overtaken += values[1] > values[0];
            }
            lost += values[0] < complete || values[1] < complete;
            arrived = values[1];
        }
        stop = true;
        writer.join();
        EXPECT_EQ(overtaken, 0);
        EXPECT_EQ(lost, 0) << "after " << arrived << " pairs";
    }
}

}  // namespace

// ParameterTransfer: nothing is lost and nothing overtakes, with one thread and with several.
#include "public.sdk/source/vst/vst2wrapper/parametertransfer.h"

#include <gtest/gtest.h>

#include <chrono>
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
                // Every other writer ends with the slot that is looked at first.
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
        const auto read = [&] {
            for (const auto& [slot, value] : take(transfer)) {
                values[slot] = value;
                arrival[slot] = ++arrivals;
            }
        };
        while (finished < kWriters) {
            read();
            std::this_thread::yield();
        }
        for (std::thread& writer : writers)
            writer.join();
        read();

        for (std::size_t w = 0; w < kWriters; ++w) {
            EXPECT_EQ(values[2 * w], 2000.0);
            EXPECT_EQ(values[2 * w + 1], 2000.0);
            EXPECT_LT(arrival[2 * w + (w & 1)], arrival[2 * w + 1 - (w & 1)]) << "writer " << w;
        }
        const double shared = values[kShared];
        EXPECT_TRUE(shared == 2000.0 || shared == 12000.0 || shared == 22000.0) << shared;
    }
}

TEST(ParameterTransfer, OfTwoSlotsWrittenOneAfterTheOtherTheSecondNeverArrivesFirstAndBothArrive)
{
    // Both ways round, since a reader that walks the table meets one pair in the order of writing
    // and the other against it, and far apart, so that the walk takes its time. The writer goes on
    // once its pair has arrived; a value that got lost leaves it waiting.
    const struct {
        std::size_t first, second;
    } pairs[] = {{0, 255}, {255, 0}};
    for (const auto& pair : pairs) {
        ParameterTransfer transfer(256);
        std::atomic<bool> stop{false};
        std::atomic<int> arrived{0};
        int sent = 0;
        std::thread writer([&] {
            while (!stop) {
                ++sent;
                transfer.set(pair.first, sent);
                transfer.set(pair.second, sent);
                while (arrived < sent && !stop)
                    std::this_thread::yield();
            }
        });

        int first = 0, second = 0, overtaken = 0;
        const auto read = [&] {
            for (const auto& [slot, value] : take(transfer)) {
                (slot == pair.first ? first : second) = static_cast<int>(value);
                overtaken += second > first;
            }
            arrived = second;
        };
        // A machine with other work to do gets the time that it needs.
        const auto start = Clock::now();
        while (Clock::now() - start < std::chrono::milliseconds(500)
               || (arrived <= 100 && Clock::now() - start < std::chrono::seconds(30)))
            read();
        stop = true;
        writer.join();
        read();
        EXPECT_EQ(overtaken, 0);
        EXPECT_EQ(first, sent);
        EXPECT_EQ(second, sent);
        EXPECT_GT(sent, 100);
    }
}

}  // namespace

// ParameterTransfer: nothing is lost and nothing overtakes, with one thread and
// with several.
#include "public.sdk/source/vst/vst2wrapper/parametertransfer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <climits>
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
    const Delivery written = {{4, 0.1}, {1, 0.2}, {5, 0.3}, {4, 0.4}, {0, 0.5}, {1, 0.2}};
    for (const auto& [slot, value] : written)
        transfer.set(slot, value);
    EXPECT_EQ(take(transfer), (Delivery{{5, 0.3}, {4, 0.4}, {0, 0.5}, {1, 0.2}}));
    EXPECT_EQ(take(transfer), Delivery());
}

// A writer goes on once its pair has arrived, which nothing written later may bring about.
struct Writer {
    std::size_t first, second;
    std::atomic<int> written{0}, arrived{0};
    int values[2] = {};
};

TEST(ParameterTransfer, OfTwoSlotsWrittenOneAfterTheOtherTheSecondNeverArrivesFirstAndBothArrive)
{
    // A reader that walks the table meets one pair in the order of writing and the other against
    // it, and far apart, so that the walk takes its time. Each writer is there alone and both.
    for (const unsigned present : {1u, 2u, 3u}) {
        Writer all[] = {{0, 255}, {254, 1}};
        std::vector<Writer*> writers;
        for (const unsigned w : {0u, 1u})
            if (present >> w & 1)
                writers.push_back(&all[w]);
        ParameterTransfer transfer(256);
        std::atomic<bool> stop{false};
        std::vector<std::thread> threads;
        for (Writer* writer : writers)
            threads.emplace_back([&transfer, &stop, writer] {
                for (int i = 1; !stop; ++i) {
                    transfer.set(writer->first, i);
                    transfer.set(writer->second, i);
                    writer->written = i;
                    while (writer->arrived < i && !stop)
                        std::this_thread::yield();
                }
            });

        int overtaken = 0, lost = 0, fewest = 0;
        // However long a busy machine takes for a hundred pairs: a lost value ends
        // it.
        const auto least = Clock::now() + std::chrono::milliseconds(500);
        while (lost == 0 && (Clock::now() < least || fewest <= 100)) {
            std::vector<int> complete;
            for (const Writer* writer : writers)
                complete.push_back(writer->written);
            for (const auto& [slot, value] : take(transfer))
                for (Writer* writer : writers) {
                    if (slot == writer->first || slot == writer->second)
                        writer->values[slot == writer->first ? 0 : 1] = static_cast<int>(value);
                    overtaken += writer->values[1] > writer->values[0];
                }
            fewest = INT_MAX;
            for (std::size_t w = 0; w < writers.size(); ++w) {
                const int* const values = writers[w]->values;
                lost += std::min(values[0], values[1]) < complete[w];
                writers[w]->arrived = values[1];
                fewest = std::min(fewest, values[1]);
            }
        }
        stop = true;
        for (std::thread& thread : threads)
            thread.join();
        EXPECT_EQ(overtaken, 0);
        EXPECT_EQ(lost, 0) << "after " << fewest << " pairs";
    }
}

}  // namespace

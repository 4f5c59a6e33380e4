// The response of the built library, measured from outside, in every combination of bands: against
// the closed formulas of its filters, at several rates.
#include "NativePlugin.h"
#include "StripResponse.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

constexpr float kHeight = 1e-3f;  // of the impulse: the curves are straight there to 1e-5 dB

std::vector<double> impulseThrough(host::NativePlugin& plugin, std::size_t length)
{
    std::vector<float> left(length, 0.0f), right(length, 0.0f), out(length), unused(length);
    left[0] = kHeight;
    float* inputs[2] = {left.data(), right.data()};
    float* outputs[2] = {out.data(), unused.data()};
    plugin.process(inputs, outputs, static_cast<int>(length));
    std::vector<double> response;
    for (const float x : out)
        response.push_back(static_cast<double>(x) / static_cast<double>(kHeight));
    return response;
}

void setLeft(host::NativePlugin& plugin, const UpdateCase& c)
{
    const auto set = [&](VstInt32 index, double value) {
        plugin.setParameter(index, static_cast<float>(value));
    };
    set(24, c.bandMode & 1 ? 1.0 : 0.0);  // LShelfL
    set(26, stepPosition(kLow, c.low.stepHz));
    set(28, knob(c.low.knobDb));
    set(30, stepPosition(kMid, c.mid.stepHz));
    set(32, knob(c.mid.knobDb));
    set(34, c.bandMode & 2 ? 1.0 : 0.0);  // HShelfL
    set(36, stepPosition(kHigh, c.high.stepHz));
    set(38, knob(c.high.knobDb));
}

}  // namespace

// With `Power` off only the oversampling filters are left; divided by that response, the rest is
// the strip's, as it runs at its own rate. Close to half the host's rate the images would count.
TEST(Response, OfEveryCombinationThroughTheWholeLibraryIsThatOfTheAnalogueFilters)
{
    for (const double rate : {44100.0, 96000.0, 192000.0}) {
        const double stripRate = rate * (rate < 88200.0 ? 4.0 : rate < 176400.0 ? 2.0 : 1.0);
        const auto length = static_cast<std::size_t>(rate);
        host::NativePlugin reference(ZKR_PLUGIN);
        reference.setSampleRate(rate);
        reference.setParameter(0, 0.0f);
        reference.mainsOn();
        const std::vector<double> plain = impulseThrough(reference, length);
        for (const UpdateCase& c : kUpdateCases) {
            SCOPED_TRACE(testing::Message() << "mode " << c.bandMode << " at " << rate);
            host::NativePlugin plugin(ZKR_PLUGIN);
            plugin.setSampleRate(rate);
            plugin.mainsOn();
            setLeft(plugin, c);
            // A fifth of a second of silence, so that the gain glides have ended.
            std::vector<float> rest(length / 5, 0.0f), out(length / 5), unused(length / 5);
            float* inputs[2] = {rest.data(), rest.data()};
            float* outputs[2] = {out.data(), unused.data()};
            plugin.process(inputs, outputs, static_cast<int>(rest.size()));
            const std::vector<double> h = impulseThrough(plugin, length);
            for (const double hz : {30.0, 120.0, 500.0, 2000.0, 7000.0, 15000.0})
                EXPECT_NEAR(decibels(responseAt(h, hz, rate) / responseAt(plain, hz, rate)),
                            decibels(smallSignalAt(c, hz, stripRate)), 1e-3)
                    << hz << " Hz";
        }
    }
}

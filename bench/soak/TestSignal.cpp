// The kinds of signals.
#include "TestSignal.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double kTurn = 6.283185307179586;

}  // namespace

void TestSignal::change(double rate)
{
    kind = static_cast<Kind>(dice.below(static_cast<int>(Kind::Count)));
    // -60 dB to full scale.
    level = std::pow(10.0f, -3.0f * dice.position());
    for (double& each : step)
        each = kTurn * 20.0 * std::pow(rate / 50.0, static_cast<double>(dice.position())) / rate;
    untilBurst = 0;
    burstLeft = 0;
}

// White noise through one-pole low-passes two octaves apart, of which each adds a step to a
// staircase that falls like music does.
float TestSignal::noise(std::size_t channel)
{
    float sum = 0.0f, pole = 0.5f;
    for (float& state : poles[channel]) {
        state += pole * (dice.sample() - state);
        sum += state;
        pole *= 0.25f;
    }
    return sum / static_cast<float>(poles[channel].size());
}

float TestSignal::poisoned(float good)
{
    using Limits = std::numeric_limits<float>;
    switch (dice.below(60)) {
    case 0:
        return Limits::quiet_NaN();
    case 1:
        return Limits::infinity();
    case 2:
        return -Limits::infinity();
    case 3:
    case 4:
        return Limits::denorm_min() * static_cast<float>(dice.below(1000));
    default:
        return good;
    }
}

void TestSignal::fill(float* left, float* right, int count)
{
    for (int i = 0; i < count; ++i) {
        float l = 0.0f, r = 0.0f;
        switch (kind) {
        case Kind::Noise:
        case Kind::Poison:
            l = level * noise(0);
            r = level * noise(1);
            break;
        case Kind::Sines:
            l = level * static_cast<float>(std::sin(phase[0]));
            r = level * static_cast<float>(std::sin(phase[1]));
            for (std::size_t c = 0; c < 2; ++c)
                phase[c] = std::fmod(phase[c] + step[c], kTurn);
            break;
        case Kind::Bursts:
            if (burstLeft == 0 && untilBurst-- <= 0) {
                burstLeft = dice.between(1, 600);
                untilBurst = dice.between(1, 5000);
            }
            if (burstLeft > 0) {
                --burstLeft;
                l = dice.oneIn(2) ? 1.0f : -1.0f;
                r = dice.oneIn(2) ? 1.0f : -1.0f;
            }
            break;
        default:
            break;
        }
        left[i] = kind == Kind::Poison ? poisoned(l) : l;
        right[i] = kind == Kind::Poison ? poisoned(r) : r;
    }
}

const char* TestSignal::name() const
{
    constexpr const char* kNames[] = {"noise", "sines", "silence", "bursts", "noise with poison"};
    return kNames[static_cast<int>(kind)];
}

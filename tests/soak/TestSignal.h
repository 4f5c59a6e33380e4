// Test signals: noise, bursts, noise with non-finite samples, silence.
#pragma once

#include "tests/soak/Run.h"

#include <cmath>
#include <limits>

struct TestSignal {
    enum class Kind { Noise, Bursts, Poison, Silence, Count };

    // -1 to 1; with Kind::Poison some are NaN, infinite or denormal.
    float sample(Random& random)
    {
        using Limits = std::numeric_limits<float>;
        constexpr float kPoison[]{Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(),
                                  Limits::denorm_min(), 1000.0f * Limits::denorm_min()};
        if (kind == Kind::Bursts && burstLeft == 0 && random.oneIn(5000))
            burstLeft = random.between(1, 1200);
        if (kind == Kind::Silence || (kind == Kind::Bursts && burstLeft == 0))
            return 0.0f;
        if (kind == Kind::Bursts) {
            --burstLeft;
            return random.oneIn(2) ? 1.0f : -1.0f;
        }
        if (kind == Kind::Poison && random.oneIn(12))
            return random.of(kPoison);
        return level * (2.0f * random.position() - 1.0f);
    }

    Kind kind = Kind::Noise;
    float level = 0.25f;
    int burstLeft = 0;  // samples
};

constexpr const char* kSignalNames[] = {"noise", "bursts", "noise with poison", "silence"};

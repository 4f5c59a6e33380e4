// What is played to an instance: now this, now that.
#pragma once

#include "Dice.h"

#include <array>

class TestSignal {
public:
    enum class Kind { Noise, Sines, Silence, Bursts, Poison, Count };

    explicit TestSignal(Dice& chance) : dice(chance) { }

    // Another kind from here on.
    void change(double rate);
    void fallSilent() { kind = Kind::Silence; }
    // Samples within -1 to 1; of Poison some are no numbers at all. Two channels.
    void fill(float* left, float* right, int count);
    const char* name() const;

private:
    float noise(std::size_t channel);
    float poisoned(float good);

    Dice& dice;
    Kind kind = Kind::Noise;
    float level = 0.25f;
    std::array<std::array<float, 4>, 2> poles{};
    std::array<double, 2> phase{}, step{};  // radians
    int untilBurst = 0, burstLeft = 0;      // samples
};

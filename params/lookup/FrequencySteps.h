// The stepped frequencies of both strips in Hz, by knob step, for display and processing. Entry 0
// is "Off". In the three tables of the equaliser frequencies fall as the knob rises, in that of the
// high-pass they rise; presets store the positions. The band models are keyed by these values.
#pragma once

#include <array>

// clang-format off
constexpr std::array<double, 10> kLowStepsHz{{
    -1.0, 550.0, 430.0, 370.0, 300.0, 200.0, 120.0, 82.0, 63.0, 33.0}};
constexpr std::array<double, 10> kMidStepsHz{{
    -1.0, 5600.0, 4600.0, 3800.0, 3000.0, 2500.0, 1800.0, 1200.0, 800.0, 680.0}};
constexpr std::array<double, 10> kHighStepsHz{{
    -1.0, 28000.0, 24000.0, 20000.0, 17500.0, 14000.0, 12000.0, 10000.0, 8200.0, 6800.0}};
constexpr std::array<double, 12> kHighPassStepsHz{{
    -1.0, 20.0, 30.0, 50.0, 70.0, 100.0, 140.0, 200.0, 280.0, 400.0, 560.0, 800.0}};
// clang-format on

// The low band can be a shelf at steps from kMinShelfHz to kMaxShelfHz.
constexpr double kMinShelfHz = 63.0;
constexpr double kMaxShelfHz = 300.0;

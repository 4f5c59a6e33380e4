// The tables of the band models and their formulas. They define the sound of each step: presets and
// the worked values of the tests depend on every digit. Similar rows are separate on purpose.
//
// Throughout: g is the gain in dB, w = log10(|g| + 1) / log10(17) runs from 0 at 0 dB to 1 at 16 dB
// on either side, u = g / 16 keeps the sign. For frequency and Q a cut is g below 0; for output
// gain and damping it is g at or below 0. With g = 0 the band itself has no effect.
//
// The tables' columns dB/w and dB/w^3 are the strip's output gain in dB at w = 1, times w or w^3.
#include "dsp/BandModels.h"

#include "dsp/ControlLaws.h"
#include "dsp/ElementaryFunctions.h"
#include "params/lookup/FrequencySteps.h"

#include <array>
#include <cstddef>

namespace {

struct Line {
    double at0, slope;  // at0 + slope * w, or at0 + slope * u for a column with (u)
};

struct LowShelfRow {
    int hz;
    double corner;
    double cutOutputDb;
    Line cutDamping;
    double boostOutputDb;
    Line boostDamping;
};

struct HighShelfRow {
    int hz;
    double corner;
    double cutGain, cutOutputDb;
    Line cutDamping;
    double boostGain, boostOutputDb;
    Line boostDamping;
};

struct LowBellRow {
    int hz;
    double cutRatio, boostSlope, boostBase;
    double cutOutputDb;
    Line cutDamping;
    double boostOutputDb;
    Line boostDamping;
};

struct UpperBellRow {
    int hz;
    double cutRatio, boostSlope, boostBase;
    double cutGain, boostGain;
    double cutOutputDb;
    Line cutDamping;
    double boostOutputDb;
    Line boostDamping;
};

struct HighBellRow : UpperBellRow {
    double cutQ, boostQ;
};

// clang-format off

constexpr std::array<LowShelfRow, 5> kLowShelf{{
//   Hz  corner   cut                  boost
//                dB/w   damping(w)    dB/w  damping(w)
    { 63, 0.92,  -1.0, {0.8,  0.88}, 1.85, {0.8, -0.79}},
    { 82,  1.0,  -1.1, {0.8,  0.92}, 1.55, {0.8, -0.79}},
    {120, 0.81, -1.41, {0.8,  0.75}, 1.55, {0.8, -0.76}},
    {200, 0.98, -0.95, {0.8,  0.92}, 1.55, {0.8, -0.79}},
    {300,  1.0, -0.79, {0.8,  0.85}, 1.21, {0.8, -0.79}},
}};

constexpr std::array<HighShelfRow, 9> kHighShelf{{
//      Hz  corner   cut                       boost
//                   gain   dB/w  damping(w)   gain    dB/w^3  damping(w)
    { 6800,  1.0,   1.0, 0.2, {0.8, -0.23}, 1.0611,  0.0, {0.8,  0.23}},
    { 8200, 0.94,   1.0, 0.2, {0.8, -0.23},   1.07,  0.0, {0.8,  0.23}},
    {10000,  1.0, 0.978, 0.1, {0.8, -0.33}, 1.0544, 0.32, {0.8,  0.33}},
    {12000, 0.94, 0.978, 0.0, {0.8, -0.23}, 1.0544,  0.0, {0.8,  0.23}},
    {14000,  1.0, 0.978, 0.0, {0.8, -0.23},   1.06,  0.0, {0.8,  0.23}},
    {17500, 0.92, 0.955, 0.0, {0.8, -0.23},   1.06,  0.0, {0.8,  0.27}},
    {20000, 0.96,  0.94, 0.0, {0.8, -0.23},   1.06,  0.0, {0.8,  0.33}},
    {24000, 0.96, 0.958, 0.0, {0.8, -0.23},   1.06,  0.0, {0.8,  0.33}},
    {28000, 0.96,  0.93, 0.0, {0.8, -0.23},   1.04,  0.0, {0.8,  0.33}},
}};

constexpr std::array<LowBellRow, 9> kLowBell{{
//   Hz    cut  boost         cut                   boost
//       ratio  slope   base   dB/w   damping(w)    dB/w  damping(w)
    { 33,   0.7, 0.08,  0.74, -1.18, {0.8,  1.02}, 1.55, {0.8, -0.79}},
    { 63,  0.74, 0.12,  0.78,  -1.0, {0.8,  0.88}, 1.85, {0.8, -0.79}},
    { 82,  0.82, 0.12,  0.84,  -1.1, {0.8,  0.92}, 1.55, {0.8, -0.79}},
    {120,   0.7,  0.0,   0.0, -1.41, {0.8,  0.75}, 1.55, {0.8, -0.76}},
    {200,  0.82,  0.1,   0.9, -0.95, {0.8,  0.92}, 1.55, {0.8, -0.79}},
    {300,  0.84, 0.08,   0.9, -0.79, {0.8,  1.02}, 1.21, {0.8, -0.79}},
    {370,  0.84, 0.08,   0.9, -0.79, {0.8,  1.02}, 1.12, {0.8, -0.79}},
    {430, 0.901, 0.14, 0.901, -0.79, {0.8,  0.83}, 1.12, {0.8, -0.79}},
    {550, 0.834, 0.13,  0.83,  -1.1, {0.8,  0.75}, 1.12, {0.8, -0.79}},
}};  // lowBellModel computes the boost's ratio at 120 Hz

constexpr std::array<UpperBellRow, 9> kMidBell{{
//    Hz    cut  boost        cut     boost  cut                    boost
//        ratio  slope  base    gain   gain    dB/w  damping(u)     dB/w^3  damping(w)
    { 680, 0.88, 0.08, 0.89, 1.0608,  0.98, -0.54, {0.75,  -0.9}, 1.09, {0.75, -0.74}},
    { 800, 0.88, 0.08, 0.91, 1.0608,  0.98, -0.54, {0.75,  -0.9}, 1.09, {0.75, -0.74}},
    {1200, 0.88, 0.08, 0.88, 1.0608,  1.02,   0.0, {0.75, -1.07}, 0.52, {0.75, -0.69}},
    {1800, 0.88, 0.08, 0.88, 1.0608,  1.02,   0.0, {0.75, -1.07}, 0.52, {0.75, -0.49}},
    {2500, 0.94, 0.08, 0.94, 1.0608,  1.02,   0.0, {0.75, -0.71},  1.2, {0.75, -0.09}},
    {3000, 0.96, 0.04, 0.96,   1.02,  0.97,   0.0, {0.75, -0.46}, 1.66, {0.75, -0.09}},
    {3800,  0.9, 0.04, 0.92,   1.01, 0.993,   0.0,  {0.8, -0.16}, 0.53,  {0.8, -0.01}},
    {4600,  0.9, 0.04, 0.92,   1.01, 0.986,   0.2,  {0.8, -0.26}, 0.52,  {0.8,   0.1}},
    {5600,  0.9, 0.04, 0.92,   1.01, 0.986,   0.2,  {0.8, -0.26}, 0.92,  {0.8,   0.9}},
}};

constexpr std::array<HighBellRow, 9> kHighBell{{
//     Hz    cut   boost          cut    boost   cut               boost                     Q
//         ratio   slope   base   gain    gain   dB/w damping(u)   dB/w^3  damping(w)   cut  boost
    { 6800, 0.925, 0.041, 0.925,  1.02, 1.0611, 0.2, {0.8, -0.24},  0.0, {0.8,   0.2}, 1.1,   1.0},
    { 8200,   0.9,  0.04,  0.92,  1.04,   0.99, 0.2, {0.8, -0.26}, 0.52, {0.8,  0.65}, 1.1,  0.97},
    {10000,   0.9,  0.04,  0.92, 0.998,   0.99, 0.2, {0.8, -0.26}, 0.52, {0.8,  0.65}, 1.1,  0.97},
    {12000, 0.876,  0.04, 0.876, 0.978, 1.0544, 0.0, {0.8, -0.26},  0.0, {0.8, -0.07}, 1.1, 0.999},
    {14000,  0.92,  0.04,  0.92, 0.978,  1.039, 0.0, {0.8, -0.26},  0.0, {0.8, -0.08}, 1.1,  1.05},
    {17500,  0.88,  0.04,  0.88, 0.955,   1.02, 0.0, {0.8, -0.26},  0.0, {0.8, -0.08}, 1.1,   1.0},
    {20000,  0.92,  0.04,  0.92,  0.94,   1.02, 0.0, {0.8, -0.26},  0.0, {0.8, -0.08}, 1.1,   1.0},
    {24000,  0.93, 0.018,  0.93, 0.958,   1.02, 0.0, {0.8, -0.26},  0.0, {0.8, -0.08}, 1.1,  0.99},
    {28000,  0.96,   0.0,  0.96,  0.93,    1.0, 0.0, {0.8, -0.26},  0.0, {0.8, -0.08}, 1.1,  0.99},
}};

// clang-format on

template <class Row, std::size_t rows, std::size_t steps>
constexpr bool coversSteps(const std::array<Row, rows>& table,
                           const std::array<double, steps>& stepsHz, double lowest, double highest)
{
    for (const double hz : stepsHz) {
        bool found = hz < lowest || hz > highest;
        for (const Row& row : table)
            found = found || row.hz == static_cast<int>(hz + 0.5);
        if (!found)
            return false;
    }
    return true;
}

constexpr double kAnyHz = 1e9;
static_assert(coversSteps(kLowShelf, kLowStepsHz, kMinShelfHz, kMaxShelfHz),
              "a low step that can be a shelf has no shelf model");
static_assert(coversSteps(kHighShelf, kHighStepsHz, 0.0, kAnyHz), "a high step has no shelf model");
static_assert(coversSteps(kLowBell, kLowStepsHz, 0.0, kAnyHz), "a low step has no bell model");
static_assert(coversSteps(kMidBell, kMidStepsHz, 0.0, kAnyHz), "a mid step has no bell model");
static_assert(coversSteps(kHighBell, kHighStepsHz, 0.0, kAnyHz), "a high step has no bell model");

template <class Row, std::size_t rows>
const Row& rowFor(const std::array<Row, rows>& table, double stepHz)
{
    const int key = truncate(stepHz + 0.5);
    for (const Row& row : table)
        if (row.hz == key)
            return row;
    return table.back();
}

double curveW(double g)
{
    return elementary::decimalLogarithm(std::fabs(g) + 1.0) / elementary::decimalLogarithm(17.0);
}

double at(const Line& line, double variable)
{
    return line.at0 + line.slope * variable;
}

double cube(double w)
{
    return w * w * w;
}

// The corner of a low shelf over the stepped frequency; a high shelf has the inverse.
double shelfCorner(double g)
{
    return g > 0.0 ? 6.54894 - 2.00016 * elementary::logarithm(g) : 6.75;
}

// The Q of a cut is fixed and very low, that of a boost a quadratic in u.
double bellQ(double g, double u, double cutBase)
{
    const double base = g < 0.0 ? cutBase : 1.36 * (u * u) - 0.66 * u + 0.31;
    return base * 0.96;
}

constexpr double kLowBellCutQ = 0.13;
constexpr double kUpperBellCutQ = 0.1378;  // mid and high

// The mid and high bells, g dB.
BandModel upperBellModel(const UpperBellRow& row, double g, double stepHz)
{
    const double w = curveW(g);
    const double u = g / 16.0;
    const bool boost = g > 0.0;
    return {g * (g < 0.0 ? row.cutGain : row.boostGain),
            stepHz * (g < 0.0 ? row.cutRatio : row.boostSlope * w + row.boostBase),
            bellQ(g, u, kUpperBellCutQ),
            decibelsToGain(boost ? row.boostOutputDb * cube(w) : row.cutOutputDb * w),
            boost ? at(row.boostDamping, w) : at(row.cutDamping, u)};
}

}  // namespace

BandModel lowShelfModel(double gainPosition, double stepHz)
{
    const LowShelfRow& row = rowFor(kLowShelf, stepHz);
    const double g = bandGainDb(gainPosition);
    const double w = curveW(g);
    const bool boost = g > 0.0;
    return {g, stepHz * shelfCorner(g) * row.corner, 1.0,
            decibelsToGain((boost ? row.boostOutputDb : row.cutOutputDb) * w),
            at(boost ? row.boostDamping : row.cutDamping, w)};
}

BandModel highShelfModel(double gainPosition, double stepHz)
{
    const HighShelfRow& row = rowFor(kHighShelf, stepHz);
    const double g = bandGainDb(gainPosition);
    const double w = curveW(g);
    const bool boost = g > 0.0;
    return {g * (boost ? row.boostGain : row.cutGain), stepHz * (1.0 / shelfCorner(g)) * row.corner,
            1.0, decibelsToGain(boost ? row.boostOutputDb * cube(w) : row.cutOutputDb * w),
            at(boost ? row.boostDamping : row.cutDamping, w)};
}

BandModel lowBellModel(double gainPosition, double stepHz)
{
    const LowBellRow& row = rowFor(kLowBell, stepHz);
    const double g = bandGainDb(gainPosition);
    const double w = curveW(g);
    const double u = g / 16.0;
    const bool boost = g > 0.0;
    double factor = g < 0.0 ? row.cutRatio : row.boostSlope * w + row.boostBase;
    if (row.hz == 120 && g >= 0.0)  // the only ratio that is a quadratic in u
        factor = 0.16 * (u * u) + 0.0000001 * u + 0.7;
    return {g * (boost ? 0.97 : 1.02), stepHz * factor, bellQ(g, u, kLowBellCutQ),
            decibelsToGain((boost ? row.boostOutputDb : row.cutOutputDb) * w),
            at(boost ? row.boostDamping : row.cutDamping, w)};
}

BandModel midBellModel(double gainPosition, double stepHz)
{
    return upperBellModel(rowFor(kMidBell, stepHz), bandGainDb(gainPosition), stepHz);
}

BandModel highBellModel(double gainPosition, double stepHz)
{
    const HighBellRow& row = rowFor(kHighBell, stepHz);
    const double g = bandGainDb(gainPosition);
    BandModel model = upperBellModel(row, g, stepHz);
    model.q *= g < 0.0 ? row.cutQ : row.boostQ;
    return model;
}

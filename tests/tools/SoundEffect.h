// What a host hears of the sound one of the test effects, on whatever side of Wine it lives.
#pragma once

#include "Plugin.h"

#include <gtest/gtest.h>

#include <vector>

inline void expectSoundEffect(host::Plugin& plugin)
{
    EXPECT_EQ(plugin.effectName(), "zkrt46 host 44100 512");
    plugin.setSampleRate(96000.0);
    plugin.setBlockSize(64);
    EXPECT_EQ(plugin.effectName(), "zkrt46 host 96000 64");
    EXPECT_EQ(plugin.canDo("anything"), 1) << "the effect hands on what the host says it can do";
    EXPECT_EQ(plugin.fields().numParams, 3);
    EXPECT_EQ(plugin.fields().uniqueID, 0x54657374);
    EXPECT_EQ(plugin.latency(), 11);
    EXPECT_EQ(plugin.paramDisplay(0), "longer than eight characters");
    EXPECT_EQ(plugin.paramSteps(0), 1);
    EXPECT_EQ(plugin.paramSteps(1), 9);
    EXPECT_EQ(plugin.paramSteps(2), 0);
    EXPECT_TRUE(plugin.stringToParameter(0, "half"));
    EXPECT_FALSE(plugin.stringToParameter(0, "hal"));

    EXPECT_EQ(plugin.reports().beginEdits, 1) << "the effect reports while it is being opened";
    plugin.setParameter(2, 0.75f);
    EXPECT_FALSE(plugin.setSpeakerArrangement(2, 2));
    EXPECT_TRUE(plugin.setSpeakerArrangement(1, 2));
    const host::HostReports reports = plugin.reports();
    ASSERT_EQ(reports.automated.size(), 1u);
    EXPECT_EQ(reports.automated[0].index, 2);
    EXPECT_EQ(reports.automated[0].value, 0.75f);
    EXPECT_EQ(reports.ioChanges, 1);
    plugin.clearReports();
    EXPECT_TRUE(plugin.reports().automated.empty());
    EXPECT_EQ(plugin.reports().ioChanges, 0);
    plugin.idle();

    const std::vector<std::uint8_t> saved = plugin.bankChunk();
    EXPECT_EQ(saved.size(), sizeof(float));
    EXPECT_TRUE(plugin.programChunk().empty());
    plugin.setParameter(0, 0.0f);
    plugin.setBankChunk(saved);
    EXPECT_EQ(plugin.parameter(0), 0.75f);

    // Mono to stereo.
    std::vector<float> in(5000), left(5000), right(5000);
    for (std::size_t i = 0; i < in.size(); ++i)
        in[i] = static_cast<float>(i) - 2500.0f;
    float* inputs[1]{in.data()};
    float* outputs[2]{left.data(), right.data()};
    plugin.process(inputs, outputs, 5000);
    for (std::size_t i = 0; i < in.size(); ++i)
        ASSERT_TRUE(left[i] == 0.5f * in[i] && right[i] == left[i]) << i;
    inputs[0] = nullptr;
    plugin.process(inputs, outputs, 1);
    EXPECT_EQ(left[0], -1.0f) << "the effect's answer to a missing channel";
    plugin.process(inputs, outputs, 0);
}

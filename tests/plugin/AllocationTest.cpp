// Neither library allocates or frees memory while it processes audio: the functions below replace
// those of the C library and count calls while `counting` is set.
#include "tests/vst3/Host.h"
#include "tools/host/NativePlugin.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstddef>
#include <vector>

extern "C" {
void* __libc_malloc(std::size_t);
void* __libc_calloc(std::size_t, std::size_t);
void* __libc_realloc(void*, std::size_t);
void* __libc_memalign(std::size_t, std::size_t);
void __libc_free(void*);
}

namespace {

thread_local bool counting = false;
thread_local int calls = 0;

void count()
{
    if (counting)
        ++calls;
}

}  // namespace

extern "C" {
void* malloc(std::size_t size)
{
    count();
    return __libc_malloc(size);
}
void* calloc(std::size_t n, std::size_t size)
{
    count();
    return __libc_calloc(n, size);
}
void* realloc(void* old, std::size_t size)
{
    count();
    return __libc_realloc(old, size);
}
void* aligned_alloc(std::size_t alignment, std::size_t size)
{
    count();
    return __libc_memalign(alignment, size);
}
int posix_memalign(void** result, std::size_t alignment, std::size_t size)
{
    *result = aligned_alloc(alignment, size);
    return *result ? 0 : ENOMEM;
}
void free(void* memory)
{
    if (memory)
        count();
    __libc_free(memory);
}
}

namespace {

// Blocks of many lengths, also beyond the announced one, with channels missing or shared.
template <typename Process>
int callsWhile(const Process& process)
{
    std::vector<float> left(2000, 0.3f), right(2000, -0.2f), outL(2000), outR(2000);
    float* ins[][2] = {
        {left.data(), right.data()}, {left.data(), left.data()}, {nullptr, right.data()}};
    float* out[] = {outL.data(), outR.data()};
    calls = 0;
    for (int block = 0; block < 300; ++block)
        process(block, ins[block % 7 % 3], out, block % 3 == 0 ? 2000 : block % 33);
    return calls;
}

float valueOf(int parameter, int block)
{
    return static_cast<float>((block * 13 + parameter * 5) % 17) / 16.0f;
}

}  // namespace

TEST(Allocation, ProcessNeverAllocatesOrFreesWhateverChanges)
{
    for (const double rate : {44100.0, 96000.0, 192000.0}) {
        host::NativePlugin plugin(ZKR_PLUGIN);
        plugin.setSampleRate(rate);
        calls = 0;
        counting = true;
        plugin.setBlockSize(1000);
        counting = false;
        EXPECT_GT(calls, 0) << "the library's allocations are not counted";
        const auto process = [&](int block, float** in, float** out, int length) {
            for (VstInt32 id = 0; id < 58; ++id)
                plugin.setParameter(id, valueOf(id, block));
            if (block == 20)
                plugin.mainsOn();  // not active before
            counting = true;
            plugin.process(in, out, length);
            counting = false;
        };
        EXPECT_EQ(callsWhile(process), 0) << rate;
    }
}

TEST(Allocation, Vst3ProcessNeverAllocatesOrFreesWhateverChanges)
{
    using namespace vst3;
    const Module module;
    Instance instance(module);
    instance.start();
    const Bytes project = instance.controllerState();
    // The host's own lists have room for every parameter.
    ParameterChanges changes(60), reported(60);
    const auto process = [&](int block, float** in, float** out, int length) {
        if (block % 20 == 0)
            instance.loadControllerState(project);
        changes.clearQueue();
        reported.clearQueue();
        for (int id = 0; id < 60; ++id) {
            int32 index = 0;
            changes.addParameterData(static_cast<ParamID>(id), index)
                ->addPoint(0, static_cast<ParamValue>(valueOf(id, block)), index);
        }
        AudioBusBuffers inputs, outputs;
        inputs.numChannels = outputs.numChannels = 2;
        inputs.channelBuffers32 = in;
        outputs.channelBuffers32 = out;
        ProcessData data;
        data.numSamples = length;
        data.numInputs = data.numOutputs = 1;
        data.inputs = &inputs;
        data.outputs = &outputs;
        data.inputParameterChanges = &changes;
        data.outputParameterChanges = &reported;
        counting = true;
        instance.processor->process(data);
        counting = false;
    };
    EXPECT_EQ(callsWhile(process), 0);
}

// Nothing is allocated while either library processes: every allocation of the process passes
// through the functions below, which count while they are told to.
#include "Host.h"
#include "NativePlugin.h"

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
void* memalign(std::size_t alignment, std::size_t size)
{
    count();
    return __libc_memalign(alignment, size);
}
void* aligned_alloc(std::size_t alignment, std::size_t size)
{
    return memalign(alignment, size);
}
int posix_memalign(void** result, std::size_t alignment, std::size_t size)
{
    *result = memalign(alignment, size);
    return *result ? 0 : ENOMEM;
}
void free(void* memory)
{
    if (memory)
        count();
    __libc_free(memory);
}
}

TEST(Allocation, TheCounterSeesTheLibrarysAllocations)
{
    host::NativePlugin plugin(ZKR_PLUGIN);
    calls = 0;
    counting = true;
    plugin.setBlockSize(100000);
    counting = false;
    EXPECT_GT(calls, 0);
}

TEST(Allocation, ProcessNeverAllocatesOrFreesWhateverChanges)
{
    for (const double rate : {44100.0, 96000.0, 192000.0}) {
        host::NativePlugin plugin(ZKR_PLUGIN);
        plugin.setSampleRate(rate);
        plugin.setBlockSize(512);
        std::vector<float> left(2000, 0.3f), right(2000, -0.2f), outL(2000), outR(2000);
        float* in[2] = {left.data(), right.data()};
        float* sameIn[2] = {left.data(), left.data()};
        float* holes[2] = {nullptr, right.data()};
        float* out[2] = {outL.data(), outR.data()};
        calls = 0;
        for (int block = 0; block < 300; ++block) {
            // All parameters at once now and then, one at a time in between.
            const VstInt32 first = block % 58, last = block % 10 == 0 ? 57 : first;
            for (VstInt32 i = block % 10 == 0 ? 0 : first; i <= last; ++i)
                plugin.setParameter(i, static_cast<float>((block * 13 + i * 5) % 17) / 16.0f);
            if (block == 20)
                plugin.mainsOn();  // until then the library was never switched on
            counting = true;
            plugin.effect()->processReplacing(plugin.effect(),
                                              block % 7 == 0       ? holes
                                                  : block % 5 == 0 ? sameIn
                                                                   : in,
                                              out, block % 3 == 0 ? 2000 : block % 33);
            counting = false;
        }
        EXPECT_EQ(calls, 0) << rate;
    }
}

TEST(Allocation, NorDoesTheVst3Form)
{
    using namespace vst3;
    const Module module;
    Instance instance(module);
    instance.start(48000.0, 512);
    const Bytes project = instance.controllerState();
    std::vector<float> left(2000, 0.3f), right(2000, -0.2f), outL(2000), outR(2000);
    Sample32 *inputs[] = {left.data(), right.data()}, *outputs[] = {outL.data(), outR.data()};
    AudioBusBuffers in, out;
    in.numChannels = out.numChannels = 2;
    in.channelBuffers32 = inputs;
    out.channelBuffers32 = outputs;
    // The host's own lists have room for all.
    ParameterChanges changes(60), reported(60);
    calls = 0;
    for (int block = 0; block < 300; ++block) {
        if (block % 20 == 0)
            instance.loadControllerState(project);
        changes.clearQueue();
        reported.clearQueue();
        for (ParamID id = 0; id < (block % 10 == 0 ? 60u : 1u); ++id) {
            int32 index = 0;
            const auto step = static_cast<double>((static_cast<ParamID>(block) * 13 + id * 5) % 17);
            changes.addParameterData((id + static_cast<ParamID>(block)) % 60, index)
                ->addPoint(0, step / 16.0, index);
        }
        ProcessData data;
        data.numSamples = block % 3 == 0 ? 2000 : block % 33;
        data.numInputs = block % 7 == 0 ? 0 : 1;
        data.numOutputs = 1;
        data.inputs = &in;
        data.outputs = &out;
        data.inputParameterChanges = &changes;
        data.outputParameterChanges = &reported;
        counting = true;
        instance.processor->process(data);
        counting = false;
    }
    EXPECT_EQ(calls, 0);
}

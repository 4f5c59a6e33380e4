#include "public.sdk/source/vst/vstaudioeffect.h"

namespace Steinberg {
namespace Vst {

namespace {

AudioBus* audioBusAt(BusList& list, int32 index)
{
    if (index < 0 || static_cast<size_t>(index) >= list.size())
        return nullptr;
    return FCast<AudioBus>(list[static_cast<size_t>(index)].get());
}

AudioBus* append(BusList& list, AudioBus* bus)
{
    list.push_back(IPtr<Bus>(bus, false));
    return bus;
}

}  // namespace

AudioEffect::AudioEffect()
{
    processSetup.processMode = kRealtime;
    processSetup.symbolicSampleSize = kSample32;
    processSetup.maxSamplesPerBlock = 1024;
    processSetup.sampleRate = 44100.0;
}

AudioBus* AudioEffect::addAudioInput(const TChar* name, SpeakerArrangement arr, BusType busType,
                                     int32 flags)
{
    return append(audioInputs, new AudioBus(name, busType, flags, arr));
}

AudioBus* AudioEffect::addAudioOutput(const TChar* name, SpeakerArrangement arr, BusType busType,
                                      int32 flags)
{
    return append(audioOutputs, new AudioBus(name, busType, flags, arr));
}

AudioBus* AudioEffect::getAudioInput(int32 index)
{
    return audioBusAt(audioInputs, index);
}

AudioBus* AudioEffect::getAudioOutput(int32 index)
{
    return audioBusAt(audioOutputs, index);
}

tresult PLUGIN_API AudioEffect::setBusArrangements(SpeakerArrangement* inputs, int32 numIns,
                                                   SpeakerArrangement* outputs, int32 numOuts)
{
    if (numIns < 0 || numOuts < 0)
        return kInvalidArgument;
    if (static_cast<size_t>(numIns) > audioInputs.size()
        || static_cast<size_t>(numOuts) > audioOutputs.size())
        return kResultFalse;
    for (int32 i = 0; i < numIns; ++i)
        getAudioInput(i)->setArrangement(inputs[i]);
    for (int32 i = 0; i < numOuts; ++i)
        getAudioOutput(i)->setArrangement(outputs[i]);
    return kResultTrue;
}

tresult PLUGIN_API AudioEffect::getBusArrangement(BusDirection dir, int32 index,
                                                  SpeakerArrangement& arr)
{
    BusList* list = getBusList(kAudio, dir);
    AudioBus* bus = list ? audioBusAt(*list, index) : nullptr;
    if (!bus)
        return kInvalidArgument;
    arr = bus->getArrangement();
    return kResultTrue;
}

tresult PLUGIN_API AudioEffect::canProcessSampleSize(int32 symbolicSampleSize)
{
    return symbolicSampleSize == kSample32 ? kResultTrue : kResultFalse;
}

tresult PLUGIN_API AudioEffect::setupProcessing(ProcessSetup& setup)
{
    processSetup.maxSamplesPerBlock = setup.maxSamplesPerBlock;
    processSetup.processMode = setup.processMode;
    processSetup.sampleRate = setup.sampleRate;
    if (canProcessSampleSize(setup.symbolicSampleSize) != kResultTrue)
        return kResultFalse;
    processSetup.symbolicSampleSize = setup.symbolicSampleSize;
    return kResultOk;
}

tresult PLUGIN_API AudioEffect::setProcessing(TBool /*state*/)
{
    return kNotImplemented;
}

tresult PLUGIN_API AudioEffect::process(ProcessData& /*data*/)
{
    return kNotImplemented;
}

}  // namespace Vst
}  // namespace Steinberg

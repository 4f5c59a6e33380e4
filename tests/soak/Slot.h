// A slot of the host's session: one instance of the plug-in, or twins (two instances with the same
// parameters and input, whose output must be equal).
//
// One audio thread processes a slot. The user's thread stops it, as a host does, for calls that
// must not happen during processing; it makes all other calls at any time.
#pragma once

#include "params/ids/ParameterIds.h"
#include "tests/soak/InstanceWindow.h"
#include "tests/soak/Run.h"
#include "tests/soak/System.h"
#include "tests/soak/TestSignal.h"
#include "tools/host/NativePlugin.h"

#include <array>
#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

constexpr VstInt32 kParameters = kPresetParamCount;

// Short blocks invert the polarity elsewhere in the chain than long ones, so twins, whose block
// sizes differ, do not change it.
constexpr bool isPolarity(VstInt32 id)
{
    return id == kPhaseL || id == kPhaseR;
}

struct Setup {
    double rate;                  // Hz
    int blockSize;                // samples
    std::array<int, 2> channels;  // in and out
};
constexpr std::array<double, 6> kRates{44100.0, 48000.0, 88200.0, 96000.0, 176400.0, 192000.0};
constexpr std::array<std::array<int, 2>, 3> kChannels{{{2, 2}, {1, 2}, {1, 1}}};

class Slot {
public:
    Slot(int number, bool twins, Run& run, Random& random);
    ~Slot();
    Slot(const Slot&) = delete;
    Slot& operator=(const Slot&) = delete;

    // --- The audio thread ---

    // Changes some parameters, then processes a stretch of up to two blocks without changes. False
    // while the slot is stopped. Does not allocate except to report a failure.
    bool play();

    // --- The user's thread ---

    // No processing while an object of this class exists.
    struct Stopped {
        explicit Stopped(Slot& slot) : stopped(slot)
        {
            ++stopped.stopsWanted;
            stopped.touch();
            stopped.mutex.lock();
        }
        ~Stopped()
        {
            stopped.mutex.unlock();
            stopped.touch();
            --stopped.stopsWanted;
        }
        Slot& stopped;
    };
    // Call before and after anything that changes the output: the time of silence restarts.
    void touch() { ++touches; }
    void fail(const std::string& seen) { run.fail(step(), seen); }

    // --- With the slot stopped ---

    // Creates the instances with a random setup and activates them. Throws HostError.
    void open(Random& random);
    void close();
    // Deactivates, applies the setup, activates.
    void change(const Setup& setup);
    // The states of twins must be equal, bit for bit.
    void compareTwins(const char* after);

    const int number;
    const bool twins;
    Setup setup{};
    std::vector<std::unique_ptr<host::NativePlugin>> plugins;  // empty while closed
    std::unique_ptr<InstanceWindow> editor;                    // of the first one
    std::atomic<bool> quiet{false};  // plays silence until the output has decayed

    // Written by the audio thread; others may read after it has ended.
    std::atomic<long long> blocks{0};
    long long twinSamples = 0, silences = 0;
    double longestShare = 0.0;  // longest time of a block / its real time
    float loudest = 0.0f;

private:
    using Stereo = std::array<std::vector<float>, 2>;

    void chooseSignal(double seconds);
    void automate();
    void playTo(std::size_t instance, int samples, int firstPiece);
    void playPiece(std::size_t instance, int offset, int samples);
    void judge(int samples);
    void judgeSilence(double seconds, float peak);
    void compareSound(int samples);
    std::string step() const;

    Run& run;
    std::mutex mutex;
    std::atomic<int> stopsWanted{0};
    std::atomic<unsigned> touches{0};

    Random random;
    TestSignal signal;
    Stereo source;
    std::array<Stereo, 2> inputs, outputs;  // of each instance
    long long stretch = 0;
    unsigned touchesSeen = 0;
    double signalLeft = 0.0;  // seconds
    double silentFor = 0.0;   // seconds since the last sound or change
    bool silenceJudged = false;
};

// A place in the host's session: one instance of the plug-in, or twins, which must never differ.
//
// A seat is played by one audio thread. The user's thread stops it, as a host does, around whatever
// must not happen during processing; what may happen at any time, it does at any time.
#pragma once

#include "EditorWindow.h"
#include "NativePlugin.h"
#include "ParameterIds.h"
#include "Run.h"
#include "System.h"
#include "TestSignal.h"

#include <array>
#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

constexpr VstInt32 kParameters = kPresetParamCount;

// Short blocks turn the polarity at another place of the chain than long ones: twins, whose blocks
// differ, leave it alone.
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

class Seat {
public:
    Seat(int number, bool twins, Run& run, Dice& dice);
    ~Seat();
    Seat(const Seat&) = delete;
    Seat& operator=(const Seat&) = delete;

    // --- The audio thread ---

    // Some parameters, then one stretch of up to two blocks that takes no changes. False while the
    // seat is stopped. Nothing is allocated, unless something has gone wrong.
    bool play();

    // --- The user's thread ---

    // While it lives nothing is processed here.
    struct Stopped {
        explicit Stopped(Seat& seat) : stopped(seat)
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
        Seat& stopped;
    };
    // Something is about to change the sound, or has just changed it: silence starts anew.
    void touch() { ++touches; }
    void fail(const std::string& seen) { run.fail(step(), seen); }

    // --- With the seat stopped ---

    // Makes the instances, in a setup by chance, and switches them on. Throws HostError.
    void open(Dice& dice);
    void close();
    // Off, into this setup, and on.
    void change(const Setup& setup);
    // Twins must hold the same settings, bit for bit.
    void compareTwins(const char* after);

    const int number;
    const bool twins;
    Setup setup{};
    std::vector<std::unique_ptr<host::NativePlugin>> plugins;  // none while closed
    std::unique_ptr<EditorWindow> editor;                      // of the first one
    std::atomic<bool> quiet{false};  // silence is played and waits for its end
    const char* lastState = "none";  // that was loaded with the seat stopped

    // Of the audio thread; for all after it has ended.
    std::atomic<long long> blocks{0};
    long long twinSamples = 0, silences = 0;
    double longestShare = 0.0;  // block, as a share of its real time
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

    Dice dice;
    TestSignal signal;
    Stereo source;
    std::array<Stereo, 2> inputs, outputs;  // of each instance
    long long stretch = 0;
    unsigned touchesSeen = 0;
    double signalLeft = 0.0;  // seconds
    double silentFor = 0.0;   // seconds since the last sound or change
    bool silenceJudged = false;
};

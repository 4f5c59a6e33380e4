// A place in the host's session: one instance of the plug-in, or twins, which must never differ.
//
// A seat is played by one audio thread. The user's thread stops it, as a host does, around whatever
// must not happen during processing; what may happen at any time, it does at any time.
#pragma once

#include "Dice.h"
#include "NativePlugin.h"
#include "ParameterIds.h"
#include "Run.h"

#include <array>
#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

constexpr VstInt32 kParameters = kPresetParamCount;

constexpr bool isPolarity(VstInt32 id)
{
    return id == kPhaseL || id == kPhaseR;
}

struct Setup {
    double rate = 44100.0;  // Hz
    int blockSize = 512;    // samples
    int inputs = 2, outputs = 2;
};

enum class Kind {
    Single,
    // Never with a turned polarity, and cut into blocks of any length.
    UprightTwins,
    // With it, and not into short blocks beside long ones: those turn it at another place of the
    // chain, which can be heard.
    TurningTwins,
};

constexpr const char* nameOf(Kind kind)
{
    constexpr const char* kNames[] = {"single", "upright twins", "turning twins"};
    return kNames[static_cast<int>(kind)];
}

class Seat {
public:
    Seat(int number, bool forTwins, Run& run, Dice& dice);
    ~Seat();
    Seat(const Seat&) = delete;
    Seat& operator=(const Seat&) = delete;

    // Any of those that the plug-in is made for.
    static double anyRate(Dice& dice);
    static std::pair<int, int> anyArrangement(Dice& dice);  // channels in and out

    // While it lives nothing is processed here.
    class Stopped {
    public:
        explicit Stopped(Seat& seat);
        ~Stopped();
        Stopped(const Stopped&) = delete;
        Stopped& operator=(const Stopped&) = delete;

    private:
        Seat& stopped;
    };
    // The audio thread's turn; false while the seat is stopped or wanted to be.
    bool tryEnter();
    void leave() { mutex.unlock(); }

    // Something is about to change the sound, or has just changed it: silence starts anew.
    void touch() { ++touches; }
    unsigned touched() const { return touches; }

    // --- With the seat stopped ---

    // Makes the instances, in a setup by chance, and switches them on. Throws HostError.
    void open(Dice& dice);
    void close();
    void mainsOffAndOn();
    void setRate(double hz);
    void setBlockSize(int samples);
    void setArrangement(int inputs, int outputs);
    // The plug-in must tell the latency that belongs to the rate.
    void checkLatency();
    // Twins must hold the same settings, bit for bit.
    void compareTwins(const char* after);

    // Remembers what was done here, for the moment when something goes wrong. Audio thread, or
    // with the seat stopped.
    void note(const char* what, double a = 0.0, double b = 0.0);
    // The last of it, oldest first.
    std::string recently() const;
    std::string name() const { return "seat " + std::to_string(number); }

    const int number;
    const bool twins;
    Kind kind = Kind::Single;
    Setup setup;
    std::vector<std::unique_ptr<host::NativePlugin>> plugins;  // none while closed
    std::atomic<bool> quiet{false};  // silence is played and waits for its end

private:
    struct Event {
        const char* what = nullptr;
        double a = 0.0, b = 0.0;
    };

    Run& run;
    std::mutex mutex;
    std::atomic<int> wanted{0};
    std::atomic<unsigned> touches{0};
    std::array<Event, 10> events;
    std::size_t nextEvent = 0;
};

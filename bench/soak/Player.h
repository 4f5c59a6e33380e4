// The audio side of a seat: plays to it and judges what comes out. Nothing is allocated while it
// plays, unless something has gone wrong.
#pragma once

#include "BlockTimes.h"
#include "Dice.h"
#include "Seat.h"
#include "TestSignal.h"

#include <array>
#include <vector>

class Player {
public:
    Player(Seat& seat, Run& run);

    // Some parameters, then one stretch of up to two blocks that takes no changes. False while the
    // seat is stopped.
    bool play(BlockTimes& times);
    int seatNumber() const { return seat.number; }
    float loudest() const { return loudestEver; }

private:
    using Stereo = std::array<std::vector<float>, 2>;

    void automate();
    void chooseSignal(int samples);
    void playTo(std::size_t instance, int samples, int firstPiece, BlockTimes& times);
    int nextPiece(int left, int least);
    void processPiece(std::size_t instance, int offset, int samples, BlockTimes& times);
    void judge(int samples);
    void compareTwins(int samples);
    std::string step() const;

    Seat& seat;
    Run& run;
    Dice dice;
    TestSignal signal;
    Stereo source;
    std::array<Stereo, 2> inputs, outputs;  // of each instance
    long long stretch = 0;
    unsigned touchesSeen = 0;
    double signalLeft = 0.0;  // seconds
    double silentFor = 0.0;   // seconds since the last sound or change
    bool silenceJudged = false;
    float loudestEver = 0.0f;
};

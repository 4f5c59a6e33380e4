// The user's turn, and what may be done to an instance at any time.
#include "User.h"

#include <chrono>
#include <thread>

const std::vector<User::Choice>& User::choices()
{
    static const std::vector<Choice> table{
        {"automate", 30, &User::automate, false},
        {"read values and texts", 10, &User::readEverything, false},
        {"rename the preset", 3, &User::rename, false},
        {"save a state", 10, &User::save, false},
        {"load a state", 8, &User::load, false},
        {"load a damaged state", 6, &User::loadDamaged, false},
        {"choose a preset", 8, &User::choosePreset, false},
        {"mains off and on", 4, &User::mains, false},
        {"change the sample rate", 5, &User::rate, false},
        {"change the block size", 5, &User::blockSize, false},
        {"change the arrangement", 4, &User::arrangement, false},
        {"close and open an instance", 3, &User::reopen, false},
        {"open or close an editor", 4, &User::openOrCloseEditor, true},
        {"resize an editor", 4, &User::resizeEditor, true},
        {"use the mouse", 12, &User::moveMouse, true},
    };
    return table;
}

User::User(std::vector<std::unique_ptr<Seat>>& allSeats, Run& shared, Whereabouts& where)
    : seats(allSeats), run(shared), whereabouts(where), dice(shared.options.seed, 0),
      editors(allSeats.size())
{
    const Seat::Stopped stopped(*seats.front());
    factory = seats.front()->plugins.front()->bankChunk();
    saved.push_back(factory);
}

User::~User()
{
    closeAll();
}

void User::turn()
{
    for (int deeds = dice.between(1, 5); deeds > 0; --deeds) {
        // A seat that waits for the end of its silence is mostly left to it.
        Seat& seat = *seats[static_cast<std::size_t>(dice.below(static_cast<int>(seats.size())))];
        const Choice& choice = choose();
        if (seat.quiet && !dice.oneIn(12))
            continue;
        whereabouts.now(choice.what, seat.number);
        (this->*choice.act)(seat);
    }
    idle();
}

const User::Choice& User::choose()
{
    const auto weight = [this](const Choice& choice) {
        return choice.wantsEditors && !run.options.editors ? 0 : choice.weight;
    };
    int all = 0;
    for (const Choice& choice : choices())
        all += weight(choice);
    int drawn = dice.below(all);
    for (const Choice& choice : choices()) {
        drawn -= weight(choice);
        if (drawn < 0)
            return choice;
    }
    return choices().front();
}

// What a host does between two events.
void User::idle()
{
    constexpr std::chrono::milliseconds kPause(2);
    // One idle call empties the thread's queue of messages, for all.
    seats.front()->plugins.front()->idle();
    for (const auto& seat : seats) {
        whereabouts.now("idle", seat->number);
        for (const auto& plugin : seat->plugins)
            plugin->dispatch(effEditIdle);
        follow(*seat);
    }
    std::this_thread::sleep_for(kPause);
}

void User::closeAll()
{
    for (const auto& seat : seats) {
        whereabouts.now("close everything", seat->number);
        closeEditor(*seat);
    }
    // A host that ends a session stops it first.
    std::vector<std::unique_ptr<Seat::Stopped>> stopped;
    for (const auto& seat : seats)
        stopped.push_back(std::make_unique<Seat::Stopped>(*seat));
    for (const auto& seat : seats)
        seat->close();
}

void User::openAll()
{
    for (const auto& seat : seats) {
        whereabouts.now("open everything", seat->number);
        const Seat::Stopped stopped(*seat);
        seat->open(dice);
    }
}

void User::automate(Seat& seat)
{
    // Twins take their parameters at the head of one and the same stretch, on the audio thread.
    if (seat.twins)
        return readEverything(seat);
    seat.touch();
    for (int count = dice.between(1, 8); count > 0; --count) {
        const VstInt32 id = dice.below(kParameters);
        seat.plugins.front()->setParameter(id, id == kPower ? 1.0f : dice.position());
        run.tally.add(Deed::AutomationOfUser);
    }
    seat.touch();
}

void User::readEverything(Seat& seat)
{
    checkValues(seat);
    for (const auto& plugin : seat.plugins)
        for (VstInt32 i = dice.below(kParameters); i < kParameters; i += dice.between(1, 10))
            if (plugin->paramName(i).empty() || plugin->paramDisplay(i).empty())
                run.findings.add(seat.name(), textOf("parameter %d has no text", i));
}

void User::checkValues(Seat& seat)
{
    for (const auto& plugin : seat.plugins)
        for (VstInt32 i = 0; i < kParameters; ++i) {
            const float value = plugin->parameter(i);
            if (!(value >= 0.0f && value <= 1.0f))
                run.findings.add(seat.name(),
                                 textOf("parameter %d is %g", i, static_cast<double>(value)));
        }
}

void User::rename(Seat& seat)
{
    const std::string name = textOf("Soaked %d", dice.below(1000000));
    for (const auto& plugin : seat.plugins) {
        plugin->setProgramName(name);
        if (plugin->programName() != name)
            run.findings.add(seat.name(),
                             "the preset is called '" + plugin->programName() + "', not '" + name
                                 + "'");
    }
    run.tally.add(Deed::Rename);
}

void User::save(Seat& seat)
{
    constexpr std::size_t kKept = 6;
    // While it plays; twins are compared when they stand still.
    Bytes state = seat.plugins.front()->bankChunk();
    run.tally.add(Deed::Save);
    if (state.size() != factory.size()) {
        run.findings.add(seat.name(),
                         "a state of " + std::to_string(state.size()) + " bytes, at first it had "
                             + std::to_string(factory.size()));
        return;
    }
    if (saved.size() < kKept)
        saved.push_back(std::move(state));
    else
        saved[static_cast<std::size_t>(dice.below(kKept))] = std::move(state);
}

void User::mains(Seat& seat)
{
    const Seat::Stopped stopped(seat);
    seat.mainsOffAndOn();
    run.tally.add(Deed::Mains);
}

void User::rate(Seat& seat)
{
    const Seat::Stopped stopped(seat);
    seat.setRate(Seat::anyRate(dice));
    run.tally.add(Deed::Rate);
}

void User::blockSize(Seat& seat)
{
    const Seat::Stopped stopped(seat);
    seat.setBlockSize(dice.of(run.options.blockSizes));
    run.tally.add(Deed::BlockSize);
}

void User::arrangement(Seat& seat)
{
    const Seat::Stopped stopped(seat);
    const auto [inputs, outputs] = Seat::anyArrangement(dice);
    seat.setArrangement(inputs, outputs);
    run.tally.add(Deed::Arrangement);
}

void User::reopen(Seat& seat)
{
    closeEditor(seat);
    const Seat::Stopped stopped(seat);
    seat.close();
    seat.open(dice);
    run.tally.add(Deed::NewInstance, static_cast<long long>(seat.plugins.size()));
}

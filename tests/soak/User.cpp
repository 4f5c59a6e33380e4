#include "tests/soak/User.h"

#include "presets/BankFormat.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <thread>

namespace {

// Before the bank's image: the sizes of both states, 64 bits each, and the controller's prefix.
constexpr std::size_t kImageAt = 2 * 8 + kStatePrefix.size();
// 32 bits in the image's header; writing the lowest byte suffices.
constexpr std::size_t kCurrentPresetAt = kImageAt + FileHeader::kCurrentAt;

// The row of preset keys is below this, whose menu and file dialogs would wait for an answer.
constexpr int kSafeHeight = 450;

constexpr std::ptrdiff_t kMaxEditors = 4;

}  // namespace

User::User(Run& shared, Whereabouts& where) : run(shared), whereabouts(where), dice(shared.seed, 0)
{
    actions = {
        {"parameters set", 30, &User::automate},
        {"values, texts and names read", 13, &User::read},
        {"states saved", 10, &User::save},
        {"states loaded", 16, &User::load},
        {"setups changed", 18, &User::change},
        {"instances closed and reopened", 3, &User::reopen},
    };
    if (run.editors) {
        actions.push_back({"editors opened or closed", 4, &User::openOrCloseEditor});
        actions.push_back({"editors used", 16, &User::useEditor, true});
    }
    for (Action& action : actions)
        wheel.insert(wheel.end(), action.weight, &action);
    for (int left = run.instances; left > 0;) {
        const bool twins = left >= 2 && seats.size() % 3 == 0;
        seats.push_back(std::make_unique<Seat>(static_cast<int>(seats.size()), twins, run, dice));
        left -= twins ? 2 : 1;
    }
    factory = seats.front()->plugins.front()->bankChunk();
    saved.push_back(factory);
}

void User::turn()
{
    for (int remaining = dice.between(1, 5); remaining > 0; --remaining) {
        Seat& seat = *dice.of(seats);
        Action& action = *dice.of(wheel);
        // A seat that waits for its output to decay is mostly left alone.
        if ((seat.quiet && !dice.oneIn(12)) || (action.wantsEditor && (seat.twins || !seat.editor)))
            continue;
        whereabouts.now(action.name, seat.number);
        (this->*action.act)(seat);
        ++action.times;
    }
    idle();
}

// A host's idle calls.
void User::idle()
{
    // One idle call processes the thread's message queue, for all instances.
    seats.front()->plugins.front()->idle();
    for (const auto& seat : seats) {
        whereabouts.now("idle", seat->number);
        for (const auto& plugin : seat->plugins)
            plugin->dispatch(effEditIdle);
        if (seat->editor)
            seat->editor->follow();
        for (const auto& plugin : seat->plugins)
            plugin->clearReports();
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
}

void User::closeAll()
{
    // A host that closes a session stops it first.
    std::vector<std::unique_ptr<Seat::Stopped>> stopped;
    for (const auto& seat : seats)
        stopped.push_back(std::make_unique<Seat::Stopped>(*seat));
    for (const auto& seat : seats) {
        whereabouts.now("close everything", seat->number);
        seat->close();
    }
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
    // Twins get their parameters on the audio thread, at the start of the same stretch.
    if (seat.twins)
        return;
    seat.touch();
    for (int count = dice.between(1, 8); count > 0; --count) {
        const VstInt32 id = dice.below(kParameters);
        seat.plugins.front()->setParameter(id, id == kPower ? 1.0f : dice.position());
    }
    seat.touch();
}

void User::read(Seat& seat)
{
    const std::string name = textOf("Soaked %d", dice.below(1000000));
    for (const auto& plugin : seat.plugins) {
        plugin->setProgramName(name);
        if (plugin->programName() != name)
            seat.fail("the preset is called '" + plugin->programName() + "', not '" + name + "'");
        for (VstInt32 i = 0; i < kParameters; ++i) {
            const float value = plugin->parameter(i);
            if (!(value >= 0.0f && value <= 1.0f) || plugin->paramDisplay(i).empty())
                seat.fail(textOf("parameter %d is %g, displayed as '%s'", i,
                                 static_cast<double>(value), plugin->paramDisplay(i).c_str()));
        }
    }
}

void User::save(Seat& seat)
{
    constexpr std::size_t kKept = 6;
    // During processing; twins are compared only while stopped.
    Bytes state = seat.plugins.front()->bankChunk();
    if (state.size() != factory.size())
        return seat.fail("a state of " + std::to_string(state.size()) + " bytes, at first it had "
                         + std::to_string(factory.size()));
    if (saved.size() < kKept)
        saved.push_back(std::move(state));
    else
        dice.of(saved) = std::move(state);
}

// For twins the polarity is reset before they process the state. Twins must be stopped; a single
// instance may be processing.
void User::give(Seat& seat, const Bytes& state)
{
    for (const auto& plugin : seat.plugins) {
        plugin->setBankChunk(state);
        if (seat.twins)
            for (const VstInt32 id : {kPhaseL, kPhaseR})
                plugin->setParameter(id, 0.0f);
    }
}

// Loads a saved state, or a fresh one with another preset selected. It must apply completely and at
// once.
void User::load(Seat& seat)
{
    Bytes state = dice.of(saved);
    if (dice.oneIn(2)) {
        state = factory;
        state[kCurrentPresetAt] = static_cast<std::uint8_t>(dice.below(kPresetCount));
    }
    if (!seat.twins && dice.oneIn(2)) {
        // During processing.
        seat.touch();
        give(seat, state);
        return seat.touch();
    }
    const Seat::Stopped stopped(seat);
    give(seat, state);
    if (!seat.twins && seat.plugins.front()->bankChunk() != state)
        seat.fail("a state changes when it is loaded and saved again");
    seat.compareTwins("loading a state");
}

// Deactivates and activates, mostly with a changed setup.
void User::change(Seat& seat)
{
    const Seat::Stopped stopped(seat);
    Setup setup = seat.setup;
    const int kind = dice.below(4);
    if (kind == 0)
        setup.rate = dice.of(kRates);
    if (kind == 1)
        setup.blockSize = dice.of(run.blockSizes);
    if (kind == 2)
        setup.channels = dice.of(kChannels);
    seat.change(setup);
}

void User::reopen(Seat& seat)
{
    const Seat::Stopped stopped(seat);
    seat.close();
    seat.open(dice);
}

void User::openOrCloseEditor(Seat& seat)
{
    const auto open = std::count_if(seats.begin(), seats.end(),
                                    [](const auto& each) { return each->editor != nullptr; });
    seat.touch();
    if (seat.editor)
        seat.editor.reset();
    else if (open < kMaxEditors)
        seat.editor = std::make_unique<InstanceWindow>(*seat.plugins.front());
    seat.touch();
}

// Through the two switches that select the layout, as automation does.
void User::resizeEditor(Seat& seat)
{
    seat.plugins.front()->setParameter(dice.oneIn(2) ? kQB11 : k2x, dice.oneIn(2) ? 1.0f : 0.0f);
}

// Resizes the editor, or drags, clicks or turns the wheel somewhere over the controls.
void User::useEditor(Seat& seat)
{
    using Act = InstanceWindow::Act;
    seat.touch();
    InstanceWindow& editor = *seat.editor;
    const int x = dice.between(0, editor.width() - 1);
    int y = dice.below(kSafeHeight);
    editor.send(Act::Move, x, y);
    if (dice.oneIn(4)) {
        resizeEditor(seat);
    } else if (dice.oneIn(3)) {
        editor.send(dice.oneIn(2) ? Act::WheelUp : Act::WheelDown, x, y);
    } else {
        editor.send(Act::Press, x, y);
        for (int moves = dice.below(4); moves > 0; --moves) {
            y += dice.between(-20, 20);
            editor.send(Act::Move, x, y);
        }
        editor.send(Act::Release, x, y);
    }
    // Delivers the events to the plug-in on this thread.
    seat.plugins.front()->idle();
    seat.touch();
}

void User::tryOneEditor()
{
    // The last seat is a single instance if there is any.
    Seat& seat = *seats.back();
    openOrCloseEditor(seat);
    for (int turns = 0; turns < 120; ++turns) {
        if (turns % 20 == 0 && !seat.twins)
            resizeEditor(seat);
        idle();
    }
    openOrCloseEditor(seat);
}

void User::print() const
{
    for (const Action& action : actions)
        std::printf("  %-40s %14lld\n", action.name, action.times);
}

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

User::User(Run& shared, Progress& where) : run(shared), progress(where), random(shared.seed, 0)
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
        const bool twins = left >= 2 && slots.size() % 3 == 0;
        slots.push_back(std::make_unique<Slot>(static_cast<int>(slots.size()), twins, run, random));
        left -= twins ? 2 : 1;
    }
    factory = slots.front()->plugins.front()->bankChunk();
    saved.push_back(factory);
}

void User::turn()
{
    for (int remaining = random.between(1, 5); remaining > 0; --remaining) {
        Slot& slot = *random.of(slots);
        Action& action = *random.of(wheel);
        // A slot that waits for its output to decay is mostly left alone.
        if ((slot.quiet && !random.oneIn(12))
            || (action.wantsEditor && (slot.twins || !slot.editor)))
            continue;
        progress.now(action.name, slot.number);
        (this->*action.act)(slot);
        ++action.times;
    }
    idle();
}

// A host's idle calls.
void User::idle()
{
    // One idle call processes the thread's message queue, for all instances.
    slots.front()->plugins.front()->idle();
    for (const auto& slot : slots) {
        progress.now("idle", slot->number);
        for (const auto& plugin : slot->plugins)
            plugin->dispatch(effEditIdle);
        if (slot->editor)
            slot->editor->follow();
        for (const auto& plugin : slot->plugins)
            plugin->clearReports();
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
}

void User::closeAll()
{
    // A host that closes a session stops it first.
    std::vector<std::unique_ptr<Slot::Stopped>> stopped;
    for (const auto& slot : slots)
        stopped.push_back(std::make_unique<Slot::Stopped>(*slot));
    for (const auto& slot : slots) {
        progress.now("close everything", slot->number);
        slot->close();
    }
}

void User::openAll()
{
    for (const auto& slot : slots) {
        progress.now("open everything", slot->number);
        const Slot::Stopped stopped(*slot);
        slot->open(random);
    }
}

void User::automate(Slot& slot)
{
    // Twins get their parameters on the audio thread, at the start of the same stretch.
    if (slot.twins)
        return;
    slot.touch();
    for (int count = random.between(1, 8); count > 0; --count) {
        const VstInt32 id = random.below(kParameters);
        slot.plugins.front()->setParameter(id, id == kPower ? 1.0f : random.position());
    }
    slot.touch();
}

void User::read(Slot& slot)
{
    const std::string name = textOf("Soaked %d", random.below(1000000));
    for (const auto& plugin : slot.plugins) {
        plugin->setProgramName(name);
        if (plugin->programName() != name)
            slot.fail("the preset is called '" + plugin->programName() + "', not '" + name + "'");
        for (VstInt32 i = 0; i < kParameters; ++i) {
            const float value = plugin->parameter(i);
            if (!(value >= 0.0f && value <= 1.0f) || plugin->paramDisplay(i).empty())
                slot.fail(textOf("parameter %d is %g, displayed as '%s'", i,
                                 static_cast<double>(value), plugin->paramDisplay(i).c_str()));
        }
    }
}

void User::save(Slot& slot)
{
    constexpr std::size_t kKept = 6;
    // During processing; twins are compared only while stopped.
    Bytes state = slot.plugins.front()->bankChunk();
    if (state.size() != factory.size())
        return slot.fail("a state of " + std::to_string(state.size()) + " bytes, at first it had "
                         + std::to_string(factory.size()));
    if (saved.size() < kKept)
        saved.push_back(std::move(state));
    else
        random.of(saved) = std::move(state);
}

// For twins the polarity is reset before they process the state. Twins must be stopped; a single
// instance may be processing.
void User::give(Slot& slot, const Bytes& state)
{
    for (const auto& plugin : slot.plugins) {
        plugin->setBankChunk(state);
        if (slot.twins)
            for (const VstInt32 id : {kPhaseL, kPhaseR})
                plugin->setParameter(id, 0.0f);
    }
}

// Loads a saved state, or a fresh one with another preset selected. It must apply completely and at
// once.
void User::load(Slot& slot)
{
    Bytes state = random.of(saved);
    if (random.oneIn(2)) {
        state = factory;
        state[kCurrentPresetAt] = static_cast<std::uint8_t>(random.below(kPresetCount));
    }
    if (!slot.twins && random.oneIn(2)) {
        // During processing.
        slot.touch();
        give(slot, state);
        return slot.touch();
    }
    const Slot::Stopped stopped(slot);
    give(slot, state);
    if (!slot.twins && slot.plugins.front()->bankChunk() != state)
        slot.fail("a state changes when it is loaded and saved again");
    slot.compareTwins("loading a state");
}

// Deactivates and activates, mostly with a changed setup.
void User::change(Slot& slot)
{
    const Slot::Stopped stopped(slot);
    Setup setup = slot.setup;
    const int kind = random.below(4);
    if (kind == 0)
        setup.rate = random.of(kRates);
    if (kind == 1)
        setup.blockSize = random.of(run.blockSizes);
    if (kind == 2)
        setup.channels = random.of(kChannels);
    slot.change(setup);
}

void User::reopen(Slot& slot)
{
    const Slot::Stopped stopped(slot);
    slot.close();
    slot.open(random);
}

void User::openOrCloseEditor(Slot& slot)
{
    const auto open = std::count_if(slots.begin(), slots.end(),
                                    [](const auto& each) { return each->editor != nullptr; });
    slot.touch();
    if (slot.editor)
        slot.editor.reset();
    else if (open < kMaxEditors)
        slot.editor = std::make_unique<InstanceWindow>(*slot.plugins.front());
    slot.touch();
}

// Through the two switches that select the layout, as automation does.
void User::resizeEditor(Slot& slot)
{
    slot.plugins.front()->setParameter(random.oneIn(2) ? kQB11 : k2x,
                                       random.oneIn(2) ? 1.0f : 0.0f);
}

// Resizes the editor, or drags, clicks or turns the wheel somewhere over the controls.
void User::useEditor(Slot& slot)
{
    using Act = InstanceWindow::Act;
    slot.touch();
    InstanceWindow& editor = *slot.editor;
    const int x = random.between(0, editor.width() - 1);
    int y = random.below(kSafeHeight);
    editor.send(Act::Move, x, y);
    if (random.oneIn(4)) {
        resizeEditor(slot);
    } else if (random.oneIn(3)) {
        editor.send(random.oneIn(2) ? Act::WheelUp : Act::WheelDown, x, y);
    } else {
        editor.send(Act::Press, x, y);
        for (int moves = random.below(4); moves > 0; --moves) {
            y += random.between(-20, 20);
            editor.send(Act::Move, x, y);
        }
        editor.send(Act::Release, x, y);
    }
    // Delivers the events to the plug-in on this thread.
    slot.plugins.front()->idle();
    slot.touch();
}

void User::tryOneEditor()
{
    // The last slot is a single instance if there is any.
    Slot& slot = *slots.back();
    openOrCloseEditor(slot);
    for (int turns = 0; turns < 120; ++turns) {
        if (turns % 20 == 0 && !slot.twins)
            resizeEditor(slot);
        idle();
    }
    openOrCloseEditor(slot);
}

void User::print() const
{
    for (const Action& action : actions)
        std::printf("  %-40s %14lld\n", action.name, action.times);
}

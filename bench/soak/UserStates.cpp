// States and presets: whole ones, chosen ones, and damaged ones.
#include "User.h"

#include "BankFormat.h"
#include "FactoryBank.h"

#include <cstring>

namespace {

// In front of the bank's image: the sizes of two states, and what the controller puts first.
constexpr std::size_t kImageAt = 16 + 8;
// In the image's header, 32 bits, of which the lowest byte suffices.
constexpr std::size_t kCurrentPresetAt = kImageAt + 17;

}  // namespace

// Loads a state as it is; twins that are not to turn their polarity are turned back at once, before
// they play. With the seat stopped, or for a single instance at any time.
void User::give(Seat& seat, const Bytes& state)
{
    for (const auto& plugin : seat.plugins) {
        plugin->setBankChunk(state);
        if (seat.kind == Kind::UprightTwins) {
            plugin->setParameter(kPhaseL, 0.0f);
            plugin->setParameter(kPhaseR, 0.0f);
        }
    }
}

// Half the time, to those that are no twins; false where the player must stop first.
bool User::givenWhilePlaying(Seat& seat, const Bytes& state)
{
    if (seat.twins || !dice.oneIn(2))
        return false;
    seat.touch();
    give(seat, state);
    seat.touch();
    return true;
}

// One of the factory's: its name and its values must be there at once.
void User::choosePreset(Seat& seat)
{
    const auto index = static_cast<std::size_t>(dice.below(kPresetCount));
    Bytes state = factory;
    state[kCurrentPresetAt] = static_cast<std::uint8_t>(index);
    run.tally.add(Deed::Preset);
    if (givenWhilePlaying(seat, state))
        return;
    const Seat::Stopped stopped(seat);
    give(seat, state);
    seat.note("preset", static_cast<double>(index));
    const PresetSlot& preset = factoryBank()[index];
    for (const auto& plugin : seat.plugins) {
        const std::string name(preset.name, strnlen(preset.name, kPresetNameSize));
        if (plugin->programName() != name)
            run.findings.add(seat.name(),
                             "preset '" + name + "' was chosen, '" + plugin->programName()
                                 + "' is there");
        for (VstInt32 i = 0; i < kParameters; ++i) {
            const bool heldUpright = seat.kind == Kind::UprightTwins && isPolarity(i);
            const float due = heldUpright ? 0.0f : preset.values[i];
            if (plugin->parameter(i) != due)
                run.findings.add(seat.name(),
                                 textOf("parameter %d of preset '%s' is %g, not %g", i,
                                        name.c_str(), static_cast<double>(plugin->parameter(i)),
                                        static_cast<double>(due)));
        }
    }
    seat.compareTwins("choosing a preset");
}

void User::load(Seat& seat)
{
    const Bytes& state = dice.of(saved);
    run.tally.add(Deed::Load);
    if (givenWhilePlaying(seat, state))
        return;
    const Seat::Stopped stopped(seat);
    give(seat, state);
    seat.note("state");
    if (seat.kind != Kind::UprightTwins)
        for (const auto& plugin : seat.plugins)
            if (plugin->bankChunk() != state)
                run.findings.add(seat.name(),
                                 "a state that was loaded is another when saved again");
    seat.compareTwins("loading a state");
}

// What makes no sense must change nothing; what does by chance must be as good as any.
void User::loadDamaged(Seat& seat)
{
    const Seat::Stopped stopped(seat);
    // Of a state that is too short, the rest is what the instance last had in its buffer: let twins
    // have the same there.
    Bytes before;
    for (const auto& plugin : seat.plugins)
        before = plugin->bankChunk();
    const Bytes& whole = dice.of(saved);
    const Bytes state = damaged(whole);
    give(seat, state);
    seat.note("damaged state");
    run.tally.add(Deed::DamagedLoad);

    const bool cutOff = state.size() < whole.size();
    for (const auto& plugin : seat.plugins) {
        const Bytes after = plugin->bankChunk();
        if (cutOff && seat.kind != Kind::UprightTwins && after != before)
            run.findings.add(seat.name(),
                             "the first " + std::to_string(state.size())
                                 + " bytes of a state are taken for one");
        if (after.size() != factory.size())
            run.findings.add(seat.name(),
                             "a state of " + std::to_string(after.size())
                                 + " bytes after damaged ones");
        plugin->setBankChunk(after);
        if (plugin->bankChunk() != after)
            run.findings.add(seat.name(),
                             "after damaged bytes a state is another when saved again");
    }
    checkValues(seat);
    seat.compareTwins("loading a damaged state");
}

User::Bytes User::damaged(const Bytes& whole)
{
    const auto anywhere = [&](const Bytes& bytes) {
        return static_cast<std::size_t>(dice.below(static_cast<int>(bytes.size())));
    };
    Bytes state = whole;
    switch (dice.below(5)) {
    case 0:
        state.resize(anywhere(whole));
        break;
    case 1:
        for (std::uint8_t& byte : state)
            byte = static_cast<std::uint8_t>(dice.bits());
        break;
    case 2:
        // The sizes and the header, which say how to read the rest.
        state[static_cast<std::size_t>(dice.below(static_cast<int>(kImageAt + kFileHeaderSize)))] =
            static_cast<std::uint8_t>(dice.bits());
        break;
    default:
        for (int count = dice.between(1, 20); count > 0; --count)
            state[anywhere(state)] ^= static_cast<std::uint8_t>(1 << dice.below(8));
        break;
    }
    return state;
}

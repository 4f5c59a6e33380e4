// Images from files and from the store, and states: whatever the bytes, the bank afterwards holds
// what their records say or is unchanged. Built once for banks and once for presets, which change
// only the selected preset.
#include "tests/fuzz/Finding.h"
#include "tests/presets/OpenedController.h"

namespace {

constexpr bool kBank = ZKR_FUZZ_BANK;

// The first byte of an input selects how it is loaded.
enum Choice : std::uint8_t { kFromFile = 1, kReversed = 2, kSelectAnother = 4, kState = 8 };

struct Images : CheckedController {
    Images()
    {
        // Distinct names, since the presets are equal otherwise.
        for (std::size_t i = 0; i < start.bank.size(); ++i)
            start.bank[i][0] = static_cast<std::uint8_t>('A' + i);
        heldState.resize(48625);
    }

    // After any load the bank can be saved and loaded again.
    void requireReadable()
    {
        const expected::Controller now = controller.now();
        expected::Bytes image;
        require(controller.serializeBank(image) == 48617, "the bank cannot be serialized");
        require(loads(Road::StoredBank, image) && wanted.bank == now.bank
                    && wanted.selected == now.selected,
                "a saved bank changes when it is loaded");
    }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static Images images;
    if (size == 0)
        return 0;
    const std::uint8_t choice = data[0];
    const bool isFile = (choice & kFromFile) != 0;
    Road road = kBank ? Road::StoredBank : Road::StoredPreset;
    if (isFile)
        road = kBank ? Road::BankFile : Road::PresetFile;
    else if (kBank && choice & kState)
        road = Road::State;
    images.start.selected = choice & kSelectAnother ? 5 : 0;
    require(
        images.loads(road, expected::Bytes(data + 1, data + size), isFile && (choice & kReversed)),
        "the bank differs from what the records say");
    if (kBank && images.wanted.bank != images.start.bank)
        images.requireReadable();
    return 0;
}

// Another process that uses a store: what the store's tests start beside themselves.
//
//   store_process PLACE write NAME LETTER SIZE ROUNDS    that letter, so many times over
//   store_process PLACE remove NAME
//   store_process PLACE leave SEED     an instance with the values of that seed stores everything
// PLACE is as in TestStore.h, or "user" for the store that the product uses.
#include "HandMadeImages.h"
#include "LeftByAnInstance.h"
#include "OpenedController.h"
#include "TestStore.h"

#include "public.sdk/source/common/memorystream.h"

#include <cstdlib>
#include <cstring>

using handmade::Bytes;

namespace {

void leave(platform::SettingsStore& store, unsigned seed)
{
    OpenedController controller(store);
    const auto take = [&](Bytes state) {
        Steinberg::MemoryStream stream(state.data(), static_cast<Steinberg::TSize>(state.size()));
        controller.setState(&stream);
    };
    take(handmade::stateOf(handmade::goodBank(seed, 2)));
    controller.storeDefaultBank();
    take(handmade::stateOf(handmade::goodBank(seed + 1, 2)));
    controller.setCurrentPreset(kMemoAPreset);
    controller.storeMemoA();
    controller.setCurrentPreset(kMemoBPreset);
    controller.storeMemoB();
    controller.setCurrentPreset(kDefaultPreset);
    controller.storeDefaultPreset();
    std::strcpy(controller.getCurrDir(), kLeftFolder);
    std::strcpy(controller.getCurrBank(), kLeftBankFile);
    std::strcpy(controller.getCurrPreset(), kLeftPresetFile);
}

}  // namespace

int main(int argc, char** argv)
{
    const std::string place = argc > 1 ? argv[1] : "", command = argc > 2 ? argv[2] : "";
    std::unique_ptr<platform::SettingsStore> own;
    if (place != "user")
        own = openStore(place);
    platform::SettingsStore& store = own ? *own : platform::userSettings();

    if (command == "write" && argc == 7) {
        const Bytes bytes(static_cast<std::size_t>(std::atoi(argv[5])),
                          static_cast<std::uint8_t>(*argv[4]));
        for (int round = std::atoi(argv[6]); round > 0; --round)
            store.write(argv[3], bytes);
    } else if (command == "remove" && argc == 4) {
        store.remove(argv[3]);
    } else if (command == "leave" && argc == 4) {
        leave(store, static_cast<unsigned>(std::atoi(argv[3])));
    } else {
        return 2;
    }
    return 0;
}

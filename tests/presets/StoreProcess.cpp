// Another process that uses a store: what the store's tests start beside themselves.
//
//   store_process PLACE write NAME LETTER SIZE ROUNDS    that letter, so many times over
//   store_process PLACE remove NAME
// PLACE is as in TestStore.h, or "user" for the store that the product uses.
#include "HandMadeImages.h"
#include "TestStore.h"

#include <cstdlib>

using handmade::Bytes;

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
    } else {
        return 2;
    }
    return 0;
}

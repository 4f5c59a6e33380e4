// Banks from files and from the store: whatever the bytes, the bank afterwards is what their
// records say or what it was.
#include "ImageRoads.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static ImageRoads roads;
    if (size == 0)
        return 0;
    const std::uint8_t choice = data[0];
    const expected::Bytes image(data + 1, data + size);
    expected::Controller wanted = roads.start;
    wanted.selected = choice & ImageRoads::kSelectAnother ? 5 : 0;
    roads.controller.become(wanted);

    int selections = 0;
    if (choice & ImageRoads::kFromFile) {
        const bool reversed = (choice & ImageRoads::kReversed) != 0;
        roads.writeFile(image);
        roads.controller.loadBank(roads.path.c_str(), reversed);
        selections = wanted.loadBankFile(image, reversed);
    } else {
        roads.store.write("DefaultBank", image);
        roads.controller.loadDefaultBank();
        selections = wanted.loadStoredBank(image);
    }
    require(roads.controller.is(wanted, selections), "the bank is not what the records say");
    if (wanted.bank != roads.start.bank)
        roads.requireReadable();
    return 0;
}

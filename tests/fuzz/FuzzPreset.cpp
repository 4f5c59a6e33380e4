// Presets from files and from the store: whatever the bytes, the selected preset afterwards is what
// their records say or what it was, and no other preset has changed.
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
        roads.controller.loadPreset(roads.path.c_str(), reversed);
        selections = wanted.loadPresetFile(image, reversed);
    } else {
        roads.store.write("MemoA", image);
        roads.controller.loadMemoA();
        selections = wanted.loadStoredPreset(image);
    }
    require(roads.controller.is(wanted, selections), "the preset is not what the records say");
    return 0;
}

// Images from files and from the store: whatever the bytes, what is in the bank afterwards is what
// their records say or what it was. Built once for banks and once for presets, which change the
// selected preset alone.
#include "Finding.h"
#include "OpenedController.h"

#include <cstdlib>
#include <string>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr bool kBank = ZKR_FUZZ_BANK;

// The first byte of an input chooses the road.
enum Choice : std::uint8_t { kFromFile = 1, kReversed = 2, kSelectAnother = 4 };

struct ImageRoads {
    ImageRoads() : start(controller.now())
    {
        char pattern[] = "/dev/shm/zkrt46-fuzz-XXXXXX";
        file = mkstemp(pattern);
        require(file >= 0, "no temporary file in /dev/shm");
        path = pattern;
        // Nobody but the presets' names tells one from another as yet.
        for (std::size_t i = 0; i < start.bank.size(); ++i)
            start.bank[i][0] = static_cast<std::uint8_t>('A' + i);
    }
    ~ImageRoads()
    {
        close(file);
        unlink(path.c_str());
    }

    // Both load the image; the second one returns how often a preset is selected.
    void load(const expected::Bytes& image, std::uint8_t choice)
    {
        const bool reversed = (choice & kReversed) != 0;
        if (choice & kFromFile) {
            const auto size = static_cast<ssize_t>(image.size());
            require(ftruncate(file, 0) == 0 && pwrite(file, image.data(), image.size(), 0) == size,
                    "the temporary file cannot be written");
            kBank ? controller.loadBank(path.c_str(), reversed)
                  : controller.loadPreset(path.c_str(), reversed);
        } else {
            store.write(kBank ? "DefaultBank" : "MemoA", image);
            kBank ? controller.loadDefaultBank() : controller.loadMemoA();
        }
    }
    static int load(const expected::Bytes& image, std::uint8_t choice, expected::Controller& wanted)
    {
        const bool reversed = (choice & kReversed) != 0;
        if (choice & kFromFile)
            return kBank ? wanted.loadBankFile(image, reversed)
                         : wanted.loadPresetFile(image, reversed);
        return kBank ? wanted.loadStoredBank(image) : wanted.loadStoredPreset(image);
    }

    // What is in a bank after any load can be saved and loaded again.
    void requireReadable()
    {
        const expected::Controller now = controller.now();
        std::vector<std::uint8_t> image;
        require(controller.serializeBank(image) == 48617, "the bank has no image");
        store.write("DefaultBank", image);
        controller.become(start);
        controller.loadDefaultBank();
        require(controller.is(now, 1), "a saved bank is another one when it is loaded");
    }

    platform::MemoryStore store;
    OpenedController controller{store};
    expected::Controller start;
    std::string path;
    int file;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static ImageRoads roads;
    if (size == 0)
        return 0;
    const std::uint8_t choice = data[0];
    const expected::Bytes image(data + 1, data + size);
    expected::Controller wanted = roads.start;
    wanted.selected = choice & kSelectAnother ? 5 : 0;
    roads.controller.become(wanted);

    roads.load(image, choice);
    const int selections = ImageRoads::load(image, choice, wanted);
    require(roads.controller.is(wanted, selections), "the bank is not what the records say");
    if (kBank && wanted.bank != roads.start.bank)
        roads.requireReadable();
    return 0;
}

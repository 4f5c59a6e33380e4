// The roads on which an image reaches the controller: from a file and from the per-user store.
#pragma once

#include "Finding.h"
#include "OpenedController.h"

#include <cstdlib>
#include <string>

#include <fcntl.h>
#include <unistd.h>

struct ImageRoads {
    // The first byte of an input chooses the road.
    enum Choice : std::uint8_t { kFromFile = 1, kReversed = 2, kSelectAnother = 4 };

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

    void writeFile(const expected::Bytes& image) const
    {
        const auto size = static_cast<ssize_t>(image.size());
        require(ftruncate(file, 0) == 0 && pwrite(file, image.data(), image.size(), 0) == size,
                "the temporary file cannot be written");
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

private:
    int file;
};

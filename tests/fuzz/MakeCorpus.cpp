// Writes the fuzzers' seed corpus into FOLDER/bank, /preset and /dispatcher: whole images and ones
// with few records, and sequences of calls.
#include "tests/presets/HandMadeImages.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace {

using namespace handmade;

std::filesystem::path folder;

void write(const std::string& target, const std::string& name, const Bytes& bytes)
{
    std::filesystem::create_directories(folder / target);
    std::ofstream file(folder / target / name, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    if (!file.flush()) {
        std::fprintf(stderr, "make_corpus: cannot write %s\n", name.c_str());
        std::exit(1);
    }
}

Bytes behind(const Bytes& start, const Bytes& rest)
{
    Bytes all = start;
    all.insert(all.end(), rest.begin(), rest.end());
    return all;
}

// Writes an image as the input for the store, for a file, for an endian-reversed file, and for a
// state.
void writeImage(std::uint8_t kind, const std::string& name, const Bytes& image)
{
    const std::string target = kind == kBank ? "bank" : "preset";
    write(target, name + ".store", behind({0}, image));
    write(target, name + ".file", behind({1}, image));
    write(target, name + ".reversed", behind({3}, image));
    write(target, name + ".state", behind({8}, stateOf(image)));
}

// Records of the shortest permitted size, to keep inputs small.
Image shortRecords(std::uint32_t preset, bool bigEndian)
{
    Image image(bigEndian);
    image.head(0, 24, preset).zeros(24);
    image.head(1, 16, preset).word(3).zeros(8).word(0x3F000000);
    image.head(1, 16, preset).word(57).zeros(8).word(0x3F800000);
    return image;
}

void writeImages(std::uint8_t kind)
{
    writeImage(kind, "empty", Image().finish(kind));
    for (const bool bigEndian : {false, true}) {
        const std::string end = bigEndian ? "-big" : "";
        writeImage(kind, "short" + end, shortRecords(3, bigEndian).finish(kind, 3));
        writeImage(kind, "good" + end,
                   kind == kBank ? goodBank(1, 7, bigEndian) : goodPreset(1, bigEndian));
    }
}

void writeCalls()
{
    // Each call is its number modulo 8 and its arguments; see FuzzDispatcher.cpp.
    const auto operation = [](std::uint8_t opcode) -> Bytes {
        return {0, static_cast<std::uint8_t>(opcode + 2), 1, 5, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    };
    for (std::uint8_t opcode = 0; opcode < 100; ++opcode)
        write("dispatcher", "operation " + std::to_string(opcode), behind({3}, operation(opcode)));

    const Bytes block{5, 1, 100, 1, 2, 3, 4}, set{3, 30, 0, 0, 0, 0x3F}, idle{7};
    Bytes session{3};
    for (const Bytes& call :
         {operation(10), operation(11), operation(12), block, set, block, idle, Bytes{6, 0, 0},
          block, Bytes{6, 1, 40, 0, 9, 0}, Bytes{6, 0, 1, 30, 1}, Bytes{4, 12}, operation(42),
          Bytes{5, 0xFE, 17, 1, 2, 3, 4, 0, 0, 0, 0, 0}, block})
        session = behind(session, call);
    write("dispatcher", "session", session);
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: make_corpus FOLDER\n");
        return 2;
    }
    folder = argv[1];
    writeImages(kBank);
    writeImages(kPreset);
    writeCalls();
    return 0;
}

// Writes the fuzzers' seed corpus into FOLDER/bank, /preset and /dispatcher: valid images, and ones
// crafted around cases that a reader may get wrong.
#include "tests/presets/HandMadeImages.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <limits>

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
Image shortRecords(std::uint32_t preset, bool bigEndian = false)
{
    Image image(bigEndian);
    image.head(0, 24, preset).zeros(24);
    image.head(1, 16, preset).word(3).zeros(8).word(0x3F000000);
    image.head(1, 16, preset).word(57).zeros(8).word(0x3F800000);
    return image;
}

void writeImages(std::uint8_t kind)
{
    const auto put = [kind](const std::string& name, const Bytes& image) {
        writeImage(kind, name, image);
    };
    put("short", shortRecords(3).finish(kind, 3));
    put("short-big", shortRecords(3, true).finish(kind, 3));
    put("empty", Image().finish(kind));
    put("current-24", shortRecords(1).finish(kind, 24));
    put("name-too-short", Image().head(0, 23, 0).zeros(23).finish(kind));
    put("name-full", Image().name(0, "four and twenty letters!").finish(kind));
    put("value-too-short", Image().head(1, 15, 0).zeros(15).finish(kind));
    put("size-negative", Image().head(1, 0xFFFFFFFF, 0).zeros(20).finish(kind));
    put("kind-unknown", Image().head(7, 5, 0).zeros(5).value(0, 1, 1.0f).finish(kind));
    put("id-58", Image().value(0, 58, 2.0f).value(0, 0xFFFFFFFF, 0.5f).finish(kind));
    for (const float x : {-0.0f, 1.0000001f, -1e-30f, std::numeric_limits<float>::quiet_NaN()})
        put("value " + std::to_string(x), Image().value(0, 4, 0.25f).value(0, 5, x).finish(kind));
    for (const bool bigEndian : {false, true})
        put(bigEndian ? "good-big" : "good",
            kind == kBank ? goodBank(1, 7, bigEndian) : goodPreset(1, bigEndian));
    for (const std::size_t size : {0u, 4u, 5u, 40u, 41u}) {
        Bytes image = goodPreset(3);
        image[4] = kind;
        image.resize(size);
        put("cut " + std::to_string(size), image);
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

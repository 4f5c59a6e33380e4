// Writes the fuzzers' seed corpus into FOLDER/bank, /preset, /state and /dispatcher: whole images
// and ones with few records, states and hosts' files of them, and sequences of calls.
#include "presets/FactoryBank.h"
#include "tests/presets/HandMadeImages.h"
#include "tools/banks/HostFile.h"

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

void writeStates()
{
    // The first four bytes: the form, how it is read, and a place in the state (here byte 60). The
    // numbers are those of FuzzState.cpp.
    const auto input = [](std::uint8_t form, int how, const Bytes& rest) {
        return behind({form, static_cast<std::uint8_t>(how), 60, 0}, rest);
    };
    const Bytes brief = shortRecords(3, false).finish(kBank, 3), whole = goodBank(2, 5);
    for (const Bytes& image : {brief, whole}) {
        const std::string name = image == brief ? "short" : "good";
        const Bytes state = stateOf(image);
        Bytes chunk(16);
        chunk[8] = static_cast<std::uint8_t>(state.size());
        chunk[9] = static_cast<std::uint8_t>(state.size() >> 8);
        write("state", name + ".chunk", input(0, 0, behind(chunk, state)));
        write("state", name + ".part", input(0, 1, state));
        for (const int how : {0, 1, 3, 12, 16, 24, 32, 40, 65})
            write("state", name + ".controller" + std::to_string(how), input(1, how, state));
        write("state", name + ".fxp", input(4, 0, tool::fxpBytes(image, factoryBank()[2], 1)));
        write("state", name + ".fxb", input(4, 0, tool::fxbBytes(image, 1)));
        write("state", name + ".vstpreset",
              input(4, 0, tool::vstPresetBytes(image, factoryBank()[2])));
    }
    // 48 bytes of header, then the component's state.
    const Bytes file = tool::vstPresetBytes(brief, factoryBank()[2]);
    const Bytes component(file.begin() + 48, file.begin() + 48 + 244);
    for (const int how : {0, 1, 3, 8, 16, 24, 32, 40, 64}) {
        write("state", "component" + std::to_string(how), input(2, how, component));
        write("state", "parameters" + std::to_string(how), input(3, how, component));
    }
}

void writeCalls()
{
    // A byte for the host's habits, then calls: a number modulo 16 and its arguments. The numbers
    // are those of FuzzDispatcher.cpp.
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

    // The mouse in the editor's widest layout: for each height, an input that presses at many
    // places, and one that drags.
    const Bytes open{8, 0}, paint{14, 1}, wait{15, 30}, typed{13, 1, 3, 'a', 'b', 'c'};
    const auto at = [](int x, int y) -> Bytes {
        return {static_cast<std::uint8_t>(x + 3), static_cast<std::uint8_t>((x + 3) >> 8),
                static_cast<std::uint8_t>(y + 3), static_cast<std::uint8_t>((y + 3) >> 8)};
    };
    const Bytes both =
        behind(behind(open, behind({3, 7, 0, 0, 0x80, 0x3F}, {3, 8, 0, 0, 0x80, 0x3F})), paint);
    for (const int y : {20, 60, 100, 140, 180, 220, 260, 300, 340, 380, 420, 460, 496}) {
        const Bytes start = behind({1}, both);
        Bytes presses = start, drags = start;
        // The keys below the strips are narrow.
        for (int x = 8; x < (y == 496 ? 400 : 890); x += y == 496 ? 12 : 30) {
            presses = behind(behind(presses, {9}), behind(at(x, y), {0, 0, 3, 0, 5}));
            drags = behind(behind(drags, {10}), at(x, y));
            drags = behind(behind(drags, {0}), behind(at(x + 15, y + 30), {0}));
        }
        write("dispatcher", "presses " + std::to_string(y), behind(presses, wait));
        write("dispatcher", "drags " + std::to_string(y), behind(drags, paint));
    }
    Bytes window{0};
    for (const Bytes& call :
         {open, wait, Bytes{8, 1}, behind(Bytes{11}, behind(at(300, 200), {127, 1})), typed, paint,
          operation(13), operation(15), open,
          Bytes{0,    52,   0, 0xFF, 0x41, 0x43, 0x74, 0x73, 0x65, 0x65,
                0x68, 0x57, 0, 0,    0,    0,    0,    0,    0x80, 0x3F}})
        window = behind(window, call);
    write("dispatcher", "window", window);
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
    writeStates();
    writeCalls();
    return 0;
}

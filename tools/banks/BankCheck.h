// What is wrong or odd in a preset or bank image, byte by byte, and what the plug-in, which says
// nothing, makes of it.
#pragma once

#include "BankFormat.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tool {

enum class ImageKind {
    Unknown,
    Preset,
    Bank,
    State,  // a bank as a host's project keeps it, behind a prefix of 8 bytes
};

// From worst to best.
enum class Outcome {
    Ignored,   // not taken for an image
    NoEffect,  // read, and nothing changes
    Undone,    // the whole of it is given up
    Partly,    // taken as far as its records make sense
    Taken,
};

struct Finding {
    bool isFault;                       // else an oddity that costs nothing that matters
    std::optional<std::size_t> offset;  // bytes from the start of the file
    std::string text;
};

class ImageReport {
public:
    ImageKind kind = ImageKind::Unknown;
    Outcome outcome = Outcome::Taken;
    std::vector<Finding> findings;

    // After the tenth of one topic, only their number is kept; `close` writes it down.
    void fault(const std::string& topic, std::optional<std::size_t> offset, const std::string& text,
               Outcome atBest);
    void note(const std::string& topic, std::optional<std::size_t> offset, const std::string& text,
              Outcome atBest = Outcome::Taken);
    void close();

    bool hasFaults() const { return faults; }
    bool isTaken() const { return outcome == Outcome::Taken || outcome == Outcome::Partly; }

private:
    void add(bool isFault, const std::string& topic, std::optional<std::size_t> offset,
             const std::string& text, Outcome atBest);

    struct Count {
        bool isFault;
        int number;
    };
    std::map<std::string, Count> counts;
    bool faults = false;
};

// The parts of an image whose start could be read.
struct ImageParts {
    ImageKind kind;
    bool swap;
    FileHeader header;                  // in this machine's order
    std::size_t recordsAt;              // bytes from the start of the file
    std::size_t end;                    // of the file; a short state is filled up behind it
    std::vector<std::uint8_t> records;  // as far as the plug-in looks
};

// Takes a file's bytes apart as the plug-in does; nothing where it would go no further. `titles`,
// by id, make the messages readable; without them parameters go by their number.
std::optional<ImageParts> takeApart(ByteView file, ImageReport& report);
ImageReport checkImage(ByteView file, const std::vector<std::string>& titles = {});

// The whole of what the plug-in does with it, as the end of a sentence.
std::string outcomeText(const ImageReport& report);
// "at byte 65 (0x41)"
std::string atByte(std::size_t offset);

}  // namespace tool

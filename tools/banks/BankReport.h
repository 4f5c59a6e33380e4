// What is wrong or odd in a preset or bank file, and what the plug-in, which says nothing, makes of
// it.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tool {

enum class FileKind {
    Unknown,
    Preset,
    Bank,
    State,  // a bank as a host's project keeps it, behind kStatePrefix
};

// From worst to best.
enum class Outcome {
    Ignored,   // not taken for a preset or a bank
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

class BankReport {
public:
    FileKind kind = FileKind::Unknown;
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

// The whole of what the plug-in does with it, as the end of a sentence.
std::string outcomeText(const BankReport& report);
// "at byte 65 (0x41)"
std::string atByte(std::size_t offset);

}  // namespace tool

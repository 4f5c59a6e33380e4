// Findings about a preset or bank file, and what the plug-in, which gives no messages, does with
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
    State,       // a bank as stored in a host's project, after kStatePrefix
    HostPreset,  // such a state in a .fxp or .vstpreset
    HostBank,    // and in a .fxb
};

// From worst to best.
enum class Outcome {
    Ignored,   // not recognised as a preset or bank
    NoEffect,  // read without a change to the bank
    Undone,    // undone as a whole after a fault
    Partly,    // some of it is skipped or missing
    Taken,
};

struct Finding {
    bool isFault;                       // else a note
    std::optional<std::size_t> offset;  // bytes from the start of the file
    std::string text;
};

class BankReport {
public:
    FileKind kind = FileKind::Unknown;
    Outcome outcome = Outcome::Taken;
    std::vector<Finding> findings;

    // A finding lowers `outcome` to `atBest`. Of each topic the first ten findings are kept;
    // `close` adds one with the number of the others.
    void fault(const std::string& topic, std::optional<std::size_t> offset, const std::string& text,
               Outcome atBest);
    void note(const std::string& topic, std::optional<std::size_t> offset, const std::string& text,
              Outcome atBest = Outcome::Taken);
    // Takes over what a part of the file has given that begins at `shift`. Its faults lower the
    // outcome to `atBest`.
    void append(const BankReport& part, std::size_t shift, Outcome atBest);
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

// What the plug-in does with the file, as a clause for a message.
std::string outcomeText(const BankReport& report);
// "at byte 65 (0x41)"
std::string atByte(std::size_t offset);

}  // namespace tool

#include "tools/banks/BankReport.h"

#include <algorithm>
#include <cstdio>

namespace tool {

namespace {

constexpr int kMaxOfOneTopic = 10;

}  // namespace

void BankReport::fault(const std::string& topic, std::optional<std::size_t> offset,
                       const std::string& text, Outcome atBest)
{
    add(true, topic, offset, text, atBest);
}

void BankReport::note(const std::string& topic, std::optional<std::size_t> offset,
                      const std::string& text, Outcome atBest)
{
    add(false, topic, offset, text, atBest);
}

void BankReport::add(bool isFault, const std::string& topic, std::optional<std::size_t> offset,
                     const std::string& text, Outcome atBest)
{
    faults = faults || isFault;
    outcome = std::min(outcome, atBest);
    Count& count = counts.try_emplace(topic, Count{isFault, 0}).first->second;
    if (++count.number <= kMaxOfOneTopic)
        findings.push_back({isFault, offset, text});
}

void BankReport::append(const BankReport& part, std::size_t shift, Outcome atBest)
{
    for (Finding finding : part.findings) {
        if (finding.offset)
            *finding.offset += shift;
        findings.push_back(finding);
    }
    faults = faults || part.faults;
    outcome = std::min({outcome, part.outcome, part.faults ? atBest : Outcome::Taken});
}

void BankReport::close()
{
    for (const auto& [topic, count] : counts)
        if (count.number > kMaxOfOneTopic)
            findings.push_back(
                {count.isFault, std::nullopt,
                 "and " + std::to_string(count.number - kMaxOfOneTopic) + " more " + topic});
    counts.clear();
}

std::string outcomeText(const BankReport& report)
{
    const bool preset = report.kind == FileKind::Preset;
    const bool ofHost = report.kind == FileKind::HostPreset || report.kind == FileKind::HostBank;
    if (ofHost && report.outcome <= Outcome::NoEffect)
        return "it cannot be loaded into the plug-in";
    const std::string what = preset ? "the preset" : "the bank";
    switch (report.outcome) {
    case Outcome::Ignored:
        return "the plug-in ignores the file";
    case Outcome::NoEffect:
        return "the plug-in reads it without effect";
    case Outcome::Undone:
        return "the plug-in undoes the load as a whole and keeps " + what + " it had";
    case Outcome::Partly:
        return "the plug-in takes it as far as its records make sense";
    case Outcome::Taken:
        break;
    }
    return "the plug-in takes all of it";
}

std::string atByte(std::size_t offset)
{
    char text[64];
    std::snprintf(text, sizeof(text), "at byte %zu (0x%zX)", offset, offset);
    return text;
}

}  // namespace tool

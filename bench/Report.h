// Prints the results as a table and writes them to a CSV file with one line per number.
#pragma once

#include "dsp/ProcessingForm.h"

#include <cstdint>
#include <string>
#include <vector>

struct FormResult {
    ProcessingForm form;
    double value;        // nanoseconds per stereo frame at the host's rate, or a ratio of two times
    std::uint64_t hash;  // of the output
};

struct Case {
    std::string group, name, signal;
    double rate;                      // Hz, the host's
    int block;                        // frames
    std::vector<FormResult> results;  // plain first
};

class Report {
public:
    // Starts a table with a line that explains its numbers.
    void title(const std::string& text);

    // One line: nanoseconds of each form, plain over fast, share of real time of the first and the
    // last form, and whether all forms gave the plain form's bits.
    void add(const Case& row);

    // One line with a ratio for each form.
    void addRatio(const std::string& name, const std::vector<FormResult>& ratios);

    // Writes the CSV file; false if that fails.
    bool write(const std::string& path) const;
    bool allFormsAgreed() const { return bitsAgree; }  // in every line so far

private:
    void head(const Case& row);

    std::vector<std::string> lines;
    bool headWanted = true;
    bool bitsAgree = true;
};

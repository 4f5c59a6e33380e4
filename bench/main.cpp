// zkrt46-bench: measures the plain and the fast forms of the audio path side by side.
#include "bench/Benches.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

constexpr const char* kUsage =
    "zkrt46-bench [--quick] [--chain NAME] [--rate HZ] [--block N] [-o FILE.csv]\n"
    "  Every time is the shortest of many, with the forms taking turns. The last column is\n"
    "  a hash of the output.\n"
    "  --quick       48 kHz and blocks of 512 only, fewer repetitions (a full run takes minutes)\n"
    "  --chain NAME  one of: stages, \"power off\", default, \"three bands\", \"everything on\",\n"
    "                driven\n"
    "  --rate HZ     44100, 48000, 96000 or 192000\n"
    "  --block N     64, 512 or 4096\n"
    "  -o FILE.csv   also writes every number to a CSV file\n";

bool parse(int count, char** arguments, Selection& selection, std::string& file)
{
    for (int i = 1; i < count; ++i) {
        const std::string option = arguments[i];
        if (option == "--quick") {
            selection.quick = true;
            continue;
        }
        if (++i == count)
            return false;
        const char* const value = arguments[i];
        if (option == "--chain")
            selection.chain = value;
        else if (option == "--rate")
            selection.rate = std::atof(value);
        else if (option == "--block")
            selection.block = std::atoi(value);
        else if (option == "-o")
            file = value;
        else
            return false;
    }
    return true;
}

}  // namespace

int main(int count, char** arguments)
{
    Selection selection;
    std::string file;
    if (!parse(count, arguments, selection, file)) {
        std::fputs(kUsage, stderr);
        return 2;
    }
    Report report;
    if (selection.wantsStages())
        benchStages(selection, report);
    benchChains(selection, report);
    benchTransients(selection, report);
    benchLoudness(selection, report);
    benchInstances(selection, report);
    if (!report.allFormsAgreed())
        std::puts("\nThe output of some forms differs from the plain one.");
    if (!file.empty() && !report.write(file)) {
        std::fprintf(stderr, "zkrt46-bench: cannot write %s\n", file.c_str());
        return 1;
    }
    return 0;
}

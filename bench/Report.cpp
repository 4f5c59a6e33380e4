#include "bench/Report.h"

#include <cinttypes>
#include <cstdio>

namespace {

template <typename... Values>
std::string format(const char* pattern, Values... values)
{
    char text[200];
    std::snprintf(text, sizeof text, pattern, values...);
    return text;
}

bool sameBits(const std::vector<FormResult>& results)
{
    for (const FormResult& result : results)
        if (result.hash != results.front().hash)
            return false;
    return true;
}

}  // namespace

void Report::title(const std::string& text)
{
    std::printf("\n%s\n", text.c_str());
    headWanted = true;
}

void Report::head(const Case& row)
{
    std::string line = format("%-18s %6s %5s %-8s", "", "Hz", "block", "signal");
    for (const FormResult& result : row.results)
        line += format(" %8s", nameOf(result.form));
    for (std::size_t i = 1; i < row.results.size(); ++i)
        line += format(" %8s", format("/%s", nameOf(row.results[i].form)).c_str());
    line += row.results.size() > 1 ? "   real time %      output" : "  real time %      output";
    std::printf("%s\n", line.c_str());
    headWanted = false;
}

void Report::add(const Case& row)
{
    if (headWanted)
        head(row);
    const std::vector<FormResult>& results = row.results;
    const double plain = results.front().value;
    const auto realTimePercent = [&](double nanoseconds) { return nanoseconds * row.rate * 1e-7; };

    std::string line =
        format("%-18s %6.0f %5d %-8s", row.name.c_str(), row.rate, row.block, row.signal.c_str());
    for (const FormResult& result : results)
        line += format(" %8.1f", result.value);
    for (std::size_t i = 1; i < results.size(); ++i)
        line += format(" %8.2f", plain / results[i].value);
    line += format("  %6.3f", realTimePercent(plain));
    if (results.size() > 1)
        line += format(" %6.3f", realTimePercent(results.back().value));
    const bool same = sameBits(results);
    bitsAgree = bitsAgree && same;
    line += format("  %016" PRIx64 "%s", results.front().hash, same ? "" : "  FORMS DIFFER");
    std::printf("%s\n", line.c_str());
    std::fflush(stdout);

    for (const FormResult& result : results)
        lines.push_back(format("%s,%s,%.0f,%d,%s,%s,%.3f,%.5f,%.3f,%016" PRIx64, row.group.c_str(),
                               row.name.c_str(), row.rate, row.block, row.signal.c_str(),
                               nameOf(result.form), result.value, realTimePercent(result.value),
                               plain / result.value, result.hash));
}

void Report::addRatio(const std::string& name, const std::vector<FormResult>& ratios)
{
    std::string line = format("%-46s", name.c_str());
    for (const FormResult& ratio : ratios) {
        line += format("  %s %.2f", nameOf(ratio.form), ratio.value);
        lines.push_back(format("ratio,%s,,,,%s,%.3f,,,%016" PRIx64, name.c_str(),
                               nameOf(ratio.form), ratio.value, ratio.hash));
    }
    const bool same = sameBits(ratios);
    bitsAgree = bitsAgree && same;
    std::printf("%s%s\n", line.c_str(), same ? "" : "  FORMS DIFFER");
    std::fflush(stdout);
}

bool Report::write(const std::string& path) const
{
    std::FILE* file = std::fopen(path.c_str(), "w");
    if (!file)
        return false;
    std::fputs("group,name,rate_hz,block,signal,form,ns_per_frame,real_time_percent,"
               "plain_over_this,output_hash\n",
               file);
    for (const std::string& line : lines)
        std::fprintf(file, "%s\n", line.c_str());
    return std::fclose(file) == 0;
}

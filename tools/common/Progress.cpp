#include "tools/common/Progress.h"

#include <algorithm>
#include <cstdio>

#include <unistd.h>

namespace tool {

namespace {

constexpr int kWidth = 40;
constexpr std::chrono::milliseconds kInterval{100};

}  // namespace

Progress::Progress(const std::string& label)
    : label(label), onTerminal(isatty(STDERR_FILENO) != 0), visible(false), next()
{
}

Progress::~Progress()
{
    if (visible)
        std::fputs("\r\033[K", stderr);
}

void Progress::show(double fraction)
{
    if (!onTerminal)
        return;
    const auto now = std::chrono::steady_clock::now();
    if (now < next)
        return;
    next = now + kInterval;
    visible = true;
    const double part = std::clamp(fraction, 0.0, 1.0);
    const int filled = static_cast<int>(part * kWidth);
    std::string bar(static_cast<std::size_t>(filled), '#');
    bar.resize(kWidth, '.');
    std::fprintf(stderr, "\r%s [%s] %3d %%", label.c_str(), bar.c_str(),
                 static_cast<int>(part * 100.0));
    std::fflush(stderr);
}

}  // namespace tool

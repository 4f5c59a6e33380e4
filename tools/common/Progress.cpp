#include "tools/common/Progress.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include <sys/ioctl.h>
#include <unistd.h>

namespace tool {

namespace {

constexpr int kBarWidth = 40;
constexpr int kBoardBarWidth = 24;
constexpr std::size_t kTimeWidth = 14;  // of ", 1:00:00 left"
constexpr std::size_t kMaxNameWidth = 30;
constexpr std::chrono::milliseconds kInterval{100};

// An estimate after less time than this jumps about.
constexpr double kFirstEstimate = 1.0;  // seconds

double secondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

// "name [####......]  40 %"
std::string barText(const std::string& label, double fraction, int width)
{
    const double part = std::clamp(fraction, 0.0, 1.0);
    std::string bar(static_cast<std::size_t>(part * width), '#');
    bar.resize(static_cast<std::size_t>(width), '.');
    char percent[16];
    std::snprintf(percent, sizeof(percent), "%3d %%", static_cast<int>(part * 100.0));
    return label + " [" + bar + "] " + percent;
}

// Whole UTF-8 characters from the start, with an ellipsis if some are left out, padded with blanks.
std::string fitted(const std::string& name, std::size_t width)
{
    std::string text;
    std::size_t used = 0;
    const auto characters =
        std::count_if(name.begin(), name.end(), [](char c) { return (c & 0xC0) != 0x80; });
    const bool whole = static_cast<std::size_t>(characters) <= width;
    for (const char c : name) {
        const bool starts = (c & 0xC0) != 0x80;
        if (starts && !whole && used + 1 == width)
            break;
        used += starts ? 1 : 0;
        text += c;
    }
    if (!whole) {
        text += "\u2026";
        ++used;
    }
    return text + std::string(width - used, ' ');
}

// Of the terminal; lines that are longer would break and could not be erased.
std::size_t lineWidth()
{
    winsize size{};
    return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

}  // namespace

std::string timeLeft(double elapsed, double fraction)
{
    if (elapsed < kFirstEstimate || fraction <= 0.0)
        return "";
    const long seconds = std::lround(elapsed * (1.0 - fraction) / fraction);
    char text[64];
    if (seconds < 3600)
        std::snprintf(text, sizeof(text), ", %ld:%02ld left", seconds / 60, seconds % 60);
    else
        std::snprintf(text, sizeof(text), ", %ld:%02ld:%02ld left", seconds / 3600,
                      seconds / 60 % 60, seconds % 60);
    return text;
}

Progress::Progress(const std::string& label)
    : label(label), onTerminal(isatty(STDERR_FILENO) != 0), visible(false), started(Clock::now()),
      next()
{
}

Progress::~Progress()
{
    if (visible)
        std::fputs("\r\033[K", stderr);
}

void Progress::show(double fraction)
{
    if (!onTerminal || Clock::now() < next)
        return;
    next = Clock::now() + kInterval;
    visible = true;
    std::fprintf(stderr, "\r%s%s\033[K", barText(label, fraction, kBarWidth).c_str(),
                 timeLeft(secondsSince(started), fraction).c_str());
    std::fflush(stderr);
}

ProgressBoard::ProgressBoard(const std::vector<Job>& jobs)
    : onTerminal(isatty(STDERR_FILENO) != 0), visibleLines(0), started(Clock::now()), next()
{
    for (const Job& job : jobs)
        this->jobs.push_back({job});
}

ProgressBoard::~ProgressBoard()
{
    erase();
}

void ProgressBoard::show(std::size_t job, double fraction)
{
    const std::lock_guard<std::mutex> guard(lock);
    jobs[job].running = true;
    jobs[job].fraction = fraction;
    if (!onTerminal || Clock::now() < next)
        return;
    next = Clock::now() + kInterval;
    draw();
}

void ProgressBoard::finish(std::size_t job, bool skipped, const std::string& message)
{
    const std::lock_guard<std::mutex> guard(lock);
    jobs[job].running = false;
    jobs[job].finished = true;
    jobs[job].skipped = skipped;
    jobs[job].fraction = 1.0;
    if (message.empty())
        return;
    erase();
    std::fprintf(stderr, "%s\n", message.c_str());
}

void ProgressBoard::draw()
{
    erase();
    double done = 0.0, all = 0.0;
    std::size_t finished = 0;
    const std::size_t width = lineWidth();
    const auto line = [&](const std::string& text) {
        std::fprintf(stderr, "%s\n", text.c_str());
        ++visibleLines;
    };
    const std::size_t around = kBoardBarWidth + 9 + kTimeWidth;
    const std::size_t nameWidth =
        std::min(kMaxNameWidth, width > around + 8 ? width - around : std::size_t{8});
    for (const State& job : jobs) {
        finished += job.finished ? 1 : 0;
        if (!job.skipped) {
            done += job.weight * job.fraction;
            all += job.weight;
        }
        if (job.running)
            line(barText(fitted(job.name, nameWidth), job.fraction, kBoardBarWidth));
    }
    const double part = all > 0.0 ? done / all : 0.0;
    const std::string count =
        std::to_string(finished) + " of " + std::to_string(jobs.size()) + " files";
    line(barText(fitted(count, nameWidth), part, kBoardBarWidth)
         + timeLeft(secondsSince(started), part));
    std::fflush(stderr);
}

void ProgressBoard::erase()
{
    for (; visibleLines > 0; --visibleLines)
        std::fputs("\033[A\033[2K", stderr);
    std::fputs(onTerminal ? "\r" : "", stderr);
}

}  // namespace tool

// Communication with child processes: nothing may hang, whatever they do.
#include "platform/posix/ChildProcess.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <filesystem>

namespace {

using platform::ChildProcess;
using Outcome = ChildProcess::Outcome;
using Role = ChildProcess::Role;
using Seconds = ChildProcess::Seconds;

TEST(ChildProcess, TransfersMoreThanAPipeBuffersInBothDirections)
{
    std::string input;
    for (int i = 0; input.size() < 1000000; ++i)
        input += std::to_string(i) + "\n";
    ChildProcess cat(Role::Helper, {"cat"});
    std::string output;
    EXPECT_EQ(cat.converse(input, output, Seconds(30.0)), Outcome::Done);
    EXPECT_TRUE(output == input);
    EXPECT_EQ(cat.wait(Seconds(5.0)), 0);
    ChildProcess slow(Role::Helper, {"sh", "-c", "sleep 0.2; exec cat >/dev/null"});
    EXPECT_EQ(slow.write(input.data(), input.size(), Seconds(30.0)), Outcome::Done);
}

TEST(ChildProcess, ReportsAChildThatIsSilentOrHasExited)
{
    char byte = 0;
    const std::string much(1 << 20, 'x');
    {
        ChildProcess silent(Role::Helper, {"sh", "-c", "exec sleep 1"});
        EXPECT_EQ(silent.read(&byte, 1, Seconds(0.1)), Outcome::TimedOut);
        EXPECT_EQ(silent.write(much.data(), much.size(), Seconds(0.1)), Outcome::TimedOut);
    }
    ChildProcess gone(Role::Helper, {"sh", "-c", "echo first >&2; echo the reason >&2; exit 3"});
    EXPECT_EQ(gone.read(&byte, 1, Seconds(10.0)), Outcome::Ended);
    EXPECT_EQ(gone.wait(Seconds(5.0)), 3);
    EXPECT_EQ(gone.lastWords(), "the reason");
    EXPECT_EQ(gone.write(much.data(), much.size(), Seconds(5.0)), Outcome::Ended);
    EXPECT_NE(ChildProcess(Role::Helper, {"no-such-program"}).startError(), "");
}

TEST(ChildProcess, HasNothingOpenOfOursAndLeavesNothingOpen)
{
    const auto openFiles = [] {
        return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
    };
    const auto before = openFiles();
    for (const Role role : {Role::Desktop, Role::Helper}) {
        ChildProcess other(role, {"cat"}), list(role, {"ls", "/proc/self/fd"});
        std::string seen;
        EXPECT_EQ(list.converse("", seen, Seconds(5.0)), Outcome::Done);
        EXPECT_LE(std::count(seen.begin(), seen.end(), '\n'), before) << seen;
    }
    ChildProcess(Role::Helper, {"no-such-program"});
    EXPECT_EQ(openFiles(), before);
}

TEST(ChildProcess, OfAProcessThatIgnoresItsChildrenEndsAllTheSame)
{
    const auto usual = std::signal(SIGCHLD, SIG_IGN);
    EXPECT_EQ(ChildProcess(Role::Desktop, {"true"}).wait(Seconds(5.0)), 0);
    std::signal(SIGCHLD, usual);
}

TEST(ChildProcess, OfTheDesktopIsAskedToEndWithItsObject)
{
    const auto start = std::chrono::steady_clock::now();
    ChildProcess(Role::Desktop, {"sleep", "20"});
    EXPECT_LT(Seconds(std::chrono::steady_clock::now() - start).count(), 4.0);
}

TEST(ChildProcess, DetectsTheExitThoughAGrandchildHoldsThePipeOpen)
{
    const auto start = std::chrono::steady_clock::now();
    ChildProcess parent(Role::Helper, {"sh", "-c", "sleep 20 2>&1 & printf ab; exit 0"});
    char bytes[3]{};
    EXPECT_EQ(parent.read(bytes, 3, Seconds(15.0)), Outcome::Ended);
    EXPECT_EQ(std::string(bytes, 2), "ab") << "output before the exit was lost";
    EXPECT_LT(Seconds(std::chrono::steady_clock::now() - start).count(), 5.0);
}

}  // namespace

// A fixture that runs the built program in a shell, in a temporary folder, with the built library
// as the plug-in.
#pragma once

#include "tests/support/TemporaryFolder.h"
#include "tests/tools/AudioContent.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include <sys/wait.h>

class CommandLine : public ::testing::Test {
protected:
    CommandLine()
    {
        std::vector<float> tone(2 * 4800);
        for (std::size_t i = 0; i < tone.size(); ++i)
            tone[i] = 0.5f * static_cast<float>(std::sin(0.05 * static_cast<double>(i / 2)));
        writeAudio(folder / "in.wav", tone, tool::SampleFormat::Int24, 48000, 2);
        for (const char* stream : {"out.txt", "err.txt"})
            writeContent(folder / stream, "");
    }
    // `arguments` are parsed by the shell; `before` precedes the program's name.
    int run(const std::string& arguments, const std::string& before = "")
    {
        const std::string command = "cd '" + (folder / "") + "' && " + before
            + " ZKRT46_PLUGIN='" ZKRT46_LIBRARY "' timeout 60 '" ZKRT46_PROGRAM "' " + arguments
            + " >out.txt 2>err.txt";
        const int status = std::system(command.c_str());
        out = contentOf(folder / "out.txt");
        err = contentOf(folder / "err.txt");
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    // Expects one line of error message with these words, exit code 2, and no new file.
    void expectComplaint(const std::string& arguments, const std::string& words = "")
    {
        SCOPED_TRACE(arguments);
        const int files = folder.count();
        EXPECT_EQ(run(arguments), 2);
        EXPECT_EQ(out, "");
        EXPECT_EQ(std::count(err.begin(), err.end(), '\n'), 1) << err;
        EXPECT_EQ(err.rfind("zkrt46: ", 0), 0u) << err;
        EXPECT_NE(err.find(words), std::string::npos) << err;
        EXPECT_EQ(folder.count(), files);
    }
    TemporaryFolder folder;
    std::string out, err;
};

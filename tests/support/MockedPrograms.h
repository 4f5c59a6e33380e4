// The desktop's helper programs, mocked by shell scripts; the search path holds no other programs.
#pragma once

#include "tests/support/TemporaryFolder.h"

#include <cstdlib>

class MockedPrograms {
public:
    MockedPrograms() { search(folder.path().string()); }
    ~MockedPrograms() { search(path); }
    MockedPrograms(const MockedPrograms&) = delete;
    MockedPrograms& operator=(const MockedPrograms&) = delete;

    // The script first records its arguments.
    void install(const std::string& name, const std::string& script)
    {
        const std::string file = folder / name;
        writeContent(file,
                     "#!/bin/sh\nprintf '%s\\n' \"$@\" > '" + (folder / "asked") + "'\n" + script);
        std::filesystem::permissions(file, std::filesystem::perms::owner_all);
    }
    // The arguments of the last call, one a line.
    std::string asked() const { return contentOf(folder / "asked"); }

    const TemporaryFolder folder;

private:
    // Windows has no such programs.
    static void search(const std::string& value)
    {
#ifdef _WIN32
        (void)value;
#else
        setenv("PATH", value.c_str(), 1);
#endif
    }

    const std::string path = std::getenv("PATH") ? std::getenv("PATH") : "";
};

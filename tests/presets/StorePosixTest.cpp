// The per-user store and its files on POSIX systems: where the store lies, links, rights, and saves
// that are cut short.
#include "FileStore.h"
#include "Files.h"
#include "HandMadeImages.h"
#include "OpenedController.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <functional>

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace handmade;
namespace fs = std::filesystem;

namespace {

int syncs = 0;  // calls of fsync

constexpr int kCannotTry = 77;

// Runs `action` in a process of its own and returns what it returns.
int inChild(const std::function<int()>& action)
{
    const pid_t child = fork();
    if (child == 0)
        _exit(action());
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// Rights do not bind root, so it becomes somebody else.
bool becomeOrdinaryUser()
{
    constexpr uid_t kNobody = 65534;
    return geteuid() != 0 || (setgid(kNobody) == 0 && setuid(kNobody) == 0);
}

class PosixFile : public testing::Test {
protected:
    PosixFile()
    {
        std::string pattern = (fs::temp_directory_path() / "zkrt46-file-XXXXXX").string();
        EXPECT_NE(mkdtemp(pattern.data()), nullptr);
        folder = pattern;
        path = folder / "bank.zkb";
        EXPECT_TRUE(platform::replaceFile(path, old));
        // For the ordinary user too.
        fs::permissions(folder, fs::perms::all);
        fs::permissions(path, fs::perms(0666));
    }
    void TearDown() override
    {
        fs::permissions(folder, fs::perms::all);
        fs::remove_all(folder);
    }

    Bytes contents() const { return platform::readFile(path, 1 << 20).value_or(Bytes()); }
    std::size_t filesInFolder() const
    {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
    }
    static mode_t modeOf(const fs::path& file)
    {
        struct stat status = {};
        stat(file.c_str(), &status);
        return status.st_mode & 07777;
    }
    // What a child's attempt to save a bank over the file comes to: 0 if the old one stayed.
    int saveOver() const
    {
        platform::MemoryStore settings;
        OpenedController controller(settings);
        controller.saveBank(path.c_str());
        return contents() == old && filesInFolder() == 1 ? 0 : 1;
    }

    fs::path folder, path;
    const Bytes old = goodBank(1, 3), next = goodBank(2, 4);
};

int runProcess(const std::string& environment, const std::string& arguments)
{
    return std::system(
        ("env -u XDG_DATA_HOME " + environment + ' ' + ZKR_STORE_PROCESS + ' ' + arguments)
            .c_str());
}

constexpr const char* kOwnFolder = "ZKR-soundworks/ZKRT46";

}  // namespace

// In place of the system's, which it calls.
extern "C" int fsync(int file)
{
    ++syncs;
    return static_cast<int>(syscall(SYS_fsync, file));
}

TEST_F(PosixFile, WhatTheUserStoresWaitsForTheDiskAndPathsDoNot)
{
    platform::FileStore store(folder / "values");
    const fs::path start = fs::current_path();
    {
        OpenedController controller(store);
        const auto syncsOf = [](const std::function<void()>& action) {
            syncs = 0;
            action();
            return syncs;
        };
        EXPECT_EQ(syncsOf([&] { controller.saveBank(path.c_str()); }), 1);
        EXPECT_EQ(syncsOf([&] { controller.storeDefaultBank(); }), 1);
        EXPECT_EQ(syncsOf([&] { controller.storeMemoA(); }), 1);
        syncs = 0;
    }
    EXPECT_EQ(syncs, 0) << "the end of an instance waits for the disk";
    EXPECT_EQ(store.readText("CurrBank"), "bank.zkb");
    // Where the save has gone.
    fs::current_path(start);
}

TEST_F(PosixFile, TheStoreLiesInTheDataFolderOfTheUser)
{
    const std::string home = "HOME=" + folder.string();
    const std::string data = " XDG_DATA_HOME=" + (folder / "data").string();
    EXPECT_EQ(runProcess(home + data, "user write MemoA x 9 1"), 0);
    EXPECT_EQ(platform::readFile(folder / "data" / kOwnFolder / "MemoA", 100), Bytes(9, 'x'));
    EXPECT_FALSE(fs::exists(folder / ".local"));

    // Without that folder, or with one that is not absolute, in the home.
    int size = 1;
    for (const char* none : {"", " XDG_DATA_HOME=", " XDG_DATA_HOME=relative"}) {
        EXPECT_EQ(runProcess(home + none, "user write MemoA y " + std::to_string(++size) + " 1"),
                  0);
        EXPECT_EQ(platform::readFile(folder / ".local/share" / kOwnFolder / "MemoA", 100),
                  Bytes(static_cast<std::size_t>(size), 'y'));
        EXPECT_FALSE(fs::exists("relative"));
    }
}

TEST_F(PosixFile, WhatTheUserHasNotIsReadFromTheSystemsFolders)
{
    const fs::path own = folder / "own", first = folder / "first", second = folder / "second";
    for (const fs::path& shared : {first, second})
        fs::create_directories(shared / kOwnFolder);
    ASSERT_TRUE(platform::replaceFile(second / kOwnFolder / "ManualPath", Bytes{'/', 'b'}));
    const auto manual = [&](const std::string& expected) {
        return inChild([&] {
            if (!becomeOrdinaryUser())
                return kCannotTry;
            setenv("XDG_DATA_HOME", own.c_str(), 1);
            setenv("XDG_DATA_DIRS", ("relative::" + first.string() + ':' + second.string()).c_str(),
                   1);
            return platform::userSettings().readText("ManualPath") == expected ? 0 : 1;
        });
    };
    EXPECT_EQ(manual("/b"), 0);
    // As a package installs it: the user of the plug-in may read it and no more.
    fs::permissions(second / kOwnFolder / "ManualPath", fs::perms(0444));
    EXPECT_EQ(manual("/b"), 0);
    ASSERT_TRUE(platform::replaceFile(first / kOwnFolder / "ManualPath", Bytes{'/', 'a'}));
    EXPECT_EQ(manual("/a"), 0);

    // What is written and removed is the user's own.
    platform::FileStore store((own / kOwnFolder).string(), {(first / kOwnFolder).string()});
    store.writeText("ManualPath", "/mine");
    EXPECT_EQ(manual("/mine"), 0);
    store.remove("ManualPath");
    EXPECT_EQ(manual("/a"), 0);
    store.remove("ManualPath");
    EXPECT_EQ(manual("/a"), 0);
}

TEST_F(PosixFile, ALinkIsFollowedAndStays)
{
    const fs::path link = folder / "link";
    fs::create_symlink("bank.zkb", link);
    EXPECT_TRUE(platform::replaceFile(link, next));
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_FALSE(fs::is_symlink(path));
    EXPECT_EQ(contents(), next);
    EXPECT_EQ(filesInFolder(), 2u);
}

TEST_F(PosixFile, TheRightsStay)
{
    for (const mode_t mode : {0600u, 0664u, 0755u}) {
        ASSERT_EQ(chmod(path.c_str(), mode), 0);
        EXPECT_TRUE(platform::replaceFile(path, next));
        EXPECT_EQ(modeOf(path), mode);
    }
    // A new one has those that the user wants for new files.
    const mode_t mask = umask(027);
    EXPECT_TRUE(platform::replaceFile(folder / "new", next));
    umask(mask);
    EXPECT_EQ(modeOf(folder / "new"), 0640u);
}

TEST_F(PosixFile, AReadOnlyFileIsNeitherReplacedNorLoaded)
{
    const auto nameAfterLoading = [this] {
        platform::MemoryStore settings;
        OpenedController controller(settings);
        controller.loadBank(path.c_str(), false);
        char name[25] = {};
        controller.getPresetName(name, 0);
        return std::string(name);
    };
    const std::string loaded = nameAfterLoading();
    ASSERT_NE(loaded, "Default");
    ASSERT_EQ(chmod(path.c_str(), 0444), 0);
    EXPECT_EQ(inChild([&] {
                  if (!becomeOrdinaryUser())
                      return kCannotTry;
                  return platform::replaceFile(path, next) || nameAfterLoading() != "Default" ? 1
                                                                                              : 0;
              }),
              0);
    ASSERT_EQ(chmod(path.c_str(), 0666), 0);
    EXPECT_EQ(contents(), old);
    EXPECT_EQ(filesInFolder(), 1u);
}

TEST_F(PosixFile, ASaveIntoAReadOnlyFolderLeavesTheOldFile)
{
    fs::permissions(folder, fs::perms(0555));
    EXPECT_EQ(inChild([this] { return becomeOrdinaryUser() ? saveOver() : kCannotTry; }), 0);
}

TEST_F(PosixFile, AStoreInAReadOnlyFolderKeepsItsValues)
{
    const fs::path values = folder / "values";
    platform::FileStore store(values);
    store.write("MemoA", Bytes(9, 'x'));
    fs::permissions(values, fs::perms(0555));
    fs::permissions(values / "MemoA", fs::perms(0666));
    EXPECT_EQ(inChild([&] {
                  if (!becomeOrdinaryUser())
                      return kCannotTry;
                  store.write("MemoA", Bytes(5, 'y'));
                  store.write("MemoB", Bytes(5, 'y'));
                  return 0;
              }),
              0);
    EXPECT_EQ(store.read("MemoA"), Bytes(9, 'x'));
    EXPECT_FALSE(store.read("MemoB"));
    fs::permissions(values, fs::perms::all);
}

// The system takes the first bytes of the new file and refuses the others.
TEST_F(PosixFile, ASaveThatIsCutShortLeavesTheOldFile)
{
    for (const rlim_t room : {0, 1, 4096, 48616})
        EXPECT_EQ(inChild([this, room] {
                      std::signal(SIGXFSZ, SIG_IGN);
                      const rlimit limit{room, room};
                      return setrlimit(RLIMIT_FSIZE, &limit) == 0 ? saveOver() : kCannotTry;
                  }),
                  0)
            << room << " bytes of 48617";
    EXPECT_EQ(contents(), old);
}

TEST_F(PosixFile, APipeIsNoFileAndHoldsNobodyUp)
{
    const fs::path pipe = folder / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0666), 0);
    EXPECT_FALSE(platform::readFile(pipe, 100));
    EXPECT_FALSE(platform::replaceFile(pipe, next));
}

// The per-user store and its files on POSIX systems: location, symbolic links, permissions, and
// saves that fail.
#include "platform/posix/FileStore.h"
#include "tests/presets/HandMadeImages.h"
#include "tests/presets/OpenedController.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <functional>

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace handmade;
namespace fs = std::filesystem;

namespace {

constexpr uid_t kNobody = 65534;
int syncs = 0;  // calls of fsync

// Runs `action` in a child process as an ordinary user, since permissions do not restrict root;
// returns whether it returned true.
bool asOrdinaryUser(const std::function<bool()>& action)
{
    const pid_t child = fork();
    if (child == 0) {
        const bool ordinary = geteuid() != 0 || (setgid(kNobody) == 0 && setuid(kNobody) == 0);
        _exit(ordinary && action() ? 0 : 1);
    }
    int status = 0;
    return waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

struct PosixFile : testing::Test {
    PosixFile()
    {
        EXPECT_TRUE(platform::replaceFile(path, old));
        // The ordinary user may write here.
        chmod(folder.path().c_str(), 0777);
        chmod(path.c_str(), 0666);
    }

    Bytes contents() const { return platform::readFile(path, 1 << 20).value_or(Bytes()); }
    static mode_t modeOf(const std::string& file)
    {
        struct stat status = {};
        stat(file.c_str(), &status);
        return status.st_mode & 07777;
    }

    const TemporaryFolder folder;
    const std::string path = folder / "bank.zkb";
    const Bytes old = goodBank(1, 3), next = goodBank(2, 4);
};

constexpr const char* kOwnFolder = "/ZKR-soundworks/ZKRT46/";

}  // namespace

// Replaces the system's function and calls it.
extern "C" int fsync(int file)
{
    ++syncs;
    return static_cast<int>(syscall(SYS_fsync, file));
}

TEST_F(PosixFile, StoredPresetsAreFlushedToDiskAndPathsAreNot)
{
    platform::FileStore store(folder / "values");
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
    EXPECT_EQ(syncs, 0) << "destroying an instance waits for the disk";
    EXPECT_EQ(store.readText("CurrBank"), "bank.zkb");
}

// Writes and removals affect the user's folder; what is missing there is read from the system's.
TEST_F(PosixFile, TheStoreUsesTheDataFolderOfTheUserThenThoseOfTheSystem)
{
    const std::string home = folder.path(), first = folder / "first", second = folder / "second";
    for (const std::string& file :
         {first + kOwnFolder + "ManualPath", second + kOwnFolder + "ManualPath",
          second + kOwnFolder + "A"}) {
        fs::create_directories(fs::path(file).parent_path());
        writeContent(file, file);
        // With the permissions that a package gives it.
        chmod(file.c_str(), 0444);
    }
    const struct {
        std::optional<std::string> data;
        std::string place;
    } rows[] = {{folder / "data", folder / "data"},
                {std::nullopt, folder / ".local/share"},
                {"", folder / ".local/share"},
                {"relative", folder / ".local/share"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.data.value_or("not set"));
        EXPECT_TRUE(asOrdinaryUser([&] {
            setenv("HOME", home.c_str(), 1);
            setenv("XDG_DATA_HOME", row.data.value_or("").c_str(), 1);
            if (!row.data)
                unsetenv("XDG_DATA_HOME");
            setenv("XDG_DATA_DIRS", ("relative::" + first + ':' + second).c_str(), 1);
            platform::SettingsStore& store = platform::userSettings();
            const auto shared = store.readText("ManualPath");
            store.writeText("ManualPath", "mine");
            const auto own = store.readText("ManualPath");
            store.remove("ManualPath");
            store.writeText("MemoA", row.data.value_or("not set"));
            return shared == first + kOwnFolder + "ManualPath" && own == "mine"
                && store.readText("ManualPath") == shared
                && store.readText("A") == second + kOwnFolder + "A";
        }));
        EXPECT_EQ(contentOf(row.place + kOwnFolder + "MemoA"), row.data.value_or("not set"));
        EXPECT_FALSE(fs::exists("relative"));
    }
}

TEST(SystemFolders, AreTheStandardOnesWithoutAList)
{
    const std::vector<std::string> standard{"/usr/local/share/ZKR-soundworks/ZKRT46",
                                            "/usr/share/ZKR-soundworks/ZKRT46"};
    unsetenv("XDG_DATA_DIRS");
    EXPECT_EQ(platform::systemFolders(), standard);
    setenv("XDG_DATA_DIRS", "", 1);
    EXPECT_EQ(platform::systemFolders(), standard);
}

TEST_F(PosixFile, ASaveFollowsALinkAndKeepsThePermissions)
{
    const std::string link = folder / "link";
    fs::create_symlink("bank.zkb", link);
    for (const mode_t mode : {0600u, 0664u, 0755u}) {
        ASSERT_EQ(chmod(path.c_str(), mode), 0);
        EXPECT_TRUE(platform::replaceFile(link, next));
        EXPECT_EQ(modeOf(path), mode);
    }
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_FALSE(fs::is_symlink(path));
    fs::create_symlink("made.zkb", folder / "dangling");
    EXPECT_TRUE(platform::replaceFile(folder / "dangling", next));
    EXPECT_EQ(contentOf(folder / "made.zkb"), contentOf(path));
    EXPECT_EQ(contents(), next);
    // A new file follows the umask.
    const mode_t mask = umask(027);
    EXPECT_TRUE(platform::replaceFile(folder / "new", next));
    umask(mask);
    EXPECT_EQ(modeOf(folder / "new"), 0640u);
    EXPECT_EQ(folder.count(), 5);
}

// Permissions or disk space are missing. On a full disk the first bytes of the new file can be
// written and the rest fails. Only a writable file is needed: in a folder that is not, and where
// the file belongs to another user, it is written in place.
TEST_F(PosixFile, ASaveThatFailsLeavesTheOldFile)
{
    const struct {
        mode_t folder, file;
        rlim_t room;
        bool saved;
        uid_t owner;
    } rows[] = {{0777, 0444, 100000, false, kNobody}, {0777, 0666, 0, false, kNobody},
                {0777, 0666, 1, false, kNobody},      {0777, 0666, 4096, false, kNobody},
                {0777, 0666, 48616, false, kNobody},  {0555, 0666, 100000, true, kNobody},
                {01777, 0666, 100000, true, 0}};
    Bytes longer = old;
    longer.push_back(0);
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << std::oct << "folder " << row.folder << ", file "
                                        << row.file << std::dec << ", room " << row.room);
        EXPECT_TRUE(platform::replaceFile(path, longer));
        const bool isRoot = chown(path.c_str(), row.owner, row.owner) == 0;
        chmod(folder.path().c_str(), row.folder);
        chmod(path.c_str(), row.file);
        EXPECT_TRUE(asOrdinaryUser([&] {
            std::signal(SIGXFSZ, SIG_IGN);
            const rlimit limit{row.room, row.room};
            if (setrlimit(RLIMIT_FSIZE, &limit) != 0)
                return false;
            platform::MemoryStore settings;
            OpenedController controller(settings), reader(settings);
            controller.saveBank(path.c_str());
            platform::FileStore(folder.path()).write("bank.zkb", next);
            // A file that could not be saved again is not loaded.
            char name[25] = {};
            reader.loadBank(path.c_str(), false);
            reader.getPresetName(name, 0);
            return platform::replaceFile(path, next) == row.saved
                && (std::string(name) == "Default") == (row.file == 0444);
        }));
        chmod(folder.path().c_str(), 0777);
        EXPECT_EQ(contents(), row.saved ? next : longer);
        EXPECT_EQ(folder.count(), 1);
        struct stat status = {};
        stat(path.c_str(), &status);
        EXPECT_TRUE(!isRoot || (status.st_uid == row.owner && status.st_gid == row.owner));
    }
    EXPECT_TRUE(platform::replaceFile(path, {1, 2, 3}));
    chmod(folder.path().c_str(), 0555);
    EXPECT_TRUE(asOrdinaryUser([&] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{4096, 4096};
        return setrlimit(RLIMIT_FSIZE, &limit) == 0 && !platform::replaceFile(path, next);
    }));
    chmod(folder.path().c_str(), 0777);
    EXPECT_EQ(contents(), (Bytes{1, 2, 3})) << "in place, without room";
}

TEST_F(PosixFile, APipeIsRefusedWithoutBlocking)
{
    const std::string pipe = folder / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0666), 0);
    EXPECT_FALSE(platform::readFile(pipe, 100));
    EXPECT_FALSE(platform::replaceFile(pipe, next));
}

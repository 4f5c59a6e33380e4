// The commands screenshot and edit of the built program.
#include "tests/support/Pictures.h"
#include "tests/tools/CommandLine.h"

#include <filesystem>

namespace {

struct EditorCommand : CommandLine { };

TEST_F(EditorCommand, ScreenshotsShowThePresetAndTheSettings)
{
    // A PNG file with the lower bytes of its width and height.
    const auto start = [this](const char* name) {
        const std::string png = contentOf(folder / name);
        return png.substr(1, 3) + png.substr(18, 2) + png.substr(22, 2);
    };
    ASSERT_EQ(run("screenshot -o plain.png"), 0) << err;
    EXPECT_EQ(out, "plain.png: 394 x 505\n");
    expectPicture(readPng(folder / "plain.png"), "equalisers", textsOfEditor(394));
    ASSERT_EQ(run("screenshot --preset Init -o init.png"), 0) << err;
    EXPECT_NE(contentOf(folder / "init.png"), contentOf(folder / "plain.png")) << "the name";
    ASSERT_EQ(run("screenshot --preset R101 --set QB11=On -o wide.png"), 0) << err;
    EXPECT_EQ(start("wide.png"), "PNG\x03\x7E\x01\xF9");  // 894 by 505
    ASSERT_EQ(run("screenshot --info -o info.png"), 0) << err;
    EXPECT_NE(contentOf(folder / "info.png"), contentOf(folder / "plain.png"));
}

TEST_F(EditorCommand, ScreenshotsOfALibraryShowItsOwnEditor)
{
    const std::string settings = "--preset R101 --set QB11=On -o ";
    ASSERT_EQ(run("screenshot " + settings + "own.png"), 0) << err;
    ASSERT_EQ(run("screenshot --plugin '" ZKRT46_LIBRARY "' " + settings + "library.png",
                  "'" ZKR_ON_DISPLAY "' env"),
              0)
        << err;
    EXPECT_TRUE(contentOf(folder / "library.png") == contentOf(folder / "own.png"));
    EXPECT_EQ(
        run("screenshot --plugin '" TEST_EFFECT_GOOD "' -o x.png", "'" ZKR_ON_DISPLAY "' env"), 2);
    EXPECT_NE(err.find("the plug-in has no editor"), std::string::npos) << err;
    EXPECT_EQ(run("screenshot --plugin '" ZKRT46_LIBRARY "' -o x.png", "env -u DISPLAY"), 2);
    EXPECT_NE(err.find("no display"), std::string::npos) << err;
}

TEST_F(EditorCommand, ScreenshotsOfTheWindowsLibraryComeFromWine)
{
    const std::string windows = ZKR_WINDOWS_BUILD, dll = windows + "/shell/ZKRT46.dll";
    const std::string helper = windows + "/tools/bridge/zkrt46-bridge.exe";
    if (!std::filesystem::exists(dll) || !std::filesystem::exists(helper)) {
        ASSERT_EQ(getenv("ZKR_EXPECT_WINDOWS"), nullptr) << "no Windows build";
        GTEST_SKIP() << "no Windows build in " << windows;
    }
    // A prefix of its own: Wine's server keeps the display that it was started with.
    const std::string prefix = "WINEPREFIX='" + (folder / "wine") + "' WINEDEBUG=-all ";
    EXPECT_EQ(run("screenshot --plugin '" + dll + "' --set LGainL=9 -o dll.png",
                  "'" ZKR_ON_DISPLAY "' env " + prefix + "ZKRT46_BRIDGE='" + helper + "'"),
              0)
        << err;
    std::system((prefix + "wineserver --wait").c_str());
    ASSERT_EQ(run("screenshot --set LGainL=9 -o own.png"), 0) << err;
    const VSTGUI::Pixels own = readPng(folder / "own.png");
    EXPECT_EQ(difference(readPng(folder / "dll.png"), own, textsOfEditor(394)).pixels, 0);
}

TEST_F(EditorCommand, EditRendersWithItsSettingsWhenTheWindowIsClosed)
{
    EXPECT_EQ(run("edit", "env -u DISPLAY"), 2);
    EXPECT_NE(err.find("no display"), std::string::npos) << err;
    ASSERT_EQ(run("bank export -o my.zkb"), 0) << err;
    const std::string settings =
        "--preset Vox --bank my.zkb --set Channel=Side --set QB11=Off --set LGainL=0.61n ";
    writeContent(folder / "in.wav", contentOf(folder / "in.wav").substr(0, 20000));
    ASSERT_EQ(run("render " + settings + "in.wav wanted.wav"), 1) << "the input is cut short";
    const std::string warning = err.substr(err.find("warning"));
    writeContent(folder / "edit.sh",
                 "setxkbmap us intl; cd '" + (folder / "") + "'\n"
                     + "LC_ALL=C.UTF-8 ZKRT46_PLUGIN='" ZKRT46_LIBRARY
                       "' timeout 60 '" ZKRT46_PROGRAM "' edit "
                     + settings
                     + "in.wav -o 'my out.wav' --save kept.fxp >line.txt 2>err.txt & editor=$!\n"
                       "for i in $(seq 100); do window=$(xdotool search --name 'ZKR T46' "
                       "2>/dev/null) && break;"
                       " sleep 0.1; done\n"
                       // The accent and the letter are composed by the locale's input method.
                       "sleep 0.5; xdotool mousemove 195 496 click 1 sleep 0.3 "
                       "key dead_acute key c key Return windowclose $window; wait $editor\n");
    EXPECT_EQ(run("", "timeout 90 '" ZKR_ON_DISPLAY "' bash edit.sh; exit $?;"), 1);
    EXPECT_NE(err.find(warning), std::string::npos) << err;
    const std::string wanted = contentOf(folder / "wanted.wav");
    EXPECT_TRUE(contentOf(folder / "my out.wav") == wanted);
    const std::string line = contentOf(folder / "line.txt");
    EXPECT_EQ(line, "zkrt46 render " + settings + "in.wav 'my out.wav'\n");
    ASSERT_EQ(run(line.substr(7, line.size() - 8)), 1) << err;
    EXPECT_TRUE(contentOf(folder / "my out.wav") == wanted) << "by the printed line";
    ASSERT_EQ(run("render --preset-file kept.fxp in.wav kept.wav"), 1) << err;
    EXPECT_TRUE(contentOf(folder / "kept.wav") == wanted);
    ASSERT_EQ(run("preset show --preset-file kept.fxp"), 0) << err;
    EXPECT_EQ(out.rfind(u8"Preset \"\u0107\"", 0), 0u) << out;
}

}  // namespace

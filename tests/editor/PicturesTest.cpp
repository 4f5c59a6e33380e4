// The editor compared with reference pictures. Its texts, which each system renders differently,
// are masked; other tests compare them with controls.txt.
#include "tests/support/Pictures.h"
#include "tests/editor/EditorStage.h"

namespace {

TEST_F(Editor, LooksLikeItsReferencePictures)
{
    constexpr struct {
        const char* picture;
        int preset;
        double preamps, secondary, power;
        bool info;
    } kRows[] = {
        {"equalisers", 0, 0, 0, 1, false},      {"with-preamps", 14, 1, 0, 1, false},
        {"with-secondary", 19, 0, 1, 1, false}, {"everything", 19, 1, 1, 1, false},
        {"without-power", 19, 1, 1, 0, false},  {"info", 0, 0, 0, 1, true},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.picture);
        controller.setCurrentPreset(row.preset);
        set(kQB11, row.preamps);
        set(k2x, row.secondary);
        set(kPower, row.power);
        std::vector<CRect> masks = textsOfEditor(window->width());
        if (row.info) {
            window->click(at(kTagInfo));
            masks.emplace_back(87, 111, 307, 299);
        }
        // Away from the window, so that nothing is hovered.
        window->screen.mouseExit({2000, 2000});
        clock.advance(200);
        expectPicture(window->screen.paint(), row.picture, masks);
    }
}

}  // namespace

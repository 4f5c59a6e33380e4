// The four layouts, the info panel and the editor without power, compared with reference pictures.
#include "Pictures.h"
#include "EditorStage.h"

namespace {

struct Layout {
    const char* name;
    int preset;
    double preamps, secondary;
};

TEST_F(Editor, LooksLikeItsReferencePictures)
{
    constexpr Layout kLayouts[] = {{"equalisers", 14, 0, 0},
                                   {"with-preamps", 14, 1, 0},
                                   {"with-secondary", 19, 0, 1},
                                   {"everything", 19, 1, 1}};
    window->screen.setPointer({2000, 2000});
    for (const Layout& layout : kLayouts) {
        controller.setCurrentPreset(layout.preset);
        controller.setSelectedName(controller.name(layout.preset).c_str());
        set(kQB11, layout.preamps);
        set(k2x, layout.secondary);
        clock.advance(200);
        expectPicture(window->screen.paint(), layout.name);
    }
    set(kPower, 0);
    clock.advance(200);
    expectPicture(window->screen.paint(), "without-power");
}

TEST_F(Editor, InfoPanelLooksLikeItsReferencePicture)
{
    window->screen.setPointer({2000, 2000});
    clock.advance(200);
    window->click(window->panel(27, 471));
    window->screen.mouseExit({2000, 2000});
    clock.advance(200);
    // Lines of text stand a pixel higher or lower, by the system.
    expectPicture(window->screen.paint(), "info", 0.5);
}

}  // namespace

// What the editor looks like: its pictures compared with references, and its texts by words and
// places, since each system draws letters in its own way.
#include "Pictures.h"
#include "EditorStage.h"

#include "vstgui/platform/iplatformfont.h"

namespace {

using VSTGUI::CColor;
using VSTGUI::CRect;

// A line as it is drawn; the place is the middle of its capitals.
struct Text {
    std::string words;
    double x, y;
    double size;  // of the font
    CColor colour;
};

// Draws nothing, and writes the texts down.
class TextRecorder : public VSTGUI::IPlatformSurface {
public:
    struct Line {
        std::string words;
        CPoint baseline;
        double width, height;  // of the capitals
        CColor colour;
    };

    explicit TextRecorder(CPoint sizeOfPicture) : size(sizeOfPicture) { }

    CPoint getSize() const override { return size; }
    void setClip(const CRect& now) override { clip = now; }
    void fillRect(const CRect&, const CColor&) override { }
    void drawBitmap(VSTGUI::IPlatformBitmap*, const CRect&, const CPoint&, float) override { }
    void drawString(VSTGUI::IPlatformFont* font, VSTGUI::UTF8StringPtr text, const CPoint& baseline,
                    const CColor& colour, bool) override
    {
        const double width = font->getStringWidth(text), height = font->getCapHeight();
        const CRect capitals(CPoint(baseline.x, baseline.y - height), CPoint(width, height));
        const bool whole = CRect(capitals).bound(clip) == capitals;
        lines.push_back(
            {whole ? text : std::string(text) + " (cut off)", baseline, width, height, colour});
    }
    VSTGUI::Pixels readPixels() const override { return {}; }

    std::vector<Line> lines;

private:
    const CPoint size;
    CRect clip;
};

const CColor kDark(36, 36, 32), kLight(223, 222, 223);

struct Pictures : Editor {
    void show(int preset, double preamps, double secondary)
    {
        controller.setCurrentPreset(preset);
        controller.setSelectedName(controller.name(preset).c_str());
        set(kQB11, preamps);
        set(k2x, secondary);
        rest();
    }
    // Until nothing lights up under the mouse any more.
    void rest()
    {
        window->screen.mouseExit({2000, 2000});
        clock.advance(200);
    }
    void expectTexts(const std::vector<Text>& expected)
    {
        const CPoint size = window->screen.frameSize();
        const auto recorder = VSTGUI::owned(new TextRecorder(size));
        const auto context = VSTGUI::owned(new VSTGUI::CDrawContext(recorder));
        window->frame()->drawRect(context, CRect(CPoint(), size));
        ASSERT_EQ(recorder->lines.size(), expected.size());
        for (std::size_t i = 0; i < expected.size(); ++i) {
            const TextRecorder::Line& line = recorder->lines[i];
            const Text& wanted = expected[i];
            SCOPED_TRACE(wanted.words);
            EXPECT_EQ(line.words, wanted.words);
            EXPECT_EQ(line.colour, wanted.colour);
            const auto font = VSTGUI::owned(new VSTGUI::CFontDesc("Arial", wanted.size));
            VSTGUI::IPlatformFont* const letters = font->getPlatformFont();
            EXPECT_EQ(line.width, letters->getStringWidth(wanted.words.c_str()));
            EXPECT_EQ(line.height, letters->getCapHeight());
            // Texts begin at whole pixels, halves going up.
            EXPECT_EQ(line.baseline.x, std::floor(wanted.x - line.width / 2 + 0.5));
            EXPECT_EQ(line.baseline.y, std::floor(wanted.y + line.height / 2 + 0.5));
        }
    }
};

TEST_F(Pictures, OfEveryLayout)
{
    struct Layout {
        const char* picture;
        int preset;
        double preamps, secondary, power;
        const char* name;
        double hint;  // its middle
    };
    constexpr Layout kLayouts[] = {
        {"equalisers", 0, 0, 0, 1, "Default", 0},
        {"with-preamps", 14, 1, 0, 1, "Mastering loudness", 502.5},
        {"with-secondary", 19, 0, 1, 1, "R101", 502.5},
        {"everything", 19, 1, 1, 1, "R101", 627.5},
        {"without-power", 19, 1, 1, 0, "R101", 627.5},
    };
    for (const Layout& layout : kLayouts) {
        SCOPED_TRACE(layout.picture);
        show(layout.preset, layout.preamps, layout.secondary);
        set(kPower, layout.power);
        rest();
        expectPicture(window->screen.paint(), layout.picture, textsOfEditor(window->width()));
        std::vector<Text> texts{{layout.name, 197, 496, 11, kDark}};
        if (layout.hint > 0)
            texts.push_back({"www.zkr-soundworks.example", layout.hint, 496, 11, kLight});
        expectTexts(texts);
    }
}

TEST_F(Pictures, OfTheInfoPanel)
{
    rest();
    window->click(window->panel(27, 471));
    rest();
    std::vector<Text> texts{
        {"Default", 197, 496, 11, kDark},
        {"ZKR T46", 197, 120, 12, kLight},
        {"v.1.0.1", 240, 121, 10, kLight},
        {"by", 197, 140, 12, kLight},
        {"ZKR-soundworks", 197, 160, 12, kLight},
        {"www.zkr-soundworks.example", 197, 180, 12, kLight},
        {"VST PlugIn Technology by Steinberg", 197, 210, 12, kLight},
        {"Latency: 2.18 ms, 96 samples", 197, 290, 12, kLight},
    };
    std::vector<CRect> masks = textsOfEditor(window->width());
    for (const Text& text : texts)
        masks.push_back({text.x - 110, text.y - 9, text.x + 110, text.y + 9});
    expectPicture(window->screen.paint(), "info", masks);
    expectTexts(texts);
    set(kLatency, 0.0);
    texts.back().words = "Latency: 0.00 ms, 0 samples";
    expectTexts(texts);
}

}  // namespace

// Using the editor, and drawing it once more from controls.txt.
#include "EditorStage.h"

#include "EditorBitmap.h"

#include "vstgui/platform/iplatformsurface.h"

#include <algorithm>
#include <set>

using namespace VSTGUI;

const ControlTable Editor::table;

namespace {

constexpr int kHeight = 505;

void drawPicture(CDrawContext& context, int number, const CRect& rect, CPoint from = {})
{
    if (number)
        editorBitmap(number)->draw(&context, rect, from);
}

void drawFrame(CDrawContext& context, int number, int frames, int frame, const CRect& rect)
{
    if (!number || frame < 0)
        return;
    const int height = static_cast<int>(editorBitmap(number)->getHeight()) / frames;
    drawPicture(context, number, rect, CPoint(0, height * frame));
}

}  // namespace

Calls gesture(ParamID tag, std::initializer_list<ParamID> edited)
{
    Calls calls{"begin " + std::to_string(tag)};
    for (const ParamID id : edited)
        calls.push_back("perform " + std::to_string(id));
    calls.push_back("end " + std::to_string(tag));
    return calls;
}

Window::Window(ControllerProbe& controller)
    : view(Steinberg::owned(dynamic_cast<TemplateEditor*>(controller.createView("editor"))))
{
    view->setFrame(this);
    const FIDString type =
        view->isPlatformTypeSupported("HWND") == kResultTrue ? "HWND" : "X11EmbedWindowID";
    view->attached(screen.parentWindow(), type);
}

void Window::close()
{
    if (!view)
        return;
    view->setFrame(nullptr);
    view->removed();
    view = nullptr;
}

void Window::drag(CPoint from, CPoint by, int32_t modifiers)
{
    constexpr int kSteps = 4;
    screen.mouseDown(from, kLButton | modifiers);
    for (int step = 1; step <= kSteps; ++step)
        screen.mouseMove({from.x + by.x * step / kSteps, from.y + by.y * step / kSteps},
                         kLButton | modifiers);
    screen.mouseUp(from + by, kLButton | modifiers);
}

Placed::Placed(const ControlRow& row, const ColumnRow& in, CPoint origin)
    : ControlRow(row), id(row.tag == "-" ? -1 : in.tag + std::stoi(row.tag)),
      title(name + " of tag " + std::to_string(id))
{
    rect.offset(origin.x, origin.y);
}

Calls Editor::heard()
{
    Calls calls = std::exchange(controller.host.calls, {});
    controller.host.edits.clear();
    calls.erase(std::unique(calls.begin(), calls.end()), calls.end());
    return calls;
}

void Editor::show(const LayoutRow& row)
{
    set(kQB11, row.preamps);
    set(k2x, row.secondary);
    heard();
}

void Editor::showEverything()
{
    set(kLink, 0);
    show(table.layouts.back());
}

std::size_t Editor::layout()
{
    std::size_t index = 0;
    while (table.layouts[index].preamps != value(kQB11)
           || table.layouts[index].secondary != value(k2x))
        ++index;
    return index;
}

std::vector<Placed> Editor::controls()
{
    std::vector<Placed> placed;
    for (const ColumnRow& column : table.columns) {
        const std::string& left = column.left[layout()];
        if (left == "-")
            continue;
        for (const ControlRow& row : table.controls)
            if (row.column == column.kind)
                placed.emplace_back(row, column, CPoint(std::stod(left), column.top));
    }
    return placed;
}

Placed Editor::control(int tag)
{
    for (const Placed& placed : controls())
        if (placed.id == tag)
            return placed;
    throw std::invalid_argument("no control has tag " + std::to_string(tag));
}

CPoint Editor::at(int id)
{
    for (const Placed& placed : controls()) {
        const CPoint centre = placed.use == "band"    ? centreOfPicture(placed)
            : placed.title == "bypass-right of tag 2" ? placed.rect.getCenter() + CPoint(0, 3)
                                                      : placed.rect.getCenter();
        if (placed.id == id)
            return centre;
        if (placed.use == "band" && placed.id == id + 2)
            return centre + CPoint(28, 0);
    }
    throw std::invalid_argument("no control edits " + std::to_string(id));
}

CPoint Editor::centreOfPicture(const Placed& knob)
{
    const CRect& inset = table.knob(knob.use).inset;
    return {(knob.rect.left + inset.left + knob.rect.right - inset.right) / 2,
            (knob.rect.top + inset.top + knob.rect.bottom - inset.bottom) / 2};
}

std::string Editor::hint()
{
    for (uint32_t i = 0; i < window->frame()->getNbViews(); ++i)
        if (auto* label = dynamic_cast<CTextLabel*>(window->frame()->getView(i));
            label && !dynamic_cast<CTextEdit*>(label))
            return label->getText();
    return "no hint label";
}

// Of its picture; -1 when it shows none.
int Editor::frameOf(const Placed& placed, const Look& look)
{
    const bool power = value(kPower) >= 0.5;
    const auto steps = [&](double position) {
        return static_cast<int>(position * (placed.frames - 1) + 0.5);
    };
    if (const auto other = look.frames.find(placed.id); other != look.frames.end())
        return other->second;
    if (placed.id > kTagInfo)
        return 0;
    if (placed.name == "power-lamp")
        return power;
    if (placed.name == "lamp")
        return 0;
    const double shown = value(placed.id);
    if (placed.use == "switch")
        return power ? steps(shown) : -1;
    if (placed.use == "band" || placed.use == "level" || placed.use == "dial")
        return steps(table.position(placed.use, shown));
    if (shown < 0.5)
        return 0;
    if (placed.frames == 3)
        return power ? 1 : 2;
    return power || placed.className == "CZKROnOffButton" ? 1 : 0;
}

void Editor::drawControl(CDrawContext& context, const Placed& placed, const Look& look)
{
    const CRect& rect = placed.rect;
    if (placed.use == "text" || placed.use == "hint") {
        const bool name = placed.use == "text";
        const auto font = VSTGUI::owned(new CFontDesc("Arial", 11));
        context.setFont(name ? static_cast<CFontRef>(font) : kNormalFontSmall);
        context.setFontColor(name ? CColor(0x24, 0x24, 0x20) : CColor(223, 222, 223));
        const std::string shown = name ? controller.name(controller.getCurrentPreset()) : look.hint;
        context.drawString(shown.c_str(), rect);
    } else if (placed.use == "label") {
        const int row = std::min(static_cast<int>(layout() + 1) / 2, 2);
        drawFrame(context, placed.picture, placed.frames, row + (value(kMS) >= 0.5 ? 3 : 0), rect);
    } else if (placed.use == "band" || placed.use == "level" || placed.use == "dial") {
        const KnobRow& knob = table.knob(placed.use);
        const CRect picture(rect.left + knob.inset.left, rect.top + knob.inset.top,
                            rect.right - knob.inset.right, rect.bottom - knob.inset.bottom);
        const auto labels = ControlTable::of(table.labels, placed.use);
        const double stepped = value(placed.use == "band" ? placed.id - 2 : placed.id);
        const int step = static_cast<int>(stepped * static_cast<double>(labels.size() - 1) + 0.5);
        drawFrame(context, knob.ring, knob.ringFrames, 2 * step, picture);
        drawFrame(context, placed.picture, placed.frames, frameOf(placed, look), picture);
        if (placed.lit) {
            CRect lit = labels[static_cast<std::size_t>(step)].rect;
            const CPoint from = lit.getTopLeft();
            drawPicture(context, placed.lit, lit.offset(rect.left, rect.top), from);
        }
    } else if (placed.use != "menu") {
        // The light lies over the dark key.
        if (placed.className == "CBlinkLEDButton" && frameOf(placed, look) > 0)
            drawFrame(context, placed.picture, placed.frames, 0, rect);
        drawFrame(context, placed.picture, placed.frames, frameOf(placed, look), rect);
    }
}

Pixels Editor::expectedPicture(const Look& look)
{
    const int width = table.layouts[layout()].width;
    const auto surface = VSTGUI::owned(IPlatformSurface::create(width, kHeight));
    CDrawContext context(surface);
    const CRect all(0, 0, width, kHeight);
    double process = 0.0;
    for (const ColumnRow& column : table.columns) {
        const std::string& left = column.left[layout()];
        if (left == "-")
            continue;
        const CPoint origin(std::stod(left), column.top);
        drawPicture(context, column.picture,
                    column.kind == "window" ? all : CRect(origin, column.size));
        for (const ControlRow& row : table.controls)
            if (row.column == column.kind) {
                Look lit = look;
                if (row.name == "process")
                    process = value(column.tag);
                if (row.name == "lamp")
                    lit.frames[-1] = process >= 0.5 && value(kPower) >= 0.5;
                drawControl(context, Placed(row, column, origin), lit);
            }
    }
    if (!look.latency.empty()) {
        context.setFillColor(CColor(10, 10, 10, 180));
        context.drawRect(all, kDrawFilled);
        context.setFontColor(CColor(223, 222, 223));
        for (const InfoRow& line : table.info)
            if (line.milliseconds == "-" || line.text == look.latency) {
                context.setFont(line.font == "normal" ? kNormalFont : kNormalFontSmaller);
                context.drawString(
                    line.text.c_str(),
                    CRect(line.right, line.down, line.right + width, line.down + 240));
            }
    }
    return surface->readPixels();
}

void Editor::expectShown(const Look& look)
{
    const Pixels shown = window->screen.paint(), expected = expectedPicture(look);
    ASSERT_EQ(shown.width, expected.width);
    if (shown.rgba == expected.rgba)
        return;
    std::set<std::string> different;
    for (int y = 0; y < shown.height; ++y)
        for (int x = 0; x < shown.width; ++x)
            if (shown.at(x, y) != expected.at(x, y)) {
                std::string where = "the background";
                for (const Placed& placed : controls())
                    if (placed.rect.pointInside(CPoint(x, y)))
                        where = placed.title;
                different.insert(where);
            }
    writePng("editor-shown.png", shown);
    writePng("editor-expected.png", expected);
    for (const std::string& where : different)
        ADD_FAILURE() << table.layouts[layout()].name << ": the picture of " << where
                      << " (editor-shown.png, editor-expected.png)";
}

#include "tests/editor/EditorStage.h"

#include "editor/EditorBitmap.h"
#include "tests/support/Png.h"

#include "vstgui/platform/iplatformsurface.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iomanip>
#include <set>
#include <sstream>

using namespace VSTGUI;

namespace {

constexpr int kHeight = 505;

void drawPicture(CDrawContext& context, int number, const CRect& rect, CPoint from = {},
                 float alpha = 1.0f)
{
    if (number)
        editorBitmap(number)->draw(&context, rect, from, alpha);
}

void drawFrame(CDrawContext& context, int number, int frames, int frame, const CRect& rect,
               float alpha = 1.0f)
{
    if (!number || frame < 0)
        return;
    const int height = static_cast<int>(editorBitmap(number)->getHeight()) / frames;
    drawPicture(context, number, rect, CPoint(0, height * frame), alpha);
}

using Tables = std::map<std::string, std::vector<Row>>;

Tables readTables()
{
    Tables tables;
    std::map<std::string, std::vector<std::string>> columns;
    std::ifstream file(ZKR_CONTROLS);
    for (std::string line; std::getline(file, line);) {
        std::istringstream words(line);
        std::string table, word;
        if (!(words >> table) || table[0] == '#')
            continue;
        if (table == "table") {
            words >> table;
            while (words >> word)
                columns[table].push_back(word);
            continue;
        }
        Row row;
        for (const std::string& column : columns.at(table)) {
            if (column != columns[table].back())
                words >> std::quoted(row[column]);
            else
                std::getline(words >> std::ws, row[column]);
        }
        tables[table].push_back(row);
    }
    return tables;
}

// The position at which a knob shows a value: from the row of the value or of its mirror image,
// else the value itself.
double position(const std::string& kind, double value)
{
    for (const Row& row : rows("law", kind))
        for (const bool mirrored : {false, true}) {
            const double x = row.number("value"), shown = row.number("position");
            if (std::abs((mirrored ? 1 - x : x) - value) < 1e-6)
                return mirrored ? 1 - shown : shown;
        }
    return value;
}

}  // namespace

const std::vector<Row>& rows(const std::string& table)
{
    static const Tables tables = readTables();
    return tables.at(table);
}

std::vector<Row> rows(const std::string& table, const std::string& knob)
{
    std::vector<Row> found;
    for (const Row& row : rows(table))
        if (row.at("knob") == knob)
            found.push_back(row);
    return found;
}

Calls gesture(ParamID tag, std::initializer_list<ParamID> edited)
{
    Calls calls{"begin " + std::to_string(tag)};
    for (const ParamID id : edited)
        calls.push_back("perform " + std::to_string(id));
    calls.push_back("end " + std::to_string(tag));
    return calls;
}

Window::Window(ControllerProbe& controller, bool closesWhenResized)
    : view(Steinberg::owned(dynamic_cast<TemplateEditor*>(controller.createView("editor")))),
      closesWhenResized(closesWhenResized)
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

Calls Editor::heard()
{
    Calls calls = std::exchange(controller.host.calls, {});
    controller.host.edits.clear();
    calls.erase(std::unique(calls.begin(), calls.end()), calls.end());
    return calls;
}

void Editor::show(const Row& row)
{
    set(kQB11, row.number("QB11"));
    set(k2x, row.number("2x"));
    heard();
}

void Editor::showEverything()
{
    set(kLink, 0);
    show(rows("layout").back());
}

const Row& Editor::layout()
{
    const auto& layouts = rows("layout");
    return *std::find_if(layouts.begin(), layouts.end(), [this](const Row& row) {
        return row.number("QB11") == value(kQB11) && row.number("2x") == value(k2x);
    });
}

std::vector<Placed> Editor::controls()
{
    std::vector<Placed> placed;
    for (const Row& column : rows("column")) {
        const std::string& left = column.at(layout().at("name"));
        for (const Row& row : rows("control")) {
            if (left == "-" || row.at("column") != column.at("kind"))
                continue;
            const int id = column.whole("tag") + row.whole("tag");
            placed.push_back({row.at("name"), row.at("class"), row.at("use"),
                              row.at("name") + " of tag " + std::to_string(id),
                              row.rect().offset(std::stod(left), column.number("top")), id,
                              row.whole("picture"), row.whole("frames"), row.whole("lit")});
        }
    }
    return placed;
}

Placed Editor::control(int tag)
{
    for (const Placed& placed : controls())
        if (placed.id == tag && !placed.isDisplay())
            return placed;
    throw std::invalid_argument("no control has tag " + std::to_string(tag));
}

CPoint Editor::at(int id)
{
    for (const Placed& placed : controls())
        if (placed.use == "band" && placed.id == id + 2)
            return placed.face().getCenter() + CPoint(28, 0);
    const Placed found = control(id);
    // The left bypass covers the upper edge of the right one.
    return found.face().getCenter() + CPoint(0, id == kBpsCh2 ? 3 : 0);
}

CRect Placed::face() const
{
    CRect inner = rect;
    for (const Row& knob : rows("knob"))
        if (knob.at("kind") == use)
            inner = {rect.left + knob.number("left"), rect.top + knob.number("top"),
                     rect.right - knob.number("right"), rect.bottom - knob.number("bottom")};
    return inner;
}

// The frame of its picture; -1 if it shows none.
int Editor::frameOf(const Placed& placed, const Look& look)
{
    if (const auto other = look.frames.find(placed.id); other != look.frames.end())
        return other->second;
    if (placed.id >= kTagInfo)
        return 0;
    const bool power = value(kPower) >= 0.5;
    const double shown = value(placed.id);
    if (placed.isKnob() || placed.use == "switch") {
        const int step = static_cast<int>(position(placed.use, shown) * (placed.frames - 1) + 0.5);
        return power || placed.isKnob() ? step : -1;
    }
    if (shown < 0.5)
        return 0;
    return power ? 1 : placed.frames == 3 ? 2 : 0;
}

void Editor::drawKnob(CDrawContext& context, const Placed& knob)
{
    const auto labels = rows("label", knob.use);
    const double stepped = value(knob.use == "band" ? knob.id - 2 : knob.id);
    const double last = labels.empty() ? 0.0 : static_cast<double>(labels.size()) - 1;
    const auto step = static_cast<std::size_t>(stepped * last + 0.5);
    for (const Row& row : rows("knob"))
        if (row.at("kind") == knob.use)
            drawFrame(context, row.whole("picture"), row.whole("frames"),
                      2 * static_cast<int>(step), knob.face());
    drawFrame(context, knob.picture, knob.frames, frameOf(knob, {}), knob.face());
    if (!labels.empty()) {
        CRect lit = labels[step].rect();
        const CPoint from = lit.getTopLeft();
        drawPicture(context, knob.lit, lit.offset(knob.rect.left, knob.rect.top), from);
    }
}

void Editor::draw(CDrawContext& context, const Placed& placed, const Look& look)
{
    if (placed.use == "text") {
        const auto font = VSTGUI::owned(new CFontDesc("Arial", 11));
        context.setFont(font);
        context.setFontColor(CColor(0x24, 0x24, 0x20));
        const std::string selected = controller.name(controller.getCurrentPreset());
        context.setClipRect(placed.rect);
        context.drawString((look.name.empty() ? selected : look.name).c_str(), placed.rect);
        context.resetClipRect();
    } else if (placed.use == "hint") {
        context.setFont(kNormalFont, 11);
        context.setFontColor(CColor(223, 222, 223));
        context.drawString(look.hint.c_str(), placed.rect);
    } else if (placed.use == "label") {
        const int strips = (placed.rect.getWidth() > 300) + (placed.rect.getWidth() > 600);
        drawFrame(context, placed.picture, placed.frames, strips + (value(kMS) >= 0.5 ? 3 : 0),
                  placed.rect);
    } else if (placed.isKnob()) {
        drawKnob(context, placed);
    } else if (placed.className == "CBlinkLEDButton" && frameOf(placed, look) > 0) {
        // The lit frame is blended over the dark one.
        drawFrame(context, placed.picture, placed.frames, 0, placed.rect);
        drawFrame(context, placed.picture, placed.frames, 1, placed.rect, look.light);
    } else if (placed.use != "menu") {
        drawFrame(context, placed.picture, placed.frames, frameOf(placed, look), placed.rect);
    }
}

Pixels Editor::expectedPicture(const Look& look)
{
    const CRect all(0, 0, layout().number("width"), kHeight);
    const auto surface = VSTGUI::owned(IPlatformSurface::create(all.right, kHeight));
    CDrawContext context(surface);
    for (const Row& column : rows("column"))
        if (const std::string& left = column.at(layout().at("name")); left != "-") {
            const CPoint size(column.number("width"), column.number("height"));
            drawPicture(context, column.whole("picture"),
                        CRect(CPoint(std::stod(left), column.number("top")), size));
        }
    for (const Placed& placed : controls())
        draw(context, placed, look);
    if (look.latency.empty())
        return surface->readPixels();
    context.setFillColor(CColor(10, 10, 10, 180));
    context.drawRect(all, kDrawFilled);
    context.setFontColor(CColor(223, 222, 223));
    for (const Row& line : rows("info"))
        if (line.at("milliseconds") == "-" || line.at("text") == look.latency) {
            context.setFont(kNormalFont, line.at("font") == "normal" ? 12 : 10);
            const double right = line.number("right"), down = line.number("down");
            context.drawString(line.at("text").c_str(),
                               CRect(right, down, right + all.right, down + 240));
        }
    return surface->readPixels();
}

void Editor::expectShown(const Look& look)
{
    const Pixels shown = window->screen.paint(), expected = expectedPicture(look);
    ASSERT_EQ(shown.width, expected.width);
    if (shown.rgba == expected.rgba)
        return;
    const std::vector<Placed> all = controls();
    std::set<std::string> different;
    for (int y = 0; y < shown.height; ++y)
        for (int x = 0; x < shown.width; ++x)
            if (shown.at(x, y) != expected.at(x, y)) {
                std::string where = "the background";
                for (const Placed& placed : all)
                    if (placed.rect.pointInside(CPoint(x, y)))
                        where = placed.title;
                different.insert(where);
            }
    writePng("editor-shown.png", shown);
    writePng("editor-expected.png", expected);
    for (const std::string& where : different)
        ADD_FAILURE() << layout().at("name") << ": the picture of " << where
                      << " (editor-shown.png, editor-expected.png)";
}

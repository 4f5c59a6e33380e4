// controls.txt: what the editor is made of.
#pragma once

#include "vstgui/lib/crect.h"

#include <array>
#include <string>
#include <vector>

struct LayoutRow {
    std::string name;
    double preamps, secondary;
    int width;
};
struct ColumnRow {
    std::string kind;
    int picture;
    VSTGUI::CPoint size;
    int tag;
    VSTGUI::CCoord top;
    std::array<std::string, 4> left;
};
struct ControlRow {
    std::string column, name, className, tag;
    VSTGUI::CRect rect;
    int picture, frames, lit;
    std::string use;
};
struct KnobRow {
    std::string kind;
    VSTGUI::CRect inset;
    int ring, ringFrames;
};
struct LabelRow {
    std::string knob;
    VSTGUI::CRect rect;
};
struct LawRow {
    std::string knob;
    double value, position, back;
};
struct TurnRow {
    std::string knob;
    VSTGUI::CPoint from;
    std::string turns;
    double to;
    std::vector<std::string> by;
};
struct HoverRow {
    int tag;
    std::array<std::string, 2> hints;  // off, on
};
struct InfoRow {
    double down, right;
    std::string font, milliseconds, text;
};

struct ControlTable {
    ControlTable();

    std::vector<LayoutRow> layouts;
    std::vector<ColumnRow> columns;
    std::vector<ControlRow> controls;
    std::vector<KnobRow> knobs;
    std::vector<LabelRow> labels;
    std::vector<LawRow> laws;
    std::vector<TurnRow> turns;
    std::vector<HoverRow> hover;
    std::vector<InfoRow> info;

    template <class Row>
    static std::vector<Row> of(const std::vector<Row>& rows, const std::string& knob)
    {
        std::vector<Row> found;
        for (const Row& row : rows)
            if (row.knob == knob)
                found.push_back(row);
        return found;
    }
    const KnobRow& knob(const std::string& kind) const;
    // Where the knob of that kind shows a value that has a row, or whose mirror image has one.
    double position(const std::string& kind, double value) const;
};

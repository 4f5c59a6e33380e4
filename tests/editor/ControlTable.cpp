// Reading controls.txt.
#include "ControlTable.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <iomanip>
#include <sstream>

using namespace VSTGUI;

namespace VSTGUI {

std::istream& operator>>(std::istream& words, CPoint& point)
{
    return words >> point.x >> point.y;
}

std::istream& operator>>(std::istream& words, CRect& rect)
{
    return words >> rect.left >> rect.top >> rect.right >> rect.bottom;
}

}  // namespace VSTGUI

namespace {

template <class Row, class... Fields>
void add(std::vector<Row>& rows, std::istream& words, Fields Row::*... fields)
{
    rows.emplace_back();
    (words >> ... >> (rows.back().*fields));
    EXPECT_FALSE(words.fail()) << "in row " << rows.size() << " of a table";
}

}  // namespace

ControlTable::ControlTable()
{
    std::ifstream file(ZKR_CONTROLS);
    for (std::string line; std::getline(file, line);) {
        std::istringstream words(line);
        std::string table;
        words >> table;
        if (table == "layout") {
            add(layouts, words, &LayoutRow::name, &LayoutRow::preamps, &LayoutRow::secondary,
                &LayoutRow::width);
        } else if (table == "column") {
            add(columns, words, &ColumnRow::kind, &ColumnRow::picture, &ColumnRow::size,
                &ColumnRow::tag, &ColumnRow::top);
            for (std::string& left : columns.back().left)
                words >> left;
        } else if (table == "control") {
            add(controls, words, &ControlRow::column, &ControlRow::name, &ControlRow::className,
                &ControlRow::tag, &ControlRow::rect, &ControlRow::picture, &ControlRow::frames,
                &ControlRow::lit, &ControlRow::use);
        } else if (table == "knob") {
            add(knobs, words, &KnobRow::kind, &KnobRow::inset, &KnobRow::ring,
                &KnobRow::ringFrames);
        } else if (table == "label") {
            add(labels, words, &LabelRow::knob, &LabelRow::rect);
        } else if (table == "law") {
            add(laws, words, &LawRow::knob, &LawRow::value, &LawRow::position, &LawRow::back);
        } else if (table == "turn") {
            add(turns, words, &TurnRow::knob, &TurnRow::from, &TurnRow::turns, &TurnRow::to);
            for (std::string by; words >> by;)
                turns.back().by.push_back(by);
        } else if (table == "hover") {
            add(hover, words, &HoverRow::tag);
            for (std::string& hint : hover.back().hints)
                words >> std::quoted(hint);
        } else if (table == "info") {
            add(info, words, &InfoRow::down, &InfoRow::right, &InfoRow::font,
                &InfoRow::milliseconds);
            words >> std::quoted(info.back().text);
        } else {
            EXPECT_TRUE(table.empty() || table[0] == '#') << "no such table: " << line;
        }
    }
    EXPECT_EQ(layouts.size(), 4u) << ZKR_CONTROLS;
}

const KnobRow& ControlTable::knob(const std::string& kind) const
{
    for (const KnobRow& row : knobs)
        if (row.kind == kind)
            return row;
    throw std::invalid_argument("no knob is a " + kind);
}

double ControlTable::position(const std::string& kind, double value) const
{
    for (const LawRow& row : of(laws, kind)) {
        if (std::abs(row.value - value) < 1e-6)
            return row.position;
        if (std::abs(1.0 - row.value - value) < 1e-6)
            return 1.0 - row.position;
    }
    return value;  // the middle
}

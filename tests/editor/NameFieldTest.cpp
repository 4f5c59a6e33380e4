// The text field: what it shows beyond what the editor asks of it, and how its text box opens.
#include "CZKRTextEdit.h"
#include "EditorStage.h"

#include <set>

using namespace VSTGUI;

namespace {

struct NameField : Editor {
    NameField()
    {
        for (uint32_t i = 0; i < window->frame()->getNbViews(); ++i)
            if (auto* const found = dynamic_cast<CZKRTextEdit*>(window->frame()->getView(i)))
                field = found;
        field->setText("");
        blank = window->screen.paint();
        field->setText("Default");
    }
    // Columns of the window in which something other than the background shows.
    std::set<int> inkedColumns()
    {
        std::set<int> columns;
        const Pixels shown = window->screen.paint();
        for (int x = 0; x < shown.width; ++x)
            for (int y = 0; y < shown.height; ++y)
                if (shown.at(x, y) != blank.at(x, y))
                    columns.insert(x);
        return columns;
    }
    // Whether some pixel of the field is about as red or green as can be.
    bool has(const CColor& color)
    {
        const Pixels shown = window->screen.paint();
        for (int x = 139; x < 255; ++x)
            for (int y = 489; y < 503; ++y)
                if (const CColor p = shown.at(x, y);
                    p.blue < 30 && (color == kRedCColor ? p.red : p.green) > 225)
                    return true;
        return false;
    }

    CZKRTextEdit* field = nullptr;
    Pixels blank;
};

TEST_F(NameField, ShowsItsTextInItsOwnColoursSizeAndPlace)
{
    const std::set<int> centred = inkedColumns();
    field->setTextOffset({15, 0});
    EXPECT_EQ(*inkedColumns().begin(), *centred.begin() + 15);
    field->setTextOffset({0, 0});
    field->setTextSize(6);
    EXPECT_LT(inkedColumns().size(), centred.size());
    field->setTextSize(0);
    EXPECT_FALSE(has(kRedCColor));
    field->setTextColor(kRedCColor);
    EXPECT_TRUE(has(kRedCColor));
    EXPECT_FALSE(has(kGreenCColor));
    field->setTextShadowColor(kGreenCColor);
    EXPECT_TRUE(has(kGreenCColor));

    field->setText("WWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWW");
    EXPECT_GE(*inkedColumns().begin(), 139);
    EXPECT_LT(*inkedColumns().rbegin(), 255);
    field->setTextInset({10, 0});
    EXPECT_GE(*inkedColumns().begin(), 149);
    EXPECT_LT(*inkedColumns().rbegin(), 245);
}

TEST_F(NameField, PressOpensTheBoxAndHidesTheText)
{
    field->setValue(5 / 24.f);
    EXPECT_STREQ(field->getText(), "Default");
    field->setText("Warm");
    EXPECT_FLOAT_EQ(field->getValue(), 5 / 24.f);
    EXPECT_FALSE(field->isEditingText());
    window->click(at(kNameTag));
    EXPECT_TRUE(field->isEditingText());
    EXPECT_STREQ(window->screen.textBoxText(), "Warm");
    EXPECT_EQ(inkedColumns(), std::set<int>{});
}

}  // namespace

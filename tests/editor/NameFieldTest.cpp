// The text field: what it shows, and how its text box opens and ends.
#include "CZKRTextEdit.h"
#include "ControlStage.h"

using namespace VSTGUI;

namespace {

const CPoint kInside(60, 58);

struct NameField : ControlStage {
    NameField()
        : field(new CZKRTextEdit({20, 50, 136, 66}, &listener, 1000, "Default",
                                 paintedBitmap(250, 100, [](int32_t x, int32_t y) {
                                     return CColor(static_cast<uint8_t>(x), static_cast<uint8_t>(y),
                                                   200, 255);
                                 })))
    {
        field->setBackOffset({20, 50});
        field->setFontColor(kBlackCColor);
        field->setBackColor(kWhiteCColor);
        add(field);
    }

    // Columns in which something other than the background shows.
    std::vector<int> inkedColumns()
    {
        std::vector<int> columns;
        const Pixels picture = host.paint();
        for (int x = 20; x < 136; ++x)
            for (int y = 50; y < 66; ++y)
                if (picture.at(x + kLeft, y + kTop)
                    != CColor(static_cast<uint8_t>(x), static_cast<uint8_t>(y), 200, 255)) {
                    columns.push_back(x);
                    break;
                }
        return columns;
    }
    // Whether some pixel of the field has about that colour.
    bool has(const CColor& color)
    {
        const Pixels picture = host.paint();
        for (int x = 20; x < 136; ++x)
            for (int y = 50; y < 66; ++y) {
                const CColor p = picture.at(x + kLeft, y + kTop);
                if (std::abs(p.red - color.red) + std::abs(p.green - color.green)
                        + std::abs(p.blue - color.blue)
                    < 60)
                    return true;
            }
        return false;
    }

    CZKRTextEdit* field;
};

TEST_F(NameField, ShowsItsTextOnThePieceOfThePictureBehindIt)
{
    const std::vector<int> centred = inkedColumns();
    ASSERT_FALSE(centred.empty());
    EXPECT_NEAR((centred.front() + centred.back()) / 2.0, 77.5, 2);
    EXPECT_TRUE(has(kBlackCColor));

    field->setTextOffset({15, 0});
    const std::vector<int> moved = inkedColumns();
    EXPECT_EQ(moved.front(), centred.front() + 15);
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
    field->setText("");
    EXPECT_TRUE(inkedColumns().empty());
}

TEST_F(NameField, TextIsCutAtTheEdgesAndTheNeighboursAreLeftAlone)
{
    field->setText("WWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWW");
    field->setTextColor(kWhiteCColor);
    for (int y = 50; y < 66; ++y) {
        EXPECT_EQ(seen(19, y), kBlackCColor);
        EXPECT_EQ(seen(136, y), kBlackCColor);
    }
    field->setTextInset({10, 0});
    EXPECT_GE(inkedColumns().front(), 30);
    EXPECT_LT(inkedColumns().back(), 126);
}

TEST_F(NameField, ValueAndTextAreIndependent)
{
    field->setValue(5 / 24.f);
    EXPECT_STREQ(field->getText(), "Default");
    EXPECT_FLOAT_EQ(field->getValue(), 5 / 24.f);
    field->setText("Warm");
    EXPECT_FLOAT_EQ(field->getValue(), 5 / 24.f);
}

TEST_F(NameField, PressOpensTheBoxAndHidesTheText)
{
    EXPECT_FALSE(field->isEditingText());
    EXPECT_EQ(host.textBoxText(), nullptr);
    click(kInside);
    EXPECT_TRUE(field->isEditingText());
    EXPECT_STREQ(host.textBoxText(), "Default");
    EXPECT_TRUE(inkedColumns().empty());
    EXPECT_EQ(listener.heard(), Calls{});
}

}  // namespace

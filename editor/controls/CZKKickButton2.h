// CZKKickButton2: a CZKKickButton without a picture for "held".
#pragma once

#include "editor/controls/CZKKickButton.h"

class CZKKickButton2 : public CZKKickButton {
public:
    using CZKKickButton::CZKKickButton;

    void draw(VSTGUI::CDrawContext* context) override;

    CLASS_METHODS(CZKKickButton2, CZKKickButton)

protected:
    ~CZKKickButton2() override = default;
};

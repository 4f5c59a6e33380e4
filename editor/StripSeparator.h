// StripSeparator: the narrow column between the strips of the two channels. It has no controls.
#pragma once

#include "editor/StripEditor.h"

class StripSeparator : public StripEditor {
public:
    using StripEditor::StripEditor;
    bool attach(VSTGUI::CFrame* parent, const VSTGUI::CPoint& origin) override;
};

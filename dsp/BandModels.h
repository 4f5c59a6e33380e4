// The settings of each band at each of its steps: curves from the knob's gain to the filter's
// frequency, Q and gain, and to the output gain and top-end damping that go with them.
#pragma once

struct BandModel {
    double gainDb;
    double frequency;   // Hz, of the filter
    double q;           // bells only; 1 for a shelf
    double outputGain;  // linear
    double damping;
};

// gainPosition is the knob's, 0 to 1; stepHz is one of the band's stepped frequencies. For a
// frequency that is no step (which the strip never asks for) the model of the last step answers.
BandModel lowShelfModel(double gainPosition, double stepHz);
BandModel highShelfModel(double gainPosition, double stepHz);
BandModel lowBellModel(double gainPosition, double stepHz);
BandModel midBellModel(double gainPosition, double stepHz);
BandModel highBellModel(double gainPosition, double stepHz);

// The settings of each band at each of its steps: curves from the knob's gain to the filter's
// frequency, Q and gain, and to the strip's output gain and damping.
#pragma once

struct BandModel {
    double gainDb;
    double frequency;   // Hz, of the filter
    double q;           // bells only; 1 for a shelf
    double outputGain;  // of the strip, linear
    double damping;     // of the strip, an amount for DampingFilterPair
};

// gainPosition is the knob's, 0 to 1; stepHz is one of the band's stepped frequencies. Any other
// frequency, which the strip never passes, gets the model of the last step.
BandModel lowShelfModel(double gainPosition, double stepHz);
BandModel highShelfModel(double gainPosition, double stepHz);
BandModel lowBellModel(double gainPosition, double stepHz);
BandModel midBellModel(double gainPosition, double stepHz);
BandModel highBellModel(double gainPosition, double stepHz);

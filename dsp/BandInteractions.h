// How a band changes when a neighbouring band is in circuit too: fitted curves of the ratio of the
// two frequencies, weighted by the sum of the two gains.
#pragma once

// The setting of the band's skirt on the neighbour's side.
struct Skirt {
    double mix;    // 0 .. 1; a value outside is limited by the sections
    double ratio;  // skirt frequency over band frequency (shelf) or band edge (bell)
    double scale;  // factor of the band's own frequency; 1 for a bell
};

// x is the lower band's stepped frequency over the upper's; gains in dB. gainDb is the band's own.
Skirt shelfInteraction(double x, double gainDb, double otherGainDb);

// As above; it also corrects the bell's own q and gainDb in place.
Skirt bellInteraction(double x, double& q, double& gainDb, double otherGainDb);

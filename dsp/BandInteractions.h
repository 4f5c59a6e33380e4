// How a band gives way to a neighbour that is in circuit too: curves over the distance of the two
// bands, weighted by how far their gains push together.
#pragma once

// What an interaction asks of the band's skirt on the neighbour's side.
struct Skirt {
    double mix;    // may leave 0 .. 1; the sections limit it
    double ratio;  // skirt frequency over band frequency (shelf) or band edge (bell)
    double scale;  // of the band's own frequency; 1 for a bell
};

// x is the lower band's stepped frequency over the upper's; gains in dB. gainDb is the band's own.
Skirt shelfInteraction(double x, double gainDb, double otherGainDb);

// As above; it also corrects the bell's own q and gainDb in place.
Skirt bellInteraction(double x, double& q, double& gainDb, double otherGainDb);

// What every part of a run shares.
#pragma once

#include "Findings.h"
#include "Options.h"
#include "Tally.h"

struct Run {
    explicit Run(const SoakOptions& wanted) : options(wanted), findings(wanted.seed) { }

    const SoakOptions& options;
    Findings findings;
    Tally tally;
};

"""The settings of the worked examples in the chapter "In practice"."""

# Name: settings, and the channel view ("lr" or "ms").
SITUATIONS = {
    "weight-and-air": (
        ["LShelfL=On", "LShelfR=On", "LFreqL=63", "LFreqR=63", "LGainL=1.5", "LGainR=1.5",
         "HShelfL=On", "HShelfR=On", "HFreqL=20000", "HFreqR=20000", "HGainL=2.5", "HGainR=2.5",
         "MFreqL=3000", "MFreqR=3000", "MGainL=-1", "MGainR=-1"], "lr"),
    "mud": (
        ["LFreqL=300", "LFreqR=300", "LGainL=-1.5", "LGainR=-1.5",
         "HFreqL=12000", "HFreqR=12000", "HGainL=1.5", "HGainR=1.5"], "lr"),
    "middle-and-sides": (
        ["MS=MidSide", "QB11=On", "HpfR=100", "LFreqL=82", "LFreqR=Off", "LGainL=1.5",
         "MFreqR=2500", "MGainR=1", "HShelfR=On", "HFreqR=10000", "HGainR=1.5"], "ms"),
    "density": (
        ["QB11=On", "DriveL=10", "DriveR=10", "OutputL=-0.3", "OutputR=-0.3",
         "LFreqL=33", "LFreqR=33", "LGainL=2", "LGainR=2",
         "HShelfL=On", "HShelfR=On", "HFreqL=28000", "HFreqR=28000",
         "HGainL=1.5", "HGainR=1.5"], "lr"),
}

#!/usr/bin/env bash
# Measures the forms of the audio path and plots the cost against loudness and number of instances.
# Usage: performance.sh [FOLDER]    writes FOLDER/performance.csv, loudness.svg and instances.svg
# (default: docs/performance) and prints the tables of docs/performance.md. Takes some minutes; the
# figures of a busy machine are too high, their ratios less so.
set -euo pipefail
cd "$(dirname "$0")/.."
folder=${1:-docs/performance}
mkdir -p "$folder"
csv=$folder/performance.csv
[ -x build/release/bench/zkrt46-bench ] || {
    cmake --preset release
    cmake --build --preset release --target zkrt46-bench
}
build/release/bench/zkrt46-bench --quick -o "$csv"

# Columns: 1 group, 2 name, 5 signal, 6 form, 7 ns per frame, 9 plain over this.
awk -F, '
    $1 == "chain" && $5 == "music" || $1 == "loudness" {
        row = ($1 == "chain" ? $2 : "driven, " $5)
        if (!(row in seen)) { seen[row] = 1; rows[++n] = row }
        value[row, $6] = sprintf("%.0f", $7) ($6 == "plain" ? "" : sprintf(" (%.1f)", $9))
    }
    END {
        print "\n| ns per stereo frame (plain over this) | plain | SSE2 | AVX2 | AVX-512 |"
        print "|---|---|---|---|---|"
        for (i = 1; i <= n; ++i)
            printf "| %s | %s | %s | %s | %s |\n", rows[i], value[rows[i], "plain"],
                value[rows[i], "sse2"], value[rows[i], "avx2"], value[rows[i], "avx512"]
    }' "$csv"

gnuplot <<EOF
set datafile separator ","
set terminal svg size 640,400 font "Liberation Sans,13" background "white"
set grid ytics lc "#dddddd"
set border 3
set tics nomirror
set yrange [0:*]
set ylabel "ns per stereo frame"
set key bottom left reverse Left
set output "$folder/loudness.svg"
set xlabel "level of the noise, RMS"
set xrange [0:0.42]
level(s) = s eq "0.01 RMS" ? 0.01 : s eq "0.1 RMS" ? 0.1 : s eq "0.2 RMS" ? 0.2 : s eq "0.4 RMS" ? 0.4 : NaN
cost(form) = strcol(1) eq "loudness" && strcol(6) eq form ? column(7) : NaN
plot for [form in "sse2 avx2 avx512"] "$csv" using (level(strcol(5))):(cost(form)) \
    with points pt 7 ps 0.9 title form
set output "$folder/instances.svg"
set xlabel "instances"
set xrange [0:210]
unset key
plot "$csv" using (strcol(1) eq "instances" ? column(2) : NaN):7 with points pt 7 ps 0.9 \
    title "instances"
EOF

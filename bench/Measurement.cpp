#include "bench/Measurement.h"

#include <algorithm>
#include <limits>
#include <numeric>

void Hash::addBytes(const void* bytes, std::size_t size)
{
    const auto* byte = static_cast<const unsigned char*>(bytes);
    for (std::size_t i = 0; i < size; ++i)
        bits = (bits ^ byte[i]) * 0x100000001b3u;
}

void ShortestTimes::record(std::size_t piece, double nanoseconds)
{
    if (piece >= pieces.size())
        pieces.resize(piece + 1, std::numeric_limits<double>::infinity());
    pieces[piece] = std::min(pieces[piece], nanoseconds);
}

double ShortestTimes::mean() const
{
    return std::accumulate(pieces.begin(), pieces.end(), 0.0) / static_cast<double>(pieces.size());
}

double ShortestTimes::longest() const
{
    return *std::max_element(pieces.begin(), pieces.end());
}

#pragma once
// What the benches share: a clock, medians of interleaved runs, and the line of a figure.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

namespace bench {

template <class Work> double Seconds(Work &&work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

inline double Median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0 : values[values.size() / 2];
}

// Runs ours and the peer in turn and gives the median of the ratios, pair by pair, so that a machine whose speed drifts
// does not decide.
template <class Ours, class Peer> double Ratio(int rounds, Ours &&ours, Peer &&peer)
{
    std::vector<double> ratios;
    for (int round = 0; round < rounds; ++round) {
        const double one = Seconds(ours), other = Seconds(peer);
        ratios.push_back(one / other);
        std::fprintf(stderr, "  ours %.3f s, peer %.3f s\n", one, other);
    }
    return Median(ratios);
}

// One figure: value and limit; a value past the limit fails the bench.
inline void Figure(const char *name, double value, double limit)
{
    std::printf("%s %.4g %.4g\n", name, value, limit);
}

} // namespace bench

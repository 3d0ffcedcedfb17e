#pragma once
// What the benches share: a clock, medians of interleaved runs, and the line of a figure.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace bench {

// A quick round, which CI asks for: a hundredth of the rows and each figure once. It shows that the benches run and
// find what they look for; its figures mean nothing.
inline bool Quick()
{
    const char *round = std::getenv("BRINDLEWICK_BENCH");
    return round && std::strcmp(round, "quick") == 0;
}

inline int Rounds(int rounds)
{
    return Quick() ? 1 : rounds;
}

inline long long Size(long long size)
{
    return Quick() ? size / 100 : size;
}

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
    for (int round = 0; round < Rounds(rounds); ++round) {
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

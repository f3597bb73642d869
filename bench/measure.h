// What the programs that are compared share: CPU time, memory, the data, and a line per figure.
//
// CPU time of the process, all threads, is what stays comparable on a machine that has other work.
// Each program is called as KIND SIZE [REPETITIONS] and prints lines NAME VALUE, which compare.py
// reads. A program that does not know a kind ends with 1.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <string>
#include <vector>

namespace measure {

/// CPU time of all threads so far, ms.
inline double CpuMs() {
    timespec t{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &t);
    return 1e3 * static_cast<double>(t.tv_sec) + 1e-6 * static_cast<double>(t.tv_nsec);
}

/// What the process has in memory now, bytes.
inline double ResidentBytes() {
    std::ifstream status("/proc/self/status");
    std::string word;
    double kilobytes = 0.0;
    while (status >> word)
        if (word == "VmRSS:") status >> kilobytes;
    return kilobytes * 1024;
}

inline void Print(const char* name, double value) {
    std::printf("%s %.6g\n", name, value);
    std::fflush(stdout);
}

/// The height at row r, column c of an n x n grid over -1..1.
inline double Wave(int r, int c, int n) {
    const auto at = [n](int i) { return std::cos(6 * (2.0 * i / (n - 1) - 1)); };
    return 0.3 * at(r) * at(c);
}

inline std::vector<double> Waves(int n) {
    std::vector<double> z;
    z.reserve(static_cast<std::size_t>(n) * static_cast<std::size_t>(n));
    for (int r = 0; r < n; ++r)
        for (int c = 0; c < n; ++c)
            z.push_back(Wave(r, c, n));
    return z;
}

/// A point of a curve through -1..1, i of n; x, y, z.
inline void CurvePoint(int i, int n, double* p) {
    const double t = 2.0 * i / n - 1;
    p[0] = t;
    p[1] = std::sin(40 * t) * 0.7;
    p[2] = std::cos(63 * t) * 0.7;
}

/// Point i of a scatter in the unit square; the same each time.
inline void ScatteredPoint(int i, double* p) {
    const auto mixed = [](unsigned long long z) {
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
        return static_cast<double>((z ^ (z >> 31)) >> 11) * 0x1p-53;
    };
    const auto k = static_cast<unsigned long long>(i);
    p[0] = mixed((2 * k + 1) * 0x9E3779B97F4A7C15ULL);
    p[1] = mixed((2 * k + 2) * 0x9E3779B97F4A7C15ULL);
}

/// The sum of twenty waves of many directions and lengths, over an n x n grid.
inline std::vector<double> Rough(int n) {
    std::vector<double> z(static_cast<std::size_t>(n) * static_cast<std::size_t>(n));
    for (int wave = 0; wave < 20; ++wave) {
        double direction[2];
        ScatteredPoint(wave, direction);
        std::size_t k = 0;
        for (int r = 0; r < n; ++r)
            for (int c = 0; c < n; ++c)
                z[k++] +=
                    0.06 * std::sin((60 * direction[0] - 30) * (2.0 * c / (n - 1) - 1) +
                                    (60 * direction[1] - 30) * (2.0 * r / (n - 1) - 1) + wave);
    }
    return z;
}

/// Twenty levels between the least and the greatest heights; k from 0.
constexpr int kLevels = 20;
inline double Level(int k) {
    return -0.285 + 0.03 * k;
}

/// The lower corner of bar or symbol i of n in a square over -1..1, how many a row, and its height.
struct Place {
    double x, y, z;
    int side;
};
inline Place PlaceOf(int i, int n) {
    const int side = std::max(2, static_cast<int>(std::sqrt(n)));
    return {2.0 * (i % side) / side - 1, 2.0 * (i / side) / side - 1,
            0.35 + Wave(i / side, i % side, side), side};
}

/// Calls `work` and prints the median of what that takes, CPU ms.
template <class Work>
void Repeat(int repetitions, Work work) {
    std::vector<double> spent;
    for (int i = 0; i < std::max(repetitions, 1); ++i) {
        const double before = CpuMs();
        work();
        spent.push_back(CpuMs() - before);
    }
    const auto middle = static_cast<std::ptrdiff_t>(spent.size() / 2);
    std::nth_element(spent.begin(), spent.begin() + middle, spent.end());
    Print("work_ms", spent[static_cast<std::size_t>(middle)]);
}

/// Draws once, prints what that took since `start` (CPU ms), then the median of `repetitions` more.
template <class Draw>
void Frames(double start, int repetitions, Draw draw) {
    draw();
    Print("first_ms", CpuMs() - start);
    std::vector<double> spent;
    for (int i = 0; i < repetitions; ++i) {
        const double before = CpuMs();
        draw();
        spent.push_back(CpuMs() - before);
    }
    if (spent.empty()) return;
    std::nth_element(spent.begin(), spent.begin() + repetitions / 2, spent.end());
    Print("frame_ms", spent[static_cast<std::size_t>(repetitions / 2)]);
}

/// Makes `count` pictures and prints how many a second of CPU time, the first left aside.
template <class MakePicture>
void Many(int count, MakePicture make) {
    make();
    const double before = CpuMs();
    for (int i = 0; i < count; ++i)
        make();
    Print("pictures_per_s", 1e3 * count / (CpuMs() - before));
}

}  // namespace measure

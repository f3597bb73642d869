// Triangulation of scattered points, and contour lines of grids.
//
// Counters: Mtri/s, memory at its peak beyond what the host's own points take (MB), and how often
// memory was allocated, which must not grow with the number of points.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <new>
#include <random>
#include <string>
#include <vector>

#include "varnel/surface/contour_lines.h"
#include "varnel/surface/polysurface.h"

namespace {

std::atomic<long> g_Allocations{0};

void* Allocate(std::size_t size, std::size_t alignment) {
    ++g_Allocations;
    const std::size_t rounded = (size + alignment - 1) / alignment * alignment;
    if (void* const memory = std::aligned_alloc(alignment, rounded > 0 ? rounded : alignment))
        return memory;
    throw std::bad_alloc();
}

/// A line of /proc/self/status in MB.
double StatusMB(const std::string& key) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.compare(0, key.size(), key) == 0)
            return std::strtod(line.c_str() + key.size() + 1, nullptr) / 1024;
    return 0.0;
}

void ResetPeak() {
    std::ofstream("/proc/self/clear_refs") << 5;
}

}  // namespace

void* operator new(std::size_t size) {
    return Allocate(size, alignof(std::max_align_t));
}
void* operator new(std::size_t size, std::align_val_t alignment) {
    return Allocate(size, static_cast<std::size_t>(alignment));
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::align_val_t) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept {
    std::free(memory);
}

namespace varnel {
namespace {

enum Kind { kUniform, kClustered, kGrid, kFlat };

/// Uniform in the unit square, 100 Gaussian clusters of sigma 0.005, a grid in random order, or a
/// strip a million times as long as it is wide.
std::vector<point3Dtype> MakePoints(Kind kind, int n) {
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> uniform(0.0, 1.0);
    std::normal_distribution<double> normal(0.0, 0.005);
    std::vector<point3Dtype> centres(100);
    for (point3Dtype& c : centres)
        c = {uniform(random), uniform(random), 0, 0};
    std::vector<point3Dtype> points(static_cast<std::size_t>(n));
    const int side = static_cast<int>(std::sqrt(n));
    for (int i = 0; i < n; ++i) {
        point3Dtype& p = points[static_cast<std::size_t>(i)];
        p = {uniform(random), uniform(random), 0, 0};
        if (kind == kGrid) p = {i % side * 0.1, i / side * 0.1, 0, 0};
        if (kind == kFlat) p.y *= 1e-6;
        if (kind == kClustered) {
            const point3Dtype& c = centres[random() % 100];
            p = {c.x + normal(random), c.y + normal(random), 0, 0};
        }
    }
    if (kind == kGrid) std::shuffle(points.begin(), points.end(), random);
    return points;
}

void Triangulate(benchmark::State& state, Kind kind) {
    const int n = static_cast<int>(state.range(0));
    const auto points = MakePoints(kind, n);
    double triangles = 0;
    double peak = 0;
    long allocations = 0;
    for (auto _ : state) {
        state.PauseTiming();
        ResetPeak();
        const double before = StatusMB("VmRSS");
        const long start = g_Allocations;
        state.ResumeTiming();
        CPolysurface surface(points.data(), 0, n);
        surface.DelaunaySurface(1);
        state.PauseTiming();
        allocations = g_Allocations - start;
        peak = std::max(peak, StatusMB("VmHWM") - before);
        triangles += surface.GetPSNumPolygons();
        state.ResumeTiming();
    }
    state.counters["Mtri/s"] = benchmark::Counter(triangles / 1e6, benchmark::Counter::kIsRate);
    state.counters["peakMB"] = peak;
    state.counters["allocations"] = static_cast<double>(allocations);
}
BENCHMARK_CAPTURE(Triangulate, uniform, kUniform)
    ->RangeMultiplier(10)
    ->Range(10000, 1000000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Triangulate, clustered, kClustered)
    ->RangeMultiplier(10)
    ->Range(10000, 1000000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Triangulate, grid, kGrid)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Triangulate, flat, kFlat)->Arg(1000000)->Unit(benchmark::kMillisecond);

double Smooth(double x, double y) {
    return 0.3 * std::cos(6 * x) * std::cos(6 * y);
}

/// Twenty waves of random direction and length.
double Rough(double x, double y) {
    static const std::vector<point3Dtype> waves = [] {
        std::mt19937_64 random(5);
        std::uniform_real_distribution<double> uniform(-30.0, 30.0);
        std::vector<point3Dtype> drawn(20);
        for (point3Dtype& w : drawn)
            w = {uniform(random), uniform(random), uniform(random), 0};
        return drawn;
    }();
    double z = 0;
    for (const point3Dtype& w : waves)
        z += 0.06 * std::sin(w.x * x + w.y * y + w.z);
    return z;
}

/// 20 levels over n x n points of a field over -1..1.
void Contours(benchmark::State& state, double (*field)(double, double), int type) {
    const int n = static_cast<int>(state.range(0));
    std::vector<double> z;
    for (int r = 0; r < n; ++r)
        for (int c = 0; c < n; ++c)
            z.push_back(field(2.0 * c / (n - 1) - 1, 2.0 * r / (n - 1) - 1));
    const CPolysurface surface(n, n, -1.0, -1.0, 1.0, 1.0, z.data(), type);
    double levels[20];
    for (int k = 0; k < 20; ++k)
        levels[k] = -0.285 + 0.03 * k;
    std::size_t points = 0, lines = 0;
    for (auto _ : state) {
        const ContourLines contours = TraceContourLines(surface, levels, 20);
        points = contours.points.size();
        lines = contours.lines.size();
    }
    state.counters["points"] = static_cast<double>(points);
    state.counters["lines"] = static_cast<double>(lines);
}
BENCHMARK_CAPTURE(Contours, smooth_quads, Smooth, 0)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Contours, smooth_triangles, Smooth, 1)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Contours, rough_quads, Rough, 0)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Contours, rough_triangles, Rough, 1)->Arg(1000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace varnel

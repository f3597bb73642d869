// Drawing whole views of 1024 x 768 pixels, the picture in memory at the end: a surface, bars,
// symbols and a line, each turned a little further for every picture.
#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

#include "bench/scene.h"

namespace {

using namespace varnel;

void Run(benchmark::State& state, Scene& scene) {
    scene.DrawNext();  // shaders are compiled with the first picture
    for (auto _ : state)
        scene.DrawNext();
}

double Wave(double x, double y) {
    return 0.3 * std::cos(6 * x) * std::cos(6 * y);
}

void DrawSurface(benchmark::State& state) {
    const int n = static_cast<int>(state.range(0));
    std::vector<double> z;
    for (int r = 0; r < n; ++r)
        for (int c = 0; c < n; ++c)
            z.push_back(Wave(2.0 * c / n - 1, 2.0 * r / n - 1));
    CPolysurface surface(n, n, -1, -1, 1, 1, z.data(), 0);
    Scene scene;
    CChartObj3D& object = scene.Object();
    object.PolysurfaceChart3D(&surface);
    object.SetOutlineMode(static_cast<int>(state.range(1)));
    Run(state, scene);
}
BENCHMARK(DrawSurface)
    ->ArgNames({"n", "outlined"})
    ->ArgsProduct({{100, 500, 1000}, {0, 1}})
    ->Unit(benchmark::kMillisecond);

void DrawBars(benchmark::State& state) {
    const int n = static_cast<int>(state.range(0));
    std::vector<point3Dtype> corners;
    for (int r = 0; r < n; ++r)
        for (int c = 0; c < n; ++c) {
            const double x = 2.0 * c / n - 1;
            const double y = 2.0 * r / n - 1;
            corners.push_back({x, y, 0.35 + Wave(x, y), 0});
        }
    const std::vector<double> base(corners.size(), -1.0);
    Scene scene;
    CChartObj3D& object = scene.Object();
    object.BarChart3D(corners.data(), base.data(), n * n, 1.4 / n, 1.4 / n, {0.3, 0.5, 0.8, 1},
                      {0, 0, 0, 1});
    Run(state, scene);
}
BENCHMARK(DrawBars)->ArgName("n")->Arg(20)->Arg(100)->Arg(300)->Unit(benchmark::kMillisecond);

void DrawSymbols(benchmark::State& state) {
    const int n = static_cast<int>(state.range(0));
    std::vector<point3Dtype> points;
    for (int i = 0; i < n; ++i) {
        const double t = i * 0.618034;
        points.push_back({std::cos(t * 13), std::sin(t * 17), std::cos(t * 29), 0});
    }
    Scene scene;
    CChartObj3D& object = scene.Object();
    object.ScatterChart3D(points.data(), 3.0 / std::cbrt(n), n, 10, {0.8, 0.4, 0.2, 1},
                          {0, 0, 0, 1}, -1, 0.0);
    object.SetOutlineMode(0);
    Run(state, scene);
}
BENCHMARK(DrawSymbols)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void DrawLine(benchmark::State& state) {
    const int n = static_cast<int>(state.range(0));
    std::vector<point3Dtype> points;
    for (int i = 0; i < n; ++i) {
        const double t = 2.0 * i / n - 1;
        points.push_back({t, std::sin(40 * t) * 0.7, std::cos(63 * t) * 0.7, 0});
    }
    Scene scene;
    CChartObj3D& object = scene.Object();
    object.LineChart3D(points.data(), n, 0, 1, {0.1, 0.2, 0.6, 1});
    Run(state, scene);
}
BENCHMARK(DrawLine)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);

}  // namespace

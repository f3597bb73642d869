// MathGL, which rasterizes itself, beside pictures.cpp: filled | outlined | line N [FRAMES],
// start FILE.
#include <mgl2/mgl.h>

#include <cstdlib>
#include <functional>
#include <string_view>

#include "bench/measure.h"

namespace {

constexpr int kMostPoints = 500;  // a side; beyond, a frame takes many seconds

void Draw(double start, int frames, bool lit, const std::function<void(mglGraph&)>& plot) {
    mglGraph graph(0, 1024, 768);
    double angle = 30;
    measure::Frames(start, frames, [&] {
        angle += 7;
        graph.Clf();
        graph.SetRanges(-1, 1, -1, 1, -1, 1);
        graph.Rotate(60, angle);
        graph.Light(lit);
        plot(graph);
        graph.GetRGB();
    });
    measure::Print("resident_mb", measure::ResidentBytes() / 1e6);
}

void Start(const char* file) {
    mglGraph graph(0, 640, 480);
    mglData y(10);
    for (int i = 0; i < 10; ++i)
        y.a[i] = 1 + i % 4;
    graph.SetRanges(0, 10, 0, 5);
    graph.Axis();
    graph.Bars(y, "b");
    graph.WritePNG(file, "", false);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) return 1;
    const std::string_view kind = argv[1];
    const int n = std::atoi(argv[2]);
    const int frames = argc > 3 ? std::atoi(argv[3]) : 5;
    if (kind == "start") {
        Start(argv[2]);
    } else if (kind == "line") {
        mglData x(n), y(n), z(n);
        for (int i = 0; i < n; ++i) {
            double p[3];
            measure::CurvePoint(i, n, p);
            x.a[i] = p[0];
            y.a[i] = p[1];
            z.a[i] = p[2];
        }
        Draw(measure::CpuMs(), frames, false, [&](mglGraph& g) { g.Plot(x, y, z, "k"); });
    } else if ((kind == "filled" || kind == "outlined") && n <= kMostPoints) {
        const std::vector<double> heights = measure::Waves(n);
        const double start = measure::CpuMs();
        mglData z;
        z.Set(heights.data(), n, n);
        const char* const style = kind == "filled" ? "b" : "b#";
        Draw(start, frames, true, [&](mglGraph& g) { g.Surf(z, style); });
    } else {
        return 1;
    }
}

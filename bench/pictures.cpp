// Whole pictures, as a host makes them: frames of large charts, the first picture, many pictures,
// and the memory they take. Uses only calls that every version has, so that builds of two versions
// can be compared.
//
// filled | outlined N [FRAMES]   a surface of N x N points, 1024 x 768
// changed N [FRAMES]             the same, filled, all heights new in each frame
// line | bars | cubes N [FRAMES] a line of N points, N bars, N cubes
// start FILE                     ten bars with axes to a PNG of 640 x 480
// reuse | renew COUNT            that COUNT times with 4 samples, in one view or a new one each
// contours N [TIMES]             twenty contour lines of a rough surface of N x N points
// triangles N [TIMES]            N points triangulated
#include <unistd.h>

#include <cstdlib>
#include <memory>
#include <string_view>

#include "bench/measure.h"
#include "bench/scene.h"
#include "varnel/surface/contour_lines.h"
#include "varnel/varnel.h"

namespace {

using namespace varnel;

constexpr RGBDType kBlue{0.3, 0.5, 0.8, 1};
constexpr RGBDType kBlack{0, 0, 0, 1};

/// What a process has that has drawn one datum of a kind, bytes.
double LeastMemory(const char* kind) {
    char self[4096] = {};
    if (readlink("/proc/self/exe", self, sizeof self - 1) < 0) return 0.0;
    const std::string command = std::string(self) + ' ' + kind + " 1 0";
    std::FILE* const output = popen(command.c_str(), "r");
    double megabytes = 0.0;
    char line[256];
    while (output != nullptr && std::fgets(line, sizeof line, output) != nullptr)
        std::sscanf(line, "resident_mb %lf", &megabytes);
    if (output != nullptr) pclose(output);
    return megabytes * 1e6;
}

/// `fill` sets up the object from arrays that are there already, `hostBytes` long. Memory is what
/// the process has beyond them and beyond one that draws next to nothing.
template <class Fill>
void Draw(const char* kind, double numData, double hostBytes, int frames, Fill fill) {
    const double start = measure::CpuMs();
    Scene scene;
    fill(scene.Object());
    measure::Frames(start, frames, [&] { scene.DrawNext(); });
    const double memory = measure::ResidentBytes();
    measure::Print("resident_mb", memory / 1e6);
    if (numData >= 1e6)
        measure::Print("bytes_per_datum", (memory - hostBytes - LeastMemory(kind)) / numData);
}

void DrawSurface(int n, int frames, bool outlined) {
    std::vector<double> z = measure::Waves(std::max(n, 2));
    n = std::max(n, 2);
    std::unique_ptr<CPolysurface> surface;
    const double count = static_cast<double>(n) * n;
    Draw(outlined ? "outlined" : "filled", count, 8 * count, frames, [&](CChartObj3D& object) {
        surface = std::make_unique<CPolysurface>(n, n, -1, -1, 1, 1, z.data(), 0);
        object.PolysurfaceChart3D(surface.get());
        object.SetOutlineMode(outlined ? 1 : 0);
    });
}

void DrawChanged(int n, int frames) {
    std::vector<double> z = measure::Waves(n);
    Scene scene;
    measure::Frames(measure::CpuMs(), frames, [&] {
        for (double& height : z)
            height = -0.97 * height;
        CPolysurface surface(n, n, -1, -1, 1, 1, z.data(), 0);
        scene.Object().PolysurfaceChart3D(&surface);
        scene.Object().SetOutlineMode(0);
        scene.DrawNext();
    });
}

void Contours(int n, int times) {
    const std::vector<double> z = measure::Rough(n);
    const CPolysurface surface(n, n, -1, -1, 1, 1, z.data(), 0);
    double levels[measure::kLevels];
    for (int k = 0; k < measure::kLevels; ++k)
        levels[k] = measure::Level(k);
    std::size_t lines = 0;
    measure::Repeat(
        times, [&] { lines = TraceContourLines(surface, levels, measure::kLevels).lines.size(); });
    measure::Print("lines", static_cast<double>(lines));
}

void Triangles(int n, int times) {
    std::vector<point3Dtype> points(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i)
        measure::ScatteredPoint(i, &points[static_cast<std::size_t>(i)].x);
    int triangles = 0;
    measure::Repeat(times, [&] {
        CPolysurface surface(points.data(), 0, n);
        surface.DelaunaySurface(0);
        triangles = surface.GetPSNumPolygons();
    });
    measure::Print("triangles", triangles);
}

void DrawLine(int n, int frames) {
    std::vector<point3Dtype> points(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i) {
        double p[3];
        measure::CurvePoint(i, n, p);
        points[static_cast<std::size_t>(i)] = {p[0], p[1], p[2], 0};
    }
    Draw("line", n, 32.0 * n, frames,
         [&](CChartObj3D& object) { object.LineChart3D(points.data(), n, 0, 1, kBlack); });
}

/// n symbols or bars in a square.
void DrawSolids(int n, int frames, bool bars) {
    std::vector<point3Dtype> points(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i) {
        const measure::Place p = measure::PlaceOf(i, n);
        points[static_cast<std::size_t>(i)] = {p.x, p.y, p.z, 0};
    }
    const int side = measure::PlaceOf(0, n).side;
    const std::vector<double> feet(bars ? points.size() : 0, -1.0);
    Draw(bars ? "bars" : "cubes", n, (bars ? 40.0 : 32.0) * n, frames, [&](CChartObj3D& object) {
        if (bars)
            object.BarChart3D(points.data(), feet.data(), n, 1.4 / side, 1.4 / side, kBlue, kBlack);
        else
            object.ScatterChart3D(points.data(), 3.0 / std::cbrt(n), n, 10, kBlue, kBlack, -1, 0.0);
        object.SetOutlineMode(bars ? 1 : 0);
    });
}

void TenBars(CChartView3D& view, const char* file) {
    double x[10];
    double y[10];
    for (int i = 0; i < 10; ++i) {
        x[i] = i;
        y[i] = 1 + i % 4;
    }
    CChart3D* const chart = view.NewChart3D();
    CTransform3D* const transform = chart->AutoTransform25D(x, y, 10, 1.0, 0, 0);
    chart->AutoAxes(transform);
    chart->NewChartObj(transform)->BarChart25D(x, y, 0.0, 0.0, 10, 0.8, 0.8, kBlue, kBlack, 1, 1,
                                               0);
    view.SaveToPNG(file);  // draws it
}

void OneView(const char* file, int samples) {
    CWnd window(640, 480);
    CChartView3D view(&window, 640, 480);
    view.SetAntialiasing(samples);
    TenBars(view, file);
}

void Reuse(int count, const char* file) {
    CWnd window(640, 480);
    CChartView3D view(&window, 640, 480);
    view.SetAntialiasing(4);
    measure::Many(count, [&] {
        TenBars(view, file);
        view.DeleteChartViewObjects();
    });
    measure::Print("resident_mb", measure::ResidentBytes() / 1e6);
}

void Renew(int count, const char* file) {
    measure::Many(count, [&] { OneView(file, 4); });
    measure::Print("resident_mb", measure::ResidentBytes() / 1e6);
}

int Run(std::string_view kind, const char* argument, int frames) {
    const std::string file = "/tmp/varnel_bench_" + std::to_string(std::clock()) + ".png";
    const int n = std::atoi(argument);
    if (kind == "start")
        OneView(argument, 0);
    else if (kind == "reuse")
        Reuse(n, file.c_str());
    else if (kind == "renew")
        Renew(n, file.c_str());
    else if (kind == "filled" || kind == "outlined")
        DrawSurface(n, frames, kind == "outlined");
    else if (kind == "changed")
        DrawChanged(n, frames);
    else if (kind == "contours")
        Contours(n, frames);
    else if (kind == "triangles")
        Triangles(n, frames);
    else if (kind == "line")
        DrawLine(n, frames);
    else if (kind == "bars" || kind == "cubes")
        DrawSolids(n, frames, kind == "bars");
    else
        return 1;
    std::remove(file.c_str());
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) return 1;
    return Run(argv[1], argv[2], argc > 3 ? std::atoi(argv[3]) : 5);
}

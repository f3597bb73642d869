// Whole pictures, as a host makes them: frames of large charts, the first picture, many pictures,
// and the memory they take. Uses only calls that every version has, so that builds of two versions
// can be compared.
//
// filled | outlined N [FRAMES]   a surface of N x N points, 1024 x 768
// line | bars | cubes N [FRAMES] a line of N points, N bars, N cubes
// start FILE                     ten bars with axes to a PNG of 640 x 480
// reuse | renew COUNT            that COUNT times with 4 samples, in one view or a new one each
#include <cstdlib>
#include <memory>
#include <string_view>

#include "bench/measure.h"
#include "varnel/varnel.h"

namespace {

using namespace varnel;

constexpr RGBDType kBlue{0.3, 0.5, 0.8, 1};
constexpr RGBDType kBlack{0, 0, 0, 1};

/// A view with one chart over -1..1; each picture is turned a little further.
class Scene {
 public:
    Scene() : m_Window(1024, 768), m_View(&m_Window, 1024, 768) {
        CChart3D* const chart = m_View.NewChart3D({-1, -1, -1, 0}, {1, 1, 1, 0}, &m_Transform);
        m_Object = chart->NewChartObj(m_Transform);
        m_View.SetViewSizePrinter();
    }
    CChartObj3D& Object() { return *m_Object; }
    void DrawNext() {
        m_Angle += 7.0;
        m_Transform->SetRotate({-30, 0, m_Angle, 0});
        m_View.DrawView();
    }

 private:
    CWnd m_Window;
    CChartView3D m_View;
    CTransform3D* m_Transform = nullptr;
    CChartObj3D* m_Object = nullptr;
    double m_Angle = 0.0;
};

/// `fill` sets up the object from arrays that are there already. Memory is what the process has
/// more than with those arrays and a view that has drawn nothing much.
template <class Fill>
void Draw(double numData, int frames, Fill fill) {
    const double memory = measure::ResidentBytes();
    const double start = measure::CpuMs();
    Scene scene;
    fill(scene.Object());
    measure::Frames(start, frames, [&] { scene.DrawNext(); });
    measure::Print("bytes_per_datum", (measure::ResidentBytes() - memory) / numData);
    measure::Print("resident_mb", measure::ResidentBytes() / 1e6);
}

void DrawSurface(int n, int frames, bool outlined) {
    std::vector<double> z = measure::Waves(n);
    std::unique_ptr<CPolysurface> surface;
    Draw(static_cast<double>(n) * n, frames, [&](CChartObj3D& object) {
        surface = std::make_unique<CPolysurface>(n, n, -1, -1, 1, 1, z.data(), 0);
        object.PolysurfaceChart3D(surface.get());
        object.SetOutlineMode(outlined ? 1 : 0);
    });
}

void DrawLine(int n, int frames) {
    std::vector<point3Dtype> points(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i) {
        double p[3];
        measure::CurvePoint(i, n, p);
        points[static_cast<std::size_t>(i)] = {p[0], p[1], p[2], 0};
    }
    Draw(n, frames,
         [&](CChartObj3D& object) { object.LineChart3D(points.data(), n, 0, 1, kBlack); });
}

/// n symbols or bars in a square.
void DrawSolids(int n, int frames, bool bars) {
    const int side = std::max(2, static_cast<int>(std::sqrt(n)));
    std::vector<point3Dtype> points;
    for (int i = 0; i < n; ++i)
        points.push_back({2.0 * (i % side) / side - 1, 2.0 * (i / side) / side - 1,
                          0.35 + measure::Wave(i / side, i % side, side), 0});
    const std::vector<double> feet(points.size(), -1.0);
    Draw(n, frames, [&](CChartObj3D& object) {
        if (bars)
            object.BarChart3D(points.data(), feet.data(), n, 1.4 / side, 1.4 / side, kBlue, kBlack);
        else
            object.ScatterChart3D(points.data(), 3.0 / std::cbrt(n), n, 10, kBlue, kBlack, -1, 0.0);
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
    view.SetViewSizePrinter();
    view.DrawView();
    view.SaveToPNG(file);
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
}

int Run(std::string_view kind, const char* argument, int frames) {
    const std::string file = "/tmp/varnel_bench_" + std::to_string(std::clock()) + ".png";
    const int n = std::atoi(argument);
    if (kind == "start")
        OneView(argument, 0);
    else if (kind == "reuse")
        Reuse(n, file.c_str());
    else if (kind == "renew")
        measure::Many(n, [&] { OneView(file.c_str(), 4); });
    else if (kind == "filled" || kind == "outlined")
        DrawSurface(n, frames, kind == "outlined");
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

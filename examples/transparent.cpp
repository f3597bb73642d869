// What can be seen through: five thousand points in three classes, of which dense places are darker
// than sparse ones and none hides another; and areas over each other.
#include <cmath>
#include <numbers>
#include <random>

#include "examples/support/example.h"

using namespace varnel;

namespace {

RGBDType Clear(RGBDType color, double alpha) {
    color.a = alpha;
    return color;
}

/// The same numbers with every library.
double Normal(std::mt19937& random, double middle, double spread) {
    const auto even = [&random] { return (static_cast<double>(random()) + 0.5) / 4294967296.0; };
    const double radius = std::sqrt(-2 * std::log(even()));
    return middle + spread * radius * std::cos(2 * std::numbers::pi * even());
}

void DrawPoints(example::Picture& picture, CLegend3D& legend) {
    CChart3D& chart = *picture.View().NewChart3D();
    CTransform3D* transform = chart.NewTransform();
    std::mt19937 random(5489);
    const auto add = [&](const char* name, int n, const point3Dtype& middle,
                         const point3Dtype& spread, int color) {
        std::vector<point3Dtype> points;
        for (int i = 0; i < n; ++i) {
            const double x = Normal(random, middle.x, spread.x);
            const double y = Normal(random, middle.y, spread.y);
            points.push_back({x, y, Normal(random, middle.z, spread.z), 0});
        }
        const RGBDType fill = Clear(Theme().SeriesColor(color), 0.4);
        CChartObj3D* object = chart.NewChartObj(transform);
        object->ScatterChart3D(points, 1, SYMBOL_NONE, fill, fill, PROJECTION_NONE, 0);
        object->SetMarker(MARKER_CIRCLE, 6);
        object->SetOutlineMode(0);
        legend.AddChartObj(object, name);
    };
    add("wide", 2500, {0, 0, 0, 0}, {1.3, 1.3, 0.9, 0}, 0);
    add("flat", 1500, {-1, 0.5, 1.6, 0}, {0.9, 1.1, 0.25, 0}, 1);
    add("round", 1000, {1.5, -0.8, -1.2, 0}, {0.5, 0.5, 0.5, 0}, 2);
    chart.AutoFrame(transform, {.axes = {AxisFrame{.title = "x"}, AxisFrame{.title = "y"},
                                         AxisFrame{.title = "z"}},
                                .title = "Three classes of 5,000 points"});
    picture.Save("transparent_points");
}

void DrawAreas(example::Picture& picture, CLegend3D& legend) {
    CChart3D& chart = *picture.View().NewChart3D();
    CTransform3D* transform = chart.NewTransform();
    const example::Table table = picture.Read("penguins.csv");
    constexpr double kFirst = 166, kWidth = 6;
    constexpr const char* kLength = "flipper_length_mm";
    int color = 0;
    for (const char* species : {"Adelie", "Chinstrap", "Gentoo"}) {
        std::vector<double> count(13);
        for (const point3Dtype& p : table.Points(kLength, kLength, kLength, "species", species))
            count.at(static_cast<std::size_t>((p.x - kFirst) / kWidth)) += 1;
        const RGBDType line = Theme().SeriesColor(color);
        CChartObj3D* area = chart.NewChartObj(transform);
        area->AreaFillChart25D(example::Count(kFirst + kWidth / 2, count.size(), kWidth), count, 0,
                               0, 0, Clear(line, 0.35), line, WIDTH_CENTERED, INDAXIS_X);
        area->SetSegmentOutlines(0);
        legend.AddChartObj(area, species);
        ++color;
    }
    chart.AutoFrame(transform, {.axes = {AxisFrame{.title = "length of flippers, mm"}, AxisFrame{},
                                         AxisFrame{.title = "penguins"}},
                                .title = "Three species of penguins",
                                .footer = "Palmer Station LTER, K. Gorman",
                                .flat = true});
    picture.Save("transparent_areas");
}

}  // namespace

void example::Draw(Picture& picture) {
    picture.View().SetTransparency(1);
    for (auto* draw : {DrawPoints, DrawAreas}) {
        CLegend3D& legend = *picture.View().NewLegend3D(LEGEND_OUTSIDE_RIGHT);
        draw(picture, legend);
    }
}

// Kinds with three axes, and maps: the same surfaces seen from above.
#include <algorithm>
#include <cmath>
#include <set>

#include "varnel/foundation/detail/whole_within.h"
#include "varnel/plot/detail/chart_impl.h"
#include "varnel/render/codes.h"
#include "varnel/surface/color_map.h"
#include "varnel/surface/filled_contours.h"
#include "varnel/surface/polysurface.h"

namespace varnel::plot {

using detail::Refuse;

namespace {

constexpr int kTriangles = 1;

/// 0, 1, ... where there are no values.
std::vector<double> TakeEdge(auto& c, int axis, const Values& values, const char* call,
                             const char* argument, int count) {
    if (!values.empty()) return c.Take(axis, values, call, argument, count);
    std::vector<double> places(static_cast<std::size_t>(count));
    for (std::size_t i = 0; i < places.size(); ++i)
        places[i] = static_cast<double>(i);
    c.Widen(axis, 0);
    c.Widen(axis, count - 1.0);
    return places;
}

CPolysurface TakeGrid(auto& c, const Grid& grid, const char* call) {
    if (grid.rows < 2 || grid.columns < 2)
        Refuse(call, "the grid has ", grid.rows, " rows and ", grid.columns, " columns");
    const auto rows = static_cast<std::size_t>(grid.rows);
    const auto columns = static_cast<std::size_t>(grid.columns);
    const std::vector<double> z = c.Take(2, grid.z, call, "z", 1LL * grid.rows * grid.columns);
    const std::vector<double> x = TakeEdge(c, 0, grid.x, call, "x", grid.columns);
    const std::vector<double> y = TakeEdge(c, 1, grid.y, call, "y", grid.rows);
    std::vector<point3Dtype> points(z.size());
    for (std::size_t r = 0; r < rows; ++r)
        for (std::size_t k = 0; k < columns; ++k)
            points[r * columns + k] = {x[k], y[r], z[r * columns + k], z[r * columns + k]};
    CPolysurface surface(points.data(), grid.rows, grid.columns, kTriangles);
    surface.CreateRGAdjacentPolygonList();
    return surface;
}

void RequireMap(const std::string& map, const char* call) {
    RGBDType unused;
    if (ColorMap(map, 1, &unused)) return;
    std::string known;
    for (const CString& name : ColorMapNames())
        known += (known.empty() ? "" : ", ") + name;
    Refuse(call, "there is no colour map \"", map, "\"; there are ", known);
}

Objects AddSurface(auto& c, CPolysurface& surface, const SurfaceOptions& options,
                   const char* call) {
    RequireMap(options.map, call);
    surface.SetWireFrame(options.wire);
    if (options.color)
        for (int i = 0; i < surface.GetPSNumPolygons(); ++i)
            surface.SetPolysurfaceColors(i, *options.color, *options.color);
    CChartObj3D* object = c.NewObject();
    object->PolysurfaceChart3D(&surface);
    object->SetOutlineMode(options.lines);
    object->SetOutlineColor(c.theme.outline);
    if (options.color) return {object};
    const auto points = static_cast<std::size_t>(surface.GetPSNumPoints());
    if (!options.color_by.empty() && options.color_by.size() != points)
        Refuse(call, "color_by has ", options.color_by.size(), " values, not ", points);
    const bool byHeight = options.color_by.empty();
    const bool isColored =
        byHeight ? c.chart->ColorSurfaceByHeight(object, options.map)
                 : c.chart->ColorSurfaceByValue(object, options.color_by.Numbers(), options.map);
    c.byHeight = isColored && byHeight ? object : nullptr;
    c.heightMap = options.map;
    c.noData = !byHeight && RangeOf(options.color_by.Numbers()).leftOut > 0;
    if (isColored && options.color_bar) {
        c.colorBar = true;
        c.colorBarTitle = options.name.empty() ? options.color_by.Name() : options.name;
    }
    return {object};
}

/// Round levels, about as many as asked for, inside the range; with `around` the ones next to it as
/// well.
std::vector<double> ChooseLevels(double min, double max, int count, bool around) {
    const double rough = (max - min) / std::max(count, 1);
    const double power = std::pow(10.0, std::floor(std::log10(rough)));
    const double part = rough / power;
    const double step = power * (part < 1.5 ? 1 : part < 3.5 ? 2 : part < 7.5 ? 5 : 10);
    const double first = around ? std::floor(min / step) : std::floor(min / step) + 1;
    const double last = around ? std::floor(max / step) + 1 : std::ceil(max / step) - 1;
    std::vector<double> levels;
    for (double n = first; n <= last; ++n)
        levels.push_back(n * step);
    return levels;
}

/// Half the step that all values are whole multiples of (1, or a tenth, ..), where it is well
/// below the distance of the levels; 0 without one. A value that was rounded to the step may lie
/// that much lower: lines through the middle between two values run straight where those at a value
/// itself would follow the edges of the grid around every flat place.
double HalfStepOf(const std::vector<double>& values, double between) {
    for (const double step : {10.0, 5.0, 1.0, 0.5, 0.1, 0.01}) {
        constexpr double kNear = 1e-9, kLeast = 5.0;
        if (between < kLeast * step) continue;
        const bool whole = std::ranges::all_of(values, [step](double v) {
            return !std::isfinite(v) || std::abs(v / step - std::round(v / step)) < kNear;
        });
        if (whole) return step / 2;
    }
    return 0.0;
}

bool AreEven(const std::vector<double>& levels) {
    const double step = levels[1] - levels[0];
    for (std::size_t i = 2; i < levels.size(); ++i)
        if (std::abs(levels[i] - levels[i - 1] - step) > 1e-9 * step) return false;
    return true;
}

/// The bands between the levels, with the colour bar of those that are all as wide.
CChartObj3D* AddBands(auto& c, const CPolysurface& surface, const std::vector<double>& levels,
                      const std::string& map) {
    const ColorScale scale{.map = map,
                           .min = levels.front(),
                           .max = levels.back(),
                           .bands = static_cast<int>(levels.size()) - 1};
    const std::vector<RGBDType> colors = scale.Colors();
    CPolysurface bands = FilledContours(surface, levels, colors);
    CChartObj3D* const object = c.NewObject();
    object->PolysurfaceChart2D(&bands, c.axes[2].range.min, 0);
    object->SetOutlineMode(0);
    object->SetColorMode(0);
    c.colorBar = true;
    if (AreEven(levels)) {
        c.colorScale = scale;
    } else {
        c.bandLevels = levels;
        c.bandColors = colors;
    }
    c.colorBarTitle = c.axes[2].name;
    return object;
}

}  // namespace

Objects Chart::Line3D(const Values& x, const Values& y, const Values& z,
                      const LineOptions& options) {
    Impl& c = *m_Impl;
    const std::vector<point3Dtype> points = c.TakeSpatial(x, y, z, "Line3D");
    Objects objects;
    for (const detail::Part& part : detail::Split(options.by, points.size(), "Line3D")) {
        std::vector<point3Dtype> mine;
        for (const std::size_t i : part.rows)
            mine.push_back(points[i]);
        CChartObj3D* line = c.NewObject();
        const int marker = detail::FlatMarker(options.marker, c.series);
        line->LineChart3D(mine.data(), static_cast<int>(mine.size()), LINE_SOLID,
                          c.Pixels(options.width), c.NextColor(options.color));
        c.SetDash(*line, options.dash, options.width);
        line->SetMarker(marker, c.scale * options.marker_size);
        c.AddEntry(line, part.name.empty() ? options.name : part.name);
        objects.push_back(line);
    }
    return objects;
}

namespace {

/// Moves places from the middles of bars to their corners; the bars' widths along x and y, a share
/// of the distance between neighbours.
std::pair<double, double> ToCorners(std::vector<point3Dtype>& places, double share) {
    double width[2] = {};
    for (const int axis : {0, 1}) {
        std::vector<double> along;
        along.reserve(places.size());
        for (const point3Dtype& p : places)
            along.push_back(GetCoord3D(p, axis));
        width[axis] = share * detail::SmallestStep(along);
    }
    for (point3Dtype& p : places) {
        p.x -= width[0] / 2;
        p.y -= width[1] / 2;
    }
    return {width[0], width[1]};
}

/// From where bars hide the fewest of each other: along the shorter rows where there are many more
/// places one way than the other.
double SideOf(const std::vector<point3Dtype>& places) {
    constexpr double kMiddle = -37.5, kAlongY = -60.0, kAlongX = -30.0;
    std::set<double> xs, ys;
    for (const point3Dtype& p : places) {
        if (std::isfinite(p.x)) xs.insert(p.x);
        if (std::isfinite(p.y)) ys.insert(p.y);
    }
    return xs.size() >= 2 * ys.size() ? kAlongY : ys.size() >= 2 * xs.size() ? kAlongX : kMiddle;
}

}  // namespace

Objects Chart::Bars3D(const Values& x, const Values& y, const Values& z,
                      const BarsOptions& options) {
    Impl& c = *m_Impl;
    std::vector<point3Dtype> corners = c.TakeSpatial(x, y, z, "Bars3D");
    c.side = SideOf(corners);
    const auto [across, deep] = ToCorners(corners, options.width);
    const std::vector<double> feet(corners.size(), options.base);
    CChartObj3D* bars = c.NewObject();
    bars->BarChart3D(corners.data(), feet.data(), static_cast<int>(corners.size()), across, deep,
                     c.NextColor(options.color), c.theme.outline);
    c.ColorPoints(bars, detail::AllRows(corners.size()), options.color_by, options.map,
                  corners.size(), "Bars3D");
    c.AddEntry(bars, options.name);
    return {bars};
}

Objects Chart::Planes3D(const Values& x, const Values& y, const Values& z,
                        const PlanesOptions& options) {
    Impl& c = *m_Impl;
    std::vector<point3Dtype> corners = c.TakeSpatial(x, y, z, "Planes3D");
    c.side = SideOf(corners);
    const auto [across, deep] = ToCorners(corners, options.width);
    CChartObj3D* const planes = c.NewObject();
    planes->PlaneChart3D(corners, across, deep, c.NextColor(options.color), c.theme.outline);
    c.ColorPoints(planes, detail::AllRows(corners.size()), options.color_by, options.map,
                  corners.size(), "Planes3D");
    c.AddEntry(planes, options.name);
    return {planes};
}

Objects Chart::Ribbons(const Values& x, const std::vector<Values>& series,
                       const AreaOptions& options) {
    Impl& c = *m_Impl;
    c.Begin(Layout::Spatial, "Ribbons");
    if (series.empty()) Refuse("Ribbons", "there are no series");
    const std::vector<double> xs = c.Take(0, x, "Ribbons", "x");
    std::vector<std::string> names;
    for (std::size_t s = 0; s < series.size(); ++s) {
        const std::string name = s < options.names.size() ? options.names[s] : series[s].Name();
        names.push_back(name.empty() ? std::to_string(s + 1) : name);
    }
    const std::vector<double> places = c.Take(1, Values::Names(names), "Ribbons", "names");
    Objects ribbons;
    for (std::size_t s = 0; s < series.size(); ++s) {
        const std::string argument = varnel::detail::Say("series ", s + 1);
        const std::vector<double> values =
            c.Take(2, series[s], "Ribbons", argument.c_str(), static_cast<long long>(xs.size()));
        const RGBDType color = c.NextColor({});
        ribbons.push_back(c.NewObject());
        ribbons[s]->RibbonChart25D(xs, values, places[s], 0.6, color, color, WIDTH_CENTERED,
                                   INDAXIS_X);
        ribbons[s]->SetOutlineMode(0);
    }
    return ribbons;
}

Objects Chart::Histogram(const Values& x, const Values& y, const HistogramOptions& options) {
    Impl& c = *m_Impl;
    c.Begin(Layout::Spatial, "Histogram");
    constexpr int kMostBins = 1000;
    if (options.bins < 0 || options.bins > kMostBins) Refuse("Histogram", "bins is ", options.bins);
    const std::vector<double> samples[] = {
        c.Take(0, x, "Histogram", "x"),
        c.Take(1, y, "Histogram", "y", static_cast<long long>(x.size()))};
    // Sturges' rule for each of the two.
    const auto n = static_cast<std::size_t>(
        options.bins > 0 ? options.bins : std::ceil(std::log2(static_cast<double>(x.size()))) + 1);
    double low[2] = {}, width[2] = {};
    for (const int axis : {0, 1}) {
        const DataRange range = RangeOf(samples[axis]);
        if (range.count == 0) Refuse("Histogram", "there is no finite value");
        if (!std::isfinite(range.max - range.min))
            Refuse("Histogram", "the values reach too far: their range is no number");
        low[axis] = range.min;
        width[axis] = (range.max > range.min ? range.max - range.min : 1) / static_cast<double>(n);
    }
    std::vector<point3Dtype> bars(n * n);
    for (std::size_t row = 0, i = 0; row < n; ++row)
        for (std::size_t column = 0; column < n; ++column, ++i)
            bars[i] = {low[0] + static_cast<double>(column) * width[0],
                       low[1] + static_cast<double>(row) * width[1], 0, 0};
    const auto bin = [&](int axis, std::size_t i) {
        return static_cast<std::size_t>(varnel::detail::WholeWithin(
            (samples[axis][i] - low[axis]) / width[axis], 0, static_cast<int>(n) - 1));
    };
    for (std::size_t i = 0; i < x.size(); ++i)
        if (std::isfinite(samples[0][i]) && std::isfinite(samples[1][i]))
            ++bars[bin(1, i) * n + bin(0, i)].z;
    std::erase_if(bars, [](const point3Dtype& bar) { return bar.z == 0; });
    c.axes[2].kind = DataKind::Numbers;
    if (c.axes[2].name.empty()) c.axes[2].name = "count";
    const std::vector<double> feet(bars.size(), 0.0);
    CChartObj3D* const object = c.NewObject();
    object->BarChart3D(bars.data(), feet.data(), static_cast<int>(bars.size()), width[0], width[1],
                       c.NextColor(options.color), c.theme.outline);
    c.AddEntry(object, options.name);
    return {object};
}

Objects Chart::Surface(const Grid& grid, const SurfaceOptions& options) {
    Impl& c = *m_Impl;
    c.Begin(Layout::Spatial, "Surface");
    CPolysurface surface = TakeGrid(c, grid, "Surface");
    return AddSurface(c, surface, options, "Surface");
}

Objects Chart::Surface(const std::function<double(double, double)>& f, double x0, double x1,
                       double y0, double y1, const SurfaceOptions& options) {
    if (!f) Refuse("Surface", "the function is empty");
    if (!(x1 > x0) || !(y1 > y0))
        Refuse("Surface", "x from ", x0, " to ", x1, " and y from ", y0, " to ", y1);
    // Finer where no lines between the points tell how many there are.
    const int points = options.lines || options.wire ? 61 : 121;
    std::vector<double> x, y, z;
    for (int i = 0; i < points; ++i) {
        x.push_back(x0 + (x1 - x0) * i / (points - 1));
        y.push_back(y0 + (y1 - y0) * i / (points - 1));
    }
    for (const double b : y)
        for (const double a : x)
            z.push_back(f(a, b));
    return Surface(Grid{std::move(z), points, points, std::move(x), std::move(y)}, options);
}

Objects Chart::Surface(const Values& x, const Values& y, const Values& z,
                       const SurfaceOptions& options) {
    Impl& c = *m_Impl;
    const std::vector<point3Dtype> points = c.TakeSpatial(x, y, z, "Surface");
    CPolysurface surface(points.data(), 0, static_cast<int>(points.size()));
    surface.DelaunaySurface(1);
    if (surface.GetPSNumPolygons() == 0)
        Refuse("Surface", "the ", points.size(), " points lie on one line");
    return AddSurface(c, surface, options, "Surface");
}

Objects Chart::Surface(const Values& x, const Values& y, const Values& z,
                       const std::vector<int>& corners, const SurfaceOptions& options) {
    Impl& c = *m_Impl;
    const std::vector<point3Dtype> points = c.TakeSpatial(x, y, z, "Surface");
    if (corners.empty() || corners.size() % 3 != 0)
        Refuse("Surface", "corners has ", corners.size(), " numbers, not three for each triangle");
    for (const int corner : corners)
        if (corner < 0 || static_cast<std::size_t>(corner) >= points.size())
            Refuse("Surface", "there is no point ", corner, " of ", points.size());
    CPolysurface surface(points, corners);
    return AddSurface(c, surface, options, "Surface");
}

namespace {

Grid AsGrid(const Table& matrix) {
    return {matrix.Matrix(), static_cast<int>(matrix.NumRows()),
            static_cast<int>(matrix.NumColumns())};
}

}  // namespace

Objects Chart::Surface(const Table& matrix, const SurfaceOptions& options) {
    return Surface(AsGrid(matrix), options);
}

Objects Chart::Contours(const Table& matrix, const ContourOptions& options) {
    return Contours(AsGrid(matrix), options);
}

Objects Chart::HeatMap(const Table& matrix, const SurfaceOptions& options) {
    return HeatMap(AsGrid(matrix), options);
}

Objects Chart::HeatMap(const Grid& grid, const SurfaceOptions& options) {
    Impl& c = *m_Impl;
    c.Begin(Layout::Map, "HeatMap");
    CPolysurface surface = TakeGrid(c, grid, "HeatMap");
    Objects objects = AddSurface(c, surface, options, "HeatMap");
    // By the values that the points carry: the map itself has no heights.
    constexpr int kByValue = 3;
    c.chart->SetTextureMode(kByValue);
    objects[0]->PolysurfaceChart2D(&surface, c.axes[2].range.min, 0);
    return objects;
}

Objects Chart::Contours(const Grid& grid, const ContourOptions& options) {
    Impl& c = *m_Impl;
    RequireMap(options.map, "Contours");
    c.Begin(Layout::Map, "Contours");
    CPolysurface surface = TakeGrid(c, grid, "Contours");
    const DataRange& range = c.axes[2].range;
    const std::vector<double> levels =
        options.levels.empty() ? ChooseLevels(range.min, range.max, options.count, options.filled)
                               : options.levels.Numbers();
    const std::size_t count = levels.size();
    if (count < (options.filled ? 2 : 1) || count > 255)
        Refuse("Contours", "there are ", count, " levels");
    for (std::size_t i = 1; i < count; ++i)
        if (!(levels[i] > levels[i - 1]))
            Refuse("Contours", "level ", levels[i], " does not lie above ", levels[i - 1]);
    if (options.levels.empty() && count > 1) {
        const double raise = HalfStepOf(grid.z.Numbers(), levels[1] - levels[0]);
        for (int i = 0; i < surface.GetPSNumPoints(); ++i)
            surface.GetPSPoints()[i].z += raise;
    }
    Objects objects;
    if (options.filled) objects.push_back(AddBands(c, surface, levels, options.map));
    std::vector<RGBDType> colors(count + 1, c.theme.outline);
    if (!options.filled) ColorMap(options.map, static_cast<int>(count + 1), colors.data());
    const bool labels = options.labels.value_or(!options.filled);
    CChartObj3D* const lines = c.NewObject();
    lines->ContourPolysurface3D(&surface, levels, colors,
                                range.min + 0.01 * (range.max - range.min), 0);
    lines->SetContourStyle({.lineWidth = static_cast<double>(c.Pixels(options.filled ? 0.5 : 1.2)),
                            .labels = labels,
                            .labelSize = 0.8,
                            .labelSpacing = static_cast<double>(c.Pixels(225))});
    if (!options.filled && !labels) c.contours = lines;
    objects.push_back(lines);
    return objects;
}

}  // namespace varnel::plot

#include <algorithm>
#include <cmath>
#include <numeric>

#include "varnel/chart/chart_view.h"
#include "varnel/plot/detail/chart_impl.h"
#include "varnel/render/codes.h"
#include "varnel/surface/color_map.h"
#include "varnel/transform/transform.h"

namespace varnel::plot {

using detail::Refuse;

namespace {

const char* NameOf(Layout layout) {
    return layout == Layout::Flat ? "flat" : layout == Layout::Map ? "a map" : "spatial";
}

/// Whether a column is called as columns without a header are: no title for an axis.
bool IsNumbered(const std::string& name) {
    constexpr std::string_view kColumn = "column ";
    return name.starts_with(kColumn) && name.size() > kColumn.size() &&
           name.find_first_not_of("0123456789", kColumn.size()) == std::string::npos;
}

const char* NameOf(DataKind kind) {
    return kind == DataKind::Names ? "names" : kind == DataKind::Dates ? "dates" : "numbers";
}

}  // namespace

void Chart::Impl::Begin(Layout kind, const char* call) {
    if (layout != Layout::None && layout != kind)
        Refuse(call, "it is ", NameOf(kind), ", and the chart is ", NameOf(layout), " already");
    layout = kind;
    ResolveOptions();
    if (chart != nullptr) return;
    chart = view->NewChart3D();
    chart->SetChartPosition(place);
    chart->EnableBorder(0);
    transform = chart->NewTransform({0, 0, 0, 0}, {1, 1, 1, 0});
}

CChartObj3D* Chart::Impl::NewObject() {
    CChartObj3D* object = chart->NewChartObj(transform);
    object->SetClipping(0);
    return object;
}

std::vector<double> Chart::Impl::Take(int axis, const Values& values, const char* call,
                                      const char* argument, long long count) {
    if (values.empty()) Refuse(call, argument, " is empty");
    if (count >= 0 && static_cast<long long>(values.size()) != count)
        Refuse(call, argument, " has ", values.size(), " values, not ", count);
    PlotAxis& state = axes[axis];
    if (!state.kind) state.kind = values.Kind();
    if (*state.kind != values.Kind())
        Refuse(call, argument, " is ", NameOf(values.Kind()), ", its axis has ",
               NameOf(*state.kind));
    if (!values.Name().empty() && !IsNumbered(values.Name()) && values.Name() != state.name) {
        state.mixed = state.mixed || !state.name.empty();
        state.name = values.Name();
    }
    std::vector<double> numbers = values.Numbers();
    if (values.Kind() == DataKind::Names) {
        std::vector<double> places;
        for (const std::string& name : values.Categories()) {
            const auto at = std::ranges::find(state.categories, name);
            places.push_back(static_cast<double>(at - state.categories.begin()) + 1);
            if (at == state.categories.end()) state.categories.push_back(name);
        }
        for (double& number : numbers)
            number = places[static_cast<std::size_t>(number) - 1];
    }
    for (const double number : numbers)
        Widen(axis, number);
    return numbers;
}

Chart::Impl::XY Chart::Impl::TakeFlat(const Values& x, const Values& y, const char* call) {
    Begin(Layout::Flat, call);
    std::vector<double> xs = Take(0, x, call, "x");
    std::vector<double> ys = Take(2, y, call, "y", static_cast<long long>(xs.size()));
    return {std::move(xs), std::move(ys)};
}

std::vector<point3Dtype> Chart::Impl::TakeSpatial(const Values& x, const Values& y, const Values& z,
                                                  const char* call) {
    Begin(Layout::Spatial, call);
    const std::vector<double> xs = Take(0, x, call, "x");
    const auto count = static_cast<long long>(xs.size());
    const std::vector<double> ys = Take(1, y, call, "y", count);
    return detail::Joined(xs, ys, Take(2, z, call, "z", count));
}

std::vector<point3Dtype> Chart::Impl::InLayer(const std::vector<double>& x,
                                              const std::vector<double>& y) {
    return detail::Joined(x, std::vector<double>(x.size(), NextLayer()), y);
}

void Chart::Impl::Widen(int axis, double value) {
    axes[axis].range.Add(value);
}

void Chart::Impl::ResolveOptions() {
    for (const int axis : {0, 1, 2})
        axes[axis].options = wanted[axis];
    if (layout == Layout::Flat) axes[2].options = wanted[1];
}

RGBDType Chart::Impl::NextColor(const std::optional<RGBDType>& given) {
    return given ? *given : theme.SeriesColor(series++);
}

int Chart::Impl::Pixels(double points) const {
    return std::max(1, static_cast<int>(std::lround(points * pixelsPerPoint)));
}

void Chart::Impl::SetDash(CChartObj3D& line, Dash dash, double width) const {
    line.SetLineStyle(dash == Dash::Solid    ? LINE_SOLID
                      : dash == Dash::Dashed ? LINE_DASHES
                                             : LINE_DOTS);
    line.SetLineStyleFactor(Pixels(width));
}

double Chart::Impl::SymbolSize(double points) const {
    return 20.0 * points * pixelsPerPoint / height;
}

double Chart::Impl::NextLayer() {
    return std::min(0.5 + 0.005 * ++layers, 0.99);
}

void Chart::Impl::AddEdges(CChartObj3D* bars, const std::vector<double>& all, double width) {
    const DataRange range = RangeOf(all);
    edged.push_back({bars, (range.max - range.min) / width + 1});
}

void Chart::Impl::AddEntry(CChartObj3D* object, std::string name) {
    if (!name.empty()) entries.push_back({object, {std::move(name)}});
}

void Chart::Impl::ColorPoints(CChartObj3D* object, const std::vector<std::size_t>& rows,
                              const Values& values, const std::string& map, std::size_t count,
                              const char* call) {
    if (values.empty()) return;
    if (values.size() != count)
        Refuse(call, "color_by has ", values.size(), " values, not ", count);
    RGBDType unused;
    if (!ColorMap(map, 1, &unused)) Refuse(call, "there is no colour map \"", map, "\"");
    const DataRange range = RangeOf(values.Numbers());
    if (range.count == 0) Refuse(call, "color_by has no finite value");
    colorScale = ColorScale{.map = map, .min = range.min, .max = range.max};
    colorScale->showNoData = range.leftOut > 0;
    bandLevels.clear();
    std::vector<double> shown;
    shown.reserve(rows.size());
    for (const std::size_t row : rows)
        shown.push_back(values[row]);
    const std::vector<RGBDType> colors = colorScale->Colors(shown.data(), shown.size());
    object->InitSegmentColorsStorage(colors.data());
    colorBar = true;
    colorBarTitle = values.Name();
}

namespace detail {

double SmallestStep(std::vector<double> values) {
    std::erase_if(values, [](double x) { return !std::isfinite(x); });
    std::ranges::sort(values);
    double step = 0.0;
    for (std::size_t i = 1; i < values.size(); ++i) {
        const double gap = values[i] - values[i - 1];
        if (gap > 0 && (step == 0.0 || gap < step)) step = gap;
    }
    return step > 0 ? step : 1.0;
}

std::vector<Part> Split(const Values& by, std::size_t count, const char* call) {
    std::vector<Part> parts;
    if (by.empty()) {
        parts.push_back({{}, AllRows(count)});
        return parts;
    }
    if (by.size() != count) Refuse(call, "by has ", by.size(), " values, not ", count);
    for (std::size_t i = 0; i < count; ++i) {
        const std::string name = by.Text(i);
        auto part = std::ranges::find(parts, name, &Part::name);
        if (part == parts.end()) part = parts.insert(parts.end(), {name, {}});
        part->rows.push_back(i);
    }
    return parts;
}

std::vector<point3Dtype> Joined(const std::vector<double>& x, const std::vector<double>& y,
                                const std::vector<double>& z) {
    std::vector<point3Dtype> points(x.size());
    for (std::size_t i = 0; i < x.size(); ++i)
        points[i] = {x[i], y[i], z[i], 0};
    return points;
}

std::vector<std::size_t> AllRows(std::size_t count) {
    std::vector<std::size_t> rows(count);
    std::iota(rows.begin(), rows.end(), std::size_t{0});
    return rows;
}

std::vector<double> Pick(const std::vector<double>& values, const std::vector<std::size_t>& rows) {
    std::vector<double> picked;
    picked.reserve(rows.size());
    for (const std::size_t row : rows)
        picked.push_back(values[row]);
    return picked;
}

}  // namespace detail

}  // namespace varnel::plot

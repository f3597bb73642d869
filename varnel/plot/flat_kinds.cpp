// Kinds that are flat: along x and, upwards, y.
#include <algorithm>
#include <cmath>
#include <limits>

#include "varnel/chartobj/box_statistics.h"
#include "varnel/plot/detail/chart_impl.h"

namespace varnel::plot {

using detail::Refuse;

namespace {

constexpr int kX = 0, kValue = 2;  // axes of the box
constexpr int kCentred = 1;
constexpr double kBarDepth = 0.4, kBarPlace = 0.25;

int Count(const std::vector<double>& values) {
    return static_cast<int>(values.size());
}

int Style(Dash dash) {
    return dash == Dash::Solid ? 0 : dash == Dash::Dashed ? 2 : 3;
}

int Symbol(Marker marker, int series) {
    constexpr int symbols[] = {10, 12, 13, 14, 11, 15};
    if (marker == Marker::Auto) return symbols[series % 6];
    return static_cast<int>(marker) - static_cast<int>(Marker::Cube) + 10;
}

std::string SeriesName(const std::vector<std::string>& names, std::size_t i, const Values& values) {
    return i < names.size() ? names[i] : values.Name();
}

}  // namespace

Objects Chart::Line(const Values& x, const Values& y, const LineOptions& options) {
    Impl& c = *m_Impl;
    c.Begin(Layout::Flat, "Line");
    const std::vector<double> xs = c.Take(kX, x, "Line", "x");
    const std::vector<double> ys = c.Take(kValue, y, "Line", "y", Count(xs));
    Objects objects;
    for (const detail::Part& part : detail::Split(options.by, xs.size(), "Line")) {
        const std::vector<double> px = detail::Pick(xs, part.rows);
        CChartObj3D* line = c.NewObject();
        line->LineChart25D(px.data(), detail::Pick(ys, part.rows).data(), c.NextLayer(), Count(px),
                           Style(options.dash), c.Pixels(options.width), c.NextColor(options.color),
                           0);
        c.AddEntry(line, part.name.empty() ? options.name : part.name);
        objects.push_back(line);
    }
    return objects;
}

Objects Chart::Scatter(const Values& x, const Values& y, const ScatterOptions& options) {
    Impl& c = *m_Impl;
    c.Begin(Layout::Flat, "Scatter");
    const std::vector<double> xs = c.Take(kX, x, "Scatter", "x");
    const std::vector<double> ys = c.Take(kValue, y, "Scatter", "y", Count(xs));
    Objects objects;
    for (const detail::Part& part : detail::Split(options.by, xs.size(), "Scatter")) {
        std::vector<point3Dtype> points;
        const double layer = c.NextLayer();
        for (const std::size_t i : part.rows)
            points.push_back({xs[i], layer, ys[i], 0});
        const int symbol = Symbol(options.marker, c.series);
        CChartObj3D* symbols = c.NewObject();
        symbols->ScatterChart3D(points.data(), c.SymbolSize(options.size),
                                static_cast<int>(points.size()), symbol, c.NextColor(options.color),
                                c.theme.outline, -1, 0);
        symbols->SetOutlineMode(0);
        c.ColorPoints(symbols, part.rows, options.color_by, options.map, xs.size(), "Scatter");
        c.AddEntry(symbols, part.name.empty() ? options.name : part.name);
        objects.push_back(symbols);
    }
    return objects;
}

Objects Chart::Bars(const Values& x, const Values& y, const BarsOptions& options) {
    Impl& c = *m_Impl;
    c.Begin(Layout::Flat, "Bars");
    const std::vector<double> xs = c.Take(kX, x, "Bars", "x");
    std::vector<double> ys = c.Take(kValue, y, "Bars", "y", Count(xs));
    const double step = detail::SmallestStep(xs);
    const double width = options.width * step;
    CChartObj3D* bars = c.NewObject();
    const RGBDType color = c.NextColor(options.color);
    if (options.from.empty()) {
        bars->BarChart25D(xs.data(), ys.data(), options.base, kBarPlace, Count(xs), width,
                          kBarDepth, color, c.theme.outline, kCentred, kCentred, 0);
    } else {
        std::vector<double> heights = c.Take(kValue, options.from, "Bars", "from", Count(xs));
        for (std::size_t i = 0; i < heights.size(); ++i)
            heights[i] = ys[i] - heights[i];
        bars->FloatingBarChart25D(xs.data(), ys.data(), heights.data(), kBarPlace, Count(xs), width,
                                  kBarDepth, color, c.theme.outline, kCentred, kCentred, 0);
    }
    c.AddEntry(bars, options.name);
    return {bars};
}

namespace {

/// The values of several series, one behind the other.
std::vector<double> TakeSeries(auto& c, const std::vector<Values>& series, int count,
                               const char* call) {
    if (series.empty()) Refuse(call, "there are no series");
    std::vector<double> all;
    for (std::size_t s = 0; s < series.size(); ++s) {
        const std::string argument = varnel::detail::Say("series ", s + 1);
        const std::vector<double> values = c.Take(kValue, series[s], call, argument.c_str(), count);
        all.insert(all.end(), values.begin(), values.end());
    }
    return all;
}

}  // namespace

Objects Chart::Bars(const Values& x, const std::vector<Values>& series,
                    const BarsOptions& options) {
    Impl& c = *m_Impl;
    c.Begin(Layout::Flat, "Bars");
    const std::vector<double> xs = c.Take(kX, x, "Bars", "x");
    const std::vector<double> all = TakeSeries(c, series, Count(xs), "Bars");
    const double step = detail::SmallestStep(xs);
    std::vector<RGBDType> colors;
    LegendEntry entry;
    for (std::size_t s = 0; s < series.size(); ++s) {
        colors.push_back(c.NextColor({}));
        entry.names.push_back(SeriesName(options.names, s, series[s]));
    }
    entry.object = c.NewObject();
    entry.object->GroupBarChart25D(xs.data(), all.data(), kBarPlace, options.base, Count(xs),
                                   static_cast<int>(series.size()), options.stacked,
                                   options.width * step, kBarDepth, colors.data(), c.theme.outline,
                                   kCentred, kCentred, 0);
    c.entries.push_back(entry);
    return {entry.object};
}

Objects Chart::Area(const Values& x, const Values& y, const AreaOptions& options) {
    Impl& c = *m_Impl;
    c.Begin(Layout::Flat, "Area");
    const std::vector<double> xs = c.Take(kX, x, "Area", "x");
    const std::vector<double> ys = c.Take(kValue, y, "Area", "y", Count(xs));
    CChartObj3D* area = c.NewObject();
    const RGBDType color = c.NextColor(options.color);
    if (options.from.empty()) {
        area->AreaFillChart25D(xs.data(), ys.data(), options.base, kBarPlace, Count(xs), kBarDepth,
                               color, color, kCentred, 0);
    } else {
        std::vector<double> heights = c.Take(kValue, options.from, "Area", "from", Count(xs));
        for (std::size_t i = 0; i < heights.size(); ++i)
            heights[i] = ys[i] - heights[i];
        area->AreaRangeChart25D(xs.data(), ys.data(), heights.data(), kBarPlace, Count(xs),
                                kBarDepth, color, color, kCentred, 0);
    }
    area->SetFillGap(0);
    area->SetOutlineMode(0);
    c.AddEntry(area, options.name);
    return {area};
}

Objects Chart::Area(const Values& x, const std::vector<Values>& series,
                    const AreaOptions& options) {
    Impl& c = *m_Impl;
    c.Begin(Layout::Flat, "Area");
    const std::vector<double> xs = c.Take(kX, x, "Area", "x");
    const std::vector<double> all = TakeSeries(c, series, Count(xs), "Area");
    std::vector<RGBDType> colors;
    LegendEntry entry;
    for (std::size_t s = 0; s < series.size(); ++s) {
        colors.push_back(c.NextColor({}));
        entry.names.push_back(SeriesName(options.names, s, series[s]));
    }
    entry.object = c.NewObject();
    entry.object->GroupAreaFillChart25D(xs.data(), all.data(), kBarPlace, Count(xs),
                                        static_cast<int>(series.size()), kBarDepth, colors.data(),
                                        c.theme.outline, kCentred, 0);
    entry.object->SetFillGap(0);
    entry.object->SetOutlineMode(0);
    c.entries.push_back(entry);
    return {entry.object};
}

namespace {

/// The number of bins of Freedman and Diaconis ("On the histogram as a density estimator", 1981),
/// at least that of Sturges ("The choice of a class interval", 1926), at most 200.
int ChooseBins(const std::vector<double>& samples, double range) {
    const auto n = static_cast<double>(samples.size());
    double six[6];
    BoxStatistics(samples.data(), Count(samples), six);
    const double width = 2 * (six[3] - six[1]) / std::cbrt(n);
    const double bins =
        std::max(width > 0 ? std::ceil(range / width) : 1.0, std::ceil(std::log2(n)) + 1);
    return static_cast<int>(std::clamp(bins, 1.0, 200.0));
}

}  // namespace

Objects Chart::Histogram(const Values& samples, const HistogramOptions& options) {
    Impl& c = *m_Impl;
    c.Begin(Layout::Flat, "Histogram");
    if (options.bins < 0) Refuse("Histogram", "bins is ", options.bins);
    std::vector<double> values = c.Take(kX, samples, "Histogram", "samples");
    std::erase_if(values, [](double v) { return !std::isfinite(v); });
    if (values.empty()) Refuse("Histogram", "samples has no finite value");
    const auto [least, most] = std::ranges::minmax(values);
    double low = options.min.value_or(least), high = options.max.value_or(most);
    if (!(high > low)) {
        low -= 0.5;
        high += 0.5;
    }
    const int bins = options.bins > 0 ? options.bins : ChooseBins(values, high - low);
    const double width = (high - low) / bins;
    std::vector<double> middles(static_cast<std::size_t>(bins)), counts = middles;
    for (std::size_t b = 0; b < middles.size(); ++b)
        middles[b] = low + (static_cast<double>(b) + 0.5) * width;
    for (const double value : values)
        if (value >= low && value <= high)
            ++counts[std::min(static_cast<std::size_t>((value - low) / width), counts.size() - 1)];
    c.axes[kValue].kind = DataKind::Numbers;
    if (c.axes[kValue].name.empty()) c.axes[kValue].name = "count";
    CChartObj3D* bars = c.NewObject();
    bars->BarChart25D(middles.data(), counts.data(), 0, kBarPlace, bins, width, kBarDepth,
                      c.NextColor(options.color), c.theme.outline, kCentred, kCentred, 0);
    c.AddEntry(bars, options.name);
    return {bars};
}

Objects Chart::Candles(const Values& x, const Values& open, const Values& high, const Values& low,
                       const Values& close, const CandlesOptions& options) {
    Impl& c = *m_Impl;
    c.Begin(Layout::Flat, "Candles");
    const std::vector<double> xs = c.Take(kX, x, "Candles", "x");
    std::vector<double> prices;
    const std::pair<const char*, const Values*> four[] = {
        {"open", &open}, {"high", &high}, {"low", &low}, {"close", &close}};
    for (const auto& [argument, values] : four) {
        const std::vector<double> part = c.Take(kValue, *values, "Candles", argument, Count(xs));
        prices.insert(prices.end(), part.begin(), part.end());
    }
    const double step = detail::SmallestStep(xs);
    const RGBDType colors[] = {c.theme.text, options.rising, options.falling, c.theme.text,
                               c.theme.text};
    CChartObj3D* candles = c.NewObject();
    candles->SetIndWidth(options.width * step);
    candles->OHLCChart25D(xs.data(), prices.data(), kBarPlace, Count(xs), 0, 0, 0.2, c.Pixels(1),
                          colors, c.theme.outline, kCentred, kCentred, 0, nullptr);
    const int bodies[6] = {1, 0, 0, 0, 0, 1}, tics[6] = {1, 1, 1, 0, 0, 0};
    candles->SetComboChartFlags(options.ohlc ? tics : bodies);
    return {candles};
}

namespace {

/// Shortens the whiskers of a box (minimum, lower quartile, .. as BoxStatistics has them, `step`
/// numbers apart) to the samples near it and returns the others.
std::vector<double> SetOutliersApart(const std::vector<double>& samples, double* box,
                                     std::size_t step) {
    const double lower = box[step], upper = box[3 * step];
    const double reach = 1.5 * (upper - lower);
    std::vector<double> apart;
    double least = lower, most = upper;
    for (const double v : samples) {
        if (v < lower - reach || v > upper + reach)
            apart.push_back(v);
        else if (std::isfinite(v)) {
            least = std::min(least, v);
            most = std::max(most, v);
        }
    }
    box[0] = least;
    box[4 * step] = most;
    return apart;
}

}  // namespace

Objects Chart::Boxes(const Values& by, const Values& samples, const BoxesOptions& options) {
    Impl& c = *m_Impl;
    c.Begin(Layout::Flat, "Boxes");
    const std::vector<double> where = c.Take(kX, by, "Boxes", "by");
    const std::vector<double> values = c.Take(kValue, samples, "Boxes", "samples", Count(where));
    std::vector<double> xs = where;
    std::ranges::sort(xs);
    xs.erase(std::unique(xs.begin(), xs.end()), xs.end());
    const std::size_t n = xs.size();
    std::vector<double> six(6 * n);
    std::vector<point3Dtype> outliers;
    const double layer = c.NextLayer();
    for (std::size_t b = 0; b < n; ++b) {
        std::vector<double> mine;
        for (std::size_t i = 0; i < where.size(); ++i)
            if (where[i] == xs[b]) mine.push_back(values[i]);
        BoxStatistics(mine.data(), Count(mine), &six[b], static_cast<int>(n));
        if (!options.outliers) continue;
        for (const double sample : SetOutliersApart(mine, &six[b], n))
            outliers.push_back({xs[b], layer, sample, 0});
    }
    const double step = detail::SmallestStep(xs);
    const RGBDType fill = c.NextColor(options.color);
    const RGBDType colors[] = {c.theme.text, fill, c.theme.text, fill, c.theme.text, {1, 1, 1, 1}};
    CChartObj3D* boxes = c.NewObject();
    boxes->BoxAndWhiskerChart25D(xs.data(), six.data(), kBarPlace, Count(xs), options.width * step,
                                 kBarDepth, 12, c.SymbolSize(5), c.Pixels(1), colors,
                                 c.theme.outline, kCentred, kCentred, 0, options.mean);
    c.AddEntry(boxes, options.name);
    Objects objects{boxes};
    if (outliers.empty()) return objects;
    objects.push_back(c.NewObject());
    objects[1]->ScatterChart3D(outliers, c.SymbolSize(3.5), SYMBOL_CUBE, fill, c.theme.outline,
                               PROJECTION_NONE, 0);
    return objects;
}

Objects Chart::ErrorBars(const Values& x, const Values& y, const Values& below, const Values& above,
                         const ErrorBarsOptions& options) {
    Impl& c = *m_Impl;
    c.Begin(Layout::Flat, "ErrorBars");
    const std::vector<double> xs = c.Take(kX, x, "ErrorBars", "x");
    const std::vector<double> ys = c.Take(kValue, y, "ErrorBars", "y", Count(xs));
    if (below.size() != xs.size())
        Refuse("ErrorBars", "below has ", below.size(), " values, not ", xs.size());
    if (above.size() != xs.size())
        Refuse("ErrorBars", "above has ", above.size(), " values, not ", xs.size());
    // One line with gaps: the bar, then a cap at either end.
    constexpr double kGap = std::numeric_limits<double>::quiet_NaN();
    const double cap = 0.1 * detail::SmallestStep(xs);
    std::vector<double> lx, ly;
    for (std::size_t i = 0; i < xs.size(); ++i) {
        const double low = ys[i] - below[i], high = ys[i] + above[i];
        for (const double end : {low, high}) {
            lx.insert(lx.end(), {xs[i] - cap, xs[i] + cap, kGap});
            ly.insert(ly.end(), {end, end, kGap});
        }
        lx.insert(lx.end(), {xs[i], xs[i], kGap});
        ly.insert(ly.end(), {low, high, kGap});
    }
    CChartObj3D* bars = c.NewObject();
    bars->LineChart25D(lx.data(), ly.data(), c.NextLayer(), Count(lx), 0, c.Pixels(options.width),
                       options.color.value_or(c.theme.outline), 0);
    return {bars};
}

}  // namespace varnel::plot

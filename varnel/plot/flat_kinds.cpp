// Kinds that are flat: along x and, upwards, y.
#include <algorithm>
#include <cmath>
#include <limits>

#include "varnel/chartobj/box_statistics.h"
#include "varnel/foundation/detail/whole_within.h"
#include "varnel/plot/detail/chart_impl.h"
#include "varnel/render/codes.h"

namespace varnel::plot {

using detail::Refuse;

namespace {

constexpr int kX = 0, kValue = 2;  // axes of the box
constexpr int kCentred = 1;
constexpr double kBarDepth = 0.4, kBarPlace = 0.25;

int Count(const std::vector<double>& values) {
    return static_cast<int>(values.size());
}

std::string SeriesName(const std::vector<std::string>& names, std::size_t i, const Values& values) {
    return i < names.size() ? names[i] : values.Name();
}

}  // namespace

Objects Chart::Line(const Values& x, const Values& y, const LineOptions& options) {
    Impl& c = *m_Impl;
    const auto [xs, ys] = c.TakeFlat(x, y, "Line");
    c.room = std::max(c.room.value_or(0.0), 0.0);
    Objects objects;
    for (const detail::Part& part : detail::Split(options.by, xs.size(), "Line")) {
        const std::vector<double> px = detail::Pick(xs, part.rows);
        CChartObj3D* line = c.NewObject();
        const int marker = detail::FlatMarker(options.marker, c.series);
        const RGBDType color = c.NextColor(options.color);
        line->LineChart25D(px.data(), detail::Pick(ys, part.rows).data(), c.NextLayer(), Count(px),
                           LINE_SOLID, c.Pixels(options.width), color, 0);
        c.SetDash(*line, options.dash, options.width);
        line->SetFillColor(color);
        line->SetMarker(marker, c.scale * options.marker_size);
        c.AddEntry(line, part.name.empty() ? options.name : part.name);
        objects.push_back(line);
    }
    return objects;
}

Objects Chart::Bars(const Values& x, const Values& y, const BarsOptions& options) {
    Impl& c = *m_Impl;
    const auto [xs, ys] = c.TakeFlat(x, y, "Bars");
    const double width = options.width * detail::SmallestStep(xs);
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
    c.AddEdges(bars, xs, width);
    c.ColorPoints(bars, detail::AllRows(xs.size()), options.color_by, options.map, xs.size(),
                  "Bars");
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
    const double width = options.width * detail::SmallestStep(xs);
    std::vector<RGBDType> colors;
    LegendEntry entry;
    for (std::size_t s = 0; s < series.size(); ++s) {
        colors.push_back(c.NextColor({}));
        entry.names.push_back(SeriesName(options.names, s, series[s]));
    }
    entry.object = c.NewObject();
    entry.object->GroupBarChart25D(
        xs.data(), all.data(), kBarPlace, options.base, Count(xs), static_cast<int>(series.size()),
        options.stacked, width, kBarDepth, colors.data(), c.theme.outline, kCentred, kCentred, 0);
    c.AddEdges(entry.object, xs,
               options.stacked ? width : width / static_cast<double>(series.size()));
    c.entries.push_back(entry);
    return {entry.object};
}

Objects Chart::Planes(const Values& x, const Values& y, const PlanesOptions& options) {
    Impl& c = *m_Impl;
    const auto [xs, ys] = c.TakeFlat(x, y, "Planes");
    const double width = options.width * detail::SmallestStep(xs);
    CChartObj3D* const planes = c.NewObject();
    planes->PlaneChart25D(xs, ys, kBarPlace, width, kBarDepth, c.NextColor(options.color),
                          c.theme.outline, kCentred, kCentred, INDAXIS_X);
    c.AddEdges(planes, xs, width);
    c.ColorPoints(planes, detail::AllRows(xs.size()), options.color_by, options.map, xs.size(),
                  "Planes");
    c.AddEntry(planes, options.name);
    return {planes};
}

Objects Chart::Area(const Values& x, const Values& y, const AreaOptions& options) {
    Impl& c = *m_Impl;
    const auto [xs, ys] = c.TakeFlat(x, y, "Area");
    c.touches = true;
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
    c.touches = true;
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
    return varnel::detail::WholeWithin(bins, 1, 200);
}

}  // namespace

Objects Chart::Histogram(const Values& samples, const HistogramOptions& options) {
    Impl& c = *m_Impl;
    c.Begin(Layout::Flat, "Histogram");
    constexpr int kMostBins = 1'000'000;
    if (options.bins < 0 || options.bins > kMostBins) Refuse("Histogram", "bins is ", options.bins);
    std::vector<double> values = c.Take(kX, samples, "Histogram", "samples");
    std::erase_if(values, [](double v) { return !std::isfinite(v); });
    if (values.empty()) Refuse("Histogram", "samples has no finite value");
    const auto [least, most] = std::ranges::minmax(values);
    double low = options.min.value_or(least), high = options.max.value_or(most);
    if (!std::isfinite(high - low))
        Refuse("Histogram", "the samples reach too far: their range is no number");
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
            ++counts[static_cast<std::size_t>(
                varnel::detail::WholeWithin((value - low) / width, 0, bins - 1))];
    c.axes[kValue].kind = DataKind::Numbers;
    if (c.axes[kValue].name.empty()) c.axes[kValue].name = "count";
    CChartObj3D* bars = c.NewObject();
    bars->BarChart25D(middles.data(), counts.data(), 0, kBarPlace, bins, width, kBarDepth,
                      c.NextColor(options.color), c.theme.outline, kCentred, kCentred, 0);
    c.AddEdges(bars, middles, width);
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
    const double width = options.width * detail::SmallestStep(xs);
    c.room = std::max(c.room.value_or(0.0), width / 2);
    const RGBDType colors[] = {c.theme.text, options.rising, options.falling, c.theme.text,
                               c.theme.text};
    CChartObj3D* candles = c.NewObject();
    candles->SetIndWidth(width);
    candles->OHLCChart25D(xs.data(), prices.data(), kBarPlace, Count(xs), 0, 0, 0.2, c.Pixels(1),
                          colors, c.theme.outline, kCentred, kCentred, 0, nullptr);
    const int bodies[6] = {1, 0, 0, 0, 0, 1}, tics[6] = {1, 1, 1, 0, 0, 0};
    candles->SetComboChartFlags(options.ohlc ? tics : bodies);
    candles->SetCandleStyle(1);
    candles->SetOutlineMode(0);
    // Lines in the colours of their bodies.
    std::vector<RGBDType> days;
    for (std::size_t i = 0; i < xs.size(); ++i)
        days.push_back(close[i] < open[i] ? options.falling : options.rising);
    candles->InitSegmentColorsStorage(days.data());
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

namespace {

/// Boxes, as groups of their six numbers, and what lies beyond their whiskers. Means are flat, as
/// the boxes are.
Objects AddBoxes(auto& c, const std::vector<double>& xs, const std::vector<double>& six,
                 const std::vector<point3Dtype>& outliers, const BoxesOptions& options) {
    const double step = detail::SmallestStep(xs);
    const RGBDType fill = c.NextColor(options.color), line = c.theme.text;
    const RGBDType colors[] = {line, fill, line, fill, line, {1, 1, 1, 1}};
    CChartObj3D* boxes = c.NewObject();
    boxes->BoxAndWhiskerChart25D(xs, six, kBarPlace, options.width * step, kBarDepth, SYMBOL_NONE,
                                 0, c.Pixels(1), colors, line, kCentred, kCentred, INDAXIS_X, 0);
    boxes->SetOutlineWidth(c.Pixels(1));
    boxes->SetMedianWidth(c.Pixels(2.25));
    c.AddEntry(boxes, options.name);
    Objects objects{boxes};
    const auto mark = [&](const std::vector<point3Dtype>& points, int marker, double size,
                          const RGBDType& color) {
        if (points.empty()) return;
        objects.push_back(c.NewObject());
        objects.back()->ScatterChart3D(points, 0, SYMBOL_NONE, color, line, PROJECTION_NONE, 0);
        objects.back()->SetMarker(marker, size * c.scale);
        objects.back()->SetOutlineWidth(c.Pixels(0.75));
    };
    mark(outliers, MARKER_CIRCLE, 4.0, fill);
    if (options.mean)
        mark(c.InLayer(xs, {six.end() - static_cast<std::ptrdiff_t>(xs.size()), six.end()}),
             MARKER_DIAMOND, 5.5, colors[5]);
    return objects;
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
    return AddBoxes(c, xs, six, outliers, options);
}

Objects Chart::Boxes(const Values& x, const Quartiles& boxes, const BoxesOptions& options) {
    Impl& c = *m_Impl;
    c.Begin(Layout::Flat, "Boxes");
    const std::vector<double> xs = c.Take(kX, x, "Boxes", "x");
    std::vector<double> six;
    const std::pair<const char*, const Values*> five[] = {{"least", &boxes.least},
                                                          {"lower", &boxes.lower},
                                                          {"median", &boxes.median},
                                                          {"upper", &boxes.upper},
                                                          {"most", &boxes.most}};
    for (const auto& [argument, values] : five) {
        const std::vector<double> part = c.Take(kValue, *values, "Boxes", argument, Count(xs));
        six.insert(six.end(), part.begin(), part.end());
    }
    BoxesOptions all = options;
    all.mean = options.mean && !boxes.mean.empty();
    if (all.mean) {
        const std::vector<double> means = c.Take(kValue, boxes.mean, "Boxes", "mean", Count(xs));
        six.insert(six.end(), means.begin(), means.end());
    }
    six.resize(6 * xs.size(), std::numeric_limits<double>::quiet_NaN());
    return AddBoxes(c, xs, six, {}, all);
}

Objects Chart::ErrorBars(const Values& x, const Values& y, const Values& below, const Values& above,
                         const ErrorBarsOptions& options) {
    Impl& c = *m_Impl;
    const auto [xs, ys] = c.TakeFlat(x, y, "ErrorBars");
    if (below.size() != xs.size())
        Refuse("ErrorBars", "below has ", below.size(), " values, not ", xs.size());
    if (above.size() != xs.size())
        Refuse("ErrorBars", "above has ", above.size(), " values, not ", xs.size());
    const std::vector<point3Dtype> points = c.InLayer(xs, ys);
    CChartObj3D* bars = c.NewObject();
    bars->ErrorBars3D(points, below.Numbers(), above.Numbers(), kValue, c.SymbolSize(6), 0,
                      c.Pixels(options.width), options.color.value_or(c.theme.axis));
    return {bars};
}

}  // namespace varnel::plot

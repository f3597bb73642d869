// Legends that take their samples from what they stand for, and their places: grouped bars and
// stacked areas, the parts of candlesticks, the symbols of scatter charts and contour lines.
#include "examples/support/example.h"

using namespace varnel;

namespace {

const Theme kTheme;

CLegend3D& AddLegend(example::Picture& picture, int place, const std::string& title = {}) {
    CLegend3D& legend = *picture.View().NewLegend3D(place);
    legend.SetLegendTitle(title);
    return legend;
}

CChartObj3D& NewObject(example::Picture& picture) {
    CChart3D& chart = *picture.View().NewChart3D();
    return *chart.NewChartObj(chart.NewTransform());
}

void Finish(example::Picture& picture, const FrameOptions& options, const std::string& name) {
    CChart3D& chart = *picture.View().GetChart(0);
    chart.AutoFrame(chart.GetTransform(0), options);
    picture.Save(name);
}

void DrawGroups(example::Picture& picture, CChartObj3D& groups, bool stacked) {
    const example::Table table = picture.Read("iowa_electricity.csv");
    const std::vector<double> years = table.Numbers("year");
    const std::vector<double> terawattHours = table.Numbers(
        {"nuclear_energy_gwh", "fossil_fuels_gwh", "renewables_gwh"}, 0.001);  // source by source
    const auto colors = std::span(kTheme.palette).first(3);
    const CString names[] = {"nuclear", "fossil", "renewable"};
    if (stacked) {
        groups.GroupAreaFillChart25D(years, terawattHours, 0, 1, colors, kTheme.outline,
                                     WIDTH_CENTERED, INDAXIS_X);
        groups.SetSegmentOutlines(0);
        AddLegend(picture, LEGEND_OUTSIDE_TOP).AddGroups(&groups, names);
    } else {
        groups.GroupBarChart25D(years, terawattHours, 0, 0, GROUPS_SIDE_BY_SIDE, 0.8, 1, colors,
                                kTheme.outline, WIDTH_CENTERED, WIDTH_CENTERED, INDAXIS_X);
        AddLegend(picture, LEGEND_OUTSIDE_RIGHT, "source").AddGroups(&groups, names);
    }
    Finish(picture,
           {.axes = {AxisFrame{}, AxisFrame{}, AxisFrame{.title = "TWh"}},
            .title = "Iowa's electricity"},
           stacked ? "legends_stacked" : "legends_grouped");
}

void DrawPrices(example::Picture& picture, CChartObj3D& candles) {
    const example::Table table = picture.Read("vix_ohlc.csv");
    const std::vector<double> prices = table.Numbers({"open", "high", "low", "close"});
    const RGBDType line = kTheme.outline;
    const RGBDType colors[] = {line, kTheme.SeriesColor(0), kTheme.SeriesColor(2), line, line};
    candles.SetIndWidth(0.7);
    candles.OHLCChart25D(table.Days("date"), prices, 0, SYMBOL_NONE, SYMBOL_NONE, 0.2,
                         picture.Pixels(2), colors, line, WIDTH_CENTERED, WIDTH_CENTERED, INDAXIS_X,
                         nullptr);
    const int parts[6] = {1, 0, 0, 0, 0, 1};  // the line from low to high, and the body
    candles.SetComboChartFlags(parts);
    candles.SetCandleStyle(1);
    CLegend3D& legend = AddLegend(picture, LEGEND_LEAST_DATA);
    legend.AddChartObj(&candles, "low to high");
    const CString names[] = {"", "rose", "fell", ""};
    legend.AddGroups(&candles, names);
    Finish(picture,
           {.axes = {AxisFrame{.dates = true}, AxisFrame{}, AxisFrame{.title = "points"}},
            .title = "Volatility index"},
           "legends_stock");
}

void DrawSymbols(example::Picture& picture, CChart3D& chart) {
    const example::Table table = picture.Read("penguins.csv");
    ApplyTheme(chart, kTheme);  // the light of the symbols in the legend, too
    CTransform3D* transform = chart.NewTransform();
    CLegend3D& legend = AddLegend(picture, LEGEND_OUTSIDE_BOTTOM);
    const char* names[] = {"Adelie", "Chinstrap", "Gentoo"};
    const int solids[] = {SYMBOL_CUBE, SYMBOL_PYRAMID, SYMBOL_DIAMOND};
    for (int s = 0; s < 3; ++s) {
        const std::vector<point3Dtype> points =
            table.Points("bill_length_mm", "bill_depth_mm", "body_mass_g", "species", names[s]);
        CChartObj3D* symbols = chart.NewChartObj(transform);
        symbols->ScatterChart3D(points, 0.3, solids[s], kTheme.SeriesColor(s), kTheme.outline,
                                PROJECTION_NONE, 0);
        legend.AddChartObj(symbols, names[s]);
    }
    Finish(picture,
           {.axes = {AxisFrame{.title = "length, mm"}, AxisFrame{.title = "depth, mm"},
                     AxisFrame{.title = "mass, g"}},
            .title = "Penguins' bills"},
           "legends_scatter");
}

void DrawContours(example::Picture& picture, CChartObj3D& contours) {
    CPolysurface surface = picture.ReadVolcano();
    const double levels[] = {105, 120, 135, 150, 165, 180};
    contours.ContourPolysurface3D(&surface, levels, std::span(kTheme.palette).first(7), 0, 0);
    contours.SetContourStyle({.lineWidth = 2});
    AddLegend(picture, LEGEND_OUTSIDE_RIGHT, "height, m").SetContours(&contours, 0);
    Finish(picture,
           {.axes = {AxisFrame{.title = "east, m"}, AxisFrame{.title = "north, m"},
                     AxisFrame{.show = false}},
            .title = "Maunga Whau, Auckland",
            .azimuth = -90,
            .elevation = 90,
            .asData = true},
           "legends_contour");
}

}  // namespace

void example::Draw(Picture& picture) {
    DrawGroups(picture, NewObject(picture), false);
    DrawGroups(picture, NewObject(picture), true);
    DrawPrices(picture, NewObject(picture));
    DrawSymbols(picture, *picture.View().NewChart3D());
    DrawContours(picture, NewObject(picture));
}

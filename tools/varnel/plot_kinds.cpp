#include "tools/varnel/plot_command.h"

#include <algorithm>

#include "varnel/foundation/error.h"
#include "varnel/plot.h"

namespace tool {

using namespace varnel::plot;

namespace {

[[noreturn]] void Missing(const char* option) {
    throw std::runtime_error(std::string("This kind needs ") + option + ".");
}

/// The x values: a column, or the numbers of the rows where none is named.
Values XOf(const Table& table, const PlotOptions& options) {
    if (!options.x.empty()) return table.Column(options.x);
    std::vector<double> rows(table.NumRows());
    for (std::size_t i = 0; i < rows.size(); ++i)
        rows[i] = static_cast<double>(i + 1);
    return Values(std::move(rows)).SetName("row");
}

/// The columns of -y; without it all columns of numbers but that of -x.
std::vector<Values> YOf(const Table& table, const PlotOptions& options) {
    std::vector<Values> columns;
    for (const std::string& column : options.y)
        columns.push_back(table[column]);
    if (!columns.empty()) return columns;
    for (const std::string& name : table.Names())
        if (name != options.x && name != options.by && table.Kind(name) == DataKind::Numbers)
            columns.push_back(table[name]);
    if (columns.empty()) Missing("-y, a column of numbers");
    return columns;
}

Values Named(const Table& table, const std::string& column, const char* option) {
    if (column.empty()) Missing(option);
    return table.Column(column);
}

Values ByOf(const Table& table, const PlotOptions& options) {
    return options.by.empty() ? Values() : Values::Names(table.Text(options.by));
}

/// Bars belong to names: years and other whole numbers are labelled one by one where they are few.
Values AsNames(const Table& table, const PlotOptions& options) {
    if (options.x.empty()) return XOf(table, options);
    const Values x = table.Column(options.x);
    constexpr std::size_t kMost = 30;
    if (x.Kind() != DataKind::Numbers || x.size() > kMost) return x;
    return Values::Names(table.Text(options.x)).SetName(x.Name());
}

Values ColorsOf(const Table& table, const PlotOptions& options) {
    return options.colorBy.empty() ? Values() : table[options.colorBy];
}

Marker MarkerOf(const std::string& name) {
    const auto at = std::ranges::find(MarkerNames(), name);
    return static_cast<Marker>(at - MarkerNames().begin());
}

void DrawLine(Figure& figure, const Table& table, const PlotOptions& options) {
    const Values x = XOf(table, options);
    const std::vector<Values> series = YOf(table, options);
    for (const Values& y : series)
        figure.Line(x, y,
                    {.name = series.size() > 1 ? y.Name() : "",
                     .width = options.lineWidth,
                     .by = ByOf(table, options),
                     .marker = options.marker == "auto" ? Marker::None : MarkerOf(options.marker),
                     .marker_size = options.symbolSize});
}

void DrawScatter(Figure& figure, const Table& table, const PlotOptions& options) {
    const Values x = XOf(table, options);
    const std::vector<Values> series = YOf(table, options);
    const Values by = ByOf(table, options);
    if (!options.z.empty()) {
        figure.Scatter3D(x, series[0], table[options.z],
                         {.size = options.symbolSize,
                          .marker = MarkerOf(options.marker),
                          .by = by,
                          .color_by = ColorsOf(table, options),
                          .map = options.map});
        return;
    }
    for (const Values& y : series)
        figure.Scatter(x, y,
                       {.name = series.size() > 1 ? y.Name() : "",
                        .size = options.symbolSize,
                        .marker = MarkerOf(options.marker),
                        .by = by,
                        .color_by = ColorsOf(table, options),
                        .map = options.map});
}

void DrawBars(Figure& figure, const Table& table, const PlotOptions& options) {
    const Values x = AsNames(table, options);
    if (!options.z.empty()) {
        if (options.y.empty()) Missing("-y, the second column of places");
        figure.Bars3D(x, table.Column(options.y[0]), table[options.z],
                      {.color_by = ColorsOf(table, options), .map = options.map});
        return;
    }
    const std::vector<Values> series = YOf(table, options);
    if (series.size() > 1)
        figure.Bars(x, series, {.names = options.names, .stacked = options.stack});
    else
        figure.Bars(x, series[0],
                    {.from = options.from.empty() ? Values() : table[options.from],
                     .color_by = ColorsOf(table, options),
                     .map = options.map});
}

void DrawHistogram(Figure& figure, const Table& table, const PlotOptions& options) {
    if (!options.y.empty())
        figure.Histogram(Named(table, options.x, "-x, a column of numbers"), table[options.y[0]],
                         {.bins = options.bins});
    else
        figure.Histogram(Named(table, options.x, "-x, a column of numbers"),
                         {.bins = options.bins});
}

void DrawArea(Figure& figure, const Table& table, const PlotOptions& options) {
    const Values x = XOf(table, options);
    const std::vector<Values> series = YOf(table, options);
    if (series.size() > 1)
        figure.Area(x, series, {.names = options.names});
    else
        figure.Area(x, series[0], {.from = options.from.empty() ? Values() : table[options.from]});
}

void DrawCandles(Figure& figure, const Table& table, const PlotOptions& options) {
    std::vector<std::string> four = options.ohlc;
    if (four.empty()) four = {"open", "high", "low", "close"};
    if (four.size() != 4) Missing("four columns for --ohlc: open,high,low,close");
    figure.Candles(XOf(table, options), table[four[0]], table[four[1]], table[four[2]],
                   table[four[3]], {.ohlc = options.bars});
}

void DrawPlanes(Figure& figure, const Table& table, const PlotOptions& options) {
    const Values x = AsNames(table, options), colors = ColorsOf(table, options);
    if (options.z.empty())
        figure.Planes(x, YOf(table, options)[0], {.color_by = colors, .map = options.map});
    else
        figure.Planes3D(x, Named(table, options.y.empty() ? "" : options.y[0], "-y, a column"),
                        table[options.z], {.color_by = colors, .map = options.map});
}

void DrawText(Figure& figure, const Table& table, const PlotOptions& options) {
    const Values x = XOf(table, options), y = YOf(table, options)[0];
    if (options.text.empty()) Missing("--text, the column of texts");
    if (options.z.empty())
        figure.Text(x, y, table.Text(options.text));
    else
        figure.Text3D(x, y, table[options.z], table.Text(options.text));
}

/// A component of arrows; 0 without a column.
Values Component(const Table& table, const std::string& column) {
    if (column.empty()) return std::vector<double>(table.NumRows(), 0.0);
    return table[column];
}

void DrawArrows(Figure& figure, const Table& table, const PlotOptions& options) {
    if (options.dx.empty() && options.dy.empty() && options.dz.empty())
        Missing("--dx or --dy, how far arrows reach");
    const Values x = XOf(table, options), y = YOf(table, options)[0];
    const Values dx = Component(table, options.dx), dy = Component(table, options.dy);
    const LineOptions line{.width = options.lineWidth};
    if (options.z.empty())
        figure.Arrows(x, y, dx, dy, line);
    else
        figure.Arrows3D(x, y, table[options.z], dx, dy, Component(table, options.dz), line);
}

void DrawBoxes(Figure& figure, const Table& table, const PlotOptions& options) {
    if (!options.box.empty()) {
        const std::vector<std::string>& box = options.box;
        if (box.size() != 5 && box.size() != 6)
            Missing("five or six columns for --box: least,lower,median,upper,most,mean");
        figure.Boxes(AsNames(table, options),
                     Quartiles{.least = table[box[0]],
                               .lower = table[box[1]],
                               .median = table[box[2]],
                               .upper = table[box[3]],
                               .most = table[box[4]],
                               .mean = box.size() > 5 ? table[box[5]] : Values()});
        return;
    }
    const std::vector<Values> series = YOf(table, options);
    figure.Boxes(Values::Names(table.Text(options.x.empty() ? options.by : options.x)), series[0]);
}

void DrawRibbons(Figure& figure, const Table& table, const PlotOptions& options) {
    figure.Ribbons(XOf(table, options), YOf(table, options), {.names = options.names});
}

void DrawErrorBars(Figure& figure, const Table& table, const PlotOptions& options) {
    const Values x = XOf(table, options), y = YOf(table, options)[0];
    if (options.errors.empty() || options.errors.size() > 2)
        Missing("--errors, the column of errors, or two: below,above");
    const Values below = table[options.errors.front()], above = table[options.errors.back()];
    figure.Scatter(x, y);
    figure.ErrorBars(x, y, below, above);
}

void DrawLine3D(Figure& figure, const Table& table, const PlotOptions& options) {
    figure.Line3D(XOf(table, options), YOf(table, options)[0],
                  Named(table, options.z, "-z, a column of numbers"),
                  {.width = options.lineWidth, .by = ByOf(table, options)});
}

void DrawSurface(Figure& figure, const Table& table, const PlotOptions& options) {
    const SurfaceOptions surface{
        .map = options.map, .color_by = ColorsOf(table, options), .wire = options.wire};
    if (options.z.empty())
        figure.Surface(table, surface);
    else
        figure.Surface(XOf(table, options), YOf(table, options)[0], table[options.z], surface);
}

void DrawContours(Figure& figure, const Table& table, const PlotOptions& options) {
    figure.Contours(table,
                    {.map = options.map, .levels = options.levels, .filled = options.filled});
}

void DrawHeatMap(Figure& figure, const Table& table, const PlotOptions& options) {
    figure.HeatMap(table, {.map = options.map});
}

}  // namespace

const std::vector<std::string>& MarkerNames() {
    // In the order of Marker.
    static const std::vector<std::string> names = {
        "auto", "none", "circle", "square",  "triangle",  "diamond", "cross",
        "plus", "star", "cube",   "pyramid", "hourglass", "arrow"};
    return names;
}

const std::vector<PlotKind>& PlotKinds() {
    static const std::vector<PlotKind> kinds = {
        {"line", "Lines of one or several columns over another one",
         "line examples/data/co2_mauna_loa.csv -x date -y co2_ppm -o co2.png", DrawLine},
        {"scatter", "Symbols; with -z in space, with --by one colour for each name",
         "scatter examples/data/penguins.csv -x bill_length_mm -y flipper_length_mm "
         "-z body_mass_g --by species -o penguins.png",
         DrawScatter},
        {"bars", "Bars of one or several columns; with -z in space over two columns",
         "bars examples/data/iowa_electricity.csv -x year "
         "-y fossil_fuels_gwh,nuclear_energy_gwh,renewables_gwh --stack -o iowa.png",
         DrawBars},
        {"histogram", "How often the values of a column occur; with -y those of two, in space",
         "histogram examples/data/seattle_weather.csv -x temp_max_c -o warm.png", DrawHistogram},
        {"area", "Filled areas, several of them stacked; with --from a range",
         "area examples/data/seattle_weather.csv -x date -y temp_max_c --from temp_min_c "
         "-o range.png",
         DrawArea},
        {"candles", "Open, high, low and close of each day",
         "candles examples/data/vix_ohlc.csv -x date --ohlc open,high,low,close -o vix.png",
         DrawCandles},
        {"boxes", "Quartiles, whiskers and outliers of all rows with the same x, or as --box says",
         "boxes examples/data/seattle_weather.csv -x date:month -y temp_max_c -o months.png",
         DrawBoxes},
        {"errorbars", "Symbols with bars from y - below to y + above",
         "errorbars examples/data/seattle_weather.csv -x date:month -y temp_max_c --group mean "
         "--errors wind_m_s -o errors.png",
         DrawErrorBars},
        {"planes", "Level slabs at the heights of a column; with -z in space over two columns",
         "planes examples/data/seattle_weather.csv -x date:month -y temp_max_c --group mean "
         "-o means.png",
         DrawPlanes},
        {"text", "The texts of a column at points; with -z in space",
         "text examples/data/earthquakes_week.csv -x longitude_deg -y latitude_deg "
         "--text magnitude --where \"magnitude>=5.5\" -o quakes.png",
         DrawText},
        {"arrows", "Arrows from points by --dx and --dy; with -z and --dz in space",
         "arrows examples/data/seattle_weather.csv -x date -y temp_min_c --dy wind_m_s --limit 30 "
         "-o wind.png",
         DrawArrows},
        {"ribbons", "Series as ribbons one behind the other",
         "ribbons examples/data/iowa_electricity.csv -x year -y 2,3,4 "
         "--names fossil,nuclear,renewable -o ribbons.png",
         DrawRibbons},
        {"line3d", "A line in space",
         "line3d examples/data/earthquakes_week.csv -x 1 -y 2 -z 3 --limit 100 -o path.png",
         DrawLine3D},
        {"surface", "A surface of a matrix, or of x, y and z columns",
         "surface examples/data/volcano.csv -o hill.png", DrawSurface},
        {"contours", "Lines of equal value of a matrix",
         "contours examples/data/volcano.csv --filled -o lines.png", DrawContours},
        {"heatmap", "A matrix in colours", "heatmap examples/data/volcano.csv -o map.png",
         DrawHeatMap},
    };
    return kinds;
}

}  // namespace tool

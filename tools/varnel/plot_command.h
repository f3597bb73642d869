// varnel plot: charts from a CSV file in one command.
//
// The kinds stand in one table: what each is called, needs, draws, and an example of it that works
// with the files in examples/data.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tools/varnel/commands.h"

namespace varnel::plot {
class Figure;
class Table;
}  // namespace varnel::plot

namespace tool {

struct PlotOptions {
    std::string file;  ///< "-": standard input
    std::string x;
    std::vector<std::string> y;
    std::string z;
    std::string by;
    std::string colorBy;
    std::string from;
    std::vector<std::string> ohlc;
    std::vector<std::string> errors;
    std::vector<std::string> box;  ///< least, lower, median, upper, most and perhaps mean
    std::string text;
    std::string dx, dy, dz;
    std::vector<std::string> names;
    bool stack = false, filled = false, wire = false, bars = false;
    int bins = 0;
    std::string map = "viridis";
    std::string marker = "auto";
    double symbolSize = 6.0, lineWidth = 1.5;  ///< in points
    std::vector<double> levels;
    // Across the chart, at values or dates.
    std::vector<std::string> lineX, lineY, bandX, bandY;
    // The table.
    std::string delimiter, decimal, header = "detect", comment, dateFormat;
    int skip = 0;
    std::vector<std::string> where;
    std::string sort, group;
    std::size_t limit = 0;
    // The figure.
    std::string title, subtitle, footer, xTitle, yTitle, zTitle;
    std::string log;  ///< some of "xyz"
    PictureSize size{1200, 800};
    bool textPaths = false;  ///< letters of PDF and SVG files are areas
    double dpi = 0, depth = 0;
    int samples = 4;
    std::optional<std::pair<double, double>> rotate;
    std::string theme = "light";
    std::string legend = "auto";
    std::string output;     ///< "-": a PNG on standard output; empty: a window
    std::string chartFile;  ///< the view, saved as well
    bool show = false;      ///< in a window, too
};

struct PlotKind {
    const char* name;
    const char* what;     ///< in a line
    const char* example;  ///< what stands behind "varnel plot "
    void (*draw)(varnel::plot::Figure& figure, const varnel::plot::Table& table,
                 const PlotOptions& options);
};

/// What --marker takes.
const std::vector<std::string>& MarkerNames();

/// All kinds.
const std::vector<PlotKind>& PlotKinds();

/// Lists the kinds, a line and an example each.
int ListPlotKinds();

/// Reads the table and draws a figure of it.
int Plot(const PlotKind& kind, const PlotOptions& options);

}  // namespace tool

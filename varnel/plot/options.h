// The options of figures and of the kinds of charts: aggregates for designated initialisers, as in
// figure.Line(x, y, {.name = "warmest", .width = 2}). Lengths named "width" or "size" of lines and
// symbols are in points (1/72 inch at the figure's dpi). What is left out follows from the data and
// the palette.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "varnel/foundation/colors.h"
#include "varnel/plot/data.h"
#include "varnel/theme/theme.h"

namespace varnel::plot {

/// In pixels.
struct Size {
    int width = 1200;
    int height = 800;
};

/// Where the names of series and the colours of values are told. Auto: names of flat charts in the
/// chart where they hide no data, if there is room; everything else on the right. Inside: in the
/// chart as well, names and colours, where fewest data are.
enum class Legend { Auto, Right, Top, Bottom, Inside, None };

struct FigureOptions {
    std::string title{};
    std::string subtitle{};
    std::string footer{};
    Size size{};
    double dpi = 0.0;  ///< pixels an inch; 0: those at which labels are 11 points high
    int samples = 4;   ///< a pixel, for smooth edges; 0: exact pixels
    Theme theme = Theme::Light();
    Legend legend = Legend::Auto;
    /// Of flat charts, as a share of their width: they are seen a little from the side and above
    /// then, unless Rotate says from where. 0: they are seen straight from the front.
    double depth = 0.0;
};

struct AxisOptions {
    std::string title{};
    std::optional<double> min{};
    std::optional<double> max{};
    bool log = false;
};

enum class Dash { Solid, Dashed, Dotted };
/// Circle to Star are flat and face the viewer, Cube to Arrow are solids; in charts in space
/// Diamond and Plus are solids as well. Auto: another one for each series.
enum class Marker {
    Auto,
    None,
    Circle,
    Square,
    Triangle,
    Diamond,
    Cross,
    Plus,
    Star,
    Cube,
    Pyramid,
    Hourglass,
    Arrow
};

struct LineOptions {
    std::string name{};
    std::optional<RGBDType> color{};
    double width = 1.5;
    Dash dash = Dash::Solid;
    Values by{};                   ///< one line for each of these names
    Marker marker = Marker::None;  ///< at each point; solids are none
    double marker_size = 5.0;
};

struct ScatterOptions {
    std::string name{};
    std::optional<RGBDType> color{};
    double size = 6.0;
    Marker marker = Marker::Auto;
    Values by{};        ///< one colour and symbol for each of these names
    Values color_by{};  ///< colours by value, with a colour bar
    std::string map = "viridis";
};

struct BarsOptions {
    std::string name{};
    std::optional<RGBDType> color{};
    std::vector<std::string> names{};  ///< of several series; their columns' names otherwise
    bool stacked = false;              ///< several series above each other, not side by side
    double base = 0.0;                 ///< where bars stand
    Values from{};                     ///< where each bar stands: floating bars
    double width = 0.8;                ///< of the distance between bars
    Values color_by{};                 ///< one series in colours by value, with a colour bar
    std::string map = "viridis";
};

struct PlanesOptions {
    std::string name{};
    std::optional<RGBDType> color{};
    double width = 0.8;  ///< of the distance between planes
    Values color_by{};   ///< colours by value, with a colour bar
    std::string map = "viridis";
};

struct HistogramOptions {
    std::string name{};
    std::optional<RGBDType> color{};
    /// Along an axis, at most a million, 1000 for two axes; 0: by the rule of Freedman and
    /// Diaconis, at least as many as Sturges' rule.
    int bins = 0;
    std::optional<double> min{};
    std::optional<double> max{};
};

struct AreaOptions {
    std::string name{};
    std::optional<RGBDType> color{};
    std::vector<std::string> names{};
    double base = 0.0;
    Values from{};  ///< the lower edge of a range
};

struct CandlesOptions {
    RGBDType rising{0.30, 0.63, 0.29, 1.0};
    RGBDType falling{0.82, 0.20, 0.22, 1.0};
    bool ohlc = false;   ///< tics to the left and right in place of bodies
    double width = 0.7;  ///< of the distance between days
};

struct BoxesOptions {
    std::string name{};
    std::optional<RGBDType> color{};
    double width = 0.6;
    bool mean = true;
    /// Samples farther from the box than 1.5 times its height, drawn one by one; whiskers end at
    /// the others (Tukey, "Exploratory data analysis", 1977). Off: they reach the extremes.
    bool outliers = true;
};

/// Boxes whose statistics are known: extremes (or where whiskers end), quartiles and median of
/// each; means where there are any.
struct Quartiles {
    Values least{};
    Values lower{};
    Values median{};
    Values upper{};
    Values most{};
    Values mean{};
};

struct BandOptions {
    std::string name{};
    std::optional<RGBDType> color{};
};

struct TextOptions {
    std::optional<RGBDType> color{};
    double size = 11.0;
};

struct ErrorBarsOptions {
    std::optional<RGBDType> color{};
    double width = 1.0;
};

struct SurfaceOptions {
    std::string name{};
    std::string map = "viridis";
    std::optional<RGBDType> color{};  ///< one colour, lit, in place of the map
    Values color_by{};                ///< colours by these, one for each point, not by height
    bool wire = false;
    bool lines = false;  ///< the edges of its polygons too
    bool color_bar = true;
};

struct ContourOptions {
    std::string map = "viridis";
    int count = 10;       ///< of levels, at round values, about
    Values levels{};      ///< the levels themselves
    bool filled = false;  ///< bands between the levels, with a colour bar
    /// Levels written into the lines; without, the legend tells them. Left out: lines have them,
    /// bands their colour bar.
    std::optional<bool> labels{};
};

}  // namespace varnel::plot

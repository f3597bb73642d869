// Figure: a picture of one chart or several, each made with one call a data set.
//
//     Figure figure({.title = "Seattle"});
//     figure.Line(weather.Dates("date"), weather["temp_max_c"], {.name = "warmest"});
//     figure.y({.title = "°C"});
//     figure.Save("seattle.png");
//
// A chart is flat (x to the right, y up: lines, bars, ...), or it is spatial (kinds whose name ends
// in 3D, surfaces), or a map (contours, heat maps: x to the right, y up, values as colours); the
// first kind drawn into it decides, others are an error. Names make the legend. Titles of axes are
// the names of the columns unless they are given. Every kind copies its data and returns the
// objects below it, which the figure owns; what is automatic is chosen when the figure is drawn.
//
// Wrong arguments raise "Parameter Error" with a sentence that names call, argument and value.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "varnel/foundation/export.h"
#include "varnel/plot/data.h"
#include "varnel/plot/options.h"
#include "varnel/plot/table.h"

namespace varnel {
class CChart3D;
class CChartObj3D;
class CChartView3D;
}  // namespace varnel

namespace varnel::plot {

using Objects = std::vector<CChartObj3D*>;

/// z values over a grid: row by row, each row with all columns; rows run along y. Without x and y
/// the columns and rows are counted from 0.
struct Grid {
    Values z{};
    int rows = 0;
    int columns = 0;
    Values x{};
    Values y{};
};

class VARNEL_API Chart {
 public:
    ~Chart();
    Chart(const Chart&) = delete;
    Chart& operator=(const Chart&) = delete;

    // --- Flat kinds --------------------------------------------------------------------------

    Objects Line(const Values& x, const Values& y, const LineOptions& options = {});
    Objects Scatter(const Values& x, const Values& y, const ScatterOptions& options = {});
    Objects Bars(const Values& x, const Values& y, const BarsOptions& options = {});
    /// Several series over the same x, side by side or stacked.
    Objects Bars(const Values& x, const std::vector<Values>& series,
                 const BarsOptions& options = {});
    Objects Histogram(const Values& samples, const HistogramOptions& options = {});
    Objects Area(const Values& x, const Values& y, const AreaOptions& options = {});
    /// Stacked.
    Objects Area(const Values& x, const std::vector<Values>& series,
                 const AreaOptions& options = {});
    Objects Candles(const Values& x, const Values& open, const Values& high, const Values& low,
                    const Values& close, const CandlesOptions& options = {});
    /// A box for each of the names (or numbers) `by`, from all samples that have it.
    Objects Boxes(const Values& by, const Values& samples, const BoxesOptions& options = {});
    /// A box at each x from its statistics.
    Objects Boxes(const Values& x, const Quartiles& boxes, const BoxesOptions& options = {});
    /// A level slab at each x, at the height y.
    Objects Planes(const Values& x, const Values& y, const PlanesOptions& options = {});
    /// From y - below to y + above.
    Objects ErrorBars(const Values& x, const Values& y, const Values& below, const Values& above,
                      const ErrorBarsOptions& options = {});

    /// A text centred on each point.
    Objects Text(const Values& x, const Values& y, const std::vector<std::string>& texts,
                 const TextOptions& options = {});
    /// From each point by (dx, dy), in units of the axes.
    Objects Arrows(const Values& x, const Values& y, const Values& dx, const Values& dy,
                   const LineOptions& options = {});
    /// Lines and bands across the whole chart, behind the data, at values of x or y. They are seen
    /// as far as the axes reach.
    Objects LineAtX(double x, const LineOptions& options = {});
    Objects LineAtY(double y, const LineOptions& options = {});
    Objects BandAtX(double from, double to, const BandOptions& options = {});
    Objects BandAtY(double from, double to, const BandOptions& options = {});

    // --- Spatial kinds -----------------------------------------------------------------------

    Objects Line3D(const Values& x, const Values& y, const Values& z,
                   const LineOptions& options = {});
    Objects Scatter3D(const Values& x, const Values& y, const Values& z,
                      const ScatterOptions& options = {});
    /// A bar at each (x, y), from the base to z.
    Objects Bars3D(const Values& x, const Values& y, const Values& z,
                   const BarsOptions& options = {});
    /// A level slab around each (x, y), at the height z.
    Objects Planes3D(const Values& x, const Values& y, const Values& z,
                     const PlanesOptions& options = {});
    /// How often pairs of samples occur, as bars over a grid of bins.
    Objects Histogram(const Values& x, const Values& y, const HistogramOptions& options = {});
    /// Several series, each a ribbon at a place of its own along y.
    Objects Ribbons(const Values& x, const std::vector<Values>& series,
                    const AreaOptions& options = {});
    Objects Text3D(const Values& x, const Values& y, const Values& z,
                   const std::vector<std::string>& texts, const TextOptions& options = {});
    Objects Arrows3D(const Values& x, const Values& y, const Values& z, const Values& dx,
                     const Values& dy, const Values& dz, const LineOptions& options = {});
    Objects Surface(const Grid& grid, const SurfaceOptions& options = {});
    /// A mesh of triangles: three numbers of points, from 0 on, for each.
    Objects Surface(const Values& x, const Values& y, const Values& z,
                    const std::vector<int>& corners, const SurfaceOptions& options = {});
    /// A table that is a matrix.
    Objects Surface(const Table& matrix, const SurfaceOptions& options = {});
    /// A function of x and y.
    Objects Surface(const std::function<double(double, double)>& f, double x0, double x1, double y0,
                    double y1, const SurfaceOptions& options = {});
    /// Scattered points, joined by triangles.
    Objects Surface(const Values& x, const Values& y, const Values& z,
                    const SurfaceOptions& options = {});

    // --- Maps --------------------------------------------------------------------------------

    Objects Contours(const Grid& grid, const ContourOptions& options = {});
    Objects Contours(const Table& matrix, const ContourOptions& options = {});
    Objects HeatMap(const Grid& grid, const SurfaceOptions& options = {});
    Objects HeatMap(const Table& matrix, const SurfaceOptions& options = {});

    // --- Axes and the objects below ----------------------------------------------------------

    void x(const AxisOptions& options);
    void y(const AxisOptions& options);
    void z(const AxisOptions& options);
    void Title(const std::string& title, const std::string& subtitle = {});
    /// Degrees around and above; for a flat chart they bring its depth out (FigureOptions::depth).
    void Rotate(double azimuth, double elevation);

    CChart3D* GetChart() const;

 private:
    friend class Figure;
    struct Impl;
    Chart();
    std::unique_ptr<Impl> m_Impl;
};

/// Itself the one chart over the whole picture, unless At makes others.
class VARNEL_API Figure : public Chart {
 public:
    explicit Figure(const FigureOptions& options = {});
    ~Figure();

    /// The chart at a place of a grid of charts, rows and columns counted from 1 at the top left.
    /// The frames of flat charts and maps are aligned, and titles of axes that neighbours share
    /// stand at the lowest or leftmost of them.
    Chart& At(int row, int column, int rows, int columns);

    /// Writes a picture, .png or .bmp, a page of vectors, .pdf or .svg, or a chart file, .chart, by
    /// the extension. A PNG tells its title, its resolution and this library's name and version.
    /// Raises "Parameter Error" for another extension, and what CChartView3D::SaveToPNG and the
    /// like raise.
    void Save(const std::string& path);
    /// Writes `frames` pictures, .png or .bmp, of one turn of all spatial charts about their
    /// upright axis, all of one size; `path` has a place for their number from 1 on, as in
    /// "turn-%03d.png". Raises "Parameter Error" for another path or fewer than one frame.
    void SaveTurn(const std::string& path, int frames);
    /// Shows the figure in a window, as `varnel view` does, until its user closes it. Raises "CDC
    /// Parameter Error" where there is no display, and says what can be done there.
    void Show();
    /// The figure's view, with its charts framed; owned by the figure.
    CChartView3D& View();

 private:
    struct State;
    std::unique_ptr<State> m_State;
};

}  // namespace varnel::plot

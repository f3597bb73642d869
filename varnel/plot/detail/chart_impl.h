// What a chart of a figure knows before it is framed: the objects in it, what its axes stand for
// and how far its data reach.
#pragma once

#include "varnel/chart/auto_frame.h"
#include "varnel/chart/chart.h"
#include "varnel/chartobj/chart_object.h"
#include "varnel/foundation/detail/raise.h"
#include "varnel/legend/legend.h"
#include "varnel/plot/figure.h"
#include "varnel/scale/auto_scale.h"
#include "varnel/surface/color_scale.h"
#include "varnel/theme/theme.h"

namespace varnel::plot {

/// One axis of the box: 0 x, 1 y, 2 z of the library. Flat charts have their y on axis 2.
struct PlotAxis {
    AxisOptions options;
    DataRange range;  ///< of all finite data
    std::optional<DataKind> kind;
    std::vector<std::string> categories;
    /// The name that all data on it have; empty and `mixed` when they have several.
    std::string name;
    bool mixed = false;
};

struct LegendEntry {
    CChartObj3D* object = nullptr;
    std::vector<std::string> names;  ///< several: those of the object's groups
};

/// A bar chart, whose bars have edges where they are wide enough for that.
struct EdgedBars {
    CChartObj3D* object = nullptr;
    double across = 1.0;  ///< how many bars find room beside each other
    int mode = 1;         ///< what was chosen last; a caller's own choice differs and is kept
    RGBDType color{0, 0, 0, 0};
};

/// How the box of a chart is looked at.
enum class Layout { None, Flat, Spatial, Map };

struct Chart::Impl {
    CChartView3D* view = nullptr;
    GLViewRType place{0, 0, 1, 1};
    double pixelsPerPoint = 1.0;
    double scale = 1.0;  ///< of markers, whose points are those of the whole picture
    int height = 1;      ///< of the chart, in pixels
    CChart3D* chart = nullptr;
    CTransform3D* transform = nullptr;
    Layout layout = Layout::None;
    AxisOptions wanted[3];  ///< of x, y and z, as the caller means them
    PlotAxis axes[3];
    std::vector<LegendEntry> entries;
    std::string title, subtitle, footer;
    std::optional<double> azimuth, elevation;
    double side = -37.5;         ///< from where a spatial chart is seen otherwise, degrees around
    std::optional<double> turn;  ///< degrees further about the upright axis, for a turntable
    double depth = 0.0;          ///< FigureOptions::depth
    bool hideTitle[3] = {};      ///< of an axis, for a neighbour shows the same
    /// Room beside lines and prices: none where areas touch the frame as well.
    bool touches = false;
    std::optional<double> room;  ///< beyond the data along x, in their units
    std::vector<EdgedBars> edged;
    Theme theme;
    Legend legendPlace = Legend::Auto;
    int series = 0;
    int layers = 0;         ///< flat objects so far, each in front of those before
    bool colorBar = false;  ///< of the chart's texture colours, or of this scale
    std::optional<ColorScale> colorScale;
    std::vector<double> bandLevels;    ///< the limits of bands that are not all as wide,
    std::vector<RGBDType> bandColors;  ///< and their colours
    bool noData = false;  ///< whether some of the values that the chart's colours tell are none
    CChartObj3D* byHeight = nullptr;  ///< the surface in colours of this map by height
    std::string heightMap;
    std::string colorBarTitle;
    CChartObj3D* contours = nullptr;  ///< whose levels the legend tells

    /// Makes the chart what `kind` says, or raises what `call` cannot be drawn into.
    void Begin(Layout kind, const char* call);
    CChartObj3D* NewObject();
    /// The data as positions along an axis, whose range and names then hold them. `argument` names
    /// them in errors; `count` is how many there have to be, -1: any number but none.
    std::vector<double> Take(int axis, const Values& values, const char* call, const char* argument,
                             long long count = -1);
    /// What most kinds begin with: the chart is made flat, or spatial, and takes their data.
    struct XY {
        std::vector<double> x, y;
    };
    XY TakeFlat(const Values& x, const Values& y, const char* call);
    std::vector<point3Dtype> TakeSpatial(const Values& x, const Values& y, const Values& z,
                                         const char* call);
    /// Flat data as points in the next layer.
    std::vector<point3Dtype> InLayer(const std::vector<double>& x, const std::vector<double>& y);
    void Widen(int axis, double value);
    /// Hands the options on to the axes of the box that they mean.
    void ResolveOptions();
    RGBDType NextColor(const std::optional<RGBDType>& given);
    int Pixels(double points) const;
    /// Gives points the next series' colour and the marker, or solid, that the options mean.
    Objects AddScatter(const std::vector<point3Dtype>& points, const ScatterOptions& options,
                       const char* call);
    /// Bars `width` wide; `all` are their places along x.
    void AddEdges(CChartObj3D* bars, const std::vector<double>& all, double width);
    /// Dashes four times, dots as long as a line is wide.
    void SetDash(CChartObj3D& line, Dash dash, double width) const;
    /// The relative size of symbols that are `points` large.
    double SymbolSize(double points) const;
    /// Where along the depth of a flat chart the next object stands.
    double NextLayer();
    void AddEntry(CChartObj3D* object, std::string name);
    /// Gives the points `rows` of an object the colours of a map by their values, between the least
    /// and the largest of all, and the legend the colour bar. Nothing without values.
    void ColorPoints(CChartObj3D* object, const std::vector<std::size_t>& rows,
                     const Values& values, const std::string& map, std::size_t count,
                     const char* call);

    /// What an axis of the box is called in the picture; empty without a title.
    std::string TitleOf(int axis) const;
    /// Limits, axes, titles, view and legend from all of that: the one place where a chart gets
    /// its frame. `picture` is the size of the whole picture.
    void Compose(const Size& picture);

 private:
    FrameOptions FrameWanted() const;
    void DressEdges(const Size& picture);
    bool IsDeep() const { return azimuth || elevation || depth > 0.0; }
    int LegendCode() const;
    void ComposeLegend();
    void ShowColorBar(CLegend3D& legend) const;
    class CLegend3D* m_Legend = nullptr;
};

namespace detail {

/// Raises "Parameter Error" of a call.
template <class... Pieces>
[[noreturn]] void Refuse(const char* call, const Pieces&... pieces) {
    varnel::detail::Raise(ERR3D_PARAMETER, ERR3DCLASS_GENERAL, call,
                          varnel::detail::Say(pieces...));
}

/// The smallest distance between neighbours of sorted, different values; 1 for fewer than two.
double SmallestStep(std::vector<double> values);

/// Points in groups by their names; one group without a name where `by` is empty.
struct Part {
    std::string name;
    std::vector<std::size_t> rows;
};
std::vector<Part> Split(const Values& by, std::size_t count, const char* call);

/// The code of a flat marker, MARKER_NONE for solids; Auto: that of a series, counted from 0.
int FlatMarker(Marker marker, int series);

/// As many points as there are values along each axis.
std::vector<point3Dtype> Joined(const std::vector<double>& x, const std::vector<double>& y,
                                const std::vector<double>& z);

/// 0, 1, .. below `count`.
std::vector<std::size_t> AllRows(std::size_t count);

/// Those values of a column that stand in the rows.
std::vector<double> Pick(const std::vector<double>& values, const std::vector<std::size_t>& rows);

}  // namespace detail

}  // namespace varnel::plot

// CLegend3D: a box over the charts of a view that says what their colours, lines and symbols mean.
//
// A legend holds a title, entries (a text and a sample each) and a colour scale, any of which may
// be missing. It stands in a corner of the view or at fractions of the view's size, and is as large
// as its contents need or of a fixed size; its letters follow the view's size. Where there is not
// enough room everything is drawn smaller, nothing is cut. What it shows of charts are copies.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "varnel/foundation/colors.h"
#include "varnel/foundation/export.h"
#include "varnel/foundation/file.h"
#include "varnel/foundation/object_list.h"
#include "varnel/foundation/points.h"
#include "varnel/foundation/types.h"
#include "varnel/foundation/viewports.h"
#include "varnel/legend/legend_object.h"

namespace varnel {

class CChart3D;
class CChartObj3D;
class CChartView3D;
class COpenGL;
class CTextObj3D;
class CTransform3D;
struct ColorScale;

namespace detail {
class AddedFields;
class LegendPainter;
class LegendView;
struct LegendContent;
struct LegendLayout;
struct LegendLimits;
struct LegendScale;
}  // namespace detail

/// Where a legend stands in its view.
enum LegendPlace3D : int {
    LEGEND_AT_POSITION = 0,  ///< at the position given, in fractions of the view
    LEGEND_UPPER_RIGHT = 1,
    LEGEND_UPPER_LEFT = 2,
    LEGEND_LOWER_LEFT = 3,
    LEGEND_LOWER_RIGHT = 4,
};

/// What a legend stands beside or in; plain numbers may be given as well.
enum LegendPlacement3D : int {
    LEGEND_IN_VIEW = 0,  ///< SetLegendPlace and SetLegendPosition decide
    LEGEND_OUTSIDE_RIGHT = 1,
    LEGEND_OUTSIDE_TOP = 2,  ///< entries side by side, scales lying
    LEGEND_OUTSIDE_BOTTOM = 3,
    LEGEND_IN_CORNER = 4,   ///< the corner of SetLegendPlace, but of the plot area
    LEGEND_LEAST_DATA = 5,  ///< in the plot area, where it hides the fewest data; in a view that
                            ///< lays its charts out, outside on the right if it would hide any
};

/// What colour scale a legend has.
enum LegendScale3D : int {
    LEGEND_NO_SCALE = 0,
    LEGEND_COLOR_BAR = 1,      ///< colours by value, with a round step between labels
    LEGEND_CONTOUR_BANDS = 2,  ///< a band between two levels each, all as long
};

class VARNEL_API CLegend3D {
 public:
    static constexpr int kSignature = 808;

    /// How often InitLegendDefaults ran; the first word of every record.
    static int nSelfID;

    /// Defaults alone: attributes and entries can be set, nothing is drawn until InitLegend3D.
    CLegend3D();
    /// Defaults, then InitLegend3D.
    explicit CLegend3D(CChartView3D* view);
    ~CLegend3D();
    CLegend3D(const CLegend3D&) = delete;
    CLegend3D& operator=(const CLegend3D&) = delete;

    int GetSignature() const { return m_Signature; }

    /// Gives every attribute its default, empties the legend and counts it.
    void InitLegendDefaults();
    /// Binds the legend to a view, which is not owned ("CChartView Parameter Error") and has its
    /// context ("OpenGL Parameter Error"), and creates what texts are drawn with ("Object New
    /// Error").
    void InitLegend3D(CChartView3D* view);

    // --- Place and size ----------------------------------------------------------------------

    /// A corner of the view; the other codes of LegendPlace3D. Default the upper right.
    void SetLegendPlace(int place) { m_Saved.m_Place = place; }
    int GetLegendPlace() const { return m_Saved.m_Place; }
    /// The lower left corner of the box, in fractions of the view from its lower left, and its
    /// size; an extent of 0 follows from the contents. The box is kept inside the view. This also
    /// selects LEGEND_AT_POSITION.
    void SetLegendPosition(const GLViewRType& position);
    GLViewRType GetLegendPosition() const { return m_Saved.m_Position; }
    /// A fixed size in fractions of the view, in a corner as well; 0 follows from the contents.
    void SetLegendSize(double width, double height);
    /// Distance from the edges of the view, as a fraction of its shorter side; 0..0.4, default
    /// 0.02.
    void SetLegendMargin(double margin) { m_Saved.m_Margin = margin; }
    double GetLegendMargin() const { return m_Saved.m_Margin; }
    /// Rows and columns of entries, 0 (the default) as many as needed. Given columns are filled row
    /// by row, everything else column by column.
    void SetLegendRows(int rows) { m_Saved.m_Rows = rows; }
    int GetLegendRows() const { return m_Saved.m_Rows; }
    void SetLegendColumns(int columns) { m_Saved.m_Columns = columns; }
    int GetLegendColumns() const { return m_Saved.m_Columns; }
    /// Factor on the size of the letters, which follows the size of the view. Default 1.
    void SetFontHeightSF(double factor) { m_Saved.m_FontHeightSF = factor; }
    double GetFontHeightSF() const { return m_Saved.m_FontHeightSF; }
    /// The size of the letters in a view of that size, in pixels of an em; they are smaller where
    /// the legend does not fit.
    double GetEm(int viewWidth, int viewHeight) const;
    /// The height of an em in pixels while the font factor is 1, instead of one that follows the
    /// view: that of the chart's labels, beside which the legend stands. 0: as the view. Not saved.
    void SetChartEm(double pixels) { m_ChartEm = pixels; }
    /// The box of the last drawing, in pixels of the view; empty before.
    GLViewportType GetLegendViewport() const { return m_Viewport; }

    // --- Beside or in the plot -----------------------------------------------------------------

    /// A code of LegendPlacement3D. A legend outside stands between the plot area and the edge of
    /// the view; whoever lays out the view leaves room for MeasureLegend. Groups that stand on each
    /// other are told in that order, the highest first, except above and below the plot. Default
    /// LEGEND_IN_VIEW.
    void SetPlace(int place) { m_Added.place = place; }
    int GetPlace() const { return m_Added.place; }
    /// 1: where LEGEND_LEAST_DATA is wanted the legend stands at LEGEND_OUTSIDE_RIGHT all the same,
    /// without a border. Set by the view at every drawing; not saved.
    void SetGivesWay(int on) { m_GivesWay = on; }
    /// The place with that in mind.
    int GetPlaceInUse() const {
        return m_GivesWay != 0 && m_Added.place == LEGEND_LEAST_DATA ? LEGEND_OUTSIDE_RIGHT
                                                                     : m_Added.place;
    }
    /// Whether all places in the plot area hide some of the data places, or are too small for the
    /// legend, in a view of that size.
    bool HidesData(int viewWidth, int viewHeight);
    /// The chart that the plot is, by its index in the view; among those with an automatic layout.
    /// Default -1: the first one.
    void SetPlaceChart(int index) { m_Added.placeChart = index; }
    int GetPlaceChart() const { return m_Added.placeChart; }
    /// The part of the view that holds the plot, in pixels; empty (the default): all of it. Kept
    /// until the next call, not saved.
    void SetPlotArea(const GLViewportType& area) { m_PlotArea = area; }
    /// Where data lie in the view, in pixels from its lower left corner (x and y), for
    /// LEGEND_LEAST_DATA. Not saved.
    void SetDataPlaces(std::span<const point3Dtype> places);
    /// The same with places that several legends share; null: none.
    void SetDataPlaces(std::shared_ptr<const std::vector<point3Dtype>> places) {
        m_pDataPlaces = std::move(places);
    }
    /// The size of the box in a view of that size, in pixels; 0 x 0 when there is nothing to show.
    /// Texts are measured in the view's font, also before its first drawing.
    void MeasureLegend(int viewWidth, int viewHeight, int& width, int& height);

    // --- Appearance --------------------------------------------------------------------------

    /// 0: nothing is drawn.
    void EnableLegend(int on) { m_Saved.m_LegendEnable = on; }
    int GetLegendEnable() const { return m_Saved.m_LegendEnable; }
    void SetLegendTitle(const CString& title) { m_Saved.m_Title = title; }
    CString GetLegendTitle() const { return m_Saved.m_Title; }
    void SetTextColor(const RGBDType& color) { m_Saved.m_TextColor = color; }
    RGBDType GetTextColor() const { return m_Saved.m_TextColor; }
    void EnableBorder(int on) { m_Saved.m_BorderEnable = on; }
    int GetBorderEnable() const { return m_Saved.m_BorderEnable; }
    /// In pixels. Default 1.
    void SetBorderThickness(double width) { m_Saved.m_BorderThickness = width; }
    double GetBorderThickness() const { return m_Saved.m_BorderThickness; }
    void SetBorderColor(const RGBDType& color) { m_Saved.m_BorderColor = color; }
    RGBDType GetBorderColor() const { return m_Saved.m_BorderColor; }
    /// 0: the charts are seen behind the legend. Default 1, white.
    void EnableBackground(int on) { m_Saved.m_BkEnable = on; }
    int GetBackgroundEnable() const { return m_Saved.m_BkEnable; }
    void SetLegendBkColor(const RGBDType& color) { m_Saved.m_BkColor = color; }
    RGBDType GetLegendBkColor() const { return m_Saved.m_BkColor; }

    // --- Entries, owned by the legend --------------------------------------------------------

    /// A new entry at the end. A failed allocation raises "Object New Error".
    CLegendObj3D* NewLegendObj();
    /// An entry whose sample is taken from a chart object ("Parameter Error" when it is no live
    /// one), symbols with the rotation and the light that they have in their chart now.
    CLegendObj3D* AddChartObj(const CChartObj3D* object, const CString& text);
    /// An entry for each group of a grouped chart object. `names` has as many texts as there are
    /// groups; groups with an empty one are left out. Without names groups are numbered from 1.
    void AddGroups(const CChartObj3D* object, const CString* names);
    /// No names at all number the groups too; another number of them raises "Parameter Error".
    void AddGroups(const CChartObj3D* object, std::span<const CString> names);
    CLegendObj3D* GetLegendObj(int index) const { return m_LegendObjs.GetAt(index); }
    int GetNumLegendObjs() const { return m_LegendObjs.GetCount(); }
    void DeleteLegendObjs() { m_LegendObjs.RemoveAll(); }

    // --- Colour scale ------------------------------------------------------------------------

    /// The levels of a contour chart object ("Parameter Error" when it is no live one): with
    /// `bands` non-zero as a colour scale of the bands between them, else as an entry for each
    /// line, the highest first. Number formats are those of axis labels: 0 fixed, 1 exponential, 2
    /// engineering, 3 general; a negative number of decimals is as many as the values need.
    void SetContours(const CChartObj3D* object, int bands, int format = 0, int decimals = -1);
    /// A colour bar of the colours by value of a chart ("Parameter Error" when it is no live one)
    /// over their range. The range is in working coordinates: on a logarithmic axis, logarithms.
    void SetColorBar(const CChart3D* chart);
    /// The same for n colours (at most 256; a null array or another number removes the scale)
    /// between two values.
    void SetColorBar(const RGBDType* colors, int n, double min, double max);
    /// No colours remove the scale; more than 256 raise "Parameter Error".
    void SetColorBar(std::span<const RGBDType> colors, double min, double max);
    /// A colour bar that is an axis: the values of a colour scale, laid over the bar as the scale
    /// lays them over its map, labelled as automatic axes are, banded scales at the limits of their
    /// bands where these are few, with arrows in the colours for values below and above. Format,
    /// decimals and tic space have no effect on it. Raises what ColorScale::Colors raises.
    void SetColorBar(const ColorScale& scale);
    /// A swatch beside the low end of the scale that tells the colour of what is no data, until the
    /// scale is another one; by the scale's showNoData at first.
    void SetNoData(const std::optional<RGBDType>& color);
    /// What stands beside the swatch. Default "no data".
    void SetNoDataText(const CString& text) { m_Added.noDataText = text; }
    CString GetNoDataText() const { return m_Added.noDataText; }
    /// Bands of colour between levels, all as long whatever the levels: a colour more than levels,
    /// or one less for bands that end at the first and the last level. Other numbers remove the
    /// scale. Format and decimals say how the levels are written.
    void SetColorBands(std::span<const double> levels, std::span<const RGBDType> colors);
    /// 1: a colour bar of colours between two values, too, is labelled as automatic axes are. 0,
    /// the default: by format, decimals and tic space.
    void SetScaleAxis(int on) { m_Added.scaleAxis = on; }
    int GetScaleAxis() const { return m_Added.scaleAxis; }
    void DeleteScale();
    /// A code of LegendScale3D: 0 no scale, 1 colour bar, 2 bands between contour levels.
    int GetScaleType() const { return m_Saved.m_ScaleType; }

    /// 0 (the default): the scale runs upward, else to the right.
    void SetScaleHorizontal(int on) { m_Saved.m_ScaleHorizontal = on; }
    int GetScaleHorizontal() const { return m_Saved.m_ScaleHorizontal; }
    /// Length as a fraction of the view's height or width, where there is room. Default 0.4. A
    /// legend of fixed size has a scale that fills it.
    void SetScaleLength(double fraction) { m_Saved.m_ScaleLength = fraction; }
    double GetScaleLength() const { return m_Saved.m_ScaleLength; }
    /// How the values are written, see SetContours. Default fixed, as many decimals as needed.
    void SetScaleFormat(int format, int decimals);
    int GetScaleFormat() const { return m_Saved.m_ScaleFormat; }
    int GetScaleDecimals() const { return m_Saved.m_ScaleDecimals; }
    /// Distance of the values at a colour bar; 0, the default, chooses a round one. Where they do
    /// not fit only some of them are shown.
    void SetScaleTicSpace(double space) { m_Saved.m_ScaleTicSpace = space; }
    double GetScaleTicSpace() const { return m_Saved.m_ScaleTicSpace; }
    /// The engineering suffixes by powers of 1000. Default " KMBT".
    void SetEngString(const CString& suffixes) { m_Saved.m_EngString = suffixes; }
    CString GetEngString() const { return m_Saved.m_EngString; }

    // --- Drawing and the chart file ----------------------------------------------------------

    /// Draws the legend over what is in the view's image, at the view's size. A legend without
    /// contents draws nothing.
    void DrawLegend();

    /// The record, entries included. A failing medium raises "Disk I/O Error"; a null file does
    /// nothing.
    void Save(HANDLE file);
    /// Replaces the entries and the scale.
    void Load(HANDLE file);

    /// Hands what the plain record lacks, of this and of what it owns, to the chart file.
    void VisitAdded(detail::AddedFields& fields);

    template <class Archive>
    void Record(Archive& record);

 private:
    void Bind(COpenGL& gl, std::unique_ptr<detail::LegendView> view);
    void AddContourLines(const std::vector<double>& levels, const std::vector<RGBDType>& colors,
                         int format, int decimals);
    detail::LegendScale MakeScale(double ticSpace) const;
    bool HasAxis() const;
    /// The colour bar as an axis as long as so many heights of its labels.
    detail::LegendScale MakeColorAxis(double length) const;
    void DrawOutline(detail::LegendPainter& painter, const detail::LegendScale& scale,
                     const detail::LegendRect& bar, double stroke) const;
    std::vector<const CLegendObj3D*> EnabledEntries() const;
    detail::LegendLimits MakeLimits(int viewWidth, int viewHeight) const;
    detail::LegendLayout MakeLayout(const std::vector<const CLegendObj3D*>& entries,
                                    detail::LegendScale& scale, int viewWidth,
                                    int viewHeight) const;
    detail::LegendContent Measure(const std::vector<const CLegendObj3D*>& entries,
                                  const detail::LegendScale& scale, double em) const;
    bool IsAcross() const;
    double Margin(int viewWidth, int viewHeight) const;
    GLViewportType PlotArea(int viewWidth, int viewHeight) const;
    void PlaceBox(int viewWidth, int viewHeight, const detail::LegendLayout& layout);
    void DrawScale(detail::LegendPainter& painter, const detail::LegendScale& scale,
                   const detail::LegendLayout& layout) const;

    /// The attributes, as records keep them.
    struct Saved {
        int m_LegendEnable = 1;
        int m_Place = LEGEND_UPPER_RIGHT;
        GLViewRType m_Position;  ///< fractions of the view; an extent of 0 follows the contents
        double m_Margin = 0.02;  ///< a fraction of the view's shorter side
        int m_Rows = 0;          ///< 0: as many as needed
        int m_Columns = 0;
        double m_FontHeightSF = 1.0;
        CString m_Title;
        RGBDType m_TextColor = {0.0, 0.0, 0.0, 1.0};
        int m_BorderEnable = 1;
        double m_BorderThickness = 1.0;  ///< pixels
        RGBDType m_BorderColor = {0.0, 0.0, 0.0, 1.0};
        int m_BkEnable = 1;
        RGBDType m_BkColor = {1.0, 1.0, 1.0, 1.0};
        int m_ScaleType = LEGEND_NO_SCALE;
        int m_ScaleHorizontal = 0;
        double m_ScaleLength = 0.4;  ///< a fraction of the view
        int m_ScaleFormat = 0;
        int m_ScaleDecimals = -1;  ///< as many as the values need
        double m_ScaleTicSpace = 0.0;
        CString m_EngString = " KMBT";
        std::vector<double> m_ScaleValues;  ///< both ends of a colour bar, or the levels
        std::vector<RGBDType> m_ScaleColors;
    };

    /// The attributes that records do not have.
    struct Added {
        int place = LEGEND_IN_VIEW;
        int scaleAxis = 0;   ///< 1: a colour bar has the labels of an axis
        int scaleGiven = 0;  ///< 1: by a colour scale, with the members below
        int scaleMode = 0;
        double scaleCenter = 0.0;
        int scaleBands = 0;
        int scaleBelow = 0;  ///< 1: there is an arrow in this colour
        RGBDType scaleBelowColor{};
        int scaleAbove = 0;
        RGBDType scaleAboveColor{};
        int placeChart = -1;
        int noData = 0;  ///< 1: a swatch beside the colour scale tells this colour
        RGBDType noDataColor{};
        CString noDataText = "no data";
    };

    COpenGL* m_pOpenGL = nullptr;
    std::unique_ptr<detail::LegendView> m_pView;
    Saved m_Saved;
    Added m_Added;
    double m_ChartEm = 0.0;  ///< pixels
    int m_GivesWay = 0;
    GLViewportType m_PlotArea;
    std::span<const point3Dtype> DataPlaces() const {
        return m_pDataPlaces != nullptr ? std::span(*m_pDataPlaces)
                                        : std::span<const point3Dtype>();
    }

    std::shared_ptr<const std::vector<point3Dtype>> m_pDataPlaces;
    ObjectList<CLegendObj3D> m_LegendObjs;
    GLViewportType m_Viewport;
    std::unique_ptr<CTransform3D> m_pTransform;
    std::unique_ptr<CTextObj3D> m_pText;
    int m_Signature = kSignature;
};

}  // namespace varnel

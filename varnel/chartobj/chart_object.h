// CChartObj3D: one plotted data set of a chart, with its chart type, arrays and appearance.
//
// A set-up operation (BarChart25D, ScatterChart3D, ...) copies the data and selects the type;
// single values and attributes can be changed afterwards. World coordinates are data values, z up.
// A 2.5D chart lies in one vertical plane: "ind" values run along x (independent axis 0) or y (1),
// "dep" values along z, and the plane stands at `constValue` of its depth axis, the other of both.
//
// What is not there is not drawn. A value that is NaN or infinite is no data and leaves a gap, in
// every chart type: its bar, symbol, box or slab is left out, lines and bands are interrupted
// there, a surface polygon with such a corner is left out; in a stack it adds nothing to the
// running total. Counts may be changed freely: a chart ends where one of its arrays does, and what
// lies beyond a stored array is no data. A missing segment colour is the one stored last, a missing
// group colour the fill colour.
#pragma once

#include <cstddef>
#include <span>

#include "varnel/chartobj/chart_codes.h"
#include "varnel/chartobj/chart_object_attributes.h"
#include "varnel/chartobj/contour_style.h"
#include "varnel/foundation/colors.h"
#include "varnel/foundation/export.h"
#include "varnel/foundation/file.h"
#include "varnel/foundation/points.h"
#include "varnel/foundation/types.h"

namespace varnel {

class COpenGL;
class CPolysurface;
class CTransform3D;

namespace detail {
class AddedFields;
class ChartDrawing;
class SetUp;
struct SurfaceNormals;
}  // namespace detail

/// Arrays are shared by copies of an object and freed with the last of them; the rendering context
/// and the transform are not owned.
class VARNEL_API CChartObj3D {
 public:
    static constexpr int kSignature = 606;

    /// How often InitChartObjDefaults ran; the first word of every record, and read back from it.
    static int nSelfID;

    /// An object of type 0, which draws nothing, bound to nothing.
    CChartObj3D();
    /// Defaults, then InitChartObj3D.
    CChartObj3D(COpenGL* gl, CTransform3D* transform);

    int GetSignature() const { return m_ClassTag; }

    /// Gives every attribute its default, lets go of the arrays and counts the object.
    void InitChartObjDefaults();
    /// Binds the object to a context and a transform, neither owned. Raises "OpenGL Parameter
    /// Error" or "Transform Parameter Error" when one is null or no live object; the context is
    /// stored before the transform is looked at.
    void InitChartObj3D(COpenGL* gl, CTransform3D* transform);

    /// The identifier of the transform: the bound one's, or after Load the saved one's.
    int GetTransformID() const { return m_TransformID; }
    void SetTransformID(int id) { m_TransformID = id; }
    CTransform3D* GetTransform() const { return m_pTransform; }

    // --- Chart types -------------------------------------------------------------------------
    //
    // Each operation copies its arrays (a null array leaves what was stored before), stores its
    // attributes and selects the type. Counts are numbers of elements; n is the number of data
    // points. Attributes that an operation does not take keep their values. A count that is
    // negative or too large for memory raises "Array New Error" of the storage operation concerned;
    // what() names the set-up. The operations that take spans count by themselves; spans of lengths
    // that do not belong together raise "Parameter Error" and store nothing.
    //
    // Widths along the independent and depth axes are in data units, and so are base values and
    // heights. Codes: `indAxis` is INDAXIS_X (0) or INDAXIS_Y (1); a justification WIDTH_STARTS
    // (0), WIDTH_CENTERED (1) or WIDTH_ENDS (2) says where a width lies about its value; a
    // `lineStyle` is 0 solid, 1..6 dots to dashes of growing length, 7..10 mixed dashes.
    //
    // On a logarithmic axis each type has a rule of its own for what it converts, told at
    // ChartType3D; SetExactExtents makes all of them go between their converted ends.

    /// The data line widened along the depth axis: one quadrilateral per pair of points.
    void RibbonChart25D(const double* ind, const double* dep, double constValue, int n,
                        double depthWidth, const RGBDType& fill, const RGBDType& outline,
                        int depthJustify, int indAxis);
    void RibbonChart25D(std::span<const double> ind, std::span<const double> dep, double constValue,
                        double depthWidth, const RGBDType& fill, const RGBDType& outline,
                        int depthJustify, int indAxis);

    /// One bar per point, from the base value to the datum.
    void BarChart25D(const double* ind, const double* dep, double baseValue, double constValue,
                     int n, double indWidth, double depthWidth, const RGBDType& fill,
                     const RGBDType& outline, int indJustify, int depthJustify, int indAxis);
    void BarChart25D(std::span<const double> ind, std::span<const double> dep, double baseValue,
                     double constValue, double indWidth, double depthWidth, const RGBDType& fill,
                     const RGBDType& outline, int indJustify, int depthJustify, int indAxis);

    /// One bar per point; the point is the upper corner, heights[i] the level of the bar's foot.
    void BarChart3D(const point3Dtype* points, const double* heights, int n, double indWidth,
                    double depthWidth, const RGBDType& fill, const RGBDType& outline);
    void BarChart3D(std::span<const point3Dtype> points, std::span<const double> heights,
                    double indWidth, double depthWidth, const RGBDType& fill,
                    const RGBDType& outline);

    /// The area between the data line and the base value, cut where the line crosses it.
    void AreaFillChart25D(const double* ind, const double* dep, double baseValue, double constValue,
                          int n, double depthWidth, const RGBDType& fill, const RGBDType& outline,
                          int depthJustify, int indAxis);
    void AreaFillChart25D(std::span<const double> ind, std::span<const double> dep,
                          double baseValue, double constValue, double depthWidth,
                          const RGBDType& fill, const RGBDType& outline, int depthJustify,
                          int indAxis);

    /// A band from dep to dep - dep2. With segment colours the whole band has one colour, that of
    /// SetAreaRangeColor.
    void AreaRangeChart25D(const double* ind, const double* dep, const double* dep2,
                           double constValue, int n, double depthWidth, const RGBDType& fill,
                           const RGBDType& outline, int depthJustify, int indAxis);
    void AreaRangeChart25D(std::span<const double> ind, std::span<const double> dep,
                           std::span<const double> dep2, double constValue, double depthWidth,
                           const RGBDType& fill, const RGBDType& outline, int depthJustify,
                           int indAxis);

    /// A polyline; the width, in pixels, is truncated to an integer.
    void LineChart25D(const double* ind, const double* dep, double constValue, int n, int lineStyle,
                      double lineWidth, const RGBDType& color, int indAxis);
    void LineChart25D(std::span<const double> ind, std::span<const double> dep, double constValue,
                      int lineStyle, double lineWidth, const RGBDType& color, int indAxis);

    /// A symbol per point: SYMBOL_CUBE (10) to SYMBOL_ARROW (15), any other none. Symbols are
    /// relSize / 10 device units large, whatever the axes. Each is joined by a line to its
    /// projection, where constValue takes the place of z (projection plane 0 or 3), y (1 or 4) or x
    /// (2 or 5); a negative plane (PROJECTION_NONE) leaves the lines out.
    void ScatterChart3D(const point3Dtype* points, double relSize, int n, int symbol,
                        const RGBDType& fill, const RGBDType& outline, int projectionPlane,
                        double constValue);
    void ScatterChart3D(std::span<const point3Dtype> points, double relSize, int symbol,
                        const RGBDType& fill, const RGBDType& outline, int projectionPlane,
                        double constValue);

    /// A polyline through points; width in pixels.
    void LineChart3D(const point3Dtype* points, int n, int lineStyle, int lineWidth,
                     const RGBDType& color);
    void LineChart3D(std::span<const point3Dtype> points, int lineStyle, int lineWidth,
                     const RGBDType& color);

    /// The polyline's projection alone, constValue in the place of z (projection plane 0), y (1)
    /// or x (2), nothing for any other plane; `first` has no effect.
    void ProjectionLineChart3D(const point3Dtype* points, double first, int n, int lineStyle,
                               int lineWidth, const RGBDType& color, int projectionPlane,
                               double constValue);
    void ProjectionLineChart3D(std::span<const point3Dtype> points, int lineStyle, int lineWidth,
                               const RGBDType& color, int projectionPlane, double constValue);

    /// Groups of bars: groupType GROUPS_SIDE_BY_SIDE (0) in the width of one bar, rising from the
    /// base by their absolute values; GROUPS_STACKED (1) on each other from 0, a negative datum
    /// rising too and lowering what follows. SetExactExtents lets both hang below the base. Element
    /// i of group g is groupData[g * n + i].
    void GroupBarChart25D(const double* ind, const double* groupData, double constValue,
                          double baseValue, int n, int numGroups, int groupType, double indWidth,
                          double depthWidth, const RGBDType* groupColors, const RGBDType& outline,
                          int indJustify, int depthJustify, int indAxis);
    void GroupBarChart25D(std::span<const double> ind, std::span<const double> groupData,
                          double constValue, double baseValue, int groupType, double indWidth,
                          double depthWidth, std::span<const RGBDType> groupColors,
                          const RGBDType& outline, int indJustify, int depthJustify, int indAxis);

    /// One ribbon per group, each at the running total of the groups so far.
    void GroupRibbonChart25D(const double* ind, const double* groupData, double constValue, int n,
                             int numGroups, double depthWidth, const RGBDType* groupColors,
                             const RGBDType& outline, int depthJustify, int indAxis);
    void GroupRibbonChart25D(std::span<const double> ind, std::span<const double> groupData,
                             double constValue, double depthWidth,
                             std::span<const RGBDType> groupColors, const RGBDType& outline,
                             int depthJustify, int indAxis);

    /// Stacked bands: group 0 from the base value (0 unless an earlier set-up set another) to its
    /// data, each further group from the running total below it to its own. A negative datum lowers
    /// the total and its band hangs below it, a little in front of the bands that it lies in; a
    /// band is cut where its datum changes sign.
    void GroupAreaFillChart25D(const double* ind, const double* groupData, double constValue, int n,
                               int numGroups, double depthWidth, const RGBDType* groupColors,
                               const RGBDType& outline, int depthJustify, int indAxis);
    void GroupAreaFillChart25D(std::span<const double> ind, std::span<const double> groupData,
                               double constValue, double depthWidth,
                               std::span<const RGBDType> groupColors, const RGBDType& outline,
                               int depthJustify, int indAxis);

    /// Prices, as four groups of n: open, high, low, close. Each point occupies GetIndWidth() along
    /// the independent axis, placed about its value by depJustify (pass 1 to centre it), and the
    /// depth width (1 unless an earlier set-up set another). `flags` are PRICE_RANGE (0) to
    /// PRICE_CLOSE_SYMBOL (4), each 1 when it is null; the body, PRICE_BODY (5), is not among them:
    /// SetComboChartFlags switches it. `colors` are PRICE_COLOR_OPEN (0) to PRICE_COLOR_LINE (4).
    /// Symbols are as in ScatterChart3D. In segment colour mode the lines of a point have its
    /// segment colour. Points that lack one of the four are left out.
    void OHLCChart25D(const double* ind, const double* groupData, double constValue, int n,
                      int symbol, int symbol2, double relSize, int lineWidth,
                      const RGBDType* colors, const RGBDType& outline, int depthJustify,
                      int depJustify, int indAxis, const int* flags);
    void OHLCChart25D(std::span<const double> ind, std::span<const double> groupData,
                      double constValue, int symbol, int symbol2, double relSize, int lineWidth,
                      std::span<const RGBDType> colors, const RGBDType& outline, int depthJustify,
                      int depJustify, int indAxis, const int* flags);

    /// A slab per point, 0.1 working units thick; the point is its lower corner.
    void PlaneChart3D(const point3Dtype* points, int n, double indWidth, double depthWidth,
                      const RGBDType& fill, const RGBDType& outline);
    void PlaneChart3D(std::span<const point3Dtype> points, double indWidth, double depthWidth,
                      const RGBDType& fill, const RGBDType& outline);

    /// A text per point, centred on it, in the text plane TEXTPLANE_XY (0), TEXTPLANE_XZ (1),
    /// TEXTPLANE_YZ (2) or TEXTPLANE_VIEWER (3, facing the viewer), joined to its projection as in
    /// ScatterChart3D, from the text itself. Draws in the context's current font.
    void ScatterText3D(const point3Dtype* points, const CString* strings, int n, double relSize,
                       int textPlane, const RGBDType& color, int projectionPlane,
                       double constValue);
    void ScatterText3D(std::span<const point3Dtype> points, std::span<const CString> strings,
                       double relSize, int textPlane, const RGBDType& color, int projectionPlane,
                       double constValue);

    /// Boxes, as six groups of n: minimum, lower quartile, median, upper quartile, maximum, mean
    /// (BoxStatistics of box_statistics.h computes them). A box of indWidth x depthWidth, placed
    /// about its value by depJustify (pass 1 to centre it), spans the quartiles; whiskers with caps
    /// of half its width reach the extremes; the mean is `symbol` on the box's two faces across the
    /// depth, drawn when `flag` (combo flag 0) is not 0. The other combo flags are not used. Six
    /// colours, BOX_COLOR_LOWER_WHISKER (0) to BOX_COLOR_MEAN (5). A point that lacks one of the
    /// first five is left out.
    void BoxAndWhiskerChart25D(const double* ind, const double* groupData, double constValue, int n,
                               double indWidth, double depthWidth, int symbol, double relSize,
                               int lineWidth, const RGBDType* colors, const RGBDType& outline,
                               int depthJustify, int depJustify, int indAxis, int flag);
    void BoxAndWhiskerChart25D(std::span<const double> ind, std::span<const double> groupData,
                               double constValue, double indWidth, double depthWidth, int symbol,
                               double relSize, int lineWidth, std::span<const RGBDType> colors,
                               const RGBDType& outline, int depthJustify, int depJustify,
                               int indAxis, int flag);

    /// Bars from dep downward by heights.
    void FloatingBarChart25D(const double* ind, const double* dep, const double* heights,
                             double constValue, int n, double indWidth, double depthWidth,
                             const RGBDType& fill, const RGBDType& outline, int indJustify,
                             int depthJustify, int indAxis);
    void FloatingBarChart25D(std::span<const double> ind, std::span<const double> dep,
                             std::span<const double> heights, double constValue, double indWidth,
                             double depthWidth, const RGBDType& fill, const RGBDType& outline,
                             int indJustify, int depthJustify, int indAxis);

    /// A slab per point at the height of its datum, 2 % of the working range of z thick.
    void PlaneChart25D(const double* ind, const double* dep, double constValue, int n,
                       double indWidth, double depthWidth, const RGBDType& fill,
                       const RGBDType& outline, int indJustify, int depthJustify, int indAxis);
    void PlaneChart25D(std::span<const double> ind, std::span<const double> dep, double constValue,
                       double indWidth, double depthWidth, const RGBDType& fill,
                       const RGBDType& outline, int indJustify, int depthJustify, int indAxis);

    /// The surface flattened: constValue in the place of z (projection plane 0), y (1) or x (2);
    /// not flattened for any other plane. The surface is copied.
    void PolysurfaceChart2D(CPolysurface* surface, double constValue, int projectionPlane);

    /// The surface's polygons in their colours.
    void PolysurfaceChart3D(CPolysurface* surface);

    /// Contour lines of the surface at numContours ascending values, drawn at z = constValue, line
    /// i in colors[i]. There are numContours + 1 colours; the last one is kept and saved, and no
    /// line has it. `contourLabelFlag` is kept and saved and has no effect. Lines are as CContour3D
    /// draws them, and not converted on logarithmic axes; SetContourStyle gives whole ones.
    void ContourPolysurface3D(CPolysurface* surface, const double* values, const RGBDType* colors,
                              int numContours, double constValue, int contourLabelFlag);
    void ContourPolysurface3D(CPolysurface* surface, std::span<const double> values,
                              std::span<const RGBDType> colors, double constValue,
                              int contourLabelFlag);

    // --- What stands beside the data -----------------------------------------------------------

    /// A bar at each point from below[i] under its coordinate of `axis` (0 x, 1 y, 2 z) to above[i]
    /// over it, in data units, ends converted on any axis, with caps relSize / 10 device units
    /// long. One array for both makes them symmetric. A point without both errors has none.
    void ErrorBars3D(std::span<const point3Dtype> points, std::span<const double> below,
                     std::span<const double> above, int axis, double relSize, int lineStyle,
                     int lineWidth, const RGBDType& color);

    /// An arrow from each point along its vector times `scale`, in data units, with a head relSize
    /// / 10 device units long: a lit cone, or with flatHeads a triangle that faces the viewer.
    void Vectors3D(std::span<const point3Dtype> points, std::span<const point3Dtype> components,
                   double scale, double relSize, int flatHeads, int lineWidth,
                   const RGBDType& color);

    /// A line across a wall of the box at a value of `axis` (0 x, 1 y, 2 z). The wall is a plane
    /// code of foundation/planes.h: 0 z, 1 y, 2 x at the minimum, 3..5 at the maximum. Nothing
    /// where the wall does not run along the axis or the value lies outside the box.
    void ReferenceLine3D(int axis, double value, int plane, int lineStyle, int lineWidth,
                         const RGBDType& color);
    /// The part of a wall between two values of `axis`, filled, as far as it lies in the box.
    void ReferenceBand3D(int axis, double from, double to, int plane, const RGBDType& fill);

    /// A text that faces the viewer at `place`, with a line from there to `at`, both in data
    /// values.
    void Note3D(const CString& text, const point3Dtype& at, const point3Dtype& place,
                double relSize, int lineWidth, const RGBDType& color);

    /// What ErrorBars3D and Vectors3D were given; empty before.
    std::span<const double> GetErrorsBelow() const { return m_Added.m_ErrorsBelow; }
    std::span<const double> GetErrorsAbove() const { return m_Added.m_ErrorsAbove; }
    std::span<const point3Dtype> GetVectorComponents() const { return m_Added.m_Components; }
    double GetVectorScale() const { return m_Added.m_VectorScale; }

    // --- Storages: copy as many elements as the counts say -----------------------------------
    //
    // A null array does nothing unless said. What a storage held before is let go of first. Raises
    // "Array New Error".

    void InitIndDataStorage(const double* p);
    void InitDepDataStorage(const double* p);
    /// Groups x points values, group by group.
    void InitGroupDataStorage(const double* p);
    void InitDepData2Storage(const double* p);
    void InitBarHeightsStorage(const double* p);
    /// A null array sets the number of data points to 0.
    void Init3DPointStorage(const point3Dtype* p);
    void InitGroupColorsStorage(const RGBDType* p);
    /// One colour per data point; switches segment colours on, a null array switches them off.
    void InitSegmentColorsStorage(const RGBDType* p);
    /// Another number of colours than there are data points raises "Parameter Error".
    void InitSegmentColorsStorage(std::span<const RGBDType> colors);
    /// Contour values share the storage of the independent data.
    void InitContourValueStorage(const double* p);
    /// Contours + 1 colours, in the storage of the segment colours.
    void InitContourColorsStorage(const RGBDType* p);
    /// Stores a copy of the surface.
    void InitPolysurfaceStorage(CPolysurface* surface);
    void InitDataStringsStorage(const CString* p);

    // Let go of an array; the counts stay.
    void DeleteIndDataStorage();
    void DeleteDepDataStorage();
    void DeleteGroupDataStorage();
    void DeleteDepData2Storage();
    void DeleteBarHeightsStorage();
    void DeleteGroupColorsStorage();
    /// Also the segment colours.
    void DeleteContourColorsStorage();
    void Delete3DPointStorage();
    void DeletePolysurfaceStorage();
    void DeleteDataStringsStorage();

    /// Sets n, then stores `ind` and, over it, `dep` as the independent data: the dependent data
    /// are not touched. A dep2 becomes both the second dependent data and the bar heights.
    void SetDataStorage25D(const double* ind, const double* dep, const double* dep2, int n);
    /// dep2 can be empty.
    void SetDataStorage25D(std::span<const double> ind, std::span<const double> dep,
                           std::span<const double> dep2);
    /// Sets n and stores both arrays, each in its own place.
    void SetSeriesStorage(std::span<const double> ind, std::span<const double> dep);
    void SetGroupDataStorage(const double* ind, const double* group, int n, int numGroups,
                             const RGBDType* colors);
    void SetGroupDataStorage(std::span<const double> ind, std::span<const double> group,
                             std::span<const RGBDType> colors);
    void SetBarHeightsStorage(const double* heights);
    void SetContourStorage(CPolysurface* surface, const double* values, const RGBDType* colors,
                           int numContours);
    void SetContourStorage(CPolysurface* surface, std::span<const double> values,
                           std::span<const RGBDType> colors);
    void Set3DPointStorage(const point3Dtype* points, int n);
    void Set3DPointStorage(std::span<const point3Dtype> points);
    void SetPolysurface(CPolysurface* surface);
    void SetDataStringsStorage(const point3Dtype* points, const CString* strings, int n);
    void SetDataStringsStorage(std::span<const point3Dtype> points,
                               std::span<const CString> strings);

    // --- Elements: an index out of range or a missing array is ignored, or reads as zero ------

    void SetIndData(int i, double value);
    double GetIndData(int i) const;
    void SetDepData(int i, double value);
    double GetDepData(int i) const;
    void SetGroupData(int group, int i, double value);
    double GetGroupData(int group, int i) const;
    void SetDepData2(int i, double value);
    /// The second argument is ignored.
    double GetDepData2(int i, double ignored) const;
    void SetBarHeight(int i, double value);
    double GetBarHeight(int i) const;
    void SetGroupColor(int i, const RGBDType& color);
    RGBDType GetGroupColor(int i) const;
    /// The colour in which a group is drawn: its own, the fill colour where it has none.
    const RGBDType& GroupColor(std::size_t group) const;
    void SetSegmentColor(int i, const RGBDType& color);
    RGBDType GetSegmentColor(int i) const;
    /// i up to the number of contours.
    void SetContourColor(int i, const RGBDType& color);
    /// i up to the number of data points.
    RGBDType GetContourColor(int i) const;
    void SetContourValue(int i, double value);
    void Set3DPoint(int i, const point3Dtype& point);
    point3Dtype Get3DPoint(int i) const;
    /// The text of a point of SCATTERTEXT3D; empty outside the list.
    CString GetDataString(int i) const;
    /// Gives the points of the object's surface the values w, point by point, as many as there are
    /// (see CChart3D::ColorSurfaceByValue). Copies of the object that share it change too.
    void SetPolysurfaceValues(std::span<const double> values);
    void SetPolysurfacePoint(int i, const point3Dtype& point);
    point3Dtype GetPolysurfacePoint(int i) const;
    /// The object's copy of its surface, null when it has none.
    const CPolysurface* GetPolysurface() const { return m_Saved.m_pPolysurface.get(); }
    void SetScatterTextString(int i, const CString& text);
    CString GetScatterTextString(int i) const;

    /// The one colour of an area range in segment colour mode, the fill colour unless it is set. It
    /// is kept and saved behind the segment colours of all data points, which must be stored first.
    /// Raises "Array New Error".
    void SetAreaRangeColor(const RGBDType& color);
    RGBDType GetAreaRangeColor() const;

    // --- Attributes: stored as they are ------------------------------------------------------

    void SetRelSize(double size) { m_Saved.m_RelSize = size; }
    double GetRelSize() const { return m_Saved.m_RelSize; }
    /// TEXTPLANE_XY (0), TEXTPLANE_XZ (1), TEXTPLANE_YZ (2), TEXTPLANE_VIEWER (3).
    void SetTextPlane(int plane) { m_Saved.m_TextPlane = plane; }
    int GetTextPlane() const { return m_Saved.m_TextPlane; }
    void SetFillColor(const RGBDType& color) { m_Saved.m_FillColor = color; }
    RGBDType GetFillColor() const { return m_Saved.m_FillColor; }
    void SetOutlineColor(const RGBDType& color) { m_Saved.m_OutlineColor = color; }
    RGBDType GetOutlineColor() const { return m_Saved.m_OutlineColor; }
    /// The colour of the lines of open-high-low-close charts.
    RGBDType GetLineColor() const { return m_Saved.m_LineColor; }
    /// SYMBOL_CUBE (10) to SYMBOL_ARROW (15), any other none.
    void SetSymbol(int symbol) { m_Saved.m_Symbol = symbol; }
    int GetSymbol() const { return m_Saved.m_Symbol; }
    /// The symbol of closing prices; codes as above.
    void SetSymbol2(int symbol) { m_Saved.m_Symbol2 = symbol; }
    int GetSymbol2() const { return m_Saved.m_Symbol2; }
    void SetIndWidth(double width) { m_Saved.m_IndWidth = width; }
    double GetIndWidth() const { return m_Saved.m_IndWidth; }
    double GetDepthWidth() const { return m_Saved.m_DepthWidth; }
    double GetBaseValue() const { return m_Saved.m_BaseValue; }
    double GetConstValue() const { return m_Saved.m_ConstValue; }
    void SetNumDataPnts(int n) { m_Saved.m_NumDataPnts = n; }
    int GetNumDataPnts() const { return m_Saved.m_NumDataPnts; }
    void SetNumGroups(int n) { m_Saved.m_NumGroups = n; }
    int GetNumGroups() const { return m_Saved.m_NumGroups; }
    void SetNumContours(int n) { m_Saved.m_NumContours = n; }
    int GetNumContours() const { return m_Saved.m_NumContours; }
    /// 0 solid, 1..10 dots and dashes, any other solid.
    void SetLineStyle(int style) { m_Saved.m_LineStyle = style; }
    int GetLineStyle() const { return m_Saved.m_LineStyle; }
    /// In pixels.
    void SetLineWidth(int width) { m_Saved.m_LineWidth = width; }
    int GetLineWidth() const { return m_Saved.m_LineWidth; }
    /// WIDTH_STARTS (0), WIDTH_CENTERED (1) or WIDTH_ENDS (2).
    void SetIndJustify(int justify) { m_Saved.m_IndJustify = justify; }
    int GetIndJustify() const { return m_Saved.m_IndJustify; }
    /// How open-high-low-close and box-and-whisker charts place GetIndWidth() about their values.
    void SetDepJustify(int justify) { m_Saved.m_DepJustify = justify; }
    int GetDepJustify() const { return m_Saved.m_DepJustify; }
    int GetDepthJustify() const { return m_Saved.m_DepthJustify; }
    /// INDAXIS_X (0) or INDAXIS_Y (1).
    void SetIndAxis(int axis) { m_Saved.m_IndAxis = axis; }
    int GetIndAxis() const { return m_Saved.m_IndAxis; }
    /// What constValue replaces: z (0, 3), y (1, 4), x (2, 5); negative: no projection.
    void SetProjectionPlane(int plane) { m_Saved.m_ProjectionPlane = plane; }
    int GetProjectionPlane() const { return m_Saved.m_ProjectionPlane; }
    /// GROUPS_SIDE_BY_SIDE (0) or GROUPS_STACKED (1); any other draws no bars.
    void SetGroupType(int type) { m_Saved.m_GroupType = type; }
    int GetGroupType() const { return m_Saved.m_GroupType; }
    /// Non-zero: data points have colours of their own (InitSegmentColorsStorage).
    void SetSegmentColorMode(int on) { m_Saved.m_SegmentColorMode = on; }
    int GetSegmentColorMode() const { return m_Saved.m_SegmentColorMode; }
    /// Kept and saved, without effect; see SetContourStyle.
    void SetContourLabelFlag(int flag) { m_Saved.m_ContourLabelFlag = flag; }
    int GetContourLabelFlag() const { return m_Saved.m_ContourLabelFlag; }
    /// COLOR_MODE_FLAT (0), COLOR_MODE_LIT (1) or COLOR_MODE_VALUE (2): in the colours of the
    /// context's colour texture, which replace the lit ones.
    void SetColorMode(int mode) { m_Saved.m_ColorMode = mode; }
    int GetColorMode() const { return m_Saved.m_ColorMode; }
    /// Non-zero clips to the chart's box; what lies exactly on its lower faces is cut away.
    void SetClipping(int on) { m_Saved.m_Clipping = on; }
    int GetClipping() const { return m_Saved.m_Clipping; }
    /// Non-zero outlines filled polygons.
    void SetOutlineMode(int on) { m_Saved.m_OutlineMode = on; }
    int GetOutlineMode() const { return m_Saved.m_OutlineMode; }
    /// In pixels.
    void SetOutlineWidth(double width) { m_Saved.m_OutlineWidth = width; }
    double GetOutlineWidth() const { return m_Saved.m_OutlineWidth; }
    /// The gap between neighbouring filled segments, as a fraction of the independent axis's
    /// working range.
    void SetFillGap(double gap) { m_Saved.m_FillGap = gap; }
    double GetFillGap() const { return m_Saved.m_FillGap; }
    /// A ChartType3D; any other draws nothing.
    void SetChartType(int type) { m_Saved.m_ChartType = type; }
    int GetChartType() const { return m_Saved.m_ChartType; }
    /// What the type is called, as in "bar"; "nothing" for a code that is none.
    const char* GetChartTypeName() const;
    void EnableChartObj(int on) { m_Saved.m_Enable = on; }
    int GetChartObjEnable() const { return m_Saved.m_Enable; }
    /// Six flags, see OHLCChart25D and BoxAndWhiskerChart25D. Null does nothing.
    void SetComboChartFlags(const int* flags);
    void GetComboChartFlags(int* flags) const;

    /// The gap in working units: 0 with outlines off, from 200 data points on, without a transform
    /// or for an independent axis other than 0 and 1.
    double GetSmallGap() const;

    // --- Beyond the plain record: everything is as told above until one of these is set ---------

    /// 1: everything goes between its converted ends on any axis and downward where it is negative,
    /// as told at ChartType3D. 0, the default: each type by the rule told there.
    void SetExactExtents(int on) { m_Added.m_ExactExtents = on; }
    int GetExactExtents() const { return m_Added.m_ExactExtents; }
    /// 0: the segments of an area, range or stacked area, and of a ribbon, touch, and those of the
    /// former have neither faces nor outlines between them, so that a band is one solid. 1, the
    /// default: each segment is a solid of its own with its gap.
    void SetSegmentOutlines(int on) { m_Added.m_SegmentOutlines = on; }
    int GetSegmentOutlines() const { return m_Added.m_SegmentOutlines; }
    /// 1: the bodies of price charts are a third of GetIndWidth() deep, in the middle of the depth
    /// that they would have, and at least as high as the lines are wide, so that a day that closed
    /// where it opened is seen. 0, the default.
    void SetCandleStyle(int on) { m_Added.m_CandleStyle = on; }
    int GetCandleStyle() const { return m_Added.m_CandleStyle; }
    /// 1: light runs evenly over surfaces instead of making every polygon a facet, but for edges
    /// between polygons that meet at more than `creaseAngle` degrees in the box as it is drawn. 0,
    /// the default: each polygon has one colour.
    void SetShading(int smooth, double creaseAngle = 60.0);
    int GetShading() const { return m_Added.m_Shading; }
    double GetCreaseAngle() const { return m_Added.m_CreaseAngle; }
    /// 1: a polygon that looks away from the viewer is lit with its normal turned, as its front is.
    /// 0, the default: its back has no light of its own.
    void SetTwoSided(int on) { m_Added.m_TwoSided = on; }
    int GetTwoSided() const { return m_Added.m_TwoSided; }
    /// 1: in colour mode COLOR_MODE_VALUE the light is seen on the colours, which are darkened by
    /// `least` in the dark up to `most` where there is as much light as on what faces the viewer.
    /// 0, the default: the colours are as they are.
    void SetTextureLighting(int on, double least = 0.75, double most = 1.0);
    int GetTextureLighting() const { return m_Added.m_TextureLighting; }
    /// Contour charts draw whole lines from now on, as TraceContourLines finds them.
    void SetContourStyle(const ContourStyle& style);
    ContourStyle GetContourStyle() const;
    /// Contour charts draw as told at ContourPolysurface3D again.
    void ClearContourStyle();

    /// Markers at the points of scatter and line charts, facing the viewer, `size` points (1/72
    /// inch, at most 1000) wide, in place of a scatter chart's symbol: MARKER_CIRCLE (1)
    /// to MARKER_STAR (7); MARKER_NONE (0), the default, and other kinds: none. They are filled
    /// in the fill colour, or their segment's, and outlined as SetOutlineMode says where the
    /// outline colour is another. With clipping, markers of points outside the box are left out,
    /// the others are whole.
    void SetMarker(int kind, double size);
    int GetMarker() const { return m_Added.m_Marker; }
    double GetMarkerSize() const { return m_Added.m_MarkerSize; }
    /// The width of the markers' outlines, 0 when they have none.
    double GetMarkerOutlineWidth() const;
    /// LINE_JOINS_ROUND (1): lines have round joins and ends and no gaps, and dashes keep their
    /// length along the line; LINE_JOINS_MITRED (2): joins are pointed, as far as `limit` widths
    /// from the inner corner; see COpenGL::SetLineJoins. LINE_JOINS_NONE (0), the default: as
    /// OpenGL draws lines.
    void SetLineJoins(int kind, double limit = 4.0) {
        m_Added.m_LineJoins = kind;
        m_Added.m_MitreLimit = limit;
    }
    int GetLineJoins() const { return m_Added.m_LineJoins; }
    double GetMitreLimit() const { return m_Added.m_MitreLimit; }
    /// How many pixels (points, see CChartView3D::SetLineUnits) each dot of a line style is long,
    /// 1..256. Default 1.
    void SetLineStyleFactor(int factor) { m_Added.m_LineStyleFactor = factor; }
    int GetLineStyleFactor() const { return m_Added.m_LineStyleFactor; }

    /// Of the medians of box-and-whisker charts, in pixels (points, see
    /// CChartView3D::SetLineUnits). 0, the default: as wide as whiskers.
    void SetMedianWidth(double width) { m_Added.m_MedianWidth = width; }
    double GetMedianWidth() const { return m_Added.m_MedianWidth; }

    /// The halo of the texts of SCATTERTEXT3D (CTextObj3D::SetHalo), in ems. Default 0.
    void SetTextHalo(double ems) { m_Added.m_TextHalo = ems; }
    double GetTextHalo() const { return m_Added.m_TextHalo; }
    /// The halo's colour. Default, and for an alpha of 0: the background's.
    void SetTextHaloColor(const RGBDType& color) { m_Added.m_TextHaloColor = color; }
    RGBDType GetTextHaloColor() const { return m_Added.m_TextHaloColor; }
    /// 1: texts of SCATTERTEXT3D that face the viewer stand on their point, or beside it, where
    /// they lie on no other text and on no marker of the chart, and on no line where that can
    /// be. Those that fit nowhere are left out, and told as a diagnostic. 0, the default: each on
    /// its point.
    void SetTextBeside(int on);
    int GetTextBeside() const { return m_Added.m_TextBeside; }
    /// By how many ems x and y the chart moves each text, and by how many device units z towards
    /// the viewer; w 0 leaves it out. Not saved.
    void SetTextShifts(std::vector<point3Dtype> shifts) {
        m_Added.m_TextShifts = std::move(shifts);
    }

    /// What labels of a contour chart stay clear of: surfaces with the transform of this object.
    /// Charts set it for each drawing. Not saved.
    void SetHiddenBy(std::shared_ptr<detail::HidingSurfaces> surfaces) {
        m_Added.m_HiddenBy = std::move(surfaces);
    }

    // --- Drawing and files -------------------------------------------------------------------

    /// Draws the object if it is enabled; an unknown type draws nothing. Raises "OpenGL Parameter
    /// Error" or "Transform Parameter Error" when the object was never bound.
    void DrawChartObj();

    /// Writes the object's record. A failing medium raises "Disk I/O Error"; a null file does
    /// nothing. Counts are written as what is stored; where arrays that an earlier set-up left
    /// behind exclude those of the current type, the latter are written.
    void Save(HANDLE file);
    /// Reads a record. The bar heights of a 3D bar chart are not in it; a contour chart comes back
    /// with 0 data points; stored segment colours switch segment colours on.
    void Load(HANDLE file);

    /// Hands what the plain record lacks, of this and of what it owns, to the chart file.
    void VisitAdded(detail::AddedFields& fields);

    template <class Archive>
    void Record(Archive& record);

 private:
    friend class detail::SetUp;
    friend class detail::ChartDrawing;

    COpenGL* m_pOpenGL = nullptr;
    CTransform3D* m_pTransform = nullptr;
    int m_TransformID = 0;
    detail::ChartObjectSaved m_Saved;
    detail::ChartObjectAdded m_Added;
    detail::Cache<detail::SurfaceNormals> m_Normals;  ///< of the surface, as drawn last
    int m_ClassTag = kSignature;
};

}  // namespace varnel

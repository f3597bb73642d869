// CChartObj3D: one plotted data set of a chart, with its chart type, arrays and appearance.
//
// A set-up operation (BarChart25D, ScatterChart3D, ...) copies the data and selects the type;
// single values and attributes can be changed afterwards. World coordinates are data values, z up.
// A 2.5D chart lies in one vertical plane: "ind" values run along x (independent axis 0) or y (1),
// "dep" values along z, and the plane stands at `constValue` of the other horizontal axis, its
// depth axis.
//
// What is not there is not drawn. A value that is NaN or infinite is no data and leaves a gap, in
// every chart type: its bar, symbol, box or slab is left out, lines and bands are interrupted
// there, a surface polygon with such a corner is left out; in a stack it adds nothing to the
// running total. Counts may be changed freely: a chart ends where one of its arrays does, and what
// lies beyond a stored array is no data. A missing segment colour is the one stored last, a missing
// group colour the fill colour.
#pragma once

#include <cstddef>
#include <memory>

#include "varnel/chartobj/shared_array.h"
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
struct Data25D;
struct GroupView;
struct SegmentColors;
}  // namespace detail

/// The chart types; any other code draws nothing.
enum ChartType3D : int {
    RIBBONCHART25D = 1,
    BARCHART25D = 2,
    BARCHART3D = 3,
    AREAFILLCHART25D = 4,
    AREARANGECHART25D = 5,
    LINECHART25D = 6,
    SCATTERCHART3D = 7,
    LINECHART3D = 8,
    PROJECTIONLINECHART3D = 9,
    GROUPBARCHART25D = 10,
    GROUPRIBBONCHART25D = 11,
    GROUPAREAFILLCHART25D = 12,
    OHLCCHART25D = 13,
    PLANECHART3D = 14,
    SCATTERTEXT3D = 15,
    BOXANDWHISKERCHART25D = 16,
    FLOATINGBARCHART25D = 17,
    PLANECHART25D = 18,
    POLYSURFACECHART2D = 50,
    POLYSURFACECHART3D = 51,
    CONTOURPOLYSURFACE3D = 52,
};

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
    // negative or too large for memory raises "Array New Error" of the storage operation concerned.
    //
    // Widths along the independent and depth axes are in world units; on a logarithmic axis the
    // width of a bar, box or slab is in decades. Justification 0 starts a width at its value, 1
    // centres it there, 2 ends it there.

    /// The data line widened along the depth axis: one quadrilateral per pair of points.
    void RibbonChart25D(const double* ind, const double* dep, double constValue, int n,
                        double depthWidth, const RGBDType& fill, const RGBDType& outline,
                        int depthJustify, int indAxis);

    /// One bar per point, from the base value to the datum.
    void BarChart25D(const double* ind, const double* dep, double baseValue, double constValue,
                     int n, double indWidth, double depthWidth, const RGBDType& fill,
                     const RGBDType& outline, int indJustify, int depthJustify, int indAxis);

    /// One bar per point; the point is the upper corner, heights[i] the level of the bar's foot.
    void BarChart3D(const point3Dtype* points, const double* heights, int n, double indWidth,
                    double depthWidth, const RGBDType& fill, const RGBDType& outline);

    /// The area between the data line and the base value, cut where the line crosses it.
    void AreaFillChart25D(const double* ind, const double* dep, double baseValue, double constValue,
                          int n, double depthWidth, const RGBDType& fill, const RGBDType& outline,
                          int depthJustify, int indAxis);

    /// A band from dep to dep - dep2. With segment colours the whole band has one colour, that of
    /// SetAreaRangeColor.
    void AreaRangeChart25D(const double* ind, const double* dep, const double* dep2,
                           double constValue, int n, double depthWidth, const RGBDType& fill,
                           const RGBDType& outline, int depthJustify, int indAxis);

    /// A polyline; the width, in pixels, is truncated to an integer.
    void LineChart25D(const double* ind, const double* dep, double constValue, int n, int lineStyle,
                      double lineWidth, const RGBDType& color, int indAxis);

    /// A symbol per point: 10 cube, 11 plus, 12 diamond, 13 pyramid, 14 hourglass, 15 arrow, any
    /// other none. Symbols are relSize / 10 device units large, whatever the axes. Each is joined
    /// by a line to its projection, where constValue takes the place of z (projection plane 0 or
    /// 3), y (1 or 4) or x (2 or 5); a negative plane leaves the lines out.
    void ScatterChart3D(const point3Dtype* points, double relSize, int n, int symbol,
                        const RGBDType& fill, const RGBDType& outline, int projectionPlane,
                        double constValue);

    /// A polyline through points; width in pixels.
    void LineChart3D(const point3Dtype* points, int n, int lineStyle, int lineWidth,
                     const RGBDType& color);

    /// The polyline's projection onto plane 0, 1 or 2 at constValue; `first` has no effect.
    void ProjectionLineChart3D(const point3Dtype* points, double first, int n, int lineStyle,
                               int lineWidth, const RGBDType& color, int projectionPlane,
                               double constValue);

    /// Groups of bars: groupType 0 side by side in the width of one bar, rising from the base by
    /// their absolute values; 1 stacked from 0. Element i of group g is groupData[g * n + i].
    void GroupBarChart25D(const double* ind, const double* groupData, double constValue,
                          double baseValue, int n, int numGroups, int groupType, double indWidth,
                          double depthWidth, const RGBDType* groupColors, const RGBDType& outline,
                          int indJustify, int depthJustify, int indAxis);

    /// One ribbon per group, each at the running total of the groups so far.
    void GroupRibbonChart25D(const double* ind, const double* groupData, double constValue, int n,
                             int numGroups, double depthWidth, const RGBDType* groupColors,
                             const RGBDType& outline, int depthJustify, int indAxis);

    /// Stacked bands: group 0 from the base value (0 unless an earlier set-up set another) to its
    /// data, each further group from the running total below it to its own. A negative datum lowers
    /// the total and its band hangs below it, a little in front of the bands that it lies in; a
    /// band is cut where its datum changes sign.
    void GroupAreaFillChart25D(const double* ind, const double* groupData, double constValue, int n,
                               int numGroups, double depthWidth, const RGBDType* groupColors,
                               const RGBDType& outline, int depthJustify, int indAxis);

    /// Prices, as four groups of n: open, high, low, close. Each point occupies GetIndWidth() along
    /// the independent axis, placed about its value by depJustify (pass 1 to centre it), and the
    /// depth width (1 unless an earlier set-up set another). The flags, each 1 when `flags` is
    /// null, switch the parts:
    ///   0  line from low to high, in the middle, in the line colour colors[4]
    ///   1  tic of the open, from the line to the left, in the line colour
    ///   2  tic of the close, from the line to the right, in the line colour
    ///   3  `symbol` at the left end of the open, in colors[0]
    ///   4  `symbol2` at the right end of the close, in colors[3]
    ///   5  body from open to close, in colors[1] where the price rose or held, colors[2] where it
    ///      fell. This one is not among `flags`: SetComboChartFlags switches it.
    /// Candlesticks are flags 0 and 5. Symbols are as in ScatterChart3D. In segment colour mode the
    /// lines of a point have its segment colour. Points that lack one of the four are left out.
    void OHLCChart25D(const double* ind, const double* groupData, double constValue, int n,
                      int symbol, int symbol2, double relSize, int lineWidth,
                      const RGBDType* colors, const RGBDType& outline, int depthJustify,
                      int depJustify, int indAxis, const int* flags);

    /// A slab per point, 0.1 working units thick; the point is its lower corner.
    void PlaneChart3D(const point3Dtype* points, int n, double indWidth, double depthWidth,
                      const RGBDType& fill, const RGBDType& outline);

    /// A text per point, centred on it, in a text plane (0..2 fixed, 3 facing the viewer), joined
    /// to its projection as in ScatterChart3D. Draws in the context's current font.
    void ScatterText3D(const point3Dtype* points, const CString* strings, int n, double relSize,
                       int textPlane, const RGBDType& color, int projectionPlane,
                       double constValue);

    /// Boxes, as six groups of n: minimum, lower quartile, median, upper quartile, maximum, mean
    /// (BoxStatistics of box_statistics.h computes them). A box of indWidth x depthWidth, placed
    /// about its value by depJustify (pass 1 to centre it), spans the quartiles; whiskers with caps
    /// of half its width reach the extremes; the mean is `symbol` on the box's two faces across the
    /// depth, drawn when `flag` (combo flag 0) is not 0. The other combo flags are not used.
    /// Six colours: 0 lower whisker, 1 box below the median, 2 median line, 3 box above the median,
    /// 4 upper whisker, 5 mean. A point that lacks one of the first five is left out.
    void BoxAndWhiskerChart25D(const double* ind, const double* groupData, double constValue, int n,
                               double indWidth, double depthWidth, int symbol, double relSize,
                               int lineWidth, const RGBDType* colors, const RGBDType& outline,
                               int depthJustify, int depJustify, int indAxis, int flag);

    /// Bars from dep downward by heights.
    void FloatingBarChart25D(const double* ind, const double* dep, const double* heights,
                             double constValue, int n, double indWidth, double depthWidth,
                             const RGBDType& fill, const RGBDType& outline, int indJustify,
                             int depthJustify, int indAxis);

    /// A slab per point at the height of its datum, 2 % of the working range of z thick.
    void PlaneChart25D(const double* ind, const double* dep, double constValue, int n,
                       double indWidth, double depthWidth, const RGBDType& fill,
                       const RGBDType& outline, int indJustify, int depthJustify, int indAxis);

    /// The surface flattened onto projection plane 0, 1 or 2 at constValue. The surface is copied.
    void PolysurfaceChart2D(CPolysurface* surface, double constValue, int projectionPlane);

    /// The surface's polygons in their colours.
    void PolysurfaceChart3D(CPolysurface* surface);

    /// Contour lines of the surface at numContours values, drawn at z = constValue; there are
    /// numContours + 1 colours.
    void ContourPolysurface3D(CPolysurface* surface, const double* values, const RGBDType* colors,
                              int numContours, double constValue, int contourLabelFlag);

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
    void SetGroupDataStorage(const double* ind, const double* group, int n, int numGroups,
                             const RGBDType* colors);
    void SetBarHeightsStorage(const double* heights);
    void SetContourStorage(CPolysurface* surface, const double* values, const RGBDType* colors,
                           int numContours);
    void Set3DPointStorage(const point3Dtype* points, int n);
    void SetPolysurface(CPolysurface* surface);
    void SetDataStringsStorage(const point3Dtype* points, const CString* strings, int n);

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
    void SetPolysurfacePoint(int i, const point3Dtype& point);
    point3Dtype GetPolysurfacePoint(int i) const;
    /// The object's copy of its surface, null when it has none.
    const CPolysurface* GetPolysurface() const { return m_pPolysurface.get(); }
    void SetScatterTextString(int i, const CString& text);
    CString GetScatterTextString(int i) const;

    /// The one colour of an area range in segment colour mode, the fill colour unless it is set. It
    /// is kept and saved behind the segment colours of all data points, which must be stored first.
    /// Raises "Array New Error".
    void SetAreaRangeColor(const RGBDType& color);
    RGBDType GetAreaRangeColor() const;

    // --- Attributes: stored as they are ------------------------------------------------------

    void SetRelSize(double size) { m_RelSize = size; }
    double GetRelSize() const { return m_RelSize; }
    void SetTextPlane(int plane) { m_TextPlane = plane; }
    int GetTextPlane() const { return m_TextPlane; }
    void SetFillColor(const RGBDType& color) { m_FillColor = color; }
    RGBDType GetFillColor() const { return m_FillColor; }
    void SetOutlineColor(const RGBDType& color) { m_OutlineColor = color; }
    RGBDType GetOutlineColor() const { return m_OutlineColor; }
    /// The colour of the lines of open-high-low-close charts.
    RGBDType GetLineColor() const { return m_LineColor; }
    void SetSymbol(int symbol) { m_Symbol = symbol; }
    int GetSymbol() const { return m_Symbol; }
    void SetSymbol2(int symbol) { m_Symbol2 = symbol; }
    int GetSymbol2() const { return m_Symbol2; }
    void SetIndWidth(double width) { m_IndWidth = width; }
    double GetIndWidth() const { return m_IndWidth; }
    double GetBaseValue() const { return m_BaseValue; }
    double GetConstValue() const { return m_ConstValue; }
    void SetNumDataPnts(int n) { m_NumDataPnts = n; }
    int GetNumDataPnts() const { return m_NumDataPnts; }
    void SetNumGroups(int n) { m_NumGroups = n; }
    int GetNumGroups() const { return m_NumGroups; }
    void SetNumContours(int n) { m_NumContours = n; }
    int GetNumContours() const { return m_NumContours; }
    void SetLineStyle(int style) { m_LineStyle = style; }
    int GetLineStyle() const { return m_LineStyle; }
    /// In pixels.
    void SetLineWidth(int width) { m_LineWidth = width; }
    int GetLineWidth() const { return m_LineWidth; }
    void SetIndJustify(int justify) { m_IndJustify = justify; }
    int GetIndJustify() const { return m_IndJustify; }
    /// How open-high-low-close and box-and-whisker charts place GetIndWidth() about their values.
    void SetDepJustify(int justify) { m_DepJustify = justify; }
    void SetIndAxis(int axis) { m_IndAxis = axis; }
    int GetIndAxis() const { return m_IndAxis; }
    void SetProjectionPlane(int plane) { m_ProjectionPlane = plane; }
    int GetProjectionPlane() const { return m_ProjectionPlane; }
    void SetGroupType(int type) { m_GroupType = type; }
    int GetGroupType() const { return m_GroupType; }
    void SetSegmentColorMode(int on) { m_SegmentColorMode = on; }
    int GetSegmentColorMode() const { return m_SegmentColorMode; }
    void SetContourLabelFlag(int flag) { m_ContourLabelFlag = flag; }
    int GetContourLabelFlag() const { return m_ContourLabelFlag; }
    /// 0 flat colours, 1 lit, 2 lit and coloured by value through the context's colour texture.
    void SetColorMode(int mode) { m_ColorMode = mode; }
    int GetColorMode() const { return m_ColorMode; }
    /// Non-zero clips to the chart's box; what lies exactly on its lower faces is cut away.
    void SetClipping(int on) { m_Clipping = on; }
    int GetClipping() const { return m_Clipping; }
    /// Non-zero outlines filled polygons.
    void SetOutlineMode(int on) { m_OutlineMode = on; }
    int GetOutlineMode() const { return m_OutlineMode; }
    /// In pixels.
    void SetOutlineWidth(double width) { m_OutlineWidth = width; }
    double GetOutlineWidth() const { return m_OutlineWidth; }
    /// The gap between neighbouring filled segments, as a fraction of the independent axis's
    /// working range.
    void SetFillGap(double gap) { m_FillGap = gap; }
    double GetFillGap() const { return m_FillGap; }
    void SetChartType(int type) { m_ChartType = type; }
    int GetChartType() const { return m_ChartType; }
    void EnableChartObj(int on) { m_Enable = on; }
    int GetChartObjEnable() const { return m_Enable; }
    /// Six flags; their meaning is told at OHLCChart25D and BoxAndWhiskerChart25D. Null does
    /// nothing.
    void SetComboChartFlags(const int* flags);
    void GetComboChartFlags(int* flags) const;

    /// The gap in working units: 0 with outlines off, from 200 data points on, without a transform
    /// or for an independent axis other than 0 and 1.
    double GetSmallGap() const;

    // --- Drawing and files -------------------------------------------------------------------

    /// Draws the object if it is enabled; an unknown type draws nothing. Raises "OpenGL Parameter
    /// Error" or "Transform Parameter Error" when the object was never bound.
    void DrawChartObj();

    /// Writes the object's record. A failing medium raises "Disk I/O Error"; a null file does
    /// nothing. Counts are written as what is stored.
    void Save(HANDLE file);
    /// Reads a record. The bar heights of a 3D bar chart are not in it; a contour chart comes back
    /// with 0 data points; stored segment colours switch segment colours on.
    void Load(HANDLE file);

    /// Hands what the plain record lacks, of this and of what it owns, to the chart file.
    void VisitAdded(detail::AddedFields& fields);

    template <class Archive>
    void Record(Archive& record);

 private:
    void MatchCountsToStorages();
    template <class Archive>
    void RecordArrays(Archive& record);
    template <class Archive>
    void RecordSurface(Archive& record);

    void SetUpStackedGroups(const double* ind, const double* groupData, double constValue, int n,
                            int numGroups, double depthWidth, const RGBDType* groupColors,
                            const RGBDType& outline, int depthJustify, int indAxis);

    static double calcbgoffset(double width, int justify);
    void CheckSetSegmentColor(std::size_t i);
    void ProjectionLine(const point3Dtype& p, const RGBDType& color);

    // What the geometry of a chart is computed from.
    detail::GroupView GetGroups() const;
    detail::Data25D GetData25D() const;
    detail::SegmentColors GetSegmentColors() const;

    using Routine = void (CChartObj3D::*)();
    static Routine FindRoutine(int chartType);
    void DrawRibbonChart25D();
    void DrawBarChart25D();
    void DrawBarChart3D();
    void DrawAreaFillChart25D();
    void DrawAreaRangeChart25D();
    void DrawLineChart25D();
    void DrawScatterChart3D();
    void DrawLineChart3D();
    void DrawProjectionLineChart3D();
    void DrawGroupBarChart25D();
    void DrawGroupRibbonChart25D();
    void DrawGroupAreaFillChart25D();
    void DrawOHLCChart25D();
    void DrawPlaneChart3D();
    void DrawScatterText3D();
    void DrawBoxAndWhiskerChart25D();
    void DrawFloatingBarChart25D();
    void DrawPlaneChart25D();
    void DrawPolysurfaceChart2D();
    void DrawPolysurfaceChart3D();
    void DrawContourPolysurface3D();

    COpenGL* m_pOpenGL = nullptr;
    CTransform3D* m_pTransform = nullptr;
    double m_ConstValue;
    double m_BaseValue;
    double m_RelSize;
    double m_DepthWidth;
    double m_IndWidth;
    double m_FillGap;
    double m_OutlineWidth;
    double m_PlaneThicknessFactor;
    RGBDType m_FillColor;
    RGBDType m_OutlineColor;
    RGBDType m_LineColor;
    int m_Symbol;
    int m_Symbol2;
    int m_NumDataPnts;
    int m_NumDepData2;
    int m_NumBarHeights;
    int m_Num3DPoints;
    int m_NumGroupColors;
    int m_NumSegmentColors;
    int m_NumDataStrings;
    int m_bPolysurface;
    int m_NumGroups;
    int m_LineWidth;
    int m_LineStyle;
    int m_IndJustify;
    int m_DepJustify;
    int m_DepthJustify;
    int m_IndAxis;
    int m_ProjectionPlane;
    int m_TextPlane;
    int m_GroupType;
    int m_ChartType;
    int m_NumContours;
    int m_ColorMode;
    int m_ContourLabelFlag;
    int m_SegmentColorMode;
    int m_Clipping;
    int m_OutlineMode;
    int m_ComboChartFlags[6];
    int m_Enable;
    SharedArray<double> m_pIndData;
    SharedArray<double> m_pDepData;
    SharedArray<double> m_pGroupData;
    SharedArray<double> m_pDepData2;
    SharedArray<double> m_pBarHeights;
    SharedArray<point3Dtype> m_p3DPoints;
    SharedArray<RGBDType> m_pGroupColors;
    SharedArray<RGBDType> m_pSegmentColors;
    std::shared_ptr<CPolysurface> m_pPolysurface;
    SharedArray<CString> m_pDataStrings;
    int m_ClassTag;
    int m_TransformID = 0;
};

}  // namespace varnel

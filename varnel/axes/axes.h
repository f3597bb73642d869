// CAxes3D: the frame of one chart: three axes with their labels, and the six planes of its box.
//
// Planes 0, 1, 2 lie at the minimum of z, y and x, planes 3, 4, 5 at their maximum; the first and
// the second axis of a plane are x y (0, 3), x z (1, 4) and y z (2, 5). Each plane can have a grid
// and either a flat coloured plane or a wall. Limits are in data units; wall sizes are fractions of
// the working range of the plane's normal axis. Everything is off until it is switched on.
// Operations on an axis outside 0..2 or a plane outside 0..5 do nothing and return 0, null or
// black.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <type_traits>
#include <vector>

#include "varnel/axes/axis.h"
#include "varnel/axes/axis_labels.h"
#include "varnel/foundation/colors.h"
#include "varnel/foundation/export.h"
#include "varnel/foundation/file.h"
#include "varnel/foundation/points.h"
#include "varnel/foundation/types.h"

namespace varnel {

namespace detail {
class AddedFields;
struct AxesChoice;
struct AxesExtents;
struct AxesPlacement;
struct AxisContent;
struct BoxView;
class KnownTics;
}  // namespace detail

/// How the frame goes with the view; plain numbers may be given as well.
enum FollowView3D : int {
    FOLLOW_OFF = 0,   ///< everything stays where it was put
    FOLLOW_VIEW = 1,  ///< chosen for each view by itself
    FOLLOW_TURN = 2,  ///< the same, but near a switch the choice of the last drawing is kept
};

/// The planes of the box; plain numbers may be given as well.
enum AxesPlane3D : int {
    PLANE_MIN_Z = 0,  ///< below: the x-y plane at the minimum of z
    PLANE_MIN_Y = 1,  ///< x-z
    PLANE_MIN_X = 2,  ///< y-z
    PLANE_MAX_Z = 3,
    PLANE_MAX_Y = 4,
    PLANE_MAX_X = 5,
};

class VARNEL_API CAxes3D {
 public:
    static constexpr int kSignature = 202;

    /// How often SetAxesDefaults ran; the first word of every record, which Load takes over.
    static int nSelfID;

    /// Defaults alone.
    CAxes3D();
    /// Axes between two corners of the box, in data units. Context and transform are not owned.
    CAxes3D(COpenGL* gl, CTransform3D* transform, const point3Dtype& minPoint,
            const point3Dtype& maxPoint);
    ~CAxes3D();
    CAxes3D(const CAxes3D&) = delete;
    CAxes3D& operator=(const CAxes3D&) = delete;

    int GetSignature() const { return m_nSignature; }

    /// Gives every member its default, with new axes and labels, and counts the object. Raises
    /// "Object New Error".
    void SetAxesDefaults();
    /// Binds axes and labels to a context ("OpenGL Parameter Error") and a transform ("Transform
    /// Parameter Error"), and sets the limits of the axes from the two corners.
    void InitAxes(COpenGL* gl, CTransform3D* transform);
    void SetAxesLimits(const point3Dtype& minPoint, const point3Dtype& maxPoint);
    /// Deletes axes and labels; what is drawn then is nothing, what is saved are default ones.
    void FreeAxes();

    /// The axis or the labels of axis 0..2, owned here; null otherwise.
    CAxis3D* GetAxis(int axis) const { return Part<CAxis3D>(axis); }
    CAxisLabels3D* GetAxisLabels(int axis) const { return Part<CAxisLabels3D>(axis); }

    /// The identifier of the transform, for binding again after Load.
    int GetTransformID() const { return m_Saved.m_nTransformID; }
    void SetTransformID(int id) { m_Saved.m_nTransformID = id; }
    CTransform3D* GetTransform() const { return m_pTransform; }

    /// Draws lines and tics, then planes and grids, then labels and titles.
    void DrawAxes();

    // --- Following the view, names and dates ----------------------------------------------------

    /// Whether the frame goes with the view (FollowView3D). Then walls and grids stand on the three
    /// faces of the box that look away from the viewer, in the attributes of whichever of the two
    /// opposite planes is switched on; axis lines stand on edges beyond which nothing of the box
    /// is, tics point away from it, and labels and titles face the viewer, touch neither the box
    /// nor each other, and are thinned out, shrunk, broken or turned where room is short.
    /// Intercepts, tic and label directions, label planes, rotations and justifications are kept
    /// but not used. Default FOLLOW_OFF.
    void SetFollowView(int mode);
    int GetFollowView() const { return m_Added.followView; }

    /// Names instead of numbers on an axis: each at its position, 1, 2, .. by default, in limits
    /// that leave half of the smallest distance at both ends. Tics stand at the names, or with
    /// `ticsBetween` between them. Fewer positions than names leave the other names out. Nothing
    /// for no names or an axis outside 0..2.
    void SetCategories(int axis, std::span<const CString> names,
                       std::span<const double> positions = {}, int ticsBetween = 0);

    /// The values of an axis are days since 1970-01-01, fractions the time of the day: tics and
    /// labels stand at natural steps of clock and calendar, chosen anew at every drawing, and tell
    /// the day, month or year once where it changes. A format as of FormatTime ("%e %b %Y") writes
    /// every label. `on` 0 returns to numbers.
    void SetAxisDates(int axis, int on = 1, const CString& format = {});
    int GetAxisDates(int axis) const { return Value(m_Added.dates, axis); }

    /// 1: tics and labels of numbers are chosen anew at every drawing, by the axis' limits and its
    /// length on the screen: 4 to 8 labels where there is room, as short as they can be, a factor
    /// that all share behind the title. `whole` not 0: on whole numbers only. 0: as set. The axis'
    /// tics and label strings are overwritten.
    void SetAutoTics(int axis, int on, int whole = 0);
    int GetAutoTics(int axis) const { return Value(m_Added.autoTics, axis); }

    /// While the frame follows the view: the lengths of major and minor tics in heights of the
    /// labels, whatever the view, instead of those of the axes. 0, the default: those of the axes.
    void SetTicHeights(double major, double minor);

    /// What the axes would draw now, in a viewport of that many pixels; nothing is drawn. Before
    /// the first drawing or FitToView of their chart the context has no font: the box is measured
    /// in the proportions of that viewport, texts take no room and none is in the result. The
    /// transform's chart matrix is current afterwards.
    detail::AxesExtents MeasureAxes(int width, int height);

    // --- What is shown; axes 0 x, 1 y, 2 z, planes by AxesPlane3D --------------------------------

    void EnableAxis(int axis, int on) { Assign(m_Saved.m_bAxisEnable, axis, on); }
    int GetAxisEnable(int axis) const { return Value(m_Saved.m_bAxisEnable, axis); }
    void EnableAxisLabels(int axis, int on) { Assign(m_Saved.m_bAxisLabelsEnable, axis, on); }
    int GetAxisLabelsEnable(int axis) const { return Value(m_Saved.m_bAxisLabelsEnable, axis); }
    void EnableGrid(int plane, int on) { Assign(plane, &PlaneGrid::m_bGridEnable, on); }
    int GetGridEnable(int plane) const { return Value(plane, &PlaneGrid::m_bGridEnable); }
    void EnableWall(int plane, int on) { Assign(plane, &Wall::m_bWallEnable, on); }
    int GetWallEnable(int plane) const { return Value(plane, &Wall::m_bWallEnable); }

    // --- Planes, grids and walls -----------------------------------------------------------------

    /// A grid with a line at every n-th tic of the plane's first and second axis (0: none there),
    /// switched on. With a wallFlag each line goes on across the thickness of the wall.
    void SetPlaneGrid(int plane, int nthTic1, int nthTic2, const RGBDType& color, double thickness,
                      int style, int wallFlag);
    /// Sets colour and thickness; the style is not taken.
    void SetPlaneGridAttrib(int plane, const RGBDType& color, double thickness, int style);
    void SetPlaneGridNthTic1(int plane, int n) { Assign(plane, &PlaneGrid::m_GridNthTic1, n); }
    int GetPlaneGridNthTic1(int plane) const { return Value(plane, &PlaneGrid::m_GridNthTic1); }
    void SetPlaneGridNthTic2(int plane, int n) { Assign(plane, &PlaneGrid::m_GridNthTic2, n); }
    int GetPlaneGridNthTic2(int plane) const { return Value(plane, &PlaneGrid::m_GridNthTic2); }
    void SetPlaneGridColor(int plane, const RGBDType& color) {
        Assign(plane, &PlaneGrid::m_GridColor, color);
    }
    RGBDType GetPlaneGridColor(int plane) const { return Value(plane, &PlaneGrid::m_GridColor); }
    void SetPlaneGridThickness(int plane, double pixels) {
        Assign(plane, &PlaneGrid::m_GridThickness, pixels);
    }
    double GetPlaneGridThickness(int plane) const {
        return Value(plane, &PlaneGrid::m_GridThickness);
    }
    /// A line style 0..15 of the context. Default 1, dots.
    void SetPlaneGridStyle(int plane, int style) { Assign(plane, &PlaneGrid::m_GridStyle, style); }
    int GetPlaneGridStyle(int plane) const { return Value(plane, &PlaneGrid::m_GridStyle); }
    void SetPlaneGridWallFlag(int plane, int flag) {
        Assign(plane, &PlaneGrid::m_GridWallFlag, flag);
    }
    int GetPlaneGridWallFlag(int plane) const { return Value(plane, &PlaneGrid::m_GridWallFlag); }

    /// A flat plane, switched on.
    void SetPlaneColor(int plane, const RGBDType& fill, const RGBDType& outline);
    /// A wall, switched on.
    void SetWallPlane(int plane, const RGBDType& fill, const RGBDType& outline);
    /// The colour of a plane or wall, without switching it on.
    void SetWallColor(int plane, const RGBDType& fill) { Assign(plane, &Wall::m_WallColor, fill); }
    RGBDType GetWallColor(int plane) const { return Value(plane, &Wall::m_WallColor); }
    /// Also the thickness by which labels stand off: of the x axis for planes 0 and 3, of the y and
    /// z axes for planes 2 and 5, of none for planes 1 and 4.
    void SetWallThickness(int plane, double fraction);
    double GetWallThickness(int plane) const { return Value(plane, &Wall::m_WallThickness); }
    /// The gap between the box and its plane or wall.
    void SetWallOffset(int plane, double fraction) { Assign(plane, &Wall::m_WallOffset, fraction); }
    double GetWallOffset(int plane) const { return Value(plane, &Wall::m_WallOffset); }
    void SetOutlineWidth(int plane, double pixels) { Assign(plane, &Wall::m_OutlineWidth, pixels); }
    double GetOutlineWidth(int plane) const { return Value(plane, &Wall::m_OutlineWidth); }
    void SetOutlineColor(int plane, const RGBDType& color) {
        Assign(plane, &Wall::m_OutlineColor, color);
    }
    RGBDType GetOutlineColor(int plane) const { return Value(plane, &Wall::m_OutlineColor); }
    /// Whether planes and walls are outlined.
    void SetOutlineMode(int mode) { m_Saved.m_OutlineMode = mode; }
    int GetOutlineMode() const { return m_Saved.m_OutlineMode; }
    /// The context's colour mode while a plane is drawn: 0 flat, 1 lit (the default), 2 lit and
    /// textured.
    void SetPlaneColorMode(int plane, int mode) { Assign(m_Saved.m_PlaneColorMode, plane, mode); }
    int GetPlaneColorMode(int plane) const { return Value(m_Saved.m_PlaneColorMode, plane); }
    /// The same while an axis is drawn.
    void SetAxisColorMode(int axis, int mode);
    int GetAxisColorMode(int axis) const { return Value(m_Saved.m_AxisColorMode, axis); }

    // --- Passed on to CAxis3D, see there ---------------------------------------------------------

    void SetAxisLimits(int axis, double start, double stop) {
        Tell(axis, &CAxis3D::SetAxisLimits, start, stop);
    }
    void SetAxisTics(int axis, double centerPoint, double ticSpace, int nthTicMajor,
                     double minorTicLength, double majorTicLength, int ticDir) {
        Tell(axis, &CAxis3D::SetAxisTics, centerPoint, ticSpace, nthTicMajor, minorTicLength,
             majorTicLength, ticDir);
    }
    void SetAxisIntercept(int axis, double i1, double i2) {
        Tell(axis, &CAxis3D::SetAxisIntercept, i1, i2);
    }
    void SetAxisAttrib(int axis, const RGBDType& axisColor, const RGBDType& ticColor,
                       double thickness, int style) {
        Tell(axis, &CAxis3D::SetAxisAttrib, axisColor, ticColor, thickness, style);
    }
    void SetAxisMin(int axis, double v) { Tell(axis, &CAxis3D::SetAxisMin, v); }
    double GetAxisMin(int axis) const { return Ask(axis, &CAxis3D::GetAxisMin); }
    void SetAxisMax(int axis, double v) { Tell(axis, &CAxis3D::SetAxisMax, v); }
    double GetAxisMax(int axis) const { return Ask(axis, &CAxis3D::GetAxisMax); }
    void SetAxisIntercept1(int axis, double v) { Tell(axis, &CAxis3D::SetAxisIntercept1, v); }
    double GetAxisIntercept1(int axis) const { return Ask(axis, &CAxis3D::GetAxisIntercept1); }
    void SetAxisIntercept2(int axis, double v) { Tell(axis, &CAxis3D::SetAxisIntercept2, v); }
    double GetAxisIntercept2(int axis) const { return Ask(axis, &CAxis3D::GetAxisIntercept2); }
    void SetAxisColor(int axis, const RGBDType& color) {
        Tell(axis, &CAxis3D::SetAxisColor, color);
    }
    RGBDType GetAxisColor(int axis) const { return Ask(axis, &CAxis3D::GetAxisColor); }
    void SetAxisTicColor(int axis, const RGBDType& color) {
        Tell(axis, &CAxis3D::SetAxisTicColor, color);
    }
    RGBDType GetAxisTicColor(int axis) const { return Ask(axis, &CAxis3D::GetAxisTicColor); }
    void SetAxisThickness(int axis, double pixels) {
        Tell(axis, &CAxis3D::SetAxisThickness, pixels);
    }
    double GetAxisThickness(int axis) const { return Ask(axis, &CAxis3D::GetAxisThickness); }
    void SetAxisStyle(int axis, int style) { Tell(axis, &CAxis3D::SetAxisStyle, style); }
    int GetAxisStyle(int axis) const { return Ask(axis, &CAxis3D::GetAxisStyle); }
    void SetAxisCenterPoint(int axis, double v) { Tell(axis, &CAxis3D::SetAxisCenterPoint, v); }
    double GetAxisCenterPoint(int axis) const { return Ask(axis, &CAxis3D::GetAxisCenterPoint); }
    void SetAxisTicSpace(int axis, double v) { Tell(axis, &CAxis3D::SetAxisTicSpace, v); }
    double GetAxisTicSpace(int axis) const { return Ask(axis, &CAxis3D::GetAxisTicSpace); }
    void SetAxisMinorTicLength(int axis, double fraction) {
        Tell(axis, &CAxis3D::SetAxisMinorTicLength, fraction);
    }
    double GetAxisMinorTicLength(int axis) const {
        return Ask(axis, &CAxis3D::GetAxisMinorTicLength);
    }
    void SetAxisMajorTicLength(int axis, double fraction) {
        Tell(axis, &CAxis3D::SetAxisMajorTicLength, fraction);
    }
    double GetAxisMajorTicLength(int axis) const {
        return Ask(axis, &CAxis3D::GetAxisMajorTicLength);
    }
    void SetAxisTicDir(int axis, int dir) { Tell(axis, &CAxis3D::SetAxisTicDir, dir); }
    int GetAxisTicDir(int axis) const { return Ask(axis, &CAxis3D::GetAxisTicDir); }
    void SetAxisNthTicMajor(int axis, int n) { Tell(axis, &CAxis3D::SetAxisNthTicMajor, n); }
    int GetAxisNthTicMajor(int axis) const { return Ask(axis, &CAxis3D::GetAxisNthTicMajor); }
    double GetAxisRange(int axis) const { return Ask(axis, &CAxis3D::GetAxisRange); }
    double GetAxisStart(int axis) const { return Ask(axis, &CAxis3D::GetAxisStart); }
    double GetAxisStop(int axis) const { return Ask(axis, &CAxis3D::GetAxisStop); }
    int GetAxisScaleMode(int axis) const { return Ask(axis, &CAxis3D::GetAxisScaleMode); }

    // --- Passed on to CAxisLabels3D, see there ---------------------------------------------------

    void SetAxisLabels(int axis, int plane, int rotation, int dir, int decimals, int ends,
                       const RGBDType& color, const CString* strings = nullptr, int count = 0) {
        if (CAxisLabels3D* labels = GetAxisLabels(axis))
            labels->SetAxisLabels(plane, rotation, dir, decimals, ends, color, strings, count);
    }
    void SetAxisLabels(int axis, int plane, int rotation, int dir, int decimals, int ends,
                       const RGBDType& color, std::span<const CString> strings) {
        if (CAxisLabels3D* labels = GetAxisLabels(axis))
            labels->SetAxisLabels(plane, rotation, dir, decimals, ends, color, strings);
    }
    void SetAxisLabelsFlipX(int axis, int flip) {
        Tell(axis, &CAxisLabels3D::SetAxisLabelsFlipX, flip);
    }
    int GetAxisLabelsFlipX(int axis) const { return Ask(axis, &CAxisLabels3D::GetAxisLabelsFlipX); }
    void SetAxisLabelsFlipY(int axis, int flip) {
        Tell(axis, &CAxisLabels3D::SetAxisLabelsFlipY, flip);
    }
    int GetAxisLabelsFlipY(int axis) const { return Ask(axis, &CAxisLabels3D::GetAxisLabelsFlipY); }
    void SetAxisTitleFlipX(int axis, int flip) {
        Tell(axis, &CAxisLabels3D::SetAxisTitleFlipX, flip);
    }
    int GetAxisTitleFlipX(int axis) const { return Ask(axis, &CAxisLabels3D::GetAxisTitleFlipX); }
    void SetAxisTitleFlipY(int axis, int flip) {
        Tell(axis, &CAxisLabels3D::SetAxisTitleFlipY, flip);
    }
    int GetAxisTitleFlipY(int axis) const { return Ask(axis, &CAxisLabels3D::GetAxisTitleFlipY); }
    void SetAxisLabelsNthTic(int axis, int n) {
        Tell(axis, &CAxisLabels3D::SetAxisLabelsNthTic, n);
    }
    int GetAxisLabelsNthTic(int axis) const {
        return Ask(axis, &CAxisLabels3D::GetAxisLabelsNthTic);
    }
    void SetAxisLabelsFormat(int axis, int format) {
        Tell(axis, &CAxisLabels3D::SetAxisLabelsFormat, format);
    }
    int GetAxisLabelsFormat(int axis) const {
        return Ask(axis, &CAxisLabels3D::GetAxisLabelsFormat);
    }
    void SetAxisLabelsPlane(int axis, int plane) {
        Tell(axis, &CAxisLabels3D::SetAxisLabelsPlane, plane);
    }
    int GetAxisLabelsPlane(int axis) const { return Ask(axis, &CAxisLabels3D::GetAxisLabelsPlane); }
    void SetAxisLabelsTicOffset(int axis, double offset) {
        Tell(axis, &CAxisLabels3D::SetAxisLabelsTicOffset, offset);
    }
    double GetAxisLabelsTicOffset(int axis) const {
        return Ask(axis, &CAxisLabels3D::GetAxisLabelsTicOffset);
    }
    void SetAxisLabelsXJust(int axis, int just) {
        Tell(axis, &CAxisLabels3D::SetAxisLabelsXJust, just);
    }
    int GetAxisLabelsXJust(int axis) const { return Ask(axis, &CAxisLabels3D::GetAxisLabelsXJust); }
    void SetAxisLabelsYJust(int axis, int just) {
        Tell(axis, &CAxisLabels3D::SetAxisLabelsYJust, just);
    }
    int GetAxisLabelsYJust(int axis) const { return Ask(axis, &CAxisLabels3D::GetAxisLabelsYJust); }
    void SetAxisLabelsRotation(int axis, int degrees) {
        Tell(axis, &CAxisLabels3D::SetAxisLabelsRotation, degrees);
    }
    int GetAxisLabelsRotation(int axis) const {
        return Ask(axis, &CAxisLabels3D::GetAxisLabelsRotation);
    }
    void SetAxisLabelsDir(int axis, int dir) { Tell(axis, &CAxisLabels3D::SetAxisLabelsDir, dir); }
    int GetAxisLabelsDir(int axis) const { return Ask(axis, &CAxisLabels3D::GetAxisLabelsDir); }
    void SetAxisLabelsDecimals(int axis, int decimals) {
        Tell(axis, &CAxisLabels3D::SetAxisLabelsDecimals, decimals);
    }
    int GetAxisLabelsDecimals(int axis) const {
        return Ask(axis, &CAxisLabels3D::GetAxisLabelsDecimals);
    }
    void SetAxisLabelsEnds(int axis, int mask) {
        Tell(axis, &CAxisLabels3D::SetAxisLabelsEnds, mask);
    }
    int GetAxisLabelsEnds(int axis) const { return Ask(axis, &CAxisLabels3D::GetAxisLabelsEnds); }
    void SetAxisLabelsColor(int axis, const RGBDType& color) {
        Tell(axis, &CAxisLabels3D::SetAxisLabelsColor, color);
    }
    RGBDType GetAxisLabelsColor(int axis) const {
        return Ask(axis, &CAxisLabels3D::GetAxisLabelsColor);
    }
    void SetAxisLabelsSize(int axis, double size) {
        Tell(axis, &CAxisLabels3D::SetAxisLabelsSize, size);
    }
    double GetAxisLabelsSize(int axis) const {
        return Ask(axis, &CAxisLabels3D::GetAxisLabelsSize);
    }
    void SetAxisTitleSize(int axis, double size) {
        Tell(axis, &CAxisLabels3D::SetAxisTitleSize, size);
    }
    double GetAxisTitleSize(int axis) const { return Ask(axis, &CAxisLabels3D::GetAxisTitleSize); }
    void SetAxisTitleColor(int axis, const RGBDType& color) {
        Tell(axis, &CAxisLabels3D::SetAxisTitleColor, color);
    }
    RGBDType GetAxisTitleColor(int axis) const {
        return Ask(axis, &CAxisLabels3D::GetAxisTitleColor);
    }
    void SetAxisTitlePlane(int axis, int plane) {
        Tell(axis, &CAxisLabels3D::SetAxisTitlePlane, plane);
    }
    int GetAxisTitlePlane(int axis) const { return Ask(axis, &CAxisLabels3D::GetAxisTitlePlane); }
    void SetAxisLabelsStrings(int axis, const CString* strings, int count) {
        if (CAxisLabels3D* labels = GetAxisLabels(axis))
            labels->SetAxisLabelsStrings(strings, count);
    }
    void SetAxisLabelsStrings(int axis, std::span<const CString> strings) {
        if (CAxisLabels3D* labels = GetAxisLabels(axis)) labels->SetAxisLabelsStrings(strings);
    }
    CString* GetAxisLabelsStrings(int axis) const {
        return Ask(axis, &CAxisLabels3D::GetAxisLabelsStrings);
    }
    int GetNumAxisLabelStrings(int axis) const {
        return Ask(axis, &CAxisLabels3D::GetNumAxisLabelsStrings);
    }
    int GetNumAxisLabelsStrings(int axis) const { return GetNumAxisLabelStrings(axis); }
    void EnableAxisLabelsStrings(int axis, int on) {
        Tell(axis, &CAxisLabels3D::EnableAxisLabelsStrings, on);
    }
    int GetAxisLabelsStringEnable(int axis) const {
        return Ask(axis, &CAxisLabels3D::GetAxisLabelsStringEnable);
    }
    void SetAxisTitleString(int axis, const CString& title) {
        Tell(axis, &CAxisLabels3D::SetAxisTitleString, title);
    }
    void GetAxisTitleString(int axis, CString& title) const {
        if (const CAxisLabels3D* labels = GetAxisLabels(axis)) labels->GetAxisTitleString(title);
    }

    /// The record: axes, labels, planes, walls and flags. A failing medium raises "Disk I/O Error";
    /// a null file does nothing.
    void Save(HANDLE file);
    /// Reads the record; bind the axes again with InitAxes.
    void Load(HANDLE file);

    /// Hands what the plain record lacks, of this and of what it owns, to the chart file.
    void VisitAdded(detail::AddedFields& fields);

    template <class Archive>
    void Record(Archive& record);

 private:
    static constexpr int kFlatPlane = 0;  ///< values of m_WallMode
    static constexpr int kWall = 1;
    /// A wall stands this many times its offset off the box, so that it does not flicker through
    /// what is drawn on the box's own planes.
    static constexpr double kWallGaps = 10.0;

    struct PlaneGrid {
        int m_GridNthTic1 = 1;
        int m_GridNthTic2 = 1;
        int m_GridWallFlag = 0;
        double m_GridThickness = 1.0;  ///< pixels
        int m_GridStyle = 1;
        RGBDType m_GridColor{0.0, 0.0, 0.0, 1.0};
        int m_bGridEnable = 0;
    };
    struct Wall {
        RGBDType m_WallColor{0.0, 0.0, 0.0, 1.0};
        RGBDType m_OutlineColor{0.0, 0.0, 0.0, 1.0};
        double m_WallThickness = 0.06;  ///< fractions of the working range of the normal axis
        double m_WallOffset = 0.002;
        double m_OutlineWidth = 2.0;  ///< pixels
        int m_WallMode = kFlatPlane;
        int m_bWallEnable = 0;
    };
    /// The attributes, as records keep them.
    struct Saved {
        int m_nTransformID = 0;
        PlaneGrid m_PlaneGrid[6];
        Wall m_Wall[6];
        int m_PlaneTable[6][3] = {};  ///< first, second and normal axis, of SetPlaneTable
        point3Dtype m_MinPoint;       ///< two corners of the box, in data units
        point3Dtype m_MaxPoint;
        int m_AxisColorMode[3] = {1, 1, 1};
        int m_PlaneColorMode[6] = {1, 1, 1, 1, 1, 1};
        int m_bAxisLabelsEnable[3] = {};
        int m_bAxisEnable[3] = {};
        int m_OutlineMode = 1;
    };
    struct GridDirection;

    // Numbers outside of a table are passed over: nothing is set, and a zero value is told.
    template <class T, std::size_t n>
    static void Assign(T (&table)[n], int index, T value) {
        if (index >= 0 && index < static_cast<int>(n)) table[index] = value;
    }
    template <class T, std::size_t n>
    static T Value(const T (&table)[n], int index) {
        return index >= 0 && index < static_cast<int>(n) ? table[index] : T{};
    }
    template <class Plane, class T>
    void Assign(int plane, T Plane::*field, const std::type_identity_t<T>& value) {
        if (plane >= 0 && plane <= 5) PlaneOf<Plane>(*this, plane).*field = value;
    }
    template <class Plane, class T>
    T Value(int plane, T Plane::*field) const {
        return plane >= 0 && plane <= 5 ? PlaneOf<Plane>(*this, plane).*field : T{};
    }
    template <class Plane, class Axes>
    static auto& PlaneOf(Axes& axes, int plane) {
        if constexpr (std::is_same_v<Plane, Wall>) {
            return axes.m_Saved.m_Wall[plane];
        } else {
            return axes.m_Saved.m_PlaneGrid[plane];
        }
    }

    /// The axis or the labels of an axis, null when there are none.
    template <class Object>
    Object* Part(int axis) const {
        if (axis < 0 || axis > 2) return nullptr;
        if constexpr (std::is_same_v<Object, CAxis3D>) {
            return m_pAxis[axis].get();
        } else {
            return m_pAxisLabels[axis].get();
        }
    }
    template <class Object, class... Parameters, class... Args>
    void Tell(int axis, void (Object::*setter)(Parameters...), const Args&... args) {
        if (Object* part = Part<Object>(axis)) (part->*setter)(args...);
    }
    template <class Object, class Result>
    Result Ask(int axis, Result (Object::*getter)() const) const {
        const Object* part = Part<Object>(axis);
        return part == nullptr ? Result{} : (part->*getter)();
    }

    void ShowPlane(int plane, const RGBDType& fill, const RGBDType& outline, int mode);
    void MakeMissingAxes();
    void SetPlaneTable();
    void InitPlaneGridTable(int plane, int first, int second, int normal);
    bool HasPlaneTable() const;
    void TellOddLimits() const;
    bool IsComplete() const;
    bool HasFace() const;
    bool HasChosenTics() const;
    detail::BoxView ViewOfBox(double width, double height) const;
    void PrepareTics(const detail::BoxView& view);
    void PrepareDates(int axis, double length, bool across);
    void PrepareNumbers(int axis, double across, double up);
    double EmInPixels(double height) const;
    void FillContent(int axis, double height, detail::AxisContent& content) const;
    detail::AxesExtents MeasureNow(int width, int height);
    detail::AxesPlacement PlaceFollowing(const detail::BoxView& view) const;
    void MeasureFixed(const detail::BoxView& view, detail::AxesExtents& extents);
    bool CalcFixedLabels(int axis, const detail::BoxView& view);
    void ClearTitle(int axis, const detail::BoxView& view, double gap);
    void DrawFixedLabels(int axis, const detail::BoxView& view);
    void DrawFollowing(const detail::BoxView& view);
    void DrawFollowingAxis(int axis, const detail::AxesPlacement& placement);
    int PlaneInUse(int plane, bool hasOpposite, bool hasOwn) const;
    void DrawAxesLines();
    void DrawAxesPlanes();
    void DrawAxesLabels();
    void DrawAxis(int axis);
    void DrawAxisLabels(int axis);
    void DrawPlaneGrid(int plane);
    void DrawLinPlaneGrid(int plane, int dir);
    void DrawLogPlaneGrid(int plane, int dir);
    void DrawPlaneGridAtTics(int plane, int dir);
    GridDirection StartGrid(int plane, int dir);
    void DrawGridLine(const GridDirection& grid, double value);
    void PlaneGridLine(int plane, const point3Dtype& a, const point3Dtype& b);
    void PlaneGridTic(int plane, const point3Dtype& a, double length);
    point3Dtype CalcPlanePoint(int plane, const point3Dtype& a, double distance) const;
    void StartPlane(int plane);
    void EndPlane();
    void DrawPlaneColor(int plane);
    void DrawWallPlane(int plane);
    double NormalCoordinate(int plane) const;
    double OutwardDistance(int plane, double fraction) const;
    template <class Archive>
    void RecordPlanes(Archive& record);

    /// The attributes that records do not have.
    struct Added {
        int followView = FOLLOW_OFF;
        int dates[3] = {};
        int autoTics[3] = {};
        int wholeTics[3] = {};
        double ticHeights[2] = {};         ///< major and minor
        std::vector<CString> dateFormats;  ///< by axis; missing ones are empty
    };

    COpenGL* m_pOpenGL = nullptr;
    CTransform3D* m_pTransform = nullptr;
    std::unique_ptr<CAxis3D> m_pAxis[3];
    std::unique_ptr<CAxisLabels3D> m_pAxisLabels[3];
    Saved m_Saved;
    Added m_Added;
    CString m_TitleNotes[3];  ///< factors and offsets that automatic labels leave out
    std::unique_ptr<detail::KnownTics> m_pTics;
    std::unique_ptr<detail::AxesChoice> m_pLastChoice;  ///< of FOLLOW_TURN
    int m_nSignature = kSignature;
};

}  // namespace varnel

// CAxes3D: the frame of one chart: three axes with their labels, and the six planes of its box.
//
// Planes 0, 1, 2 lie at the minimum of z, y and x, planes 3, 4, 5 at their maximum; the first and
// the second axis of a plane are x y (0, 3), x z (1, 4) and y z (2, 5). Each plane can have a grid
// and either a flat coloured plane or a wall. Limits are in data units; wall sizes are fractions of
// the working range of the plane's normal axis. Everything is off until it is switched on.
// Operations on an axis outside 0..2 or a plane outside 0..5 do nothing and return 0, null or
// black.
#pragma once

#include <memory>

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
}

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
    CAxis3D* GetAxis(int axis) const;
    CAxisLabels3D* GetAxisLabels(int axis) const;

    /// The identifier of the transform, for binding again after Load.
    int GetTransformID() const { return m_nTransformID; }
    void SetTransformID(int id) { m_nTransformID = id; }
    CTransform3D* GetTransform() const { return m_pTransform; }

    /// Draws lines and tics, then planes and grids, then labels and titles.
    void DrawAxes();

    // --- What is shown ---------------------------------------------------------------------------

    void EnableAxis(int axis, int on);
    int GetAxisEnable(int axis) const;
    void EnableAxisLabels(int axis, int on);
    int GetAxisLabelsEnable(int axis) const;
    void EnableGrid(int plane, int on);
    int GetGridEnable(int plane) const;
    void EnableWall(int plane, int on);
    int GetWallEnable(int plane) const;

    // --- Planes, grids and walls -----------------------------------------------------------------

    /// A grid with a line at every n-th tic of the plane's first and second axis (0: none there),
    /// switched on. With a wallFlag each line goes on across the thickness of the wall.
    void SetPlaneGrid(int plane, int nthTic1, int nthTic2, const RGBDType& color, double thickness,
                      int style, int wallFlag);
    /// Sets colour and thickness; the style is not taken.
    void SetPlaneGridAttrib(int plane, const RGBDType& color, double thickness, int style);
    void SetPlaneGridNthTic1(int plane, int n);
    int GetPlaneGridNthTic1(int plane) const;
    void SetPlaneGridNthTic2(int plane, int n);
    int GetPlaneGridNthTic2(int plane) const;
    void SetPlaneGridColor(int plane, const RGBDType& color);
    RGBDType GetPlaneGridColor(int plane) const;
    void SetPlaneGridThickness(int plane, double pixels);
    double GetPlaneGridThickness(int plane) const;
    void SetPlaneGridStyle(int plane, int style);
    int GetPlaneGridStyle(int plane) const;
    void SetPlaneGridWallFlag(int plane, int flag);
    int GetPlaneGridWallFlag(int plane) const;

    /// A flat plane, switched on.
    void SetPlaneColor(int plane, const RGBDType& fill, const RGBDType& outline);
    /// A wall, switched on.
    void SetWallPlane(int plane, const RGBDType& fill, const RGBDType& outline);
    RGBDType GetWallColor(int plane) const;
    /// Also the thickness by which labels stand off: of the x axis for planes 0 and 3, of the y and
    /// z axes for planes 2 and 5, of none for planes 1 and 4.
    void SetWallThickness(int plane, double fraction);
    double GetWallThickness(int plane) const;
    /// The gap between the box and its plane or wall.
    void SetWallOffset(int plane, double fraction);
    double GetWallOffset(int plane) const;
    void SetOutlineWidth(int plane, double pixels);
    double GetOutlineWidth(int plane) const;
    void SetOutlineColor(int plane, const RGBDType& color);
    RGBDType GetOutlineColor(int plane) const;
    /// Whether planes and walls are outlined.
    void SetOutlineMode(int mode) { m_OutlineMode = mode; }
    int GetOutlineMode() const { return m_OutlineMode; }
    /// The context's colour mode while a plane is drawn; 2 also switches the texture on.
    void SetPlaneColorMode(int plane, int mode);
    int GetPlaneColorMode(int plane) const;
    void SetAxisColorMode(int axis, int mode);
    int GetAxisColorMode(int axis) const;

    // --- Forwarded to CAxis3D --------------------------------------------------------------------

    void SetAxisLimits(int axis, double start, double stop);
    void SetAxisTics(int axis, double centerPoint, double ticSpace, int nthTicMajor,
                     double minorTicLength, double majorTicLength, int ticDir);
    void SetAxisIntercept(int axis, double i1, double i2);
    void SetAxisIntercept1(int axis, double v);
    void SetAxisIntercept2(int axis, double v);
    void SetAxisAttrib(int axis, const RGBDType& axisColor, const RGBDType& ticColor,
                       double thickness, int style);
    void SetAxisMin(int axis, double v);
    void SetAxisMax(int axis, double v);
    void SetAxisColor(int axis, const RGBDType& c);
    void SetAxisTicColor(int axis, const RGBDType& c);
    void SetAxisThickness(int axis, double pixels);
    void SetAxisStyle(int axis, int style);
    void SetAxisCenterPoint(int axis, double v);
    void SetAxisTicSpace(int axis, double v);
    void SetAxisMinorTicLength(int axis, double v);
    void SetAxisMajorTicLength(int axis, double v);
    void SetAxisTicDir(int axis, int dir);
    void SetAxisNthTicMajor(int axis, int n);
    double GetAxisMin(int axis) const;
    double GetAxisMax(int axis) const;
    double GetAxisRange(int axis) const;
    double GetAxisStart(int axis) const;
    double GetAxisStop(int axis) const;
    double GetAxisIntercept1(int axis) const;
    double GetAxisIntercept2(int axis) const;
    RGBDType GetAxisColor(int axis) const;
    RGBDType GetAxisTicColor(int axis) const;
    double GetAxisThickness(int axis) const;
    int GetAxisStyle(int axis) const;
    double GetAxisCenterPoint(int axis) const;
    double GetAxisTicSpace(int axis) const;
    double GetAxisMinorTicLength(int axis) const;
    double GetAxisMajorTicLength(int axis) const;
    int GetAxisTicDir(int axis) const;
    int GetAxisNthTicMajor(int axis) const;
    int GetAxisScaleMode(int axis) const;

    // --- Forwarded to CAxisLabels3D --------------------------------------------------------------

    void SetAxisLabels(int axis, int plane, int rotation, int dir, int decimals, int ends,
                       const RGBDType& color, const CString* strings = nullptr, int count = 0);
    void SetAxisLabelsFlipX(int axis, int flip);
    int GetAxisLabelsFlipX(int axis) const;
    void SetAxisLabelsFlipY(int axis, int flip);
    int GetAxisLabelsFlipY(int axis) const;
    void SetAxisTitleFlipX(int axis, int flip);
    int GetAxisTitleFlipX(int axis) const;
    void SetAxisTitleFlipY(int axis, int flip);
    int GetAxisTitleFlipY(int axis) const;
    void SetAxisLabelsNthTic(int axis, int n);
    int GetAxisLabelsNthTic(int axis) const;
    void SetAxisLabelsFormat(int axis, int format);
    int GetAxisLabelsFormat(int axis) const;
    void SetAxisLabelsPlane(int axis, int plane);
    int GetAxisLabelsPlane(int axis) const;
    void SetAxisLabelsTicOffset(int axis, double offset);
    double GetAxisLabelsTicOffset(int axis) const;
    void SetAxisLabelsXJust(int axis, int just);
    int GetAxisLabelsXJust(int axis) const;
    void SetAxisLabelsYJust(int axis, int just);
    int GetAxisLabelsYJust(int axis) const;
    void SetAxisLabelsRotation(int axis, int degrees);
    int GetAxisLabelsRotation(int axis) const;
    void SetAxisLabelsDir(int axis, int dir);
    int GetAxisLabelsDir(int axis) const;
    void SetAxisLabelsDecimals(int axis, int decimals);
    int GetAxisLabelsDecimals(int axis) const;
    void SetAxisLabelsEnds(int axis, int mask);
    int GetAxisLabelsEnds(int axis) const;
    void SetAxisLabelsColor(int axis, const RGBDType& c);
    RGBDType GetAxisLabelsColor(int axis) const;
    void SetAxisLabelsStrings(int axis, const CString* strings, int count);
    CString* GetAxisLabelsStrings(int axis) const;
    int GetNumAxisLabelStrings(int axis) const;
    int GetNumAxisLabelsStrings(int axis) const { return GetNumAxisLabelStrings(axis); }
    void EnableAxisLabelsStrings(int axis, int on);
    int GetAxisLabelsStringEnable(int axis) const;
    void SetAxisLabelsSize(int axis, double size);
    double GetAxisLabelsSize(int axis) const;
    void SetAxisTitleString(int axis, const CString& title);
    void GetAxisTitleString(int axis, CString& title) const;
    void SetAxisTitleSize(int axis, double size);
    double GetAxisTitleSize(int axis) const;
    void SetAxisTitleColor(int axis, const RGBDType& c);
    RGBDType GetAxisTitleColor(int axis) const;
    void SetAxisTitlePlane(int axis, int plane);
    int GetAxisTitlePlane(int axis) const;

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
    struct PlaneGrid {
        int m_GridNthTic1 = 1;
        int m_GridNthTic2 = 1;
        int m_GridWallFlag = 0;
        double m_GridThickness = 1.0;
        int m_GridStyle = 1;
        RGBDType m_GridColor{0.0, 0.0, 0.0, 1.0};
        int m_bGridEnable = 0;
    };
    struct Wall {
        RGBDType m_WallColor{0.0, 0.0, 0.0, 1.0};
        RGBDType m_OutlineColor{0.0, 0.0, 0.0, 1.0};
        double m_WallThickness = 0.06;
        double m_WallOffset = 0.002;
        double m_OutlineWidth = 2.0;
        int m_WallMode = 0;
        int m_bWallEnable = 0;
    };
    struct GridDirection;

    static constexpr int kFlatPlane = 0;  ///< values of m_WallMode
    static constexpr int kWall = 1;

    void ShowPlane(int plane, const RGBDType& fill, const RGBDType& outline, int mode);
    void MakeMissingAxes();
    void SetPlaneTable();
    void InitPlaneGridTable(int plane, int first, int second, int normal);
    bool HasPlaneTable() const;
    void DrawAxesLines();
    void DrawAxesPlanes();
    void DrawAxesLabels();
    void DrawAxis(int axis);
    void DrawAxisLabels(int axis);
    void DrawPlaneGrid(int plane);
    void DrawLinPlaneGrid(int plane, int dir);
    void DrawLogPlaneGrid(int plane, int dir);
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

    COpenGL* m_pOpenGL;
    CTransform3D* m_pTransform;
    std::unique_ptr<CAxis3D> m_pAxis[3];
    std::unique_ptr<CAxisLabels3D> m_pAxisLabels[3];
    PlaneGrid m_PlaneGrid[6];
    Wall m_Wall[6];
    int m_PlaneTable[6][3];
    point3Dtype m_MinPoint;
    point3Dtype m_MaxPoint;
    int m_AxisColorMode[3];
    int m_PlaneColorMode[6];
    int m_bAxisLabelsEnable[3];
    int m_bAxisEnable[3];
    int m_OutlineMode;
    int m_nTransformID;
    int m_nSignature;
};

}  // namespace varnel

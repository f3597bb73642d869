// CAxis3D: one coordinate axis of a chart, its line and its tic marks.
//
// Limits, intercepts, tic spacing and centre are in data units; tic lengths are fractions of the
// working range of the axis along which the tics point. Axis numbers are 0 x, 1 y, 2 z; directions
// are 0 -x, 1 -y, 2 -z, 3 +x, 4 +y, 5 +z (AxisDirection3D), and any other moves nothing. CAxes3D
// owns three axes; labels and titles belong to CAxisLabels3D.
#pragma once

#include <span>
#include <vector>

#include "varnel/foundation/colors.h"
#include "varnel/foundation/export.h"
#include "varnel/foundation/file.h"
#include "varnel/foundation/points.h"
#include "varnel/render/opengl.h"
#include "varnel/transform/transform.h"

namespace varnel {

namespace detail {
class AddedFields;
}

/// A direction along an axis, for tics and labels; plain numbers may be given as well.
enum AxisDirection3D : int {
    DIR_MINUS_X = 0,
    DIR_MINUS_Y = 1,
    DIR_MINUS_Z = 2,
    DIR_PLUS_X = 3,
    DIR_PLUS_Y = 4,
    DIR_PLUS_Z = 5,
};

class VARNEL_API CAxis3D {
 public:
    static constexpr int kSignature = 303;

    /// How often InitAxisDefaults ran; the first word of every record, which Load takes over.
    static int nSelfID;

    /// Defaults alone; draws nothing before InitAxis and a limit setter.
    CAxis3D();
    /// An x axis. Context and transform are not owned, here and below.
    CAxis3D(COpenGL* gl, CTransform3D* transform);
    CAxis3D(COpenGL* gl, CTransform3D* transform, int axisType);
    /// An axis with its limits set.
    CAxis3D(COpenGL* gl, CTransform3D* transform, int axisType, double start, double stop);

    int GetSignature() const { return m_nSignature; }

    /// Gives every member its default and counts the object.
    void InitAxisDefaults();
    /// Binds the axis to a context ("OpenGL Parameter Error") and a transform ("Transform Parameter
    /// Error"), in that order, and makes it the axis of a type 0..2.
    void InitAxis(COpenGL* gl, CTransform3D* transform, int axisType);

    /// The identifier of the transform, for binding again after Load.
    int GetTransformID() const { return m_Saved.m_nTransformID; }

    // --- Limits, in data units; setting any of them makes the axis drawable --------------------

    /// start and stop as given; minimum and maximum are the smaller and the larger of them.
    void SetAxisLimits(double start, double stop);
    /// A value above the maximum becomes the maximum, and the old maximum the minimum.
    void SetAxisMin(double v);
    /// A value below the minimum becomes both minimum and maximum.
    void SetAxisMax(double v);
    double GetAxisMin() const { return m_Saved.m_Min; }
    double GetAxisMax() const { return m_Saved.m_Max; }
    double GetAxisStart() const { return m_Saved.m_Start; }
    double GetAxisStop() const { return m_Saved.m_Stop; }
    /// |maximum - minimum|.
    double GetAxisRange() const;
    /// 1 for a descending axis (stop below start), else 0.
    int GetAxisDir() const { return m_Saved.m_Stop < m_Saved.m_Start ? 1 : 0; }
    int IsAxisSet() const { return m_Saved.m_bAxisSet; }
    int GetAxisType() const { return m_Saved.m_AxisType; }
    /// 0 linear, anything else logarithmic; the transform knows. 0 without one.
    int GetAxisScaleMode() const;

    // --- Tics ------------------------------------------------------------------------------------

    /// All six at once: the value on which a tic falls, the distance between tics, every how many
    /// tics a major one falls, the lengths and the direction, a code of AxisDirection3D.
    void SetAxisTics(double centerPoint, double ticSpace, int nthTicMajor, double minorTicLength,
                     double majorTicLength, int ticDir);
    void SetAxisCenterPoint(double v) { m_Saved.m_CenterPoint = v; }
    double GetAxisCenterPoint() const { return m_Saved.m_CenterPoint; }
    void SetAxisTicSpace(double v) { m_Saved.m_TicSpace = v; }
    double GetAxisTicSpace() const { return m_Saved.m_TicSpace; }
    void SetAxisNthTicMajor(int n) { m_Saved.m_NthTicMajor = n; }
    int GetAxisNthTicMajor() const { return m_Saved.m_NthTicMajor; }
    void SetAxisMinorTicLength(double v) { m_Saved.m_MinorTicLength = v; }
    double GetAxisMinorTicLength() const { return m_Saved.m_MinorTicLength; }
    void SetAxisMajorTicLength(double v) { m_Saved.m_MajorTicLength = v; }
    double GetAxisMajorTicLength() const { return m_Saved.m_MajorTicLength; }
    /// A code of AxisDirection3D: 0 -x, 1 -y, 2 -z, 3 +x, 4 +y, 5 +z; others give tics no length.
    void SetAxisTicDir(int dir) { m_Saved.m_TicDir = dir; }
    int GetAxisTicDir() const { return m_Saved.m_TicDir; }
    /// The thickness of the wall behind the axis, a fraction of a working range; labels stand off
    /// by at least that much.
    void SetAxisWallThickness(double v) { m_Saved.m_WallThickness = v; }
    double GetAxisWallThickness() const { return m_Saved.m_WallThickness; }

    /// Tics at values instead of at steps: major and minor ones, in data units and in any order;
    /// those outside of the limits are not drawn. Labels and grid lines go with the major ones.
    /// Two empty spans return to steps.
    void SetTicValues(std::span<const double> majors, std::span<const double> minors = {});
    /// The values given, owned here.
    std::span<const double> GetMajorTicValues() const { return m_Added.majors; }
    std::span<const double> GetMinorTicValues() const { return m_Added.minors; }
    bool HasTicValues() const { return !m_Added.majors.empty() || !m_Added.minors.empty(); }

    // --- Intercepts: where the axis crosses the others, x before y before z, in data units -------

    void SetAxisIntercept(double i1, double i2);
    void SetAxisIntercept1(double v) { m_Saved.m_Intercept1 = v; }
    void SetAxisIntercept2(double v) { m_Saved.m_Intercept2 = v; }
    double GetAxisIntercept1() const { return m_Saved.m_Intercept1; }
    double GetAxisIntercept2() const { return m_Saved.m_Intercept2; }
    /// 0: the centre point, 1 and 2: the intercepts, anything else 0.
    double GetAxisIntercept(int which) const;
    /// The axis on which intercept `which` lies; for 0 the axis itself.
    int GetAxisInterceptAxis(int which) const;

    // --- Appearance ------------------------------------------------------------------------------

    /// Line and tic colours, line width in pixels and line style 0..15.
    void SetAxisAttrib(const RGBDType& axisColor, const RGBDType& ticColor, double thickness,
                       int style);
    void SetAxisColor(const RGBDType& c) { m_Saved.m_AxisColor = c; }
    RGBDType GetAxisColor() const { return m_Saved.m_AxisColor; }
    void SetAxisTicColor(const RGBDType& c) { m_Saved.m_TicColor = c; }
    RGBDType GetAxisTicColor() const { return m_Saved.m_TicColor; }
    void SetAxisThickness(double pixels) { m_Saved.m_Thickness = pixels; }
    double GetAxisThickness() const { return m_Saved.m_Thickness; }
    void SetAxisStyle(int style) { m_Saved.m_AxisStyle = style; }
    int GetAxisStyle() const { return m_Saved.m_AxisStyle; }
    /// The context's colour mode while the axis is drawn; 2 also switches the texture on.
    void SetColorMode(int mode) { m_Saved.m_ColorMode = mode; }
    int GetColorMode() const { return m_Saved.m_ColorMode; }

    // --- Geometry --------------------------------------------------------------------------------

    /// The point of the axis at a value, in data units; p.w becomes 0. An axis type outside 0..2
    /// leaves p alone.
    void GetAxisPoint(point3Dtype& p, double value) const;
    /// The points at the minimum and at the maximum.
    void GetAxisEndPoints(point3Dtype& start, point3Dtype& end) const;
    /// Moves p, in working coordinates, along a direction by `length` of the working range there.
    void calcticpoint(point3Dtype& p, double length, int ticDir) const;
    /// The larger number of characters of a and b with so many decimals.
    static int calcmaxstrwidth(double a, double b, int decimals);

    // --- Drawing, through the matrix of the transform --------------------------------------------

    /// The line and its tics; the line normal of the context becomes that of the plane of the tics.
    void DrawAxis();
    void DrawAxisLine();
    /// The linear or the logarithmic tics, as the scale of the axis is.
    void DrawAxisTics();
    /// Tics at centre + i * tic space, every n-th one major. Nothing for an n or a space of 0, for
    /// equal or non-finite limits; at most 10,000 tics.
    void DrawLinAxisTics();
    /// Major tics at the decades of the centre point, minor ones at their multiples 2..9.
    void DrawLogAxisTics();

    /// The 192 bytes of the record. A failing medium raises "Disk I/O Error"; a null file does
    /// nothing.
    void Save(HANDLE file);
    /// Reads the record; context and transform stay, bind them again with InitAxis.
    void Load(HANDLE file);

    template <class Archive>
    void Record(Archive& record);

    /// Hands the attributes that the record lacks to the chart file.
    void VisitAdded(detail::AddedFields& fields);

 private:
    void DrawTic(double value, bool major);
    void DrawTicValues();

    /// The attributes, as records keep them; limits, intercepts and tic spacing in data units.
    struct Saved {
        int m_nTransformID = 0;
        int m_AxisType = 0;
        int m_TicDir = DIR_MINUS_X;
        int m_AxisStyle = 0;
        int m_NthTicMajor = 5;
        int m_ColorMode = 1;
        RGBDType m_AxisColor = {0.0, 0.0, 0.0, 1.0};
        RGBDType m_TicColor = {0.0, 0.0, 0.0, 1.0};
        double m_Thickness = 1.0;  ///< pixels
        double m_Min = 0.0;
        double m_Max = 10.0;
        double m_Start = 0.0;
        double m_Stop = 10.0;
        double m_MinorTicLength = 0.5;  ///< this and the next two: fractions of a working range
        double m_MajorTicLength = 1.0;
        double m_WallThickness = 0.05;
        double m_TicSpace = 1.0;
        double m_CenterPoint = 0.0;
        double m_Intercept1 = 0.0;
        double m_Intercept2 = 0.0;
        int m_bAxisSet = 0;  ///< limits were set
    };

    /// The attributes that records do not have.
    struct Added {
        std::vector<double> majors;  ///< data units
        std::vector<double> minors;
    };

    COpenGL* m_pOpenGL = nullptr;
    CTransform3D* m_pTransform = nullptr;
    Saved m_Saved;
    Added m_Added;
    int m_nSignature = kSignature;
};

}  // namespace varnel

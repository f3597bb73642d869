// CTransform3D: from data values to the chart's box and on to the picture.
//
// Coordinates, in the order in which a value passes through them:
//   data        what the host gives
//   working     data on a linear axis, base-10 logarithms on a logarithmic one
//   normalized  -chart rect .. +chart rect, the chart's box before rotation
//   device      after rotation, offset and the turn that brings z up: OpenGL's -1..1
// The picture is left-handed: with no rotation x points right, z up and +y towards the viewer. A
// negative rotation about x looks from above; (-20, 0, 25) degrees is a good view.
#pragma once

#include "varnel/foundation/export.h"
#include "varnel/foundation/file.h"
#include "varnel/foundation/points.h"
#include "varnel/render/opengl.h"

namespace varnel {

class VARNEL_API CTransform3D {
 public:
    static constexpr int kSignature = 1616;

    /// Defaults alone, no context: limits 0..1 on every axis.
    CTransform3D();
    /// Limits -1..1 on every axis. The context is not owned.
    explicit CTransform3D(COpenGL* gl);
    /// The given scale limits, in data units.
    CTransform3D(COpenGL* gl, const point3Dtype& min, const point3Dtype& max);

    int GetSignature() const { return m_Signature; }

    /// Gives every member its default and takes a new identifier.
    void SetTransformDefaults();
    /// Binds the transform to a context, which must be live ("OpenGL Parameter Error").
    void InitTransform(COpenGL* gl);

    /// The identifier by which objects in a chart file name their transform; 1 for the first
    /// transform of the process.
    int GetSelfID() const { return m_SelfID; }
    void SetSelfID(int id) { m_SelfID = id; }
    /// An identifier that no transform has had yet.
    static int NewSelfID();

    // --- Scale, in data units ----------------------------------------------------------------

    /// Sets the limits; the adjusted and working limits follow with the next TransformScale.
    void SetScale(const point3Dtype& min, const point3Dtype& max);
    void SetScaleMin(const point3Dtype& min) { m_ScaleMin = min; }
    void SetScaleMax(const point3Dtype& max) { m_ScaleMax = max; }
    void GetScale(point3Dtype& min, point3Dtype& max) const;
    point3Dtype GetScaleMin() const { return m_ScaleMin; }
    point3Dtype GetScaleMax() const { return m_ScaleMax; }

    /// 0 linear, anything else logarithmic; axes 0..2, and 3..5, which are kept and saved. Other
    /// axis numbers are ignored and read as linear.
    void SetAxisScaleMode(int axis, int mode);
    int GetAxisScaleMode(int axis) const;

    /// Recomputes the adjusted limits: the limits, with those of logarithmic axes passed through
    /// AntilogLog10Ex.
    void SetAdjustedScale();
    point3Dtype GetAdjustedScaleMin();
    point3Dtype GetAdjustedScaleMax();

    /// The working limits of the last TransformScale.
    void GetWorkingScale(point3Dtype& min, point3Dtype& max) const;
    /// Maximum - minimum, in data units.
    point3Dtype GetRange() const;
    /// The range of axis 0, 1 or 2; 0 for other axis numbers.
    double GetAxisRange(int axis) const;
    /// Maximum - minimum in working coordinates.
    point3Dtype GetWorkingRange() const;
    double GetAxisWorkingRange(int axis) const;
    /// 1 when the working maximum of axis mod 3 lies below its minimum.
    int IsScaleInverted(int axis) const;
    /// AntilogLog10Ex(v) on a logarithmic axis, v on a linear one.
    double LogLimits(int axis, double v) const;

    // --- Data to working coordinates and back ------------------------------------------------

    /// A value of axis mod 3 in working coordinates.
    double CVTWS(int axis, double v) const;
    /// The data value of a working coordinate of axis mod 3.
    double CVFWS(int axis, double v) const;
    /// A point in working coordinates, w copied.
    point3Dtype CPTWS(const point3Dtype& p) const;
    /// The data point of working coordinates; out.w is left alone.
    void CPFWS(point3Dtype& out, const point3Dtype& in) const;
    /// Converts n points in place; a null array does nothing.
    void C3DATWS(point3Dtype* pts, int n) const;

    /// The place of a data point in the box, -chart rect .. +chart rect, by the working limits of
    /// the last TransformScale; w copied.
    void NormalizePoint(const point3Dtype& p, point3Dtype& out) const;
    /// The data point at a place in the box, by the scale limits; out.w is left alone. On a
    /// logarithmic axis the place is interpolated between the raw limits before the antilogarithm.
    void UnNormalizePoint(const point3Dtype& p, point3Dtype& out) const;

    // --- The box -----------------------------------------------------------------------------

    /// Angles in degrees about x, y and z.
    void SetRotate(const point3Dtype& angles) { m_Rotation = angles; }
    point3Dtype GetRotation() const { return m_Rotation; }
    void SetCentroid(const point3Dtype& p) { m_Centroid = p; }
    point3Dtype GetCentroid() const { return m_Centroid; }
    /// A shift after the rotation, in device units before z is turned up.
    void SetOffset(const point3Dtype& p) { m_Offset = p; }
    point3Dtype GetOffset() const { return m_Offset; }
    /// Half the extents of the box, in device units. Default 0.5 each.
    void SetChartRect(const point3Dtype& p) { m_ChartRect = p; }
    point3Dtype GetChartRect() const { return m_ChartRect; }

    /// Width of text drawn under this transform relative to its height; default 1.
    void SetFontAspect(double aspect) { m_FontAspect = aspect; }
    double GetFontAspect() const { return m_FontAspect; }
    /// Factor on the height of text; default 1.
    void SetFontHeightSF(double factor) { m_FontHeightSF = factor; }
    double GetFontHeightSF() const { return m_FontHeightSF; }

    // --- Matrices. Without a context only the limits are computed -----------------------------

    void TransformRotate();
    /// Recomputes adjusted and working limits and the scale factors, and scales.
    void TransformScale();
    void TransformTranslate();
    /// Rotate, scale, translate.
    void TransformAll();
    /// Makes the matrix for data in working coordinates current and keeps it.
    void ChartTransform();
    /// Makes the matrix for what is placed in normalized coordinates current and keeps it.
    void TextTransform();
    /// The address of the 16 doubles kept, column-major.
    const double* GetGraphTransform() const { return m_GraphTransform; }
    const double* GetFontTransform() const { return m_FontTransform; }
    void SetGraphTransform(const double m[16]);
    void SetFontTransform(const double m[16]);

    /// Non-zero: hands the working limits to the context as clip limits and clips; 0: stops.
    void SetClipping(int on);
    int GetClipping() const { return m_Clipping; }

    /// The 660 bytes of the record. A failing medium raises "Disk I/O Error"; a null file does
    /// nothing.
    void Save(HANDLE file);
    /// Takes the saved identifier, whoever else has it.
    void Load(HANDLE file);

    template <class Archive>
    void Record(Archive& record);

 private:
    void CalcWorkingScale(const point3Dtype& min, const point3Dtype& max);
    static double PositiveRotate(double angle);
    void MakeGraphTransformCurrent();
    void MakeTextTransformCurrent();
    bool IsLogarithmic(int axis) const;

    static int nSelfIDCntr;

    COpenGL* m_pOpenGL;
    double m_GraphTransform[16];
    double m_FontTransform[16];
    point3Dtype m_Centroid;
    point3Dtype m_Offset;
    point3Dtype m_Rotation;
    point3Dtype m_ScaleFactor;
    point3Dtype m_ChartRect;
    point3Dtype m_ScaleMin;
    point3Dtype m_ScaleMax;
    point3Dtype m_AdjustedScaleMin;
    point3Dtype m_AdjustedScaleMax;
    point3Dtype m_WorkingScaleMin;
    point3Dtype m_WorkingScaleMax;
    int m_Clipping;
    int m_AxisScaleMode[6];
    int m_Reserved = 0;
    double m_FontAspect;
    double m_FontHeightSF;
    int m_Signature;
    int m_SelfID;

    friend struct TransformTestAccess;
};

}  // namespace varnel

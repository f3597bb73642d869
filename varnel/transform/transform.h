// CTransform3D: from data values to the chart's box and on to the picture.
//
// Coordinates, in the order in which a value passes through them:
//   data        what the host gives
//   working     data on a linear axis, base-10 logarithms on a logarithmic one
//   normalized  -chart rect .. +chart rect, the chart's box before rotation
//   device      after rotation, offset and the turn that brings z up: OpenGL's -1..1
// The picture is left-handed unless SetRightHanded says otherwise: with no rotation x points right,
// z up and +y towards the viewer. A negative rotation about x looks from above; (-20, 0, 25)
// degrees is a good view. SetView says the same as azimuth and elevation.
#pragma once

#include <span>

#include "varnel/foundation/export.h"
#include "varnel/foundation/file.h"
#include "varnel/foundation/points.h"
#include "varnel/foundation/viewports.h"
#include "varnel/render/opengl.h"

namespace varnel {

namespace detail {
class AddedFields;
}

/// Scale modes of an axis; any mode but 0 is logarithmic.
enum ScaleMode { SCALE_LINEAR = 0, SCALE_LOGARITHMIC = 1 };

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
    void SetScaleMin(const point3Dtype& min) { m_Saved.scaleMin = min; }
    void SetScaleMax(const point3Dtype& max) { m_Saved.scaleMax = max; }
    void GetScale(point3Dtype& min, point3Dtype& max) const;
    point3Dtype GetScaleMin() const { return m_Saved.scaleMin; }
    point3Dtype GetScaleMax() const { return m_Saved.scaleMax; }

    /// SCALE_LINEAR (0), or anything else: logarithmic; axes 0..2, and 3..5, which are kept and
    /// saved. Other axis numbers are ignored and read as linear.
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
    /// 1 when values of axis mod 3 run against the box: its working maximum lies below its minimum,
    /// or, for y, does not although the chart is right-handed.
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
    void C3DATWS(std::span<point3Dtype> pts) const;

    /// The place of a data point in the box, -chart rect .. +chart rect, by the working limits of
    /// the last TransformScale; w copied.
    void NormalizePoint(const point3Dtype& p, point3Dtype& out) const;
    /// The data point at a place in the box, by the scale limits; out.w is left alone. On a
    /// logarithmic axis the place is interpolated between the raw limits before the antilogarithm.
    void UnNormalizePoint(const point3Dtype& p, point3Dtype& out) const;

    // --- The box -----------------------------------------------------------------------------

    /// Angles in degrees about x, y and z.
    void SetRotate(const point3Dtype& angles) { m_Saved.rotation = angles; }
    point3Dtype GetRotation() const { return m_Saved.rotation; }
    void SetCentroid(const point3Dtype& p) { m_Saved.centroid = p; }
    point3Dtype GetCentroid() const { return m_Saved.centroid; }
    /// A shift after the rotation, in device units before z is turned up.
    void SetOffset(const point3Dtype& p) { m_Saved.offset = p; }
    point3Dtype GetOffset() const { return m_Saved.offset; }
    /// Half the extents of the box, in device units. Default 0.5 each.
    void SetChartRect(const point3Dtype& p) { m_Saved.chartRect = p; }
    point3Dtype GetChartRect() const { return m_Saved.chartRect; }

    /// The view as an azimuth and an elevation in degrees: where the viewer stands, as an angle
    /// about z from the x axis to the y axis, and as an angle above the x-y plane. Of a
    /// right-handed chart (-90, 0) looks along y with x to the right, (-60, 30) is a usual view and
    /// (-90, 90) is the view from above; of a left-handed one azimuths have the other sign. Sets
    /// all three rotations, that about y to 0. The azimuth is that of the handedness set so far.
    void SetView(double azimuth, double elevation);
    /// The azimuth (-180..180) and elevation at which the viewer stands; what SetView set comes
    /// back. A rotation about y is left out of it.
    void GetView(double& azimuth, double& elevation) const;

    /// 1: the chart is right-handed, x to the right, y away from the viewer and z up without
    /// rotation. The box's y runs against the data's. Default 0.
    void SetRightHanded(int on) { m_Added.rightHanded = on; }
    int GetRightHanded() const { return m_Added.rightHanded; }

    /// Proportions of the box's edges in place of those of the chart rect, whose largest half
    /// extent stays the size: (1, 1, 0.7) is wide and low. (0, 0, 0), the default: the chart rect
    /// as it is. Other values must be finite and above 0 ("Parameter Error").
    void SetBoxProportions(double x, double y, double z);
    /// Edges as long as their working ranges, for maps. `z` above 0 is instead the height in terms
    /// of the longer of the other two; 0: as its range.
    void SetBoxProportionsAsData(double z = 0.0);
    /// 1: the box keeps its proportions on the screen, whatever the shape of the chart's viewport;
    /// the shorter side of the viewport is then 2 units. 0, the default: the box is stretched as
    /// the viewport is.
    void SetTrueProportions(int on) { m_Added.trueProportions = on; }
    int GetTrueProportions() const { return m_Added.trueProportions; }
    /// The factors from units of the box to device units, across (x) and up (y): 1 unless the
    /// proportions are true and the viewport of the last drawing is no square.
    point3Dtype GetUnitScale() const;

    /// Where an automatic layout put the box: used instead of the chart rect, its proportions and
    /// the offset, which stay as they were set.
    void SetFit(const point3Dtype& rect, const point3Dtype& offset);
    void ClearFit() { m_Added.fitted = 0; }
    int IsFitted() const { return m_Added.fitted; }
    /// The half extents and the shift that drawing uses: the fitted ones, else those set.
    point3Dtype GetDrawnRect() const;
    point3Dtype GetDrawnOffset() const;

    /// Width of text drawn under this transform relative to its height; default 1.
    void SetFontAspect(double aspect) { m_Saved.fontAspect = aspect; }
    double GetFontAspect() const { return m_Saved.fontAspect; }
    /// Factor on the height of text; default 1.
    void SetFontHeightSF(double factor) { m_Saved.fontHeightSF = factor; }
    double GetFontHeightSF() const { return m_Saved.fontHeightSF; }

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
    const double* GetGraphTransform() const { return m_Saved.graphTransform; }
    const double* GetFontTransform() const { return m_Saved.fontTransform; }
    void SetGraphTransform(const double m[16]);
    void SetFontTransform(const double m[16]);

    // --- Pixels. Exact for the matrix and the viewport of the last drawing ----------------------
    // Pixels are those of the view's picture: x from its left edge, y down from its upper edge, the
    // middle of the first pixel at (0.5, 0.5).

    /// Where the chart draws, in pixels from the lower left corner of a picture of the given
    /// height. The chart says so before each drawing.
    void SetDrawnViewport(const GLViewportType& viewport, int pictureHeight);
    /// Of width 0 before the first drawing.
    GLViewportType GetDrawnViewport() const { return m_Viewport; }
    /// The pixel of a data point. False before the first drawing and for what has no place.
    bool DataToPixel(const point3Dtype& data, double& x, double& y) const;
    /// The data point under a pixel on the plane of the box 0 x-y, 1 x-z, 2 y-z at the minimum of
    /// its normal axis, 3 to 5 the same at the maximum. False when the plane is seen edge-on.
    bool PixelToData(double x, double y, int plane, point3Dtype& data) const;
    /// The same on the plane at a value of axis 0, 1 or 2.
    bool PixelToData(double x, double y, int axis, double value, point3Dtype& data) const;

    /// Non-zero: hands the working limits to the context as clip limits and clips; 0: stops.
    void SetClipping(int on);
    int GetClipping() const { return m_Saved.clipping; }

    /// The 660 bytes of the record. A failing medium raises "Disk I/O Error"; a null file does
    /// nothing.
    void Save(HANDLE file);
    /// Takes the saved identifier, whoever else has it.
    void Load(HANDLE file);

    /// Hands what the plain record lacks to the chart file.
    void VisitAdded(detail::AddedFields& fields);

    template <class Archive>
    void Record(Archive& record);

    /// An angle brought towards 0..360: negative ones gain one turn, and of those above 360 the
    /// formula of old files is kept, which is no reduction.
    static double PositiveRotate(double angle);

 private:
    /// What the record holds.
    struct Saved {
        double graphTransform[16] = {};  ///< column-major
        double fontTransform[16] = {};
        point3Dtype centroid;
        point3Dtype offset;
        point3Dtype rotation;     ///< degrees
        point3Dtype scaleFactor;  ///< 2 over the working range
        point3Dtype chartRect{0.5, 0.5, 0.5, 0.0};
        point3Dtype scaleMin;
        point3Dtype scaleMax{1.0, 1.0, 1.0, 0.0};
        point3Dtype workingMin;
        point3Dtype workingMax{1.0, 1.0, 1.0, 0.0};
        point3Dtype adjustedMin{1.0, 1.0, 1.0, 0.0};
        point3Dtype adjustedMax{10.0, 10.0, 10.0, 0.0};
        int scaleMode[6] = {};
        int clipping = 0;
        int reserved = 0;
        double fontAspect = 1.0;
        double fontHeightSF = 1.0;
    };
    /// What came after the record.
    struct Added {
        int rightHanded = 0;
        int trueProportions = 0;
        int proportionsAsData = 0;
        point3Dtype proportions;  ///< 0: none
        int fitted = 0;
        point3Dtype fittedRect;
        point3Dtype fittedOffset;
    };

    void CalcWorkingScale(const point3Dtype& min, const point3Dtype& max);
    void MakeGraphTransformCurrent();
    void MakeTextTransformCurrent();
    bool IsLogarithmic(int axis) const;
    void TellBadLimits() const;
    point3Dtype GetProportions() const;
    point3Dtype SignedRect() const;

    static int nSelfIDCntr;

    COpenGL* m_pOpenGL = nullptr;
    Saved m_Saved;
    Added m_Added;
    GLViewportType m_Viewport;  ///< of the last drawing; width 0: none yet
    int m_PictureHeight = 0;
    int m_Signature = kSignature;
    int m_SelfID = 0;
};

}  // namespace varnel

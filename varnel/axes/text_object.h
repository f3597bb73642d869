// CTextObj3D: a text of solid letters at a point of the chart, of one line or, with line feeds, of
// several, each justified within the longest one's width.
//
// The location is given in data coordinates (OutText) or in normalized ones, -chart rect .. +chart
// rect of the transform (OutTextNorm). The text lies in a plane of the chart's box or faces the
// viewer, and is drawn in the font that the rendering context has at that moment.
#pragma once

#include <string_view>
#include <vector>

#include "varnel/foundation/colors.h"
#include "varnel/foundation/export.h"
#include "varnel/foundation/file.h"
#include "varnel/foundation/points.h"
#include "varnel/foundation/types.h"

namespace varnel {

class CFont3D;
class COpenGL;
class CTransform3D;

namespace detail {
class AddedFields;
}

/// The plane in which a text lies; plain numbers may be given as well.
enum TextPlane3D : int {
    TEXTPLANE_XY = 0,  ///< planes of the chart's box
    TEXTPLANE_XZ = 1,
    TEXTPLANE_YZ = 2,
    TEXTPLANE_VIEWER = 3,
};

/// Which point of a text lies at its location, across or upward.
enum TextJustify3D : int {
    TEXT_JUSTIFY_AUTO = -1,  ///< labels of an axis alone: as axis, plane and rotation ask for
    TEXT_START = 0,          ///< its left end, its bottom
    TEXT_CENTER = 1,
    TEXT_END = 2,  ///< its right end, its top
};

class VARNEL_API CTextObj3D {
 public:
    static constexpr int kSignature = 1515;

    /// How often InitTextObjDefaults ran; the first word of every record.
    static int nSelfID;

    /// Defaults alone: measures 0 and draws nothing until InitTextObj.
    CTextObj3D();
    /// Defaults, InitTextObj, then the text.
    CTextObj3D(COpenGL* gl, CFont3D* font, CTransform3D* transform, const CString& text);

    int GetSignature() const { return m_nSignature; }

    /// Gives every attribute its default and counts the object.
    void InitTextObjDefaults();
    /// Binds the text to a rendering context ("OpenGL Parameter Error"), a font ("Font Parameter
    /// Error") and a transform ("Transform Parameter Error"), checked in this order; what passed
    /// before a failure stays bound. None is owned. The font is only checked: whenever the text is
    /// measured or drawn, the context's current font is used, since NewFont3D frees the old one.
    void InitTextObj(COpenGL* gl, CFont3D* font, CTransform3D* transform);

    /// The identifier of the transform, by which a chart finds it after loading.
    int GetTransformID() const { return m_nTransformID; }
    void SetTransformID(int id) { m_nTransformID = id; }
    CTransform3D* GetTransform() const { return m_pTransform; }

    // --- Attributes --------------------------------------------------------------------------

    void SetString(const CString& text) { m_Saved.m_String = text; }
    CString GetString() const { return m_Saved.m_String; }
    void GetString(CString& text) const { text = m_Saved.m_String; }
    /// In data coordinates.
    void SetLocation(const point3Dtype& p) { m_Saved.m_Location = p; }
    point3Dtype GetLocation() const { return m_Saved.m_Location; }
    /// In normalized coordinates; OutText overwrites it.
    void SetNormLocation(const point3Dtype& p) { m_Saved.m_NormLocation = p; }
    point3Dtype GetNormLocation() const { return m_Saved.m_NormLocation; }
    /// A code of TextPlane3D: 0 x-y, 1 x-z, 2 y-z plane of the box, 3 (the default) facing the
    /// viewer; others are not turned at all.
    void SetTextPlane(int plane) { m_Saved.m_TextPlane = plane; }
    int GetTextPlane() const { return m_Saved.m_TextPlane; }
    /// A code of TextJustify3D: 0 (the default) starts at the location, 1 is centred on it, 2 ends
    /// there.
    void SetXJustify(int justify) { m_Saved.m_XJustify = justify; }
    int GetXJustify() const { return m_Saved.m_XJustify; }
    /// A code of TextJustify3D: 0 (the default) stands on the location, 1 is centred on it, 2 hangs
    /// from it.
    void SetYJustify(int justify) { m_Saved.m_YJustify = justify; }
    int GetYJustify() const { return m_Saved.m_YJustify; }
    void SetJustify(int x, int y);
    void GetJustify3D(int& x, int& y) const;
    /// Whole degrees within the plane.
    void SetRotation(int degrees) { m_Saved.m_Rotation = degrees; }
    int GetRotation() const { return m_Saved.m_Rotation; }
    /// Stored and saved only.
    void SetClipping(int on) { m_Saved.m_Clipping = on; }
    int GetClipping() const { return m_Saved.m_Clipping; }
    /// Turns the text by 180 degrees about its own x axis.
    void SetFlipX(int flip) { m_Saved.m_FlipX = flip; }
    int GetFlipX() const { return m_Saved.m_FlipX; }
    /// Turns the text by 180 degrees about its own y axis.
    void SetFlipY(int flip) { m_Saved.m_FlipY = flip; }
    int GetFlipY() const { return m_Saved.m_FlipY; }
    void SetColor(const RGBDType& color) { m_Saved.m_Color = color; }
    RGBDType GetColor() const { return m_Saved.m_Color; }
    /// Factor on the font's size when drawing; the measured sizes leave it out.
    void SetCharSize(double size) { m_Saved.m_CharSize = size; }
    double GetCharSize() const { return m_Saved.m_CharSize; }
    /// Above 0: the background's colour surrounds the letters, that many ems wide (0.12 is a good
    /// width), and lines in the text's plane do not strike through it. 0, the default: letters
    /// alone.
    void SetHalo(double ems) { m_Added.halo = ems; }
    double GetHalo() const { return m_Added.halo; }
    /// The halo's colour. Default, and for an alpha of 0: the background's.
    void SetHaloColor(const RGBDType& color) { m_Added.haloColor = color; }
    RGBDType GetHaloColor() const { return m_Added.haloColor; }
    /// Moves the text within its plane, by ems of its size to the right and up. Not saved; default
    /// 0.
    void SetShift(double x, double y) { m_Shift = {x, y, 0.0, 0.0}; }
    /// 0: neither draws nor changes any state.
    void EnableTextObj(int on) { m_Saved.m_bTextEnable = on; }
    int GetTextEnable() const { return m_Saved.m_bTextEnable; }
    /// Stored and saved only.
    void EnableTexture(int on) { m_Saved.m_bTextureEnable = on; }
    int GetTextureEnable() const { return m_Saved.m_bTextureEnable; }

    // --- Measuring and drawing ---------------------------------------------------------------

    /// The width under the transform's font factors; the character size is not in it.
    double TextWidth() const;
    /// The height likewise.
    double TextHeight() const;

    /// Draws at the location in data coordinates; the transform's text matrix is current
    /// afterwards.
    void OutText();
    /// Draws at the normalized location. Leaves the fill colours changed, the matrix and the colour
    /// mode as they were.
    void OutTextNorm();

    /// Recomputes the transform's two matrices and makes the one for data current.
    void Transform();
    /// Turns the current matrix into the text's plane, given the chart's rotation in degrees.
    void TransformTextPlane(const point3Dtype& chartRotation);
    /// One of the rotations that bring a text into its plane, about axis 0, 1 or 2.
    struct PlaneTurn {
        double degrees;
        int axis;
    };
    /// All of them, in the order of TransformTextPlane, which applies them.
    std::vector<PlaneTurn> PlaneTurns(const point3Dtype& chartRotation) const;
    /// The factors on the letters' x, y and z: font aspect and rotation, times the size. For planes
    /// outside 0..3 `scale` is only multiplied by the size.
    void CalcComplexAspectRatio(point3Dtype& scale) const;
    /// The shift that the justification makes of a text of that width and height.
    void calccharjust(point3Dtype& offset, double width, double height) const;
    /// Moves the current matrix by p.
    void repostextstart3D(const point3Dtype& p);

    /// The record. A failing medium raises "Disk I/O Error"; a null file does nothing.
    void Save(HANDLE file);
    void Load(HANDLE file);

    template <class Archive>
    void Record(Archive& record);

    /// Hands the attributes that the record lacks to the chart file.
    void VisitAdded(detail::AddedFields& fields);

 private:
    const CFont3D* CurrentFont() const;
    void DrawLines(const CFont3D& font, double width) const;

    /// The attributes, as records keep them.
    struct Saved {
        CString m_String;
        point3Dtype m_Location;      ///< data coordinates
        point3Dtype m_NormLocation;  ///< normalized ones
        int m_XJustify = TEXT_START;
        int m_YJustify = TEXT_START;
        RGBDType m_Color = {0.0, 0.0, 0.0, 1.0};
        int m_TextPlane = TEXTPLANE_VIEWER;
        int m_Rotation = 0;  ///< degrees within the plane
        int m_bTextureEnable = 0;
        int m_Clipping = 0;
        int m_bTextEnable = 1;
        int m_FlipX = 0;
        int m_FlipY = 0;
        double m_CharSize = 1.0;  ///< factor on the font's size
    };

    /// The attributes that records do not have.
    struct Added {
        double halo = 0.0;               ///< ems
        RGBDType haloColor{0, 0, 0, 0};  ///< transparent: the background's
    };

    COpenGL* m_pOpenGL = nullptr;
    CTransform3D* m_pTransform = nullptr;
    int m_nTransformID = 0;  ///< saved; it goes with the transform, not with the attributes
    Saved m_Saved;
    Added m_Added;
    point3Dtype m_Shift;
    int m_nSignature = kSignature;
};

}  // namespace varnel

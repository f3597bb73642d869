// CAuxObj3D: a free-standing solid of a chart: a sphere that marks a point, a cone, a box.
//
// It stands at a location in data coordinates, with its own size, scale, rotation and colour; size
// and scale are in normalized coordinates (the chart's box), so that it keeps its shape whatever
// the axes' scales are.
#pragma once

#include <array>

#include "varnel/foundation/colors.h"
#include "varnel/foundation/export.h"
#include "varnel/foundation/file.h"
#include "varnel/foundation/points.h"
#include "varnel/foundation/types.h"

namespace varnel {

class COpenGL;
class CTransform3D;

class VARNEL_API CAuxObj3D {
 public:
    static constexpr int kSignature = 101;

    /// How often InitAuxObjDefaults ran; the first word of every record.
    static int nSelfID;

    /// Defaults alone; nothing is drawn until InitAuxObj.
    CAuxObj3D();
    /// Defaults, InitAuxObj, then the shape, see SetAuxObjType.
    CAuxObj3D(COpenGL* gl, CTransform3D* transform, int type);

    int GetSignature() const { return m_Magic; }

    /// Gives every attribute its default and counts the object.
    void InitAuxObjDefaults();
    /// Binds the object to a rendering context ("OpenGL Parameter Error") and a transform
    /// ("Transform Parameter Error"); both are checked before either is stored, neither is owned.
    void InitAuxObj(COpenGL* gl, CTransform3D* transform);

    /// The identifier of the transform, by which a chart finds it after loading.
    int GetTransformID() const { return m_TransformID; }
    void SetTransformID(int id) { m_TransformID = id; }
    CTransform3D* GetTransform() const { return m_pTransform; }

    /// 1 sphere, 2 cube, 3 box, 4 torus, 5 cylinder, 6 icosahedron, 7 octahedron, 8 tetrahedron,
    /// 9 dodecahedron, 10 cone; others draw nothing. Default 0.
    void SetAuxObjType(int type) { m_Saved.m_AuxObjType = type; }
    int GetAuxObjType() const { return m_Saved.m_AuxObjType; }
    /// The shape's arguments in the order of solids/aux_shapes.h; unused ones are ignored.
    /// Default 1.
    void SetSizeParameters(double a, double b, double c) { m_Saved.m_SizeParameters = {a, b, c}; }
    /// Factor on all sizes. Default 0.05.
    void SetScale(double scale) { m_Saved.m_Scale = scale; }
    double GetScale() const { return m_Saved.m_Scale; }
    /// Degrees about x, y and z.
    void SetRotation(const point3Dtype& degrees) { m_Saved.m_Rotation = degrees; }
    point3Dtype GetRotation() const { return m_Saved.m_Rotation; }
    void SetColor(const RGBDType& color) { m_Saved.m_Color = color; }
    RGBDType GetColor() const { return m_Saved.m_Color; }
    /// 0: wire, anything else: solid (the default).
    void SetSolidType(int solid) { m_Saved.m_SolidType = solid; }
    /// The argument has no meaning.
    int GetSolidType(int = 0) const { return m_Saved.m_SolidType; }
    /// The colour mode of the context while drawing: 0 flat, else lit. Default 1.
    void SetColorMode(int mode) { m_Saved.m_ColorMode = mode; }
    int GetColorMode() const { return m_Saved.m_ColorMode; }
    /// Width in pixels of wire shapes and outlines. Default 1.
    void SetLineWidth(double width) { m_Saved.m_LineWidth = width; }
    double GetLineWidth() const { return m_Saved.m_LineWidth; }
    /// Whether solid shapes get a black wire over them; spheres, tori and cones never do. Not
    /// saved.
    void SetOutlineMode(BOOL on) { m_OutlineMode = on; }
    BOOL GetOutlineMode() const { return m_OutlineMode; }

    /// Stores a location in data coordinates and where it lies in the box by the limits that the
    /// transform has at this moment: limits that change later do not move the solid, so set the
    /// scale first. The transform's chart matrix is current afterwards.
    void SetLocation(const point3Dtype& p);
    point3Dtype GetLocation() const { return m_Saved.m_Location; }

    /// Draws the shape where the last SetLocation put it. The context keeps the object's colour
    /// mode afterwards, or mode 0 when a wire or an outline was drawn.
    void DrawAuxObj();

    /// The record. A failing medium raises "Disk I/O Error"; a null file does nothing.
    void Save(HANDLE file);
    void Load(HANDLE file);

    template <class Archive>
    void Record(Archive& record);

 private:
    bool HasOutline() const;

    /// The attributes, as records keep them.
    struct Saved {
        int m_AuxObjType = 0;
        int m_SolidType = 1;
        int m_ColorMode = 1;
        std::array<double, 3> m_SizeParameters = {1.0, 1.0, 1.0};
        double m_Scale = 0.05;
        point3Dtype m_Location;      ///< data coordinates
        point3Dtype m_NormLocation;  ///< normalized ones
        point3Dtype m_Rotation;      ///< degrees
        RGBDType m_Color = {1.0, 1.0, 1.0, 1.0};
        double m_LineWidth = 1.0;  ///< pixels
    };

    COpenGL* m_pOpenGL = nullptr;
    CTransform3D* m_pTransform = nullptr;
    int m_TransformID = 0;  ///< saved; it goes with the transform, not with the attributes
    Saved m_Saved;
    BOOL m_OutlineMode = 0;
    int m_Magic = kSignature;
};

}  // namespace varnel

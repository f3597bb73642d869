// COpenGL: boxes, prisms, scatter symbols and auxiliary shapes.
#include <array>
#include <iterator>

#include "varnel/foundation/detail/counts.h"
#include "varnel/foundation/detail/named_colors.h"
#include "varnel/render/aux_shapes.h"
#include "varnel/render/detail/hexahedron.h"
#include "varnel/render/detail/renderer.h"
#include "varnel/render/detail/shape_capture.h"
#include "varnel/render/opengl.h"

namespace varnel {

namespace {

using detail::kBlack;

constexpr int kAllFaces[6] = {1, 1, 1, 1, 1, 1};

using Layer = std::array<point3Dtype, 4>;

/// Four corners at height z: (x0, y0), (x0, y1), (x1, y1), (x1, y0).
Layer Rectangle(double x0, double y0, double x1, double y1, double z) {
    return {{{x0, y0, z, 0}, {x0, y1, z, 0}, {x1, y1, z, 0}, {x1, y0, z, 0}}};
}

/// A rectangle of w x h about the z axis.
Layer Centred(double w, double h, double z) {
    return Rectangle(-w / 2, -h / 2, w / 2, h / 2, z);
}

Layer Apex(double z) {
    return Centred(0.0, 0.0, z);
}

template <std::size_t N>
std::array<point3Dtype, 4 * N> Stack(const std::array<Layer, N>& layers) {
    std::array<point3Dtype, 4 * N> corners;
    std::size_t k = 0;
    for (const Layer& layer : layers)
        for (const point3Dtype& p : layer)
            corners[k++] = p;
    return corners;
}

using Shape1 = void (*)(double);
using Shape2 = void (*)(double, double);
using Shape3 = void (*)(double, double, double);

/// An auxiliary shape as wire and as solid; which of the three signatures it has says how many
/// sizes it takes.
struct AuxShape {
    Shape1 one[2] = {};
    Shape2 two[2] = {};
    Shape3 three[2] = {};
};

/// By shape code, from 1.
constexpr AuxShape kAuxShapes[] = {
    {.one = {auxWireSphere, auxSolidSphere}},
    {.one = {auxWireCube, auxSolidCube}},
    {.three = {auxWireBox, auxSolidBox}},
    {.two = {auxWireTorus, auxSolidTorus}},
    {.two = {auxWireCylinder, auxSolidCylinder}},
    {.one = {auxWireIcosahedron, auxSolidIcosahedron}},
    {.one = {auxWireOctahedron, auxSolidOctahedron}},
    {.one = {auxWireTetrahedron, auxSolidTetrahedron}},
    {.one = {auxWireDodecahedron, auxSolidDodecahedron}},
    {.two = {auxWireCone, auxSolidCone}},
};

void DrawShape(int code, bool solid, const point3Dtype& size) {
    if (code < 1 || code > static_cast<int>(std::size(kAuxShapes))) return;
    const AuxShape& shape = kAuxShapes[code - 1];
    const int variant = solid ? 1 : 0;
    if (shape.one[variant] != nullptr) shape.one[variant](size.x);
    if (shape.two[variant] != nullptr) shape.two[variant](size.x, size.y);
    if (shape.three[variant] != nullptr) shape.three[variant](size.x, size.y, size.z);
}

}  // namespace

void COpenGL::DrawSolidObject3D(const point3Dtype* corners, const RGBDType& fill,
                                const RGBDType& frame, const int* faceFlags) {
    DropOpenLine();
    SetFillStyle3D(fill, kBlack, frame);
    if (corners == nullptr || faceFlags == nullptr) return;
    const unsigned edges = detail::AddHexahedron(*m_Renderer, Style(), corners, faceFlags);
    if (m_FrameFilled != 0 && edges != 0) {
        m_CurrentColor = frame;
        UseLineWidth();
        detail::AddHexahedronEdges(*m_Renderer, edges, frame);
    }
    FinishPrimitive();
}

void COpenGL::DrawComplexObject3D(const point3Dtype* corners, int count, const RGBDType& fill,
                                  const RGBDType& frame) {
    if (corners == nullptr) return;
    for (int k = 0; k < count; ++k)
        DrawSolidObject3D(corners + 4 * static_cast<std::ptrdiff_t>(k), fill, frame, kAllFaces);
}

void COpenGL::DrawComplexObject3D(std::span<const point3Dtype> corners, const RGBDType& fill,
                                  const RGBDType& frame) {
    constexpr detail::Origin here{ERR3DCLASS_OPENGL, "DrawComplexObject3D"};
    const int n = detail::CountOf(corners, here);
    if (n % 4 != 0)
        detail::Raise(ERR3D_PARAMETER, here.cls, here.operation,
                      detail::Say(n, " corners are no layers of four"));
    DrawComplexObject3D(corners.data(), n / 4 - 1, fill, frame);
}

void COpenGL::DrawCubeSolidObject3D(double w, double h, double d, const RGBDType& fill,
                                    const RGBDType& frame, const int* faceFlags) {
    const auto box = Stack<2>({Centred(w, h, -d / 2), Centred(w, h, d / 2)});
    DrawSolidObject3D(box.data(), fill, frame, faceFlags);
}

void COpenGL::DrawCube(double size, const RGBDType& fill, const RGBDType& frame) {
    DrawCubeSolidObject3D(size, size, size, fill, frame, kAllFaces);
}

void COpenGL::DrawPrism3D(double x, double y, double z, double dx, double dy, double dz,
                          const RGBDType& fill, const RGBDType& frame) {
    const auto prism =
        Stack<2>({Rectangle(x, y, x + dx, y + dy, z), Rectangle(x, y, x + dx, y + dy, z + dz)});
    DrawSolidObject3D(prism.data(), fill, frame, kAllFaces);
}

void COpenGL::DrawSimpleZPlane(double w, double h, double /*d*/, const RGBDType& fill,
                               const RGBDType& frame) {
    SetFillStyle3D(fill, kBlack, frame);
    const Layer plane = Centred(w, h, 0.0);
    const point3Dtype pts[5] = {plane[0], plane[1], plane[2], plane[3], plane[0]};
    PolyFillAbs3D(pts, 5);
}

void COpenGL::DrawDiamondSolidObject3D(double w, double h, double d, const RGBDType& fill,
                                       const RGBDType& frame) {
    const auto lower = Stack<2>({Apex(-d / 2), Centred(w, h, 0.0)});
    const auto upper = Stack<2>({Centred(w, h, 0.0), Apex(d / 2)});
    DrawComplexObject3D(lower.data(), 1, fill, frame);
    DrawComplexObject3D(upper.data(), 1, fill, frame);
}

void COpenGL::DrawPyramidSolidObject3D(double w, double h, double d, const RGBDType& fill,
                                       const RGBDType& frame) {
    const auto pyramid = Stack<2>({Centred(w, h, -d / 2), Apex(d / 2)});
    DrawComplexObject3D(pyramid.data(), 1, fill, frame);
}

void COpenGL::DrawPlusSolidObject3D(double w, double h, double d, const RGBDType& fill,
                                    const RGBDType& frame) {
    const auto column = Stack<2>({Centred(w / 2, h / 2, -d / 2), Centred(w / 2, h / 2, d / 2)});
    const auto slab = Stack<2>({Centred(w, h, -d / 4), Centred(w, h, d / 4)});
    DrawComplexObject3D(column.data(), 1, fill, frame);
    DrawComplexObject3D(slab.data(), 1, fill, frame);
}

void COpenGL::DrawArrowSolidObject3D(double w, double h, double d, const RGBDType& fill,
                                     const RGBDType& frame) {
    const double ridge = h / 4;  // half the length of the head's top edge, which runs along y
    const auto shaft = Stack<2>({Centred(w / 2, h / 2, -d / 2), Centred(w / 2, h / 2, 0.0)});
    const auto head = Stack<2>({Centred(w, h, 0.0), Rectangle(0.0, -ridge, 0.0, ridge, d / 4)});
    DrawComplexObject3D(shaft.data(), 1, fill, frame);
    DrawComplexObject3D(head.data(), 1, fill, frame);
}

void COpenGL::DrawHourglassSolidObject3D(double w, double h, double d, const RGBDType& fill,
                                         const RGBDType& frame) {
    const auto glass =
        Stack<3>({Centred(w, h, -d / 2), Centred(w / 2, h / 2, 0.0), Centred(w, h, d / 2)});
    DrawComplexObject3D(glass.data(), 2, fill, frame);
}

void COpenGL::DrawAuxObject(int shape, int solid, const point3Dtype& size) {
    m_SavedColorMode = m_ColorMode;
    if (solid != 0) {
        SetFillStyle3D(m_FillColor, m_FillColor2, m_FrameColor);
    } else {
        SetColorMode(0);
        m_CurrentColor = m_LineColor;
        UseLineWidth();
    }
    SyncState();
    const GLContext::HostContextGuard host;
    const auto draw = [&] { DrawShape(shape, solid != 0, size); };
    const RGBDType& color = solid != 0 ? m_FillColor : m_LineColor;
    const bool kept = m_Renderer->IsSeeThrough(color);
    if (Ready()) {
        if (m_Renderer->DrawsImage() && !kept) {
            draw();
        } else {
            detail::ShadedShape captured = detail::CaptureShape(draw);
            captured.width = m_Renderer->lineWidth;
            captured.element = m_Renderer->element;
            for (auto* const vertices : {&captured.triangles, &captured.lines})
                for (detail::ShadedVertex& vertex : *vertices)
                    vertex.color.a = color.a;
            if (kept)
                m_Renderer->KeepShape(captured);
            else
                m_Renderer->sink->DrawShape(m_Renderer->scene, captured);
        }
    }
    // The mode that is current now, not the one saved: wire shapes leave lighting off.
    SetColorMode(m_ColorMode);
}

void COpenGL::DrawAuxObjectBehind(int shape, const point3Dtype& size) {
    const GLContext::HostContextGuard host;
    if (GetFrameOffset() == 0 || !Ready()) return DrawAuxObject(shape, 1, size);
    // What was collected before is drawn first: it is not to be pushed back.
    m_Renderer->Flush();
    m_Renderer->gl.Offset(true);
    DrawAuxObject(shape, 1, size);
    m_Renderer->gl.Offset(false);
}

void COpenGL::GetAxesPlaneNormal(int plane, point3Dtype& normal) const {
    normal.x = normal.y = normal.z = 0.0;
    switch (plane % 3) {
        case 0:
            normal.z = 1.0;
            break;
        case 1:
            normal.y = 1.0;
            break;
        case 2:
            normal.x = 1.0;
            break;
        default:
            break;
    }
}

}  // namespace varnel

// Solid symbols of scatter, price and box charts: placed in normalized coordinates, turned with the
// chart, and of one size whatever the axes are.
#pragma once

#include "varnel/chartobj/chart_codes.h"
#include "varnel/foundation/colors.h"
#include "varnel/foundation/points.h"
#include "varnel/render/opengl.h"
#include "varnel/transform/transform.h"

namespace varnel::detail {

/// Draws one symbol of unit size (the diamond twice as high) about the origin of the matrix.
void DrawSymbol(COpenGL& gl, int symbol, const RGBDType& fill, const RGBDType& outline);

/// The place in the chart's box of a point in working coordinates.
inline point3Dtype PlaceInBox(const CTransform3D& t, const point3Dtype& working) {
    point3Dtype data;
    point3Dtype place;
    t.CPFWS(data, working);
    t.NormalizePoint(data, place);
    return place;
}

/// Draws symbols while a chart is drawn, and leaves the chart's matrix current after each.
class SymbolPen {
 public:
    SymbolPen(COpenGL& gl, CTransform3D& transform, double relSize)
        : m_GL(gl), m_Transform(transform), m_Scale((relSize + relSize) / 20.0) {
        m_Transform.TextTransform();
        m_GL.LoadMatrixTransform(m_Transform.GetGraphTransform());
    }

    void Draw(int symbol, const point3Dtype& place, const RGBDType& fill, const RGBDType& outline) {
        m_GL.LoadMatrixTransform(m_Transform.GetFontTransform());
        m_GL.Translate3D(place.x, place.y, place.z);
        m_GL.Scale3D(m_Scale, m_Scale, m_Scale);
        DrawSymbol(m_GL, symbol, fill, outline);
        m_GL.LoadMatrixTransform(m_Transform.GetGraphTransform());
    }

 private:
    COpenGL& m_GL;
    CTransform3D& m_Transform;
    double m_Scale;
};

}  // namespace varnel::detail

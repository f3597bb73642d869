#include "varnel/axes/text_object.h"
#include "varnel/chartobj/chart_object.h"
#include "varnel/chartobj/detail/chart_data.h"
#include "varnel/chartobj/detail/symbol_pen.h"
#include "varnel/foundation/detail/raise.h"

namespace varnel {

void detail::DrawSymbol(COpenGL& gl, int symbol, const RGBDType& fill, const RGBDType& outline) {
    constexpr int allFaces[6] = {1, 1, 1, 1, 1, 1};
    switch (symbol) {
        case kCubeSymbol:
            return gl.DrawCubeSolidObject3D(1, 1, 1, fill, outline, allFaces);
        case kPlusSymbol:
            return gl.DrawPlusSolidObject3D(1, 1, 1, fill, outline);
        case kDiamondSymbol:
            return gl.DrawDiamondSolidObject3D(1, 1, 2, fill, outline);
        case kPyramidSymbol:
            return gl.DrawPyramidSolidObject3D(1, 1, 1, fill, outline);
        case kHourglassSymbol:
            return gl.DrawHourglassSolidObject3D(1, 1, 1, fill, outline);
        case kArrowSymbol:
            return gl.DrawArrowSolidObject3D(1, 1, 1, fill, outline);
        default:
            return;
    }
}

void CChartObj3D::DrawScatterChart3D() {
    const std::span<const point3Dtype> points = m_p3DPoints.First(m_NumDataPnts);
    if (points.empty()) return;
    const detail::SegmentColors colors = GetSegmentColors();
    detail::SymbolPen pen(*m_pOpenGL, *m_pTransform, m_RelSize);
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (!detail::IsData(points[i])) continue;
        const RGBDType& color = colors.At(i, m_FillColor);
        // Already in working coordinates, and converted once more: on a logarithmic axis the line
        // starts at the logarithm of the logarithm, which hosts rely on.
        ProjectionLine(m_pTransform->CPTWS(points[i]), color);
        // The projection line leaves a width of 1 behind.
        m_pOpenGL->SetLineWidth3D(m_OutlineWidth);
        point3Dtype place;
        m_pTransform->NormalizePoint(points[i], place);
        pen.Draw(m_Symbol, place, color, m_OutlineColor);
    }
    m_pOpenGL->SetLineWidth3D(1.0);
}

void CChartObj3D::DrawScatterText3D() {
    const std::span<const point3Dtype> points = m_p3DPoints.First(m_NumDataPnts);
    const std::span<const CString> strings = m_pDataStrings.First(m_NumDataPnts);
    const std::size_t n = detail::Shortest(points, strings);
    if (n == 0) return;
    const detail::SegmentColors colors = GetSegmentColors();
    const auto text =
        detail::NewObject<CTextObj3D>({ERR3DCLASS_CHARTOBJ3D, "DrawScatterText3D"}, m_pOpenGL,
                                      m_pOpenGL->GetFont(), m_pTransform, strings[0]);
    text->SetCharSize(m_RelSize);
    text->SetXJustify(1);
    text->SetTextPlane(m_TextPlane);
    for (std::size_t i = 0; i < n; ++i) {
        if (!detail::IsData(points[i])) continue;
        const RGBDType& color = colors.At(i, m_FillColor);
        text->SetColor(color);
        ProjectionLine(points[i], color);
        text->SetString(strings[i]);
        text->SetLocation(points[i]);
        text->OutText();
    }
}

}  // namespace varnel

#include "varnel/axes/text_object.h"
#include "varnel/chartobj/detail/chart_data.h"
#include "varnel/chartobj/detail/chart_drawing.h"
#include "varnel/chartobj/detail/common_count.h"
#include "varnel/chartobj/detail/screen.h"
#include "varnel/chartobj/detail/set_up.h"
#include "varnel/chartobj/detail/symbol_pen.h"
#include "varnel/foundation/detail/diagnose.h"
#include "varnel/foundation/detail/raise.h"

namespace varnel {

void detail::DrawSymbol(COpenGL& gl, int symbol, const RGBDType& fill, const RGBDType& outline) {
    constexpr int allFaces[6] = {1, 1, 1, 1, 1, 1};
    switch (symbol) {
        case SYMBOL_CUBE:
            return gl.DrawCubeSolidObject3D(1, 1, 1, fill, outline, allFaces);
        case SYMBOL_PLUS:
            return gl.DrawPlusSolidObject3D(1, 1, 1, fill, outline);
        case SYMBOL_DIAMOND:
            return gl.DrawDiamondSolidObject3D(1, 1, 2, fill, outline);
        case SYMBOL_PYRAMID:
            return gl.DrawPyramidSolidObject3D(1, 1, 1, fill, outline);
        case SYMBOL_HOURGLASS:
            return gl.DrawHourglassSolidObject3D(1, 1, 1, fill, outline);
        case SYMBOL_ARROW:
            return gl.DrawArrowSolidObject3D(1, 1, 1, fill, outline);
        case SYMBOL_NONE:
            return;
        default:
            return Diagnose("DrawChartObj", "there is no symbol ", symbol);
    }
}

void CChartObj3D::ScatterChart3D(const point3Dtype* points, double relSize, int n, int symbol,
                                 const RGBDType& fill, const RGBDType& outline, int projectionPlane,
                                 double constValue) {
    const detail::SetUp set(*this);
    set.Points(points, n);
    m_Saved.m_RelSize = relSize;
    m_Saved.m_Symbol = symbol;
    set.Colors(fill, outline);
    set.Projection(projectionPlane, constValue);
    m_Saved.m_ChartType = SCATTERCHART3D;
}

void CChartObj3D::ScatterChart3D(std::span<const point3Dtype> points, double relSize, int symbol,
                                 const RGBDType& fill, const RGBDType& outline, int projectionPlane,
                                 double constValue) {
    ScatterChart3D(points.data(), relSize, detail::CommonCount("ScatterChart3D", points), symbol,
                   fill, outline, projectionPlane, constValue);
}

void CChartObj3D::ScatterText3D(const point3Dtype* points, const CString* strings, int n,
                                double relSize, int textPlane, const RGBDType& color,
                                int projectionPlane, double constValue) {
    const detail::SetUp set(*this);
    set.Points(points, n);
    InitDataStringsStorage(strings);
    m_Saved.m_RelSize = relSize;
    m_Saved.m_TextPlane = textPlane;
    m_Saved.m_FillColor = color;
    set.Projection(projectionPlane, constValue);
    m_Saved.m_ChartType = SCATTERTEXT3D;
}

void CChartObj3D::ScatterText3D(std::span<const point3Dtype> points,
                                std::span<const CString> strings, double relSize, int textPlane,
                                const RGBDType& color, int projectionPlane, double constValue) {
    ScatterText3D(points.data(), strings.data(),
                  detail::CommonCount("ScatterText3D", points, strings), relSize, textPlane, color,
                  projectionPlane, constValue);
}

void CChartObj3D::SetTextBeside(int on) {
    m_Added.m_TextBeside = on;
    m_Added.m_TextShifts.clear();
}

void detail::ChartDrawing::DrawScatterChart3D() const {
    const std::span<const point3Dtype> points = m_Saved.m_p3DPoints.First(m_Saved.m_NumDataPnts);
    if (points.empty()) return;
    const detail::SegmentColors colors = GetSegmentColors();
    const bool exact = m_Added.m_ExactExtents != 0;
    detail::SymbolPen pen(*m_pOpenGL, *m_pTransform, m_Saved.m_RelSize);
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (!detail::IsData(points[i])) continue;
        const RGBDType& color = colors.At(i, m_Saved.m_FillColor);
        // Unless extents are exact the point is converted twice: on a logarithmic axis the line
        // then starts at the logarithm of the logarithm.
        ProjectionLine(exact ? points[i] : m_pTransform->CPTWS(points[i]), color);
        // The projection line leaves a width of 1 behind.
        m_pOpenGL->SetLineWidth3D(m_Saved.m_OutlineWidth);
        if (m_Added.m_Marker != MARKER_NONE) continue;
        point3Dtype place;
        m_pTransform->NormalizePoint(points[i], place);
        pen.Draw(m_Saved.m_Symbol, place, color, m_Saved.m_OutlineColor);
    }
    DrawMarkers(points);
}

void detail::ChartDrawing::DrawScatterText3D() const {
    const std::span<const point3Dtype> points = m_Saved.m_p3DPoints.First(m_Saved.m_NumDataPnts);
    const std::span<const CString> strings = m_Saved.m_pDataStrings.First(m_Saved.m_NumDataPnts);
    const std::size_t n = detail::Shortest(points, strings);
    if (n == 0) return;
    const detail::SegmentColors colors = GetSegmentColors();
    const auto text =
        detail::NewObject<CTextObj3D>({ERR3DCLASS_CHARTOBJ3D, "DrawScatterText3D"}, m_pOpenGL,
                                      m_pOpenGL->GetFont(), m_pTransform, strings[0]);
    text->SetCharSize(m_Saved.m_RelSize);
    text->SetXJustify(1);
    text->SetTextPlane(m_Saved.m_TextPlane);
    text->SetHalo(m_Added.m_TextHalo);
    text->SetHaloColor(m_Added.m_TextHaloColor);
    const detail::Screen screen(*m_pOpenGL, *m_pTransform);
    for (std::size_t i = 0; i < n; ++i) {
        if (!detail::IsData(points[i])) continue;
        const RGBDType& color = colors.At(i, m_Saved.m_FillColor);
        text->SetColor(color);
        ProjectionLine(points[i], color);
        text->SetLocation(points[i]);
        if (i < m_Added.m_TextShifts.size()) {
            const point3Dtype& shift = m_Added.m_TextShifts[i];
            if (shift.w == 0.0) continue;
            text->SetShift(shift.x, shift.y);
            const point3Dtype near = screen.Towards(shift.z);
            point3Dtype at = m_pTransform->CPTWS(points[i]);
            at = {at.x + near.x, at.y + near.y, at.z + near.z, 0.0};
            m_pTransform->CPFWS(at, at);
            text->SetLocation(at);
        }
        text->SetString(strings[i]);
        text->OutText();
    }
}

}  // namespace varnel

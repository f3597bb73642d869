// What stands beside a chart's data: error bars, arrows, reference lines and bands, notes.
#include <algorithm>
#include <cmath>

#include "varnel/axes/detail/wall_depths.h"
#include "varnel/axes/text_object.h"
#include "varnel/chartobj/detail/chart_data.h"
#include "varnel/chartobj/detail/chart_drawing.h"
#include "varnel/chartobj/detail/common_count.h"
#include "varnel/chartobj/detail/marks_geometry.h"
#include "varnel/chartobj/detail/screen.h"
#include "varnel/chartobj/detail/set_up.h"
#include "varnel/foundation/detail/raise.h"
#include "varnel/render/opengl.h"
#include "varnel/transform/transform.h"

namespace varnel {
namespace {

/// How far marks on walls stand out of them, in device units.
constexpr double kMarkLift = 0.004;

}  // namespace

void CChartObj3D::ErrorBars3D(std::span<const point3Dtype> points, std::span<const double> below,
                              std::span<const double> above, int axis, double relSize,
                              int lineStyle, int lineWidth, const RGBDType& color) {
    const detail::SetUp set(*this);
    const int n = detail::CommonCount("ErrorBars3D", points, below, above);
    set.Points(points.data(), n);
    m_Added.m_ErrorsBelow.assign(below.begin(), below.end());
    m_Added.m_ErrorsAbove.assign(above.begin(), above.end());
    m_Saved.m_IndAxis = axis;
    m_Saved.m_RelSize = relSize;
    set.Line(lineStyle, lineWidth, color);
    m_Saved.m_ChartType = ERRORBARS3D;
}

void CChartObj3D::Vectors3D(std::span<const point3Dtype> points,
                            std::span<const point3Dtype> components, double scale, double relSize,
                            int flatHeads, int lineWidth, const RGBDType& color) {
    const detail::SetUp set(*this);
    const int n = detail::CommonCount("Vectors3D", points, components);
    set.Points(points.data(), n);
    m_Added.m_Components.assign(components.begin(), components.end());
    m_Added.m_VectorScale = scale;
    m_Added.m_FlatHeads = flatHeads;
    m_Saved.m_RelSize = relSize;
    set.Line(0, lineWidth, color);
    m_Saved.m_ChartType = VECTORS3D;
}

void CChartObj3D::ReferenceLine3D(int axis, double value, int plane, int lineStyle, int lineWidth,
                                  const RGBDType& color) {
    const detail::SetUp set(*this);
    m_Saved.m_IndAxis = axis;
    set.Projection(plane, value);
    set.Line(lineStyle, lineWidth, color);
    m_Saved.m_ChartType = REFERENCELINE3D;
}

void CChartObj3D::ReferenceBand3D(int axis, double from, double to, int plane,
                                  const RGBDType& fill) {
    const detail::SetUp set(*this);
    m_Saved.m_IndAxis = axis;
    m_Saved.m_BaseValue = to;
    set.Projection(plane, from);
    set.Colors(fill, fill);
    m_Saved.m_ChartType = REFERENCEBAND3D;
}

void CChartObj3D::Note3D(const CString& text, const point3Dtype& at, const point3Dtype& place,
                         double relSize, int lineWidth, const RGBDType& color) {
    const detail::SetUp set(*this);
    const point3Dtype points[] = {at, place};
    const CString strings[] = {text, CString()};
    set.Points(points, 2);
    InitDataStringsStorage(strings);
    m_Saved.m_RelSize = relSize;
    set.Line(0, lineWidth, color);
    m_Saved.m_ChartType = NOTE3D;
}

void detail::ChartDrawing::DrawErrorBars3D() const {
    const detail::SegmentColors colors = GetSegmentColors();
    detail::WalkErrorBars(*m_pTransform, m_Saved.m_p3DPoints.First(m_Saved.m_NumDataPnts),
                          m_Added.m_ErrorsBelow, m_Added.m_ErrorsAbove, m_Saved.m_IndAxis,
                          m_Saved.m_RelSize,
                          [&](std::size_t i, const point3Dtype& p, const point3Dtype& q) {
                              m_pOpenGL->SetLineStyle3D(m_Saved.m_LineStyle, m_Saved.m_LineWidth,
                                                        colors.At(i, m_Saved.m_FillColor));
                              m_pOpenGL->LineAbs3D(p, q);
                          });
    m_pOpenGL->SetLineStyle3D(0, 1.0, m_Saved.m_OutlineColor);
}

void detail::ChartDrawing::DrawVectors3D() const {
    const auto points = m_Saved.m_p3DPoints.First(m_Saved.m_NumDataPnts);
    const std::size_t n = std::min(points.size(), m_Added.m_Components.size());
    const detail::SegmentColors colors = GetSegmentColors();
    const point3Dtype viewer = detail::Screen(*m_pOpenGL, *m_pTransform).Towards(1.0);
    m_pOpenGL->SetFrameFilled(0);
    for (std::size_t i = 0; i < n; ++i) {
        const point3Dtype& c = m_Added.m_Components[i];
        if (!detail::IsData(points[i]) || !detail::IsData(c)) continue;
        const detail::Arrow arrow(*m_pTransform, points[i], c, m_Added.m_VectorScale,
                                  m_Saved.m_RelSize / 10);
        const RGBDType& color = colors.At(i, m_Saved.m_FillColor);
        m_pOpenGL->SetLineStyle3D(0, m_Saved.m_LineWidth, color);
        m_pOpenGL->LineAbs3D(arrow.GetStart(), arrow.GetNeck());
        m_pOpenGL->SetFillStyle3D(color, color, color);
        const auto fill = [&](std::span<const point3Dtype> ring) {
            m_pOpenGL->PolyFillAbs3D(ring.data(), static_cast<int>(ring.size()));
        };
        if (m_Added.m_FlatHeads != 0)
            arrow.WalkFlatHead(viewer, fill);
        else
            arrow.WalkCone(fill);
    }
    m_pOpenGL->SetLineStyle3D(0, 1.0, m_Saved.m_OutlineColor);
}

void detail::ChartDrawing::DrawReferenceLine3D() const {
    detail::WallBand band;
    if (!detail::FindWallBand(*m_pTransform, m_Saved.m_IndAxis, m_Saved.m_ConstValue,
                              m_Saved.m_ConstValue, m_Saved.m_ProjectionPlane, band))
        return;
    const point3Dtype lift = detail::Screen(*m_pOpenGL, *m_pTransform).Towards(kMarkLift);
    m_pOpenGL->SetLineStyle3D(m_Saved.m_LineStyle, m_Saved.m_LineWidth, m_Saved.m_FillColor);
    m_pOpenGL->LineAbs3D(detail::Moved(band.corners[0], lift),
                         detail::Moved(band.corners[1], lift));
    m_pOpenGL->SetLineStyle3D(0, 1.0, m_Saved.m_OutlineColor);
}

void detail::ChartDrawing::DrawReferenceBand3D() const {
    detail::WallBand band;
    if (!detail::FindWallBand(*m_pTransform, m_Saved.m_IndAxis, m_Saved.m_ConstValue,
                              m_Saved.m_BaseValue, m_Saved.m_ProjectionPlane, band))
        return;
    // Behind lines on the same wall, and behind its grid where the wall lies farther back itself.
    const double out = m_pOpenGL->GetLineAreas() != 0 ? -detail::kBandDepth : kMarkLift / 2;
    const point3Dtype lift = detail::Screen(*m_pOpenGL, *m_pTransform).Towards(out);
    point3Dtype ring[5];
    for (int k = 0; k < 5; ++k)
        ring[k] = detail::Moved(band.corners[k % 4], lift);
    // In its own colour, whatever the light on the wall is.
    m_pOpenGL->SetColorMode(0);
    m_pOpenGL->SetFillStyle3D(m_Saved.m_FillColor, m_Saved.m_FillColor, m_Saved.m_OutlineColor);
    m_pOpenGL->PolyFillAbs3D(ring, 5);
}

void detail::ChartDrawing::DrawNote3D() const {
    const auto points = m_Saved.m_p3DPoints.First(m_Saved.m_NumDataPnts);
    const auto strings = m_Saved.m_pDataStrings.First(m_Saved.m_NumDataPnts);
    if (points.size() < 2 || strings.empty() || !detail::IsData(points[0]) ||
        !detail::IsData(points[1]))
        return;
    const point3Dtype at = m_pTransform->CPTWS(points[0]);
    const point3Dtype place = m_pTransform->CPTWS(points[1]);
    const detail::Screen screen(*m_pOpenGL, *m_pTransform);
    m_pOpenGL->SetLineStyle3D(m_Saved.m_LineStyle, m_Saved.m_LineWidth, m_Saved.m_FillColor);
    m_pOpenGL->LineAbs3D(at, place);
    const auto text =
        detail::NewObject<CTextObj3D>({ERR3DCLASS_CHARTOBJ3D, "DrawNote3D"}, m_pOpenGL,
                                      m_pOpenGL->GetFont(), m_pTransform, strings[0]);
    text->SetCharSize(m_Saved.m_RelSize);
    // The text begins where the line ends, on the side to which the line leads.
    const detail::ScreenPoint from = screen.Pixel(at);
    const detail::ScreenPoint to = screen.Pixel(place);
    if (std::abs(to.x - from.x) > std::abs(to.y - from.y))
        text->SetJustify(to.x > from.x ? TEXT_START : TEXT_END, TEXT_CENTER);
    else
        text->SetJustify(TEXT_CENTER, to.y >= from.y ? TEXT_START : TEXT_END);
    text->SetTextPlane(TEXTPLANE_VIEWER);
    text->SetColor(m_Saved.m_FillColor);
    text->SetLocation(points[1]);
    text->OutText();
    m_pOpenGL->LoadMatrixTransform(m_pTransform->GetGraphTransform());
    m_pOpenGL->SetLineStyle3D(0, 1.0, m_Saved.m_OutlineColor);
}

}  // namespace varnel

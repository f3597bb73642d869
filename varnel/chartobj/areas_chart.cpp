#include "varnel/chartobj/chart_object.h"
#include "varnel/chartobj/detail/areas_geometry.h"
#include "varnel/render/opengl.h"

namespace varnel {
namespace {

constexpr RGBDType kBlack{0.0, 0.0, 0.0, 1.0};
constexpr int kAllFaces[6] = {1, 1, 1, 1, 1, 1};

}  // namespace

void CChartObj3D::DrawAreaFillChart25D() {
    const detail::SegmentColors colors = GetSegmentColors();
    m_pOpenGL->SetFillStyle3D(m_FillColor, kBlack, m_FillColor);
    m_pOpenGL->SetLineWidth3D(m_OutlineWidth);
    detail::WalkAreaFill(*m_pTransform, GetData25D(), [&](std::size_t piece, const auto& corners) {
        // Numbered by pieces, so that colours move on by one at each cut.
        m_pOpenGL->DrawSolidObject3D(corners.data(), colors.At(piece, m_FillColor), m_OutlineColor,
                                     kAllFaces);
    });
    m_pOpenGL->SetLineWidth3D(1.0);
}

void CChartObj3D::DrawAreaRangeChart25D() {
    const RGBDType color = m_SegmentColorMode != 0 ? GetAreaRangeColor() : m_FillColor;
    m_pOpenGL->SetFillStyle3D(m_FillColor, kBlack, m_FillColor);
    m_pOpenGL->SetLineWidth3D(m_OutlineWidth);
    detail::WalkAreaRange(*m_pTransform, GetData25D(), [&](std::size_t, const auto& corners) {
        m_pOpenGL->DrawSolidObject3D(corners.data(), color, m_OutlineColor, kAllFaces);
    });
    m_pOpenGL->SetLineWidth3D(1.0);
}

void CChartObj3D::DrawGroupAreaFillChart25D() {
    m_pOpenGL->SetLineWidth3D(m_OutlineWidth);
    detail::WalkGroupAreas(*m_pTransform, GetData25D(),
                           [this](std::size_t, std::size_t group, const auto& corners) {
                               m_pOpenGL->DrawSolidObject3D(corners.data(), GroupColor(group),
                                                            m_OutlineColor, kAllFaces);
                           });
    m_pOpenGL->SetLineWidth3D(1.0);
}

}  // namespace varnel

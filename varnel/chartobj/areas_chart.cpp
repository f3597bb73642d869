#include "varnel/chartobj/chart_object.h"
#include "varnel/chartobj/detail/areas_geometry.h"
#include "varnel/chartobj/detail/common_count.h"
#include "varnel/render/opengl.h"

namespace varnel {
namespace {

constexpr RGBDType kBlack{0.0, 0.0, 0.0, 1.0};
constexpr int kAllFaces[6] = {1, 1, 1, 1, 1, 1};

}  // namespace

void CChartObj3D::AreaFillChart25D(const double* ind, const double* dep, double baseValue,
                                   double constValue, int n, double depthWidth,
                                   const RGBDType& fill, const RGBDType& outline, int depthJustify,
                                   int indAxis) {
    SetSeries(ind, n, constValue, indAxis);
    InitDepDataStorage(dep);
    m_Saved.m_BaseValue = baseValue;
    m_Saved.m_DepthWidth = depthWidth;
    m_Saved.m_DepthJustify = depthJustify;
    SetColors(fill, outline);
    m_Saved.m_ChartType = AREAFILLCHART25D;
}

void CChartObj3D::AreaFillChart25D(std::span<const double> ind, std::span<const double> dep,
                                   double baseValue, double constValue, double depthWidth,
                                   const RGBDType& fill, const RGBDType& outline, int depthJustify,
                                   int indAxis) {
    AreaFillChart25D(ind.data(), dep.data(), baseValue, constValue,
                     detail::CommonCount("AreaFillChart25D", ind, dep), depthWidth, fill, outline,
                     depthJustify, indAxis);
}

void CChartObj3D::AreaRangeChart25D(const double* ind, const double* dep, const double* dep2,
                                    double constValue, int n, double depthWidth,
                                    const RGBDType& fill, const RGBDType& outline, int depthJustify,
                                    int indAxis) {
    SetSeries(ind, n, constValue, indAxis);
    InitDepDataStorage(dep);
    InitDepData2Storage(dep2);
    m_Saved.m_DepthWidth = depthWidth;
    m_Saved.m_DepthJustify = depthJustify;
    SetColors(fill, outline);
    m_Saved.m_ChartType = AREARANGECHART25D;
}

void CChartObj3D::AreaRangeChart25D(std::span<const double> ind, std::span<const double> dep,
                                    std::span<const double> dep2, double constValue,
                                    double depthWidth, const RGBDType& fill,
                                    const RGBDType& outline, int depthJustify, int indAxis) {
    AreaRangeChart25D(ind.data(), dep.data(), dep2.data(), constValue,
                      detail::CommonCount("AreaRangeChart25D", ind, dep, dep2), depthWidth, fill,
                      outline, depthJustify, indAxis);
}

void CChartObj3D::GroupAreaFillChart25D(const double* ind, const double* groupData,
                                        double constValue, int n, int numGroups, double depthWidth,
                                        const RGBDType* groupColors, const RGBDType& outline,
                                        int depthJustify, int indAxis) {
    SetSeries(ind, n, constValue, indAxis);
    SetGroups(groupData, numGroups, groupColors);
    m_Saved.m_DepthWidth = depthWidth;
    m_Saved.m_DepthJustify = depthJustify;
    m_Saved.m_OutlineColor = outline;
    m_Saved.m_ChartType = GROUPAREAFILLCHART25D;
}

void CChartObj3D::GroupAreaFillChart25D(std::span<const double> ind,
                                        std::span<const double> groupData, double constValue,
                                        double depthWidth, std::span<const RGBDType> groupColors,
                                        const RGBDType& outline, int depthJustify, int indAxis) {
    const auto [n, numGroups] =
        detail::GroupCounts("GroupAreaFillChart25D", ind, groupData, groupColors);
    GroupAreaFillChart25D(ind.data(), groupData.data(), constValue, n, numGroups, depthWidth,
                          detail::DataOf(groupColors), outline, depthJustify, indAxis);
}

void CChartObj3D::DrawAreaFillChart25D() {
    const detail::SegmentColors colors = GetSegmentColors();
    m_pOpenGL->SetFillStyle3D(m_Saved.m_FillColor, kBlack, m_Saved.m_FillColor);
    m_pOpenGL->SetLineWidth3D(m_Saved.m_OutlineWidth);
    detail::WalkAreaFill(*m_pTransform, GetData25D(), [&](std::size_t piece, const auto& corners) {
        // Numbered by pieces, so that colours move on by one at each cut.
        m_pOpenGL->DrawSolidObject3D(corners.data(), colors.At(piece, m_Saved.m_FillColor),
                                     m_Saved.m_OutlineColor, kAllFaces);
    });
}

void CChartObj3D::DrawAreaRangeChart25D() {
    const RGBDType color =
        m_Saved.m_SegmentColorMode != 0 ? GetAreaRangeColor() : m_Saved.m_FillColor;
    m_pOpenGL->SetFillStyle3D(m_Saved.m_FillColor, kBlack, m_Saved.m_FillColor);
    m_pOpenGL->SetLineWidth3D(m_Saved.m_OutlineWidth);
    detail::WalkAreaRange(*m_pTransform, GetData25D(), [&](std::size_t, const auto& corners) {
        m_pOpenGL->DrawSolidObject3D(corners.data(), color, m_Saved.m_OutlineColor, kAllFaces);
    });
}

void CChartObj3D::DrawGroupAreaFillChart25D() {
    m_pOpenGL->SetLineWidth3D(m_Saved.m_OutlineWidth);
    detail::WalkGroupAreas(*m_pTransform, GetData25D(),
                           [this](std::size_t, std::size_t group, const auto& corners) {
                               m_pOpenGL->DrawSolidObject3D(corners.data(), GroupColor(group),
                                                            m_Saved.m_OutlineColor, kAllFaces);
                           });
}

}  // namespace varnel

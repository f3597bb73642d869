#include "varnel/chartobj/detail/bars_geometry.h"
#include "varnel/chartobj/detail/chart_drawing.h"
#include "varnel/chartobj/detail/common_count.h"
#include "varnel/chartobj/detail/set_up.h"

namespace varnel {

void CChartObj3D::BarChart25D(const double* ind, const double* dep, double baseValue,
                              double constValue, int n, double indWidth, double depthWidth,
                              const RGBDType& fill, const RGBDType& outline, int indJustify,
                              int depthJustify, int indAxis) {
    const detail::SetUp set(*this);
    set.Series(ind, n, constValue, indAxis);
    InitDepDataStorage(dep);
    m_Saved.m_BaseValue = baseValue;
    set.Widths(indWidth, depthWidth);
    set.Justify(indJustify, depthJustify);
    set.Colors(fill, outline);
    m_Saved.m_ChartType = BARCHART25D;
}

void CChartObj3D::BarChart25D(std::span<const double> ind, std::span<const double> dep,
                              double baseValue, double constValue, double indWidth,
                              double depthWidth, const RGBDType& fill, const RGBDType& outline,
                              int indJustify, int depthJustify, int indAxis) {
    BarChart25D(ind.data(), dep.data(), baseValue, constValue,
                detail::CommonCount("BarChart25D", ind, dep), indWidth, depthWidth, fill, outline,
                indJustify, depthJustify, indAxis);
}

void CChartObj3D::BarChart3D(const point3Dtype* points, const double* heights, int n,
                             double indWidth, double depthWidth, const RGBDType& fill,
                             const RGBDType& outline) {
    const detail::SetUp set(*this);
    set.Points(points, n);
    InitBarHeightsStorage(heights);
    set.Widths(indWidth, depthWidth);
    set.Colors(fill, outline);
    m_Saved.m_ChartType = BARCHART3D;
}

void CChartObj3D::BarChart3D(std::span<const point3Dtype> points, std::span<const double> heights,
                             double indWidth, double depthWidth, const RGBDType& fill,
                             const RGBDType& outline) {
    BarChart3D(points.data(), heights.data(), detail::CommonCount("BarChart3D", points, heights),
               indWidth, depthWidth, fill, outline);
}

void CChartObj3D::FloatingBarChart25D(const double* ind, const double* dep, const double* heights,
                                      double constValue, int n, double indWidth, double depthWidth,
                                      const RGBDType& fill, const RGBDType& outline, int indJustify,
                                      int depthJustify, int indAxis) {
    const detail::SetUp set(*this);
    set.Series(ind, n, constValue, indAxis);
    InitDepDataStorage(dep);
    InitBarHeightsStorage(heights);
    set.Widths(indWidth, depthWidth);
    set.Justify(indJustify, depthJustify);
    set.Colors(fill, outline);
    m_Saved.m_ChartType = FLOATINGBARCHART25D;
}

void CChartObj3D::FloatingBarChart25D(std::span<const double> ind, std::span<const double> dep,
                                      std::span<const double> heights, double constValue,
                                      double indWidth, double depthWidth, const RGBDType& fill,
                                      const RGBDType& outline, int indJustify, int depthJustify,
                                      int indAxis) {
    FloatingBarChart25D(ind.data(), dep.data(), heights.data(), constValue,
                        detail::CommonCount("FloatingBarChart25D", ind, dep, heights), indWidth,
                        depthWidth, fill, outline, indJustify, depthJustify, indAxis);
}

void CChartObj3D::GroupBarChart25D(const double* ind, const double* groupData, double constValue,
                                   double baseValue, int n, int numGroups, int groupType,
                                   double indWidth, double depthWidth, const RGBDType* groupColors,
                                   const RGBDType& outline, int indJustify, int depthJustify,
                                   int indAxis) {
    const detail::SetUp set(*this);
    set.Series(ind, n, constValue, indAxis);
    set.Groups(groupData, numGroups, groupColors);
    m_Saved.m_BaseValue = baseValue;
    m_Saved.m_GroupType = groupType;
    set.Widths(indWidth, depthWidth);
    set.Justify(indJustify, depthJustify);
    m_Saved.m_OutlineColor = outline;
    m_Saved.m_ChartType = GROUPBARCHART25D;
}

void CChartObj3D::GroupBarChart25D(std::span<const double> ind, std::span<const double> groupData,
                                   double constValue, double baseValue, int groupType,
                                   double indWidth, double depthWidth,
                                   std::span<const RGBDType> groupColors, const RGBDType& outline,
                                   int indJustify, int depthJustify, int indAxis) {
    const auto [n, numGroups] =
        detail::GroupCounts("GroupBarChart25D", ind, groupData, groupColors);
    GroupBarChart25D(ind.data(), groupData.data(), constValue, baseValue, n, numGroups, groupType,
                     indWidth, depthWidth, detail::DataOf(groupColors), outline, indJustify,
                     depthJustify, indAxis);
}

void detail::ChartDrawing::DrawBarChart3D() const {
    const detail::SegmentColors colors = GetSegmentColors();
    detail::WalkBars3D(
        *m_pTransform, m_Saved.m_p3DPoints.First(m_Saved.m_NumDataPnts),
        m_Saved.m_pBarHeights.First(m_Saved.m_NumDataPnts), m_Saved.m_IndWidth,
        m_Saved.m_DepthWidth, m_Added.m_ExactExtents != 0, [&](std::size_t i, const Prism& bar) {
            Draw(*m_pOpenGL, bar, colors.At(i, m_Saved.m_FillColor), m_Saved.m_OutlineColor);
        });
}

void detail::ChartDrawing::DrawBarChart25D() const {
    const detail::SegmentColors colors = GetSegmentColors();
    m_pOpenGL->SetLineWidth3D(m_Saved.m_OutlineWidth);
    detail::WalkBars25D(*m_pTransform, GetData25D(), [&](std::size_t i, const Prism& bar) {
        Draw(*m_pOpenGL, bar, colors.At(i, m_Saved.m_FillColor), m_Saved.m_OutlineColor);
    });
}

void detail::ChartDrawing::DrawFloatingBarChart25D() const {
    const detail::SegmentColors colors = GetSegmentColors();
    m_pOpenGL->SetLineWidth3D(m_Saved.m_OutlineWidth);
    detail::WalkFloatingBars(*m_pTransform, GetData25D(), [&](std::size_t i, const Prism& bar) {
        Draw(*m_pOpenGL, bar, colors.At(i, m_Saved.m_FillColor), m_Saved.m_OutlineColor);
    });
}

void detail::ChartDrawing::DrawGroupBarChart25D() const {
    const auto draw = [this](std::size_t, std::size_t group, const Prism& bar) {
        Draw(*m_pOpenGL, bar, m_Object.GroupColor(group), m_Saved.m_OutlineColor);
    };
    m_pOpenGL->SetLineWidth3D(m_Saved.m_OutlineWidth);
    if (m_Saved.m_GroupType == 0) detail::WalkBarsSideBySide(*m_pTransform, GetData25D(), draw);
    if (m_Saved.m_GroupType == 1) detail::WalkStackedBars(*m_pTransform, GetData25D(), draw);
}

}  // namespace varnel

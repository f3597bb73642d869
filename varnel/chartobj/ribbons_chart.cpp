#include <limits>

#include "varnel/chartobj/detail/chart_drawing.h"
#include "varnel/chartobj/detail/common_count.h"
#include "varnel/chartobj/detail/ribbons_geometry.h"
#include "varnel/chartobj/detail/set_up.h"
#include "varnel/foundation/detail/raise.h"
#include "varnel/render/opengl.h"

namespace varnel {

void CChartObj3D::RibbonChart25D(const double* ind, const double* dep, double constValue, int n,
                                 double depthWidth, const RGBDType& fill, const RGBDType& outline,
                                 int depthJustify, int indAxis) {
    const detail::SetUp set(*this);
    set.Series(ind, n, constValue, indAxis);
    InitDepDataStorage(dep);
    m_Saved.m_DepthWidth = depthWidth;
    m_Saved.m_DepthJustify = depthJustify;
    set.Colors(fill, outline);
    m_Saved.m_ChartType = RIBBONCHART25D;
}

void CChartObj3D::RibbonChart25D(std::span<const double> ind, std::span<const double> dep,
                                 double constValue, double depthWidth, const RGBDType& fill,
                                 const RGBDType& outline, int depthJustify, int indAxis) {
    RibbonChart25D(ind.data(), dep.data(), constValue,
                   detail::CommonCount("RibbonChart25D", ind, dep), depthWidth, fill, outline,
                   depthJustify, indAxis);
}

void CChartObj3D::GroupRibbonChart25D(const double* ind, const double* groupData, double constValue,
                                      int n, int numGroups, double depthWidth,
                                      const RGBDType* groupColors, const RGBDType& outline,
                                      int depthJustify, int indAxis) {
    const detail::SetUp set(*this);
    set.Series(ind, n, constValue, indAxis);
    set.Groups(groupData, numGroups, groupColors);
    m_Saved.m_DepthWidth = depthWidth;
    m_Saved.m_DepthJustify = depthJustify;
    m_Saved.m_OutlineColor = outline;
    m_Saved.m_ChartType = GROUPRIBBONCHART25D;
}

void CChartObj3D::GroupRibbonChart25D(std::span<const double> ind,
                                      std::span<const double> groupData, double constValue,
                                      double depthWidth, std::span<const RGBDType> groupColors,
                                      const RGBDType& outline, int depthJustify, int indAxis) {
    const auto [n, numGroups] =
        detail::GroupCounts("GroupRibbonChart25D", ind, groupData, groupColors);
    GroupRibbonChart25D(ind.data(), groupData.data(), constValue, n, numGroups, depthWidth,
                        detail::DataOf(groupColors), outline, depthJustify, indAxis);
}

void detail::ChartDrawing::DrawRibbonChart25D() const {
    m_pOpenGL->SetFillStyle3D(m_Saved.m_FillColor, m_Saved.m_FillColor, m_Saved.m_OutlineColor);
    m_pOpenGL->SetLineWidth3D(m_Saved.m_OutlineWidth);
    detail::WalkRibbon(*m_pTransform, GetData25D(), [this](std::size_t i, const auto& points) {
        CheckSetSegmentColor(i);
        m_pOpenGL->PolyFillAbs3D(points.data(), 5);
    });
}

void detail::ChartDrawing::DrawGroupRibbonChart25D() const {
    const detail::Origin origin{ERR3DCLASS_CHARTOBJ3D, "DrawGroupRibbonChart25D"};
    const detail::Data25D data = GetData25D();
    const std::size_t n = data.ind.size();
    const std::size_t numGroups = data.groups.StoredGroups();
    if (n == 0 || numGroups == 0) return;

    const auto totals = detail::NewArray<double>(static_cast<long long>(n), origin);
    const auto heights = detail::NewArray<double>(static_cast<long long>(n), origin);
    for (std::size_t g = 0; g < numGroups; ++g) {
        for (std::size_t i = 0; i < n; ++i) {
            const double datum = data.groups.At(g, i);
            if (detail::IsData(datum)) totals[i] += datum;
            heights[i] =
                detail::IsData(datum) ? totals[i] : std::numeric_limits<double>::quiet_NaN();
        }
        // A ribbon of its own: default gap and outline mode whatever this object's are, and one
        // chart object more in the count.
        const auto ribbon = detail::NewObject<CChartObj3D>(origin, m_pOpenGL, m_pTransform);
        ribbon->SetOutlineWidth(m_Saved.m_OutlineWidth);
        ribbon->m_Added = m_Added;
        ribbon->RibbonChart25D(data.ind.data(), heights.get(), m_Saved.m_ConstValue,
                               static_cast<int>(n), m_Saved.m_DepthWidth, m_Object.GroupColor(g),
                               m_Saved.m_OutlineColor, m_Saved.m_DepthJustify, m_Saved.m_IndAxis);
        ChartDrawing(*ribbon).DrawRibbonChart25D();
    }
}

}  // namespace varnel

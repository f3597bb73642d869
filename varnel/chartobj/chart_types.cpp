#include "varnel/chartobj/detail/chart_types.h"

namespace varnel::detail {

const ChartType* ChartTypes::Find(int type) {
    using O = ChartDrawing;
    using D = ChartData;
    using S = ChartSample;
    static constexpr ChartType kTypes[] = {
        {RIBBONCHART25D, "ribbon", &O::DrawRibbonChart25D, D::Series, S::Fill},
        {BARCHART25D, "bar", &O::DrawBarChart25D, D::Series, S::Fill},
        {BARCHART3D, "bar in space", &O::DrawBarChart3D, D::Points, S::Fill},
        {AREAFILLCHART25D, "area", &O::DrawAreaFillChart25D, D::Series, S::Fill},
        {AREARANGECHART25D, "area range", &O::DrawAreaRangeChart25D, D::Series, S::Fill},
        {LINECHART25D, "line", &O::DrawLineChart25D, D::Series, S::OutlineLine},
        {SCATTERCHART3D, "scatter", &O::DrawScatterChart3D, D::Points, S::Symbol},
        {LINECHART3D, "line in space", &O::DrawLineChart3D, D::Points, S::Line},
        {PROJECTIONLINECHART3D, "projected line", &O::DrawProjectionLineChart3D, D::Points,
         S::OutlineLine},
        {GROUPBARCHART25D, "grouped bar", &O::DrawGroupBarChart25D, D::Groups, S::GroupFill},
        {GROUPRIBBONCHART25D, "stacked ribbon", &O::DrawGroupRibbonChart25D, D::Groups,
         S::GroupFill},
        {GROUPAREAFILLCHART25D, "stacked area", &O::DrawGroupAreaFillChart25D, D::Groups,
         S::GroupFill},
        {OHLCCHART25D, "price", &O::DrawOHLCChart25D, D::Groups, S::Prices},
        {PLANECHART3D, "plane in space", &O::DrawPlaneChart3D, D::Points, S::Fill},
        {SCATTERTEXT3D, "scattered text", &O::DrawScatterText3D, D::Points, S::PlainFill},
        {BOXANDWHISKERCHART25D, "box and whisker", &O::DrawBoxAndWhiskerChart25D, D::Groups,
         S::Box},
        {FLOATINGBARCHART25D, "floating bar", &O::DrawFloatingBarChart25D, D::Series, S::Fill},
        {PLANECHART25D, "plane", &O::DrawPlaneChart25D, D::Series, S::Fill},
        {POLYSURFACECHART2D, "flat surface", &O::DrawPolysurfaceChart2D, D::Surface, S::Fill},
        {POLYSURFACECHART3D, "surface", &O::DrawPolysurfaceChart3D, D::Surface, S::Fill},
        {CONTOURPOLYSURFACE3D, "contour", &O::DrawContourPolysurface3D, D::Contours, S::Contour},
        {ERRORBARS3D, "error bar", &O::DrawErrorBars3D, D::Points, S::Line},
        {VECTORS3D, "arrow", &O::DrawVectors3D, D::Points, S::Line},
        {REFERENCELINE3D, "reference line", &O::DrawReferenceLine3D, D::None, S::Line},
        {REFERENCEBAND3D, "reference band", &O::DrawReferenceBand3D, D::None, S::Fill},
        {NOTE3D, "note", &O::DrawNote3D, D::Points, S::PlainFill},
    };
    for (const ChartType& entry : kTypes)
        if (entry.type == type) return &entry;
    return nullptr;
}

}  // namespace varnel::detail

namespace varnel {

const char* CChartObj3D::GetChartTypeName() const {
    const detail::ChartType* const type = detail::ChartTypes::Find(m_Saved.m_ChartType);
    return type != nullptr ? type->name : "nothing";
}

}  // namespace varnel

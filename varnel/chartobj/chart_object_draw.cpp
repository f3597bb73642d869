// Drawing: what all chart types share, and the way to the routine of each.
#include <utility>

#include "varnel/chartobj/chart_object.h"
#include "varnel/chartobj/detail/chart_data.h"
#include "varnel/foundation/detail/raise.h"
#include "varnel/render/opengl.h"
#include "varnel/transform/transform.h"

namespace varnel {
namespace {

struct SharedState {
    BOOL framed;
    int colorMode;
    bool clipped;
};

// The state that every chart type draws in. It is taken back however the drawing ends; the
// collecting ends before that, while the state still holds.
class SharedStateScope {
 public:
    SharedStateScope(COpenGL& gl, CTransform3D& transform, const SharedState& state)
        : m_GL(gl), m_Transform(transform) {
        m_GL.SetFrameFilled(state.framed);
        m_Transform.ChartTransform();
        m_GL.SetColorMode(state.colorMode);
        m_GL.EnableTexture(state.colorMode == 2);
        m_Transform.SetClipping(state.clipped);
    }
    ~SharedStateScope() {
        m_Transform.SetClipping(0);
        m_GL.SetFrameFilled(0);
        m_GL.EnableTexture(0);
    }
    SharedStateScope(const SharedStateScope&) = delete;
    SharedStateScope& operator=(const SharedStateScope&) = delete;

 private:
    COpenGL& m_GL;
    CTransform3D& m_Transform;
};

}  // namespace

CChartObj3D::Routine CChartObj3D::FindRoutine(int chartType) {
    static constexpr std::pair<ChartType3D, Routine> kRoutines[] = {
        {RIBBONCHART25D, &CChartObj3D::DrawRibbonChart25D},
        {BARCHART25D, &CChartObj3D::DrawBarChart25D},
        {BARCHART3D, &CChartObj3D::DrawBarChart3D},
        {AREAFILLCHART25D, &CChartObj3D::DrawAreaFillChart25D},
        {AREARANGECHART25D, &CChartObj3D::DrawAreaRangeChart25D},
        {LINECHART25D, &CChartObj3D::DrawLineChart25D},
        {SCATTERCHART3D, &CChartObj3D::DrawScatterChart3D},
        {LINECHART3D, &CChartObj3D::DrawLineChart3D},
        {PROJECTIONLINECHART3D, &CChartObj3D::DrawProjectionLineChart3D},
        {GROUPBARCHART25D, &CChartObj3D::DrawGroupBarChart25D},
        {GROUPRIBBONCHART25D, &CChartObj3D::DrawGroupRibbonChart25D},
        {GROUPAREAFILLCHART25D, &CChartObj3D::DrawGroupAreaFillChart25D},
        {OHLCCHART25D, &CChartObj3D::DrawOHLCChart25D},
        {PLANECHART3D, &CChartObj3D::DrawPlaneChart3D},
        {SCATTERTEXT3D, &CChartObj3D::DrawScatterText3D},
        {BOXANDWHISKERCHART25D, &CChartObj3D::DrawBoxAndWhiskerChart25D},
        {FLOATINGBARCHART25D, &CChartObj3D::DrawFloatingBarChart25D},
        {PLANECHART25D, &CChartObj3D::DrawPlaneChart25D},
        {POLYSURFACECHART2D, &CChartObj3D::DrawPolysurfaceChart2D},
        {POLYSURFACECHART3D, &CChartObj3D::DrawPolysurfaceChart3D},
        {CONTOURPOLYSURFACE3D, &CChartObj3D::DrawContourPolysurface3D},
    };
    for (const auto& [type, routine] : kRoutines)
        if (type == chartType) return routine;
    return nullptr;
}

void CChartObj3D::DrawChartObj() {
    if (m_Enable == 0) return;
    const Routine draw = FindRoutine(m_ChartType);
    if (draw == nullptr) return;
    const detail::Origin origin{ERR3DCLASS_CHARTOBJ3D, "DrawChartObj"};
    detail::Require(m_pOpenGL, ERR3D_OPENGL_PARAMETER, origin);
    detail::Require(m_pTransform, ERR3D_TRANSFORM_PARAMETER, origin);

    const SharedState state{m_OutlineMode, m_ColorMode, m_Clipping != 0};
    const SharedStateScope shared(*m_pOpenGL, *m_pTransform, state);
    const CollectScope collected(*m_pOpenGL);
    (this->*draw)();
}

detail::GroupView CChartObj3D::GetGroups() const {
    const std::size_t numPoints = m_NumDataPnts > 0 ? static_cast<std::size_t>(m_NumDataPnts) : 0;
    return {m_pGroupData.All(), m_NumGroups, numPoints};
}

detail::Data25D CChartObj3D::GetData25D() const {
    detail::Data25D data;
    data.ind = m_pIndData.First(m_NumDataPnts);
    data.dep = m_pDepData.First(m_NumDataPnts);
    data.dep2 = m_pDepData2.First(m_NumDataPnts);
    data.heights = m_pBarHeights.First(m_NumDataPnts);
    data.groups = GetGroups();
    data.indAxis = m_IndAxis;
    data.constValue = m_ConstValue;
    data.baseValue = m_BaseValue;
    data.indWidth = m_IndWidth;
    data.depthWidth = m_DepthWidth;
    data.indOffset = calcbgoffset(m_IndWidth, m_IndJustify);
    data.depthOffset = calcbgoffset(m_DepthWidth, m_DepthJustify);
    data.gap = GetSmallGap();
    return data;
}

detail::SegmentColors CChartObj3D::GetSegmentColors() const {
    if (m_SegmentColorMode == 0) return {};
    return {m_pSegmentColors.First(m_NumDataPnts)};
}

const RGBDType& CChartObj3D::GroupColor(std::size_t group) const {
    const RGBDType* const color = m_pGroupColors.At(static_cast<long long>(group), m_NumGroups);
    return color != nullptr ? *color : m_FillColor;
}

void CChartObj3D::CheckSetSegmentColor(std::size_t i) {
    const detail::SegmentColors colors = GetSegmentColors();
    if (colors.colors.empty()) return;
    const RGBDType& color = colors.At(i, m_FillColor);
    m_pOpenGL->SetFillStyle3D(color, color, color);
}

}  // namespace varnel

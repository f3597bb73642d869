// Drawing: what all chart types share, and the way to the routine of each.
#include "varnel/chartobj/chart_object.h"
#include "varnel/chartobj/detail/chart_drawing.h"
#include "varnel/chartobj/detail/chart_types.h"
#include "varnel/foundation/detail/diagnose.h"
#include "varnel/foundation/detail/justify.h"
#include "varnel/foundation/detail/raise.h"
#include "varnel/render/codes.h"
#include "varnel/render/opengl.h"
#include "varnel/transform/transform.h"

namespace varnel {
namespace {

struct SharedState {
    BOOL framed;
    int colorMode;
    bool clipped;
    const detail::ChartObjectAdded& added;
};

// The state that every chart type draws in. It is taken back however the drawing ends; the
// collecting ends before that, while the state still holds.
class SharedStateScope {
 public:
    SharedStateScope(COpenGL& gl, CTransform3D& transform, const SharedState& state)
        : m_GL(gl),
          m_Transform(transform),
          m_LineJoins(gl.GetLineJoins()),
          m_MitreLimit(gl.GetMitreLimit()),
          m_LineStyleFactor(gl.GetLineStyleFactor()) {
        m_GL.SetFrameFilled(state.framed);
        m_Transform.ChartTransform();
        m_GL.SetColorMode(state.colorMode);
        m_GL.EnableTexture(state.colorMode == 2);
        m_GL.SetTwoSided(state.added.m_TwoSided);
        m_GL.SetTextureLighting(state.added.m_TextureLighting, state.added.m_TextureLeast,
                                state.added.m_TextureMost);
        m_Transform.SetClipping(state.clipped);
        if (state.added.m_LineJoins != LINE_JOINS_NONE)
            m_GL.SetLineJoins(state.added.m_LineJoins, state.added.m_MitreLimit);
        if (state.added.m_LineStyleFactor != 1)
            m_GL.SetLineStyleFactor(state.added.m_LineStyleFactor);
    }
    ~SharedStateScope() {
        m_Transform.SetClipping(0);
        m_GL.SetFrameFilled(0);
        m_GL.EnableTexture(0);
        m_GL.SetTwoSided(0);
        m_GL.SetTextureLighting(0);
        m_GL.SetLineWidth3D(1.0);
        m_GL.SetLineJoins(m_LineJoins, m_MitreLimit);
        m_GL.SetLineStyleFactor(m_LineStyleFactor);
    }
    SharedStateScope(const SharedStateScope&) = delete;
    SharedStateScope& operator=(const SharedStateScope&) = delete;

 private:
    COpenGL& m_GL;
    CTransform3D& m_Transform;
    int m_LineJoins;
    double m_MitreLimit;
    int m_LineStyleFactor;
};

}  // namespace

void CChartObj3D::DrawChartObj() {
    if (m_Saved.m_Enable == 0) return;
    const detail::ChartType* const type = detail::ChartTypes::Find(m_Saved.m_ChartType);
    if (type == nullptr) {
        if (m_Saved.m_ChartType != 0)
            detail::Diagnose("DrawChartObj", "there is no chart type ", m_Saved.m_ChartType);
        return;
    }
    const detail::Origin origin{ERR3DCLASS_CHARTOBJ3D, "DrawChartObj"};
    detail::Require(m_pOpenGL, ERR3D_OPENGL_PARAMETER, origin);
    detail::Require(m_pTransform, ERR3D_TRANSFORM_PARAMETER, origin);

    const SharedState state{m_Saved.m_OutlineMode, m_Saved.m_ColorMode, m_Saved.m_Clipping != 0,
                            m_Added};
    const SharedStateScope shared(*m_pOpenGL, *m_pTransform, state);
    const CollectScope collected(*m_pOpenGL);
    (detail::ChartDrawing(*this).*type->draw)();
}

detail::GroupView detail::GroupsOf(const ChartObjectSaved& saved) {
    const std::size_t numPoints =
        saved.m_NumDataPnts > 0 ? static_cast<std::size_t>(saved.m_NumDataPnts) : 0;
    return {saved.m_pGroupData.All(), saved.m_NumGroups, numPoints};
}

detail::ChartDrawing::ChartDrawing(CChartObj3D& object)
    : m_Object(object),
      m_pOpenGL(object.m_pOpenGL),
      m_pTransform(object.m_pTransform),
      m_Saved(object.m_Saved),
      m_Added(object.m_Added),
      m_Normals(object.m_Normals) {
}

double detail::ChartDrawing::calcbgoffset(double width, int justify) {
    return JustifyOffset(width, justify);
}

detail::Data25D detail::ChartDrawing::GetData25D() const {
    detail::Data25D data;
    data.ind = m_Saved.m_pIndData.First(m_Saved.m_NumDataPnts);
    data.dep = m_Saved.m_pDepData.First(m_Saved.m_NumDataPnts);
    data.dep2 = m_Saved.m_pDepData2.First(m_Saved.m_NumDataPnts);
    data.heights = m_Saved.m_pBarHeights.First(m_Saved.m_NumDataPnts);
    data.groups = GroupsOf(m_Saved);
    data.indAxis = m_Saved.m_IndAxis;
    data.constValue = m_Saved.m_ConstValue;
    data.baseValue = m_Saved.m_BaseValue;
    data.indWidth = m_Saved.m_IndWidth;
    data.depthWidth = m_Saved.m_DepthWidth;
    data.indOffset = calcbgoffset(m_Saved.m_IndWidth, m_Saved.m_IndJustify);
    data.depthOffset = calcbgoffset(m_Saved.m_DepthWidth, m_Saved.m_DepthJustify);
    data.gap = m_Object.GetSmallGap();
    data.exact = m_Added.m_ExactExtents != 0;
    return data;
}

detail::SegmentColors detail::ChartDrawing::GetSegmentColors() const {
    if (m_Saved.m_SegmentColorMode == 0) return {};
    return {m_Saved.m_pSegmentColors.First(m_Saved.m_NumDataPnts)};
}

const RGBDType& CChartObj3D::GroupColor(std::size_t group) const {
    const RGBDType* const color =
        m_Saved.m_pGroupColors.At(static_cast<long long>(group), m_Saved.m_NumGroups);
    return color != nullptr ? *color : m_Saved.m_FillColor;
}

void detail::ChartDrawing::CheckSetSegmentColor(std::size_t i) const {
    const detail::SegmentColors colors = GetSegmentColors();
    if (colors.colors.empty()) return;
    const RGBDType& color = colors.At(i, m_Saved.m_FillColor);
    m_pOpenGL->SetFillStyle3D(color, color, color);
}

}  // namespace varnel

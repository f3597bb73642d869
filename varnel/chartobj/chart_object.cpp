// Construction, binding, and what the set-up operations of all chart families share.
#include "varnel/chartobj/chart_object.h"

#include "varnel/foundation/detail/counter.h"
#include "varnel/foundation/detail/diagnose.h"
#include "varnel/foundation/detail/justify.h"
#include "varnel/foundation/detail/raise.h"
#include "varnel/render/opengl.h"
#include "varnel/transform/transform.h"

namespace varnel {

int CChartObj3D::nSelfID = 0;

CChartObj3D::CChartObj3D() {
    InitChartObjDefaults();
}

CChartObj3D::CChartObj3D(COpenGL* gl, CTransform3D* transform) : CChartObj3D() {
    InitChartObj3D(gl, transform);
}

void CChartObj3D::InitChartObjDefaults() {
    m_pTransform = nullptr;
    m_Saved = {};
    m_Added = {};
    detail::Count(nSelfID);
}

void CChartObj3D::InitChartObj3D(COpenGL* gl, CTransform3D* transform) {
    const detail::Origin origin{ERR3DCLASS_CHARTOBJ3D, "InitChartObj3D"};
    detail::Require(gl, ERR3D_OPENGL_PARAMETER, origin);
    m_pOpenGL = gl;
    detail::Require(transform, ERR3D_TRANSFORM_PARAMETER, origin);
    m_pTransform = transform;
    m_TransformID = transform->GetSelfID();
}

void CChartObj3D::SetSeries(const double* ind, int n, double constValue, int indAxis) {
    m_Saved.m_NumDataPnts = n;
    m_Saved.m_ConstValue = constValue;
    m_Saved.m_IndAxis = indAxis;
    InitIndDataStorage(ind);
}

void CChartObj3D::SetGroups(const double* groupData, int numGroups, const RGBDType* groupColors) {
    m_Saved.m_NumGroups = numGroups;
    InitGroupDataStorage(groupData);
    InitGroupColorsStorage(groupColors);
}

void CChartObj3D::SetPoints(const point3Dtype* points, int n) {
    m_Saved.m_NumDataPnts = n;
    Init3DPointStorage(points);
}

void CChartObj3D::SetProjection(int plane, double constValue) {
    m_Saved.m_ProjectionPlane = plane;
    m_Saved.m_ConstValue = constValue;
}

void CChartObj3D::SetWidths(double indWidth, double depthWidth) {
    m_Saved.m_IndWidth = indWidth;
    m_Saved.m_DepthWidth = depthWidth;
}

void CChartObj3D::SetJustify(int indJustify, int depthJustify) {
    m_Saved.m_IndJustify = indJustify;
    m_Saved.m_DepthJustify = depthJustify;
}

// Told here, not where each colour is drawn: components above 1 are not clamped before they are
// lit.
void CChartObj3D::TellColor(const RGBDType& color) {
    for (const double component : {color.r, color.g, color.b, color.a})
        if (component > 1.0)
            detail::Diagnose("CChartObj3D", "a colour has the component ", component,
                             "; components run from 0 to 1");
}

void CChartObj3D::SetColors(const RGBDType& fill, const RGBDType& outline) {
    TellColor(fill);
    TellColor(outline);
    m_Saved.m_FillColor = fill;
    m_Saved.m_OutlineColor = outline;
}

void CChartObj3D::SetLine(int style, int width, const RGBDType& color) {
    m_Saved.m_LineStyle = style;
    m_Saved.m_LineWidth = width;
    SetColors(color, color);
}

double CChartObj3D::calcbgoffset(double width, int justify) {
    return detail::JustifyOffset(width, justify);
}

double CChartObj3D::GetSmallGap() const {
    if (m_Saved.m_OutlineMode == 0 || m_Added.m_SegmentOutlines == 0 ||
        m_Saved.m_NumDataPnts >= 200 || m_pTransform == nullptr)
        return 0.0;
    if (m_Saved.m_IndAxis != 0 && m_Saved.m_IndAxis != 1) return 0.0;
    return m_pTransform->GetAxisWorkingRange(m_Saved.m_IndAxis) * m_Saved.m_FillGap;
}

}  // namespace varnel

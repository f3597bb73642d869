// Construction and binding.
#include "varnel/chartobj/chart_object.h"

#include "varnel/foundation/detail/counter.h"
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

double CChartObj3D::GetSmallGap() const {
    if (m_Saved.m_OutlineMode == 0 || m_Added.m_SegmentOutlines == 0 ||
        m_Saved.m_NumDataPnts >= 200 || m_pTransform == nullptr)
        return 0.0;
    if (m_Saved.m_IndAxis != 0 && m_Saved.m_IndAxis != 1) return 0.0;
    return m_pTransform->GetAxisWorkingRange(m_Saved.m_IndAxis) * m_Saved.m_FillGap;
}

}  // namespace varnel

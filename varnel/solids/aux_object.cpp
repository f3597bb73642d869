#include "varnel/solids/aux_object.h"

#include "varnel/foundation/detail/diagnose.h"
#include "varnel/foundation/detail/named_colors.h"
#include "varnel/foundation/detail/record.h"
#include "varnel/render/opengl.h"
#include "varnel/transform/transform.h"

namespace varnel {

namespace {

using detail::kBlack;
constexpr int kFirstShape = 1;  // sphere
constexpr int kLastShape = 10;  // cone
}  // namespace

int CAuxObj3D::nSelfID = 0;

CAuxObj3D::CAuxObj3D() {
    InitAuxObjDefaults();
}

CAuxObj3D::CAuxObj3D(COpenGL* gl, CTransform3D* transform, int type) : CAuxObj3D() {
    InitAuxObj(gl, transform);
    m_Saved.m_AuxObjType = type;
}

void CAuxObj3D::InitAuxObjDefaults() {
    m_Saved = {};
    m_OutlineMode = 0;
    detail::Count(nSelfID);
}

void CAuxObj3D::InitAuxObj(COpenGL* gl, CTransform3D* transform) {
    constexpr detail::Origin origin = {ERR3DCLASS_AUXOBJ3D, "InitAuxObj"};
    detail::Require(gl, ERR3D_OPENGL_PARAMETER, origin);
    detail::Require(transform, ERR3D_TRANSFORM_PARAMETER, origin);
    m_pOpenGL = gl;
    m_pTransform = transform;
    m_TransformID = transform->GetSelfID();
}

void CAuxObj3D::SetLocation(const point3Dtype& p) {
    m_Saved.m_Location = p;
    if (m_pTransform == nullptr) return;
    m_pTransform->ChartTransform();
    m_pTransform->NormalizePoint(p, m_Saved.m_NormLocation);
}

bool CAuxObj3D::HasOutline() const {
    switch (m_Saved.m_AuxObjType) {
        case 2:
        case 3:
        case 5:
        case 6:
        case 7:
        case 8:
        case 9:
            return m_OutlineMode != 0;
        default:
            return false;
    }
}

void CAuxObj3D::DrawAuxObj() {
    if (m_pOpenGL == nullptr || m_pTransform == nullptr) return;
    const int type = m_Saved.m_AuxObjType;
    if (type < kFirstShape || type > kLastShape)
        detail::Diagnose("DrawAuxObj", "there is no solid ", type);
    m_pOpenGL->PushMatrix();
    m_pTransform->TextTransform();
    m_pOpenGL->SetColorMode(m_Saved.m_ColorMode);
    m_pOpenGL->Translate3D(m_Saved.m_NormLocation.x, m_Saved.m_NormLocation.y,
                           m_Saved.m_NormLocation.z);
    m_pOpenGL->Scale3D(m_Saved.m_Scale, m_Saved.m_Scale, m_Saved.m_Scale);
    m_pOpenGL->Rotate3D(m_Saved.m_Rotation.x, 0);
    m_pOpenGL->Rotate3D(m_Saved.m_Rotation.y, 1);
    m_pOpenGL->Rotate3D(m_Saved.m_Rotation.z, 2);

    point3Dtype size;
    AssignPoint3D(size, m_Saved.m_SizeParameters[0], m_Saved.m_SizeParameters[1],
                  m_Saved.m_SizeParameters[2]);
    if (m_Saved.m_SolidType != 0) {
        const bool outlined = HasOutline();
        m_pOpenGL->SetFillStyle3D(m_Saved.m_Color, kBlack, m_Saved.m_Color);
        if (!outlined) {
            m_pOpenGL->DrawAuxObject(m_Saved.m_AuxObjType, 1, size);
        } else {
            m_pOpenGL->DrawAuxObjectBehind(m_Saved.m_AuxObjType, size);
            m_pOpenGL->SetLineStyle3D(0, m_Saved.m_LineWidth, kBlack);
            m_pOpenGL->DrawAuxObject(m_Saved.m_AuxObjType, 0, size);
        }
    } else {
        m_pOpenGL->SetLineStyle3D(0, m_Saved.m_LineWidth, m_Saved.m_Color);
        m_pOpenGL->DrawAuxObject(m_Saved.m_AuxObjType, 0, size);
    }
    m_pOpenGL->PopMatrix();
}

template <class Archive>
void CAuxObj3D::Record(Archive& record) {
    record(detail::CounterField{nSelfID}, m_TransformID, m_Saved.m_AuxObjType, m_Saved.m_SolidType,
           m_Saved.m_ColorMode);
    record.Array(m_Saved.m_SizeParameters.data(), m_Saved.m_SizeParameters.size());
    record(m_Saved.m_Scale, m_Saved.m_Location, m_Saved.m_NormLocation, m_Saved.m_Rotation,
           m_Saved.m_Color, m_Saved.m_LineWidth);
}

void CAuxObj3D::Save(HANDLE file) {
    detail::SaveRecord(*this, file, ERR3DCLASS_AUXOBJ3D);
}
void CAuxObj3D::Load(HANDLE file) {
    detail::LoadRecord(*this, file, ERR3DCLASS_AUXOBJ3D);
}

}  // namespace varnel

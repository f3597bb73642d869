#include "varnel/solids/aux_object.h"

#include "varnel/foundation/detail/record.h"
#include "varnel/render/opengl.h"
#include "varnel/transform/transform.h"

namespace varnel {

namespace {
const RGBDType kBlack = {0.0, 0.0, 0.0, 1.0};
}

int CAuxObj3D::nSelfID = 0;

CAuxObj3D::CAuxObj3D() {
    InitAuxObjDefaults();
}

CAuxObj3D::CAuxObj3D(COpenGL* gl, CTransform3D* transform, int type) : CAuxObj3D() {
    InitAuxObj(gl, transform);
    m_AuxObjType = type;
}

void CAuxObj3D::InitAuxObjDefaults() {
    m_AuxObjType = 0;
    m_SolidType = 1;
    m_ColorMode = 1;
    m_SizeParameters = {1.0, 1.0, 1.0};
    m_Scale = 0.05;
    m_Location = point3Dtype();
    m_NormLocation = point3Dtype();
    m_Rotation = point3Dtype();
    m_Color = SetRGBD(1.0, 1.0, 1.0, 1.0);
    m_LineWidth = 1.0;
    m_OutlineMode = 0;
    m_Magic = kSignature;
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
    m_Location = p;
    if (m_pTransform == nullptr) return;
    m_pTransform->ChartTransform();
    m_pTransform->NormalizePoint(p, m_NormLocation);
}

bool CAuxObj3D::HasOutline() const {
    switch (m_AuxObjType) {
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
    m_pOpenGL->PushMatrix();
    m_pTransform->TextTransform();
    m_pOpenGL->SetColorMode(m_ColorMode);
    m_pOpenGL->Translate3D(m_NormLocation.x, m_NormLocation.y, m_NormLocation.z);
    m_pOpenGL->Scale3D(m_Scale, m_Scale, m_Scale);
    m_pOpenGL->Rotate3D(m_Rotation.x, 0);
    m_pOpenGL->Rotate3D(m_Rotation.y, 1);
    m_pOpenGL->Rotate3D(m_Rotation.z, 2);

    point3Dtype size;
    AssignPoint3D(size, m_SizeParameters[0], m_SizeParameters[1], m_SizeParameters[2]);
    if (m_SolidType != 0) {
        const bool outlined = HasOutline();
        m_pOpenGL->SetFillStyle3D(m_Color, kBlack, m_Color);
        if (!outlined) {
            m_pOpenGL->DrawAuxObject(m_AuxObjType, 1, size);
        } else {
            m_pOpenGL->DrawAuxObjectBehind(m_AuxObjType, size);
            m_pOpenGL->SetLineStyle3D(0, m_LineWidth, kBlack);
            m_pOpenGL->DrawAuxObject(m_AuxObjType, 0, size);
        }
    } else {
        m_pOpenGL->SetLineStyle3D(0, m_LineWidth, m_Color);
        m_pOpenGL->DrawAuxObject(m_AuxObjType, 0, size);
    }
    m_pOpenGL->PopMatrix();
}

template <class Archive>
void CAuxObj3D::Record(Archive& record) {
    record(detail::CounterField{nSelfID}, m_TransformID, m_AuxObjType, m_SolidType, m_ColorMode);
    record.Array(m_SizeParameters.data(), m_SizeParameters.size());
    record(m_Scale, m_Location, m_NormLocation, m_Rotation, m_Color, m_LineWidth);
}

void CAuxObj3D::Save(HANDLE file) {
    detail::SaveRecord(*this, file, ERR3DCLASS_AUXOBJ3D);
}
void CAuxObj3D::Load(HANDLE file) {
    detail::LoadRecord(*this, file, ERR3DCLASS_AUXOBJ3D);
}

}  // namespace varnel

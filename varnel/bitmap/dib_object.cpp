#include "varnel/bitmap/dib_object.h"

#include <cmath>

#include "varnel/bitmap/detail/loaded_pictures.h"
#include "varnel/foundation/detail/added_fields.h"
#include "varnel/foundation/detail/diagnose.h"
#include "varnel/foundation/detail/raise.h"
#include "varnel/foundation/detail/record.h"
#include "varnel/foundation/notice.h"
#include "varnel/platform/detail/gl_context.h"
#include "varnel/platform/files.h"
#include "varnel/render/opengl.h"
#include "varnel/transform/transform.h"

namespace varnel {

namespace {

bool IsFinite(const point3Dtype& p) {
    return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
}

/// The picture as OpenGL takes it, no larger than it can be.
void FitPicture(CDib& dib, unsigned int side) {
    if (dib.GetTextureBits() == nullptr || dib.GetTextureWidth() > side ||
        dib.GetTextureHeight() > side)
        dib.TranslateDIBToOGL(nullptr, side);
}

std::shared_ptr<CDib> Translated(std::shared_ptr<CDib> dib) {
    dib->TranslateDIBToOGL(dib->CreateDibPalette());
    return dib;
}

}  // namespace

int CDIBObj3D::nSelfID = 0;

CDIBObj3D::CDIBObj3D() = default;

CDIBObj3D::CDIBObj3D(COpenGL* gl, CTransform3D* transform, const CString& file)
    : m_pOpenGL(gl), m_pTransform(transform) {
    if (m_pTransform != nullptr) m_Saved.m_TransformID = m_pTransform->GetSelfID();
    m_Saved.m_DIBFilename = file;
    LoadPicture("CDIBObj3D");
}

void CDIBObj3D::InitDIBObjDefaults() {
    m_pDib = nullptr;
    m_Saved = {};
    m_Added = {};
    m_FromFile = false;
}

void CDIBObj3D::InitDIBObj(COpenGL* gl, CTransform3D* transform) {
    constexpr detail::Origin origin{ERR3DCLASS_DIBOBJ3D, "InitDIBObj"};
    detail::Require(gl, ERR3D_OPENGL_PARAMETER, origin);
    detail::Require(transform, ERR3D_TRANSFORM_PARAMETER, origin);
    m_pOpenGL = gl;
    m_pTransform = transform;
    m_Saved.m_TransformID = transform->GetSelfID();
    LoadPicture(origin.operation);
    detail::Count(nSelfID);
}

void CDIBObj3D::SetDIBFilename(const CString& file) {
    m_Saved.m_DIBFilename = file;
    m_FromFile = false;
    LoadPicture("SetDIBFilename");
}

/// Replaces the picture by that of the file that is named.
void CDIBObj3D::LoadPicture(const char* operation) {
    const detail::Origin origin{ERR3DCLASS_DIBOBJ3D, operation};
    m_pDib = nullptr;
    if (m_FromFile && m_Saved.m_DIBFilename.empty()) return;  // saved before it had a picture
    if (m_FromFile) {
        m_pDib = detail::LoadedPictures::Get({m_Saved.m_DIBFilename, PixelOffset()},
                                             [&] { return OpenSavedPicture(operation); });
    } else {
        m_pDib = Translated(
            detail::NewObject<CDib>(origin, m_Saved.m_DIBFilename.c_str(), PixelOffset()));
    }
    m_FromFile = false;
}

DibOffset CDIBObj3D::PixelOffset() const {
    return m_Added.offset != 0 ? DIB_USE_OFFSET : DIB_IGNORE_OFFSET;
}

/// The picture that a chart file names; an empty one, with a notice, when it cannot be had.
std::shared_ptr<CDib> CDIBObj3D::OpenSavedPicture(const char* operation) const {
    const detail::Origin origin{ERR3DCLASS_DIBOBJ3D, operation};
    CString why;
    const auto file = OpenPictureFile(m_Saved.m_DIBFilename, m_ChartFile, &why);
    if (file != nullptr) return Translated(detail::NewObject<CDib>(origin, *file, PixelOffset()));
    ShowNotice(CErr3D::GetErrorDescription(ERR3D_FILE_OPEN_INPUT) + ": " + why);
    return Translated(detail::NewObject<CDib>(origin));
}

void CDIBObj3D::SetPlanePoints(const point3Dtype& p1, const point3Dtype& p2,
                               const point3Dtype& p3) {
    m_Saved.m_PlanePoint1 = p1;
    m_Saved.m_PlanePoint2 = p2;
    m_Saved.m_PlanePoint3 = p3;
    m_Saved.m_NormFlag = 0;
}

void CDIBObj3D::GetPlanePoints(point3Dtype& p1, point3Dtype& p2, point3Dtype& p3) const {
    p1 = m_Saved.m_PlanePoint1;
    p2 = m_Saved.m_PlanePoint2;
    p3 = m_Saved.m_PlanePoint3;
}

void CDIBObj3D::SetNormPlanePoints(const point3Dtype& p1, const point3Dtype& p2,
                                   const point3Dtype& p3) {
    m_Saved.m_NormPlanePoint1 = p1;
    m_Saved.m_NormPlanePoint2 = p2;
    m_Saved.m_NormPlanePoint3 = p3;
    m_Saved.m_NormFlag = 1;
}

void CDIBObj3D::GetNormPlanePoints(point3Dtype& p1, point3Dtype& p2, point3Dtype& p3) const {
    p1 = m_Saved.m_NormPlanePoint1;
    p2 = m_Saved.m_NormPlanePoint2;
    p3 = m_Saved.m_NormPlanePoint3;
}

void CDIBObj3D::SetRepeatFactors(int x, int) {
    m_Saved.m_RepeatX = x;
    m_Saved.m_RepeatY = x;
}

void CDIBObj3D::GetRepeatFactors(int& x, int& y) const {
    x = m_Saved.m_RepeatX;
    y = m_Saved.m_RepeatY;
}

void CDIBObj3D::DrawDIBObj() {
    if (m_pDib == nullptr || m_pOpenGL == nullptr || m_pTransform == nullptr)
        return detail::Diagnose("DrawDIBObj", "there is no picture, or nothing to draw it with");
    if (m_Saved.m_NormFlag == 0) {
        m_pTransform->NormalizePoint(m_Saved.m_PlanePoint1, m_Saved.m_NormPlanePoint1);
        m_pTransform->NormalizePoint(m_Saved.m_PlanePoint2, m_Saved.m_NormPlanePoint2);
        m_pTransform->NormalizePoint(m_Saved.m_PlanePoint3, m_Saved.m_NormPlanePoint3);
    }
    const point3Dtype& c1 = m_Saved.m_NormPlanePoint1;
    const point3Dtype& c2 = m_Saved.m_NormPlanePoint2;
    const point3Dtype& c3 = m_Saved.m_NormPlanePoint3;
    if (!IsFinite(c1) || !IsFinite(c2) || !IsFinite(c3))
        return detail::Diagnose("DrawDIBObj", "a corner of the picture is not finite");

    const GLContext::HostContextGuard host;
    if (!m_pOpenGL->MakeCurrent()) return;
    m_pOpenGL->PushMatrix();
    m_pTransform->TextTransform();
    FitPicture(*m_pDib, static_cast<unsigned int>(m_pOpenGL->GetLargestPicture()));
    const point3Dtype corners[4] = {c1, c2, c3, {c3.x, c3.y, c1.z, 0.0}};
    m_pOpenGL->DrawPicture(m_pDib->GetTextureBits(), static_cast<int>(m_pDib->GetTextureWidth()),
                           static_cast<int>(m_pDib->GetTextureHeight()), corners, m_Saved.m_RepeatX,
                           m_Saved.m_RepeatY);
    m_pOpenGL->PopMatrix();
    m_pOpenGL->SyncState();
}

template <class Archive>
void CDIBObj3D::Record(Archive& record) {
    record(detail::CounterField{nSelfID}, m_Saved.m_TransformID, m_Saved.m_PlanePoint1,
           m_Saved.m_PlanePoint2, m_Saved.m_PlanePoint3, m_Saved.m_NormPlanePoint1,
           m_Saved.m_NormPlanePoint2, m_Saved.m_NormPlanePoint3, m_Saved.m_RepeatX,
           m_Saved.m_RepeatY, m_Saved.m_NormFlag, m_Saved.m_DIBFilename);
}

void CDIBObj3D::VisitAdded(detail::AddedFields& fields) {
    const int before = m_Added.offset;
    fields.Of(m_Added, [](auto field) { field("offset", &Added::offset); });
    if (m_pDib == nullptr || before == m_Added.offset) return;
    m_FromFile = true;
    LoadPicture("Load");
}

void CDIBObj3D::Save(HANDLE file) {
    detail::SaveRecord(*this, file, ERR3DCLASS_DIBOBJ3D);
}

void CDIBObj3D::Load(HANDLE file) {
    detail::LoadRecord(*this, file, ERR3DCLASS_DIBOBJ3D);
    if (file == nullptr) return;
    m_FromFile = true;
    m_ChartFile = file->Name();
}

}  // namespace varnel

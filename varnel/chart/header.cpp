#include "varnel/chart/header.h"

#include <algorithm>

#include "varnel/foundation/detail/added_fields.h"
#include "varnel/foundation/detail/record.h"
#include "varnel/render/opengl.h"

namespace varnel {

int CHeader3D::nSelfID = 0;

CHeader3D::CHeader3D() {
    InitHeaderDefaults();
}

CHeader3D::CHeader3D(COpenGL* gl) : CHeader3D() {
    InitHeaders(gl);
}

CHeader3D::~CHeader3D() = default;

void CHeader3D::InitHeaderDefaults() {
    constexpr detail::Origin origin = {ERR3DCLASS_HEADER3D, "InitHeaderDefaults"};
    m_Saved = {};
    m_pTitle1 = detail::NewObject<CTextObj3D>(origin);
    m_pTitle2 = detail::NewObject<CTextObj3D>(origin);
    m_pFooter = detail::NewObject<CTextObj3D>(origin);
    detail::Count(nSelfID);
    m_Signature = kSignature;
}

void CHeader3D::InitHeaders(COpenGL* gl) {
    constexpr detail::Origin origin = {ERR3DCLASS_HEADER3D, "InitHeaders"};
    detail::Require(gl, ERR3D_OPENGL_PARAMETER, origin);
    m_pOpenGL = gl;
    // The texts may hold the transform of an earlier call: it goes when all of them have the new
    // one.
    auto transform = detail::NewObject<CTransform3D>(origin, gl);
    for (CTextObj3D* text : {m_pTitle1.get(), m_pTitle2.get(), m_pFooter.get()})
        text->InitTextObj(gl, gl->GetFont(), transform.get());
    m_Saved.transformID = transform->GetSelfID();
    m_pTransform = std::move(transform);
}

void CHeader3D::SetTextColor(const RGBDType& color) {
    for (CTextObj3D* text : {m_pTitle1.get(), m_pTitle2.get(), m_pFooter.get()})
        text->SetColor(color);
}

void CHeader3D::SetTextSizes(double title1, double title2, double footer) {
    m_pTitle1->SetCharSize(title1);
    m_pTitle2->SetCharSize(title2);
    m_pFooter->SetCharSize(footer);
}

void CHeader3D::DrawLine(CTextObj3D& text, double y, int yJustify) const {
    constexpr double kWidest = 1.92;  // of the 2 units from edge to edge
    text.SetJustify(1, yJustify);
    const double size = text.GetCharSize();
    const double width = text.TextWidth() * size;
    if (m_FitWidth != 0 && width > kWidest) text.SetCharSize(size * kWidest / width);
    const double room = std::max(0.0, (kWidest - width) / 2.0);
    point3Dtype location;
    AssignPoint3D(location, std::clamp(m_Center, -room, room), 0.0, y);
    text.SetNormLocation(location);
    text.OutTextNorm();
    text.SetCharSize(size);
}

void CHeader3D::DrawHeader() {
    if (m_Saved.enable == 0 || m_pTransform == nullptr) return;
    m_pTransform->SetFontAspect(m_Saved.viewAspect);
    m_pTransform->SetFontHeightSF(m_Saved.fontHeightSF);
    double y = 1.0 - m_Saved.margin;
    if (m_pTitle1->TextWidth() != 0.0) {
        DrawLine(*m_pTitle1, y, 2);
        y -= m_pTitle1->TextHeight() * m_pTitle1->GetCharSize() * 5.0 / 3.0;
    }
    if (m_pTitle2->TextWidth() != 0.0) DrawLine(*m_pTitle2, y, 2);
    if (m_pFooter->TextWidth() != 0.0) DrawLine(*m_pFooter, -1.0 + m_Saved.margin, 0);
}

template <class Archive>
void CHeader3D::Record(Archive& record) {
    record(detail::CounterField{nSelfID}, m_Saved.transformID, m_Saved.margin, m_Saved.viewAspect,
           m_Saved.fontHeightSF, m_Saved.fontSize);
    record(m_Saved.enable);
    for (CTextObj3D* text : {m_pTitle1.get(), m_pTitle2.get(), m_pFooter.get()}) {
        if constexpr (Archive::kLoading)
            text->Load(&record.GetFile());
        else
            text->Save(&record.GetFile());
    }
}

void CHeader3D::VisitAdded(detail::AddedFields& fields) {
    fields.Object("title 1", m_pTitle1.get());
    fields.Object("title 2", m_pTitle2.get());
    fields.Object("footer", m_pFooter.get());
}

void CHeader3D::CopyFrom(CHeader3D& other) {
    MemoryFile record;
    other.Save(&record);
    Load(&record);
}

void CHeader3D::Save(HANDLE file) {
    detail::SaveRecord(*this, file, ERR3DCLASS_HEADER3D);
}
void CHeader3D::Load(HANDLE file) {
    detail::LoadRecord(*this, file, ERR3DCLASS_HEADER3D);
}

}  // namespace varnel

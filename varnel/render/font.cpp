#include "varnel/render/font.h"

#include <cmath>
#include <new>

#include "varnel/foundation/detail/diagnose.h"
#include "varnel/foundation/detail/record.h"
#include "varnel/platform/detail/gl_context.h"
#include "varnel/platform/device_context.h"
#include "varnel/render/detail/text_measure.h"
#include "varnel/render/opengl.h"

namespace varnel {

CFont3D::CFont3D() {
    InitFontDefaults();
}

CFont3D::CFont3D(COpenGL* gl, CDC* dc, int listBase) : CFont3D() {
    InitFont(gl, dc, listBase);
}

CFont3D::~CFont3D() = default;

void CFont3D::InitFontDefaults() {
    m_LogFont = LOGFONT();
    m_bItalic = 0;
    m_bUnderline = 0;
    m_Weight = 700;
    m_NumFontChars = 128;
    m_FontExtrusion = 0.01;
    m_FontRendering = 0.1;
    m_FontAspect = 1.0;
    m_FontScaleFactor = 0.05;
    m_FaceName = "Arial";
    m_nSignature = kSignature;
}

void CFont3D::InitFont(COpenGL* gl, CDC* dc, int listBase) {
    if (dc == nullptr || dc->GetSafeHdc() == nullptr)
        detail::Raise(ERR3D_CDC_PARAMETER, ERR3DCLASS_FONT3D, "InitFont");
    m_pDC = dc;
    detail::Require(gl, ERR3D_OPENGL_PARAMETER, {ERR3DCLASS_FONT3D, "InitFont"});
    m_pOpenGL = gl;
    m_ListBase = listBase;
}

int CFont3D::RegisterFont(const CString& face, double size, int weight, int italic, int numChars) {
    return RegisterFont(face, size, weight, italic, 0, numChars);
}

int CFont3D::RegisterFont(const CString& face, double size, int weight, int italic, int underline,
                          int numChars) {
    m_FontSize = size;
    m_Weight = weight;
    m_NumFontChars = numChars;
    m_bItalic = italic;
    m_bUnderline = underline;

    m_LogFont.lfWeight = weight;
    m_LogFont.lfItalic = italic != 0;
    m_LogFont.lfUnderline = underline != 0;
    m_LogFont.lfFaceName = face;
    auto found = FindFace();
    if (found == nullptr) return 0;
    m_Face = std::move(found);
    m_FontScaleFactor = size;
    m_FaceName = face;
    return 1;
}

std::shared_ptr<GlyphFace> CFont3D::FindFace() const {
    const GLContext::HostContextGuard host;
    if (m_pDC == nullptr || m_pDC->GetSafeHdc() == nullptr || m_pOpenGL == nullptr ||
        m_ListBase < 1 || m_pOpenGL->MakeCurrent() == 0)
        return nullptr;
    try {
        auto found = GlyphFace::Find(m_LogFont, m_FontRendering, m_FontExtrusion);
        if (found == nullptr && m_FontExtrusion >= 0.0)
            detail::Diagnose("RegisterFont", "this system has no usable font: no text is drawn");
        return found;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

double CFont3D::TextWidth3D(const CString& s) const {
    return detail::TextMeasurer(m_Face).Measure(s).width * m_FontScaleFactor;
}

double CFont3D::TextHeight3D(const CString& s) const {
    return detail::TextMeasurer(m_Face).Measure(s).height * m_FontScaleFactor;
}

double CFont3D::TextDiagonal3D(const CString& s) const {
    return std::hypot(TextWidth3D(s), TextHeight3D(s));
}

template <class Archive>
void CFont3D::Record(Archive& record) {
    record(m_nReserved, m_ListBase, m_bItalic, m_bUnderline, m_Weight, m_NumFontChars);
    record(m_FontExtrusion, m_FontRendering, m_FontAspect, m_FontScaleFactor);
    // The scale factor stands in the record twice; the second one counts.
    record(m_FontScaleFactor, m_FaceName);
}

void CFont3D::Save(HANDLE file) {
    detail::SaveRecord(*this, file, ERR3DCLASS_FONT3D);
}
void CFont3D::Load(HANDLE file) {
    detail::LoadRecord(*this, file, ERR3DCLASS_FONT3D);
}

}  // namespace varnel

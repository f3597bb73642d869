#include "varnel/render/font.h"

#include <GL/gl.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <new>

#include "varnel/foundation/detail/record.h"
#include "varnel/platform/detail/gl_context.h"
#include "varnel/platform/device_context.h"
#include "varnel/render/opengl.h"

namespace varnel {

namespace {

/// Compiles one letter: all its triangles in one run (lists that mix primitives are not replayed
/// reliably in feedback mode), then the step to the next letter.
void CompileGlyph(GLuint list, const GlyphOutline& glyph) {
    glNewList(list, GL_COMPILE);
    if (!glyph.triangles.empty()) {
        const float* normal = nullptr;
        glBegin(GL_TRIANGLES);
        for (const GlyphVertex& vertex : glyph.triangles) {
            if (normal == nullptr || std::memcmp(normal, vertex.normal, sizeof vertex.normal) != 0)
                glNormal3fv(normal = vertex.normal);
            glVertex3fv(vertex.position);
        }
        glEnd();
    }
    glTranslatef(glyph.metrics.gmfCellIncX, glyph.metrics.gmfCellIncY, 0.0F);
    glEndList();
}

unsigned char Index(char c) {
    return static_cast<unsigned char>(c);
}

}  // namespace

CFont3D::CFont3D() {
    InitFontDefaults();
}

CFont3D::CFont3D(COpenGL* gl, CDC* dc, int listBase) : CFont3D() {
    InitFont(gl, dc, listBase);
}

CFont3D::~CFont3D() {
    DeleteLists();
}

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
    const int built = BuildLists();
    if (built != 0) {
        m_FontScaleFactor = size;
        m_FaceName = face;
    }
    return built;
}

int CFont3D::BuildLists() {
    const bool fits = m_ListBase > 0 && m_ListBase <= std::numeric_limits<int>::max() - 256;
    if (m_pDC == nullptr || m_pDC->GetSafeHdc() == nullptr || m_pOpenGL == nullptr || !fits)
        return 0;
    m_pOpenGL->MakeCurrent();
    GLContext* const context = GLContext::Current();
    if (context == nullptr) return 0;

    std::vector<GlyphOutline> glyphs;
    try {
        glyphs = BuildGlyphOutlines(m_LogFont, m_NumFontChars, m_FontRendering, m_FontExtrusion);
    } catch (const std::bad_alloc&) {
        return 0;
    }
    if (glyphs.empty()) return 0;

    // Lists that stay where they were are replaced; characters beyond the new ones keep their old
    // lists and measures.
    if (m_Built.context != context || m_Built.base != m_ListBase) DeleteLists();
    for (std::size_t i = 0; i < glyphs.size(); ++i) {
        CompileGlyph(static_cast<GLuint>(m_ListBase) + static_cast<GLuint>(i), glyphs[i]);
        m_GlyphMetrics[i] = glyphs[i].metrics;
    }
    const int count = static_cast<int>(glyphs.size());
    m_Built = {context, m_ListBase, std::max(count, m_Built.count)};
    return 1;
}

void CFont3D::DeleteLists() {
    const BuiltLists built = std::exchange(m_Built, {});
    if (built.count == 0) return;
    m_pOpenGL->MakeCurrent();
    // A closed context took its lists along; another one may be current now.
    if (GLContext::Current() == built.context)
        glDeleteLists(static_cast<GLuint>(built.base), built.count);
}

double CFont3D::TextWidth3D(const CString& s) const {
    double width = 0.0;
    for (const char c : s)
        width += static_cast<double>(m_GlyphMetrics[Index(c)].gmfCellIncX);
    return width * m_FontScaleFactor;
}

double CFont3D::TextHeight3D(const CString& s) const {
    double height = 0.0;
    for (const char c : s)
        height = std::max(height, static_cast<double>(m_GlyphMetrics[Index(c)].gmfBlackBoxY));
    return height * m_FontScaleFactor;
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

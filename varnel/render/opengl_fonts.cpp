// COpenGL: the font that texts are drawn and measured with.
#include <algorithm>

#include "varnel/foundation/detail/diagnose.h"
#include "varnel/foundation/detail/less_work.h"
#include "varnel/foundation/detail/raise.h"
#include "varnel/platform/detail/gl_context.h"
#include "varnel/render/font.h"
#include "varnel/render/opengl.h"

namespace varnel {

int COpenGL::NewFont3D() {
    // Fonts of one context never share display lists with the font before them.
    constexpr int kFirstList = 1000;
    constexpr int kListsPerFont = 256;
    const GLContext::HostContextGuard host;
    Ready();
    m_FontList.RemoveAll();
    const int listBase = m_FontCount * kListsPerFont + kFirstList;
    m_FontList.Append(
        detail::NewObject<CFont3D>({ERR3DCLASS_OPENGL, "NewFont3D"}, this, m_pClientDC, listBase));
    m_FontCount = m_FontList.GetCount();
    m_CurrentFont = m_FontCount - 1;
    return m_FontCount;
}

int COpenGL::RegisterFont(const CString& name, double size, int weight, int italic, int numChars) {
    return RegisterFont(name, size, weight, italic, 0, numChars);
}

int COpenGL::RegisterFont(const CString& name, double size, int weight, int italic, int underline,
                          int numChars) {
    if (m_FontList.IsEmpty()) NewFont3D();
    SyncState();
    CFont3D* const font = GetFont();
    return font != nullptr ? font->RegisterFont(name, size, weight, italic, underline, numChars)
                           : 0;
}

void COpenGL::SetFontScaleFactor(double factor) {
    if (CFont3D* const font = GetFont()) font->SetFontScaleFactor(factor);
}

double COpenGL::GetFontScaleFactor() const {
    const CFont3D* const font = GetFont();
    return font != nullptr ? font->GetFontScaleFactor() : 0.0;
}

bool COpenGL::TakeLabelCharacters(std::size_t count) {
    constexpr std::size_t kMost = 200'000 / detail::kLessWork;
    if (count <= kMost - std::min(m_LabelCharacters, kMost)) {
        m_LabelCharacters += count;
        return true;
    }
    m_LabelCharacters = kMost;
    detail::Diagnose("DrawAxisLabels", "the labels of a picture have more than ", kMost,
                     " characters: the rest is not drawn");
    return false;
}

bool COpenGL::TakeAxisLine() {
    constexpr std::size_t kMost = 400'000 / detail::kLessWork;
    if (m_AxisLines < kMost) {
        ++m_AxisLines;
        return true;
    }
    detail::Diagnose("DrawAxes", "the axes of a picture have more than ", kMost,
                     " tics and grid lines: the rest is not drawn");
    return false;
}

}  // namespace varnel

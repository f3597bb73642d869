// CFont3D: one outline font as OpenGL display lists, one solid letter each, and its measures.
//
// A context (COpenGL) owns its font; text is measured and drawn with it. Lists draw in ems from the
// origin of the current matrix, front side at z = 0, and move the matrix on by the letter's
// advance. Measured sizes are ems times the font scale factor, which a registration sets to the
// font size.
#pragma once

#include <array>

#include "varnel/foundation/export.h"
#include "varnel/foundation/file.h"
#include "varnel/foundation/types.h"
#include "varnel/platform/glyph_outlines.h"

namespace varnel {

class CDC;
class COpenGL;
class GLContext;

class VARNEL_API CFont3D {
 public:
    static constexpr int kSignature = 1111;

    /// Defaults alone; nothing can be registered before InitFont.
    CFont3D();
    /// Defaults, then InitFont.
    CFont3D(COpenGL* gl, CDC* dc, int listBase);
    /// Deletes the display lists while their context is alive. The COpenGL must be alive, too.
    ~CFont3D();
    CFont3D(const CFont3D&) = delete;
    CFont3D& operator=(const CFont3D&) = delete;

    int GetSignature() const { return m_nSignature; }

    /// Gives every attribute its default.
    void InitFontDefaults();
    /// Binds the font to a device context ("CDC Parameter Error" unless it has a device) and to a
    /// live rendering context ("OpenGL Parameter Error"); neither is owned. Lists are numbered from
    /// listBase. A device that passed stays stored when the rendering context fails.
    void InitFont(COpenGL* gl, CDC* dc, int listBase);

    /// Builds the lists of the first `numChars` (1..256) characters of the installed face that
    /// comes closest to `face`, without underline. `size` becomes the font scale factor, `weight`
    /// runs from 100 to 900 (700 is bold). Returns 0 when no lists could be built (no font on the
    /// system, no context); face name and scale factor then stay, the other arguments are kept.
    int RegisterFont(const CString& face, double size, int weight, int italic, int numChars);
    /// The same, underlined when `underline` is not 0.
    int RegisterFont(const CString& face, double size, int weight, int italic, int underline,
                     int numChars);

    /// The sum of the advances times the scale factor; 0 for an empty string.
    double TextWidth3D(const CString& s) const;
    /// The height of the highest letter's outline times the scale factor; 0 for an empty string.
    double TextHeight3D(const CString& s) const;
    /// The diagonal of width and height.
    double TextDiagonal3D(const CString& s) const;

    /// The factor of all measured sizes; default 0.05.
    void SetFontScaleFactor(double factor) { m_FontScaleFactor = factor; }
    double GetFontScaleFactor() const { return m_FontScaleFactor; }
    /// Depth of the letters in ems, from the next registration on; default 0.01.
    void SetFontExtrusion(double extrusion) { m_FontExtrusion = extrusion; }
    double GetFontExtrusion() const { return m_FontExtrusion; }
    /// How far the drawn outline may lie off the true one, in 28ths of an em, from the next
    /// registration on; default 0.1.
    void SetFontRendering(double deviation) { m_FontRendering = deviation; }
    double GetFontRendering() const { return m_FontRendering; }
    /// Stores the number of characters; a registration sets it, too.
    void SetNumFontChars(int n) { m_NumFontChars = n; }
    int GetNumFontChars() const { return m_NumFontChars; }

    /// The number of the list of character 0.
    int GetListBase() const { return m_ListBase; }

    /// The record. A failing medium raises "Disk I/O Error"; a null file does nothing.
    void Save(HANDLE file);
    /// Lists and measures are not in the record: register the font again afterwards.
    void Load(HANDLE file);

    template <class Archive>
    void Record(Archive& record);

 private:
    int BuildLists();
    void DeleteLists();

    /// The lists that exist, and where.
    struct BuiltLists {
        GLContext* context = nullptr;
        int base = 0;
        int count = 0;
    };

    COpenGL* m_pOpenGL = nullptr;
    std::array<GLYPHMETRICSFLOAT, 256> m_GlyphMetrics{};
    CDC* m_pDC = nullptr;
    LOGFONT m_LogFont;
    int m_nReserved = 0;
    int m_ListBase = 0;
    int m_bItalic;
    int m_bUnderline;
    int m_Weight;
    int m_NumFontChars;
    double m_FontExtrusion;
    double m_FontRendering;
    double m_FontAspect;
    double m_FontScaleFactor;
    double m_FontSize = 0.0;
    CString m_FaceName;
    int m_nSignature;
    BuiltLists m_Built;
};

}  // namespace varnel

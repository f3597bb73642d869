// CFont3D: one outline font: its letters as solids, and its measures.
//
// A context (COpenGL) owns its font; text is measured and drawn with it. Text is UTF-8, or
// Windows-1252 where it is not valid UTF-8 as a whole. A letter is made when it is first drawn or
// measured, once a process; characters that the face lacks come from the system's other fonts.
// Measured sizes are ems times the font scale factor, which a registration sets to the font size.
#pragma once

#include <memory>

#include "varnel/foundation/export.h"
#include "varnel/foundation/file.h"
#include "varnel/foundation/types.h"
#include "varnel/platform/glyph_outlines.h"

namespace varnel {

class CDC;
class COpenGL;

class VARNEL_API CFont3D {
 public:
    static constexpr int kSignature = 1111;

    /// Defaults alone; nothing can be registered before InitFont.
    CFont3D();
    /// Defaults, then InitFont.
    CFont3D(COpenGL* gl, CDC* dc, int listBase);
    ~CFont3D();
    CFont3D(const CFont3D&) = delete;
    CFont3D& operator=(const CFont3D&) = delete;

    int GetSignature() const { return m_nSignature; }

    /// Gives every attribute its default.
    void InitFontDefaults();
    /// Binds the font to a device context ("CDC Parameter Error" unless it has a device) and to a
    /// live rendering context ("OpenGL Parameter Error"); neither is owned. `listBase`, a number
    /// above 0, is stored and saved. A device that passed stays stored when the rendering context
    /// fails.
    void InitFont(COpenGL* gl, CDC* dc, int listBase);

    /// Takes the installed face that comes closest to `face`, without underline. `size` becomes the
    /// font scale factor, `weight` runs from 100 to 900 (700 is bold); `numChars` is stored and
    /// saved, and does not limit what can be drawn. Returns 0 when the system has no font (which is
    /// told as a diagnostic), the extrusion is negative or the context is closed; face name and
    /// scale factor then stay, the other arguments are kept.
    int RegisterFont(const CString& face, double size, int weight, int italic, int numChars);
    /// The same, underlined when `underline` is not 0.
    int RegisterFont(const CString& face, double size, int weight, int italic, int underline,
                     int numChars);

    // A text may have several lines, separated by line feeds.

    /// The sum of the advances of the longest line's characters times the scale factor; 0 for an
    /// empty string.
    double TextWidth3D(const CString& s) const;
    /// The height of the highest letter's outline times the scale factor; 0 for an empty string. Of
    /// several lines: from the first line's highest letter to the last baseline, 1.2 em a line.
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
    /// Stored and saved only; a registration sets it, too.
    void SetNumFontChars(int n) { m_NumFontChars = n; }
    int GetNumFontChars() const { return m_NumFontChars; }

    /// Stored and saved only.
    int GetListBase() const { return m_ListBase; }

    /// The letters of the last successful registration, null before the first one.
    const std::shared_ptr<GlyphFace>& GetFace() const { return m_Face; }
    /// What the last registration asked for.
    const LOGFONT& GetLogFont() const { return m_LogFont; }

    /// The record. A failing medium raises "Disk I/O Error"; a null file does nothing.
    void Save(HANDLE file);
    /// The letters are not in the record: register the font again afterwards.
    void Load(HANDLE file);

    template <class Archive>
    void Record(Archive& record);

 private:
    std::shared_ptr<GlyphFace> FindFace() const;

    COpenGL* m_pOpenGL = nullptr;
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
    std::shared_ptr<GlyphFace> m_Face;
};

}  // namespace varnel

// Outlines of a font's characters as solid letters, and their metrics.
//
// The system's fonts are searched for the face that comes closest to a description. Coordinates are
// in units of the em (the font's height), x right, y up, from the character's origin on the
// baseline; the front of a letter lies at z = 0, its back at z = -extrusion. Needs no OpenGL
// context and may be called from any thread. Nothing here is called by hosts.
#pragma once

#include <vector>

#include "varnel/foundation/export.h"
#include "varnel/foundation/types.h"

namespace varnel {

/// Describes the font that is wanted.
struct LOGFONT {
    LONG lfHeight = -28;   ///< size in units of the chordal deviation; the sign has no meaning
    LONG lfWeight = 400;   ///< 100 (thin) .. 400 (regular) .. 700 (bold) .. 900; 0: regular
    BYTE lfItalic = 0;     ///< 1: italic, or sheared where the face has no italic
    BYTE lfUnderline = 0;  ///< 1: a bar below each character, over its whole advance
    CString lfFaceName;
};

struct POINTFLOAT {
    float x = 0.0F;
    float y = 0.0F;
};

/// The measures of one character, in ems. The underline is not part of the black box.
struct GLYPHMETRICSFLOAT {
    float gmfBlackBoxX = 0.0F;    ///< width of what is drawn
    float gmfBlackBoxY = 0.0F;    ///< height of what is drawn
    POINTFLOAT gmfptGlyphOrigin;  ///< upper left corner of what is drawn
    float gmfCellIncX = 0.0F;     ///< from this character's origin to the next one's
    float gmfCellIncY = 0.0F;
};

/// A vertex of a letter.
struct GlyphVertex {
    float normal[3];
    float position[3];
};

/// One character: three vertices a triangle, counter-clockwise seen from outside of the letter.
struct GlyphOutline {
    GLYPHMETRICSFLOAT metrics;
    std::vector<GlyphVertex> triangles;
};

/// The first `numChars` (1..256) characters of Windows-1252 in the face that comes closest to
/// `font`. Curves are replaced by chords that lie at most `deviation` / |lfHeight| em away from
/// them, but no less than one design unit of the font. `extrusion` (in ems) must not be negative; 0
/// gives flat letters of one side. Empty when the system has no usable font or an argument is out
/// of range. Throws std::bad_alloc.
VARNEL_API std::vector<GlyphOutline> BuildGlyphOutlines(const LOGFONT& font, int numChars,
                                                        double deviation, double extrusion);

/// The Unicode character of a Windows-1252 byte; the five bytes without one give themselves.
VARNEL_API char32_t Windows1252ToUnicode(unsigned char byte);

}  // namespace varnel

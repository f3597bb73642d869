// Characters of a font as solid letters, and their measures, each made when it is first asked for.
//
// The system's fonts are searched for the face that comes closest to a description; a character
// that it lacks comes from the next best face that has it. Coordinates are in units of the em (the
// font's height), x right, y up, from the character's origin on the baseline; the front of a letter
// lies at z = 0, its back at z = -extrusion. One character is one letter: scripts whose letters
// join or change places are not shaped, and text always runs from left to right. Nothing here is
// called by hosts.
#pragma once

#include <compare>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
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

    auto operator<=>(const LOGFONT&) const = default;  // NOLINT(modernize-use-nullptr)
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

struct GlyphPoint {
    float x = 0.0F;
    float y = 0.0F;
    float z = 0.0F;
};

/// A letter as triangles, counter-clockwise seen from outside of it.
struct GlyphOutline {
    std::vector<GlyphPoint> points;
    std::vector<std::uint32_t> triangles;  ///< three numbers of points each; the front comes first
    std::size_t frontSize = 0;             ///< how many of `triangles` are the front
    /// The edge of the front: closed polygons, the letter to their left.
    std::vector<std::vector<POINTFLOAT>> contours;
};

/// Where the letter of a character comes from.
struct GlyphSource {
    std::string file;  ///< of the face; empty: nothing is drawn
    int index = 0;     ///< the face's number in the file
    bool sheared = false;

    bool operator==(const GlyphSource&) const = default;
};

/// The letters of one description. All threads share one object; it may be used by several at once.
class VARNEL_API GlyphFace {
 public:
    /// Deviation and depth of the letters that a font has unless it is told otherwise.
    static constexpr double kDeviation = 0.1;
    static constexpr double kExtrusion = 0.01;

    /// The letters of the face that comes closest to `font`. Curves are replaced by chords that lie
    /// at most `deviation` / |lfHeight| em away from them, but no less than one design unit of the
    /// font. `extrusion` is the depth in ems; 0 gives flat letters of one side. Null when the
    /// system has no usable font, or the extrusion is negative or not finite. Throws
    /// std::bad_alloc.
    static std::shared_ptr<GlyphFace> Find(const LOGFONT& font, double deviation = kDeviation,
                                           double extrusion = kExtrusion);
    ~GlyphFace();
    GlyphFace(const GlyphFace&) = delete;
    GlyphFace& operator=(const GlyphFace&) = delete;

    /// The measures of a character. One that no face has gets the box that stands for missing
    /// characters, and is told as a diagnostic. Control characters are as wide as a space,
    /// characters that only steer (joiners, direction marks) have no width.
    GLYPHMETRICSFLOAT Metrics(char32_t character);

    /// The letter, which lives as long as this object.
    const GlyphOutline& Outline(char32_t character);

    GlyphSource Source(char32_t character);
    /// The lower and the upper edge of the bar under underlined characters, in ems.
    std::pair<double, double> UnderlineEdges() const;

 private:
    class Builder;
    explicit GlyphFace(std::unique_ptr<Builder> builder);

    std::unique_ptr<Builder> m_Builder;
};

}  // namespace varnel

// How large a text is, without an OpenGL context: for fonts, and for whatever places texts before
// they are drawn.
//
// Measures are in ems of the font; x right, y up. A line feed (also after a carriage return) begins
// a new line, kLineSpacing below the one before.
#pragma once

#include <memory>
#include <string_view>
#include <utility>

#include "varnel/foundation/export.h"
#include "varnel/foundation/types.h"
#include "varnel/platform/glyph_outlines.h"

namespace varnel::detail {

/// From one baseline to the next, in ems.
inline constexpr double kLineSpacing = 1.2;

/// Where a text lies around its last line's origin. All 0 for an empty text.
struct TextSize {
    double width = 0.0;    ///< the advance of the longest line
    double height = 0.0;   ///< from the last baseline to the top of the first line's highest letter
    double descent = 0.0;  ///< how far the last line reaches below its baseline
    int lines = 0;
};

/// Measures texts in one face. Cheap to copy; any thread may measure.
class VARNEL_API TextMeasurer {
 public:
    /// Measures everything as 0.
    TextMeasurer() = default;
    /// In the face of the system that comes closest to `font`; see HasFace.
    explicit TextMeasurer(const LOGFONT& font) : m_Face(GlyphFace::Find(font)) {}
    explicit TextMeasurer(std::shared_ptr<GlyphFace> face) : m_Face(std::move(face)) {}

    /// False on a system without fonts.
    bool HasFace() const { return m_Face != nullptr; }

    TextSize Measure(std::string_view text) const;

 private:
    std::shared_ptr<GlyphFace> m_Face;
};

}  // namespace varnel::detail

// Faces of the system's fonts: finding them, and the outlines and measures of their characters.
//
// Lengths are in design units of a face, x right, y up, from the character's origin on the
// baseline. One thread at a time may use an object.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "varnel/platform/glyph_outlines.h"

namespace varnel::detail {

struct DesignPoint {
    double x;
    double y;
    bool operator==(const DesignPoint&) const = default;
};
/// A closed polygon; its first point is not repeated.
using Contour = std::vector<DesignPoint>;

/// A face in a font file.
struct FontFile {
    std::string name;
    int index = 0;
    bool operator==(const FontFile&) const = default;
};

/// The system's closest match. A family that is not installed gives another one; only a system
/// without fonts gives none.
std::optional<FontFile> FindFontFile(const LOGFONT& font);

/// The system's files for characters that the closest match lacks, best first.
class FallbackFonts {
 public:
    explicit FallbackFonts(const LOGFONT& font);
    ~FallbackFonts();
    FallbackFonts(const FallbackFonts&) = delete;
    FallbackFonts& operator=(const FallbackFonts&) = delete;

    /// The files that say they have the character.
    std::vector<FontFile> FilesWith(char32_t character) const;

 private:
    struct List;
    std::unique_ptr<List> m_List;
};

/// An opened face.
class FontFace {
 public:
    /// Null when the file has no outlines. `italic`: upright faces are sheared.
    static std::unique_ptr<FontFace> Open(const FontFile& file, bool italic);
    ~FontFace();
    FontFace(const FontFace&) = delete;
    FontFace& operator=(const FontFace&) = delete;

    GlyphSource Source() const;
    double UnitsPerEm() const;
    /// Whether the face has a sign of its own for the character.
    bool Has(char32_t character) const;
    /// Whether the face has a distance of their own for two characters side by side.
    bool Kerns(char32_t left, char32_t right) const;
    /// Loads a character, or the sign that stands for missing ones. False when the face has an
    /// outline for neither.
    bool Load(char32_t character);

    // Of the character that was loaded last.

    double Advance() const;
    /// In ems.
    GLYPHMETRICSFLOAT Metrics() const;
    /// Its curves as chords that lie at most `deviation` off them.
    std::vector<Contour> Chords(double deviation) const;

    /// The bar under a character of that advance, counter-clockwise.
    Contour Underline(double advance) const;

 private:
    struct Handles;
    explicit FontFace(std::unique_ptr<Handles> handles);
    unsigned GlyphIndex(char32_t character) const;

    std::unique_ptr<Handles> m_Handles;
};

}  // namespace varnel::detail

// A page of a vector picture: areas, lines, texts and pictures in the order in which they cover
// each other. What stands on it is exactly what shows; nothing on it is hidden by anything else.
//
// Places are hundredths of a pixel of the view, x right and y up from the lower left corner: finer
// than a tenth of a dot at 600 dots per inch.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "varnel/foundation/colors.h"
#include "varnel/foundation/types.h"
#include "varnel/platform/glyph_outlines.h"

namespace varnel::detail {

struct GridPoint {
    std::int32_t x, y;
    bool operator==(const GridPoint&) const = default;
};
inline constexpr double kGridPerPixel = 100.0;

/// A run of places: an outline, whose last corner joins its first, or a line.
using Ring = std::vector<GridPoint>;
/// Outer rings run counter-clockwise (y up), holes clockwise.
using Area = std::vector<Ring>;

struct SmoothTriangle {
    std::array<GridPoint, 3> corners;
    std::array<RGBDType, 3> colors;
};

/// How lines look; lengths in pixels.
struct PageStroke {
    RGBDType color;  ///< alpha 1 is opaque
    double width = 1.0;
    std::vector<double> dashes;  ///< lengths of marks and gaps in turn; none: a solid line
    bool cutJoins = false;       ///< joins are cut off, not round
};

/// One line of text.
struct PageText {
    CString text;  ///< UTF-8
    CString family;
    int weight = 400;
    bool italic = false;
    RGBDType color;
    /// Ems, x along the baseline and y up, to pixels: x' = m0 x + m2 y + m4, y' = m1 x + m3 y + m5.
    std::array<double, 6> placement{};
    /// Where each character begins on the baseline, in ems: as in the picture, whatever face and
    /// kerning a viewer has.
    std::vector<double> places;
    /// The faces that the picture's letters come from, each up to the character before the next.
    struct Run {
        std::size_t first = 0;  ///< character
        GlyphSource source;
    };
    std::vector<Run> runs;
    double halo = 0.0;  ///< how far haloColor surrounds the letters, in ems
    RGBDType haloColor;
};

/// A bitmap, rows from the top, 4 bytes a pixel: red, green, blue, alpha.
struct PagePicture {
    int width = 0, height = 0;
    std::vector<BYTE> pixels;
    /// The unit square, y up, to pixels of the page.
    std::array<double, 6> placement{};
};

class PageCanvas {
 public:
    PageCanvas() = default;
    PageCanvas(const PageCanvas&) = delete;
    PageCanvas& operator=(const PageCanvas&) = delete;
    virtual ~PageCanvas() = default;

    /// Fills an area. `seal` strokes its outline hair-thin in the same colour, so that viewers that
    /// smooth each area by itself show no crack between it and its neighbours.
    virtual void Fill(const Area& area, const RGBDType& color, bool seal) = 0;
    /// Whether FillSmooth takes triangles as they are.
    virtual bool HasMeshes() const { return false; }
    /// Triangles whose colours run evenly between those of their corners.
    virtual void FillSmooth(const std::vector<SmoothTriangle>& triangles) = 0;
    virtual void Stroke(const std::vector<Ring>& lines, const PageStroke& stroke) = 0;
    virtual void Text(const PageText& text) = 0;
    virtual void Picture(const PagePicture& picture) = 0;
    /// Confines what follows to an area, until EndClip.
    virtual void BeginClip(const Area& area) = 0;
    virtual void EndClip() = 0;
};

}  // namespace varnel::detail

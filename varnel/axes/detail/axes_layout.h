// Axes that follow the view: on which faces and edges of the box they stand, and where their texts
// are, in pixels of the viewport from its lower left corner.
//
// Pure functions of the box as it lands in the image and of what each axis has to say. Walls and
// grids stand on the three faces that look away from the viewer; axis lines stand on silhouette
// edges, so that whatever lies beyond such an edge hides nothing of the box.
#pragma once

#include <functional>
#include <string_view>
#include <vector>

#include "varnel/foundation/types.h"
#include "varnel/render/detail/matrix_stack.h"

namespace varnel::detail {

inline constexpr double kTitleGap = 0.5;  ///< label heights between labels and title
inline constexpr double kShortestNumbers =
    2.0;                                    ///< label heights that an axis takes to say something
inline constexpr double kCapHeight = 0.73;  ///< of capitals, in ems

struct PixelPoint {
    double x = 0.0;
    double y = 0.0;
};

inline PixelPoint operator+(PixelPoint a, PixelPoint b) {
    return {a.x + b.x, a.y + b.y};
}
inline PixelPoint operator-(PixelPoint a, PixelPoint b) {
    return {a.x - b.x, a.y - b.y};
}
inline PixelPoint operator*(double k, PixelPoint a) {
    return {k * a.x, k * a.y};
}
inline double Dot(PixelPoint a, PixelPoint b) {
    return a.x * b.x + a.y * b.y;
}

struct PixelBox {
    double left = 0.0;
    double bottom = 0.0;
    double right = 0.0;
    double top = 0.0;

    /// Whether two boxes come closer than gaps beside and above each other.
    bool Touches(const PixelBox& other, double beside, double above) const {
        return left < other.right + beside && other.left < right + beside &&
               bottom < other.top + above && other.bottom < top + above;
    }
};

PixelBox BoxAround(PixelPoint centre, double width, double height);

/// A text's letters: a rectangle that may be turned, its corners counter-clockwise from the left
/// end of the lower edge.
struct PixelQuad {
    PixelPoint corners[4];

    PixelBox Box() const;
    /// Whether two of them have a point in common.
    bool Touches(const PixelQuad& other) const;
};

/// The size of a text in ems: its advance, how far it rises above its baseline and goes below it.
struct TextExtent {
    double width = 0.0;
    double ascent = 0.0;
    double descent = 0.0;
};

using TextMeasure = std::function<TextExtent(std::string_view)>;

/// The box between the limits of three axes, and how it lands in the image. Edges run from the
/// minimum of an axis to its maximum.
struct BoxView {
    Vec3 origin;         ///< the corner of the three minima in device coordinates, z growing away
    Vec3 edges[3];       ///< the three edges from there
    double width = 0.0;  ///< the viewport, in pixels
    double height = 0.0;

    PixelPoint ToPixel(const Vec3& device) const {
        return {(device.x + 1.0) / 2.0 * width, (device.y + 1.0) / 2.0 * height};
    }
    /// An edge of the box as a vector of pixels.
    PixelPoint EdgeInPixels(int axis) const {
        return {edges[axis].x / 2.0 * width, edges[axis].y / 2.0 * height};
    }
    /// The corner at the minimum or the maximum of each axis.
    Vec3 Corner(const bool (&atMax)[3]) const;
};

/// Ends of the three axes: a corner of the box; for an edge along an axis, two of them.
using BoxEnds = bool[3];

struct AxesChoice {
    bool isSet = false;
    BoxEnds back = {};      ///< at the maximum of which axes the faces that look away stand
    BoxEnds edges[3] = {};  ///< of each axis, where its edge lies on the two others
};

/// The three faces that look away from the viewer, and of the two silhouette edges along each axis
/// the lower one, or the left one where they are steep. A face that is seen edge-on counts as
/// looking away where it is the left or lower one of the two. A `former` choice is kept within a
/// degree or so of where another becomes better, so that a chart that is being turned does not
/// flicker.
AxesChoice ChooseFacesAndEdges(const BoxView& view, const AxesChoice* former = nullptr);

/// What one axis draws and writes.
struct AxisContent {
    bool hasLine = false;
    std::vector<double> places;  ///< of the labels, 0 at the minimum .. 1 at the maximum
    std::vector<CString> texts;  ///< as many
    bool named = false;          ///< the texts are names: rather shrunk and turned than left out
    int kept = 0;                ///< the label that stays when they are thinned out
    CString title;
    double labelEm = 0.0;  ///< in pixels
    double titleEm = 0.0;
    double ticLength = 0.0;  ///< a fraction of the edge along which the tics point
    double ticHeight = 0.0;  ///< above 0: instead, in ems of the labels
    bool mayTurn = false;    ///< whether names can be written at 45 degrees
    double wallAtMin = 0.0;  ///< how far walls reach out of the box beyond the minimum of this
    double wallAtMax = 0.0;  ///< axis and beyond its maximum, in fractions of its edge
};

/// A text of one line, upright or turned.
struct PlacedText {
    int axis = 0;
    bool isTitle = false;
    int index = -1;  ///< which label
    CString text;
    double em = 0.0;   ///< in pixels
    int rotation = 0;  ///< degrees to the left: 0, 45, -45 or 90
    PixelPoint start;  ///< where the baseline begins
    PixelQuad shape;
    PixelBox box;  ///< around the shape

    /// Whether two texts come closer than gaps beside and above each other.
    bool Touches(const PlacedText& other, double beside, double above) const {
        return box.Touches(other.box, beside, above) &&
               (rotation % 90 == 0 && other.rotation % 90 == 0 ? true : shape.Touches(other.shape));
    }
};

struct PlacedAxis {
    bool shown = false;    ///< its labels and title; an axis seen end-on has none
    int ticDirection = 0;  ///< 0 -x .. 5 +z
    PixelPoint from;       ///< the ends of the axis line
    PixelPoint to;
    PixelPoint outward;      ///< away from the box, of length 1
    double reach = 0.0;      ///< how far tics and walls go outward, in pixels
    double ticLength = 0.0;  ///< of major tics, a fraction of the edge along which they point
};

struct AxesPlacement {
    AxesChoice choice;
    PlacedAxis axes[3];
    std::vector<PlacedText> texts;  ///< those that have room

    /// What axes, tics and texts cover, the box included; walls as well.
    PixelBox bounds;
};

/// Places all of it. Labels stand off the tics by a third of an em, titles off the labels by half a
/// label's height. Labels that would touch are thinned out to every 2nd, 3rd, 5th, ..; names are
/// first shrunk to 85 %, then turned by 45 degrees, then shrunk to 70 % at most, then turned by 90
/// degrees, then wrapped at a space into two lines; turned ones reach at most a third of the
/// viewport's height. Numbers keep their size.
/// An axis whose edge is shorter than two heights of its labels (one, with names) says nothing.
AxesPlacement PlaceAxes(const BoxView& view, const AxisContent (&content)[3],
                        const TextMeasure& measure, const AxesChoice* former = nullptr);

}  // namespace varnel::detail

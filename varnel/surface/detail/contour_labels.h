// Where labels stand on contour lines: on straight stretches, readable side up, none over another.
// Pure geometry in pixels, x to the right and y up.
#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <vector>

namespace varnel::detail {

struct ScreenPoint {
    double x, y;
};

/// A line as it is seen, with the size of its label. A closed line has its first point again at its
/// end.
struct ScreenLine {
    std::span<const ScreenPoint> points;
    double labelWidth = 0.0;
    double labelHeight = 0.0;
};

struct LineLabel {
    std::size_t line;
    double from, to;  ///< the gap in the line for it, as lengths along the line
    ScreenPoint center;
    double angle;   ///< of the text, in degrees, above -90 and up to 90
    double height;  ///< with the air above and below
};

/// What is asked of the placement.
struct LabelRules {
    double width, height;    ///< of the picture, inside of which labels stay
    double spacing = 300.0;  ///< a line gets a label for each of these lengths, at least one
    double bend = 0.3;  ///< how far a line may leave the chord under its label, in label heights
    /// Whether nothing hides a label; none are hidden without it.
    std::function<bool(const LineLabel&)> isSeen{};
};

/// Places labels on the lines, long lines first. A line that is not at least twice as long as its
/// label, or bends everywhere, has none. Of the stretches that fit into a part of a line the
/// straightest is taken, where the line is closest to its own
/// chord.
std::vector<LineLabel> PlaceLabels(std::span<const ScreenLine> lines, const LabelRules& rules);

}  // namespace varnel::detail

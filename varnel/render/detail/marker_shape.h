// The shapes of markers that face the viewer, as convex pieces in pixels about their middle.
#pragma once

#include <vector>

namespace varnel::detail {

struct MarkerCorner {
    double x, y;  ///< pixels to the right and up
};

/// Convex pieces that do not overlap, counter-clockwise; none for unknown kinds.
using MarkerShape = std::vector<std::vector<MarkerCorner>>;

/// A marker of a kind of MarkerCode, `size` pixels across and grown by `margin` pixels on all sides
/// (below 0: shrunk). All kinds of one size look about equally large.
MarkerShape MakeMarkerShape(int kind, double size, double margin);

}  // namespace varnel::detail

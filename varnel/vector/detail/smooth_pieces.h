// Triangles whose colour runs smoothly as what a page without such triangles can show: pieces of
// one colour, and straight gradients.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "varnel/platform/detail/page_canvas.h"
#include "varnel/render/detail/matrix_stack.h"

namespace varnel::detail {

/// A convex ring whose corners have values, with room for what cuts add to a triangle.
struct ValuedRing {
    struct Corner {
        Vec3 place;
        double value;
    };
    std::array<Corner, 8> corners;
    std::size_t count = 0;

    /// Leaves the part where the value is not below `at` (sign 1) or not above it (sign -1).
    void Cut(double sign, double at);
};

/// Areas of one colour, by the colour's 24 bits.
struct ShadePieces {
    struct Shade {
        RGBDType color;
        std::vector<Area> areas;
    };
    std::map<std::uint32_t, Shade> shades;

    void Add(Area area, const RGBDType& color);
    /// In pieces along which the colour moves by next to nothing, at most 64.
    void Subdivide(const SmoothTriangle& triangle, int depth = 0);
};

/// How the colour of a triangle runs: straight from `from`, where it is `low`, to `to`.
struct StraightGradient {
    GridPoint from;
    std::array<double, 2> to;  ///< grid units
    RGBDType low, high;
    std::array<double, 3> values;  ///< of the corners: steps of the component that runs most
};

/// That of a triangle along which all components run together, as those of one lit colour do.
std::optional<StraightGradient> FindGradient(const SmoothTriangle& triangle);

/// Cuts a triangle across its gradient, at the same colours as its neighbours are cut. False, and
/// nothing is added, where it runs through more than `mostSteps` steps of colour.
bool CutShades(const SmoothTriangle& triangle, const StraightGradient& gradient, double mostSteps,
               ShadePieces& pieces);

/// Adds the triangles that a part of a triangle consists of. False, and nothing is added, where the
/// outline crosses itself.
bool CutTriangles(const SmoothTriangle& triangle, Ring outline,
                  std::vector<SmoothTriangle>& pieces);

}  // namespace varnel::detail

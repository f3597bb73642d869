// What the geometry of the chart families is computed from: views of a chart object's arrays, its
// placement, and the rules that all families share.
//
// Geometry needs no rendering context. Every family calls a visitor with what to draw, in working
// coordinates, in the order of drawing, and allocates nothing.
#pragma once

#include <cmath>
#include <cstddef>
#include <limits>
#include <span>

#include "varnel/foundation/colors.h"
#include "varnel/foundation/points.h"

namespace varnel::detail {

/// Whether a value is data; NaN and infinities leave gaps.
inline bool IsData(double v) {
    return std::isfinite(v);
}
inline bool IsData(const point3Dtype& p) {
    return IsData(p.x) && IsData(p.y) && IsData(p.z);
}

/// Which horizontal axis the independent values of a 2.5D chart run along; the other is its depth
/// axis, and values lie along z.
struct Orientation {
    bool indAlongY;

    int IndAxis() const { return indAlongY ? 1 : 0; }
    int DepthAxis() const { return indAlongY ? 0 : 1; }

    /// (independent, depth, value) as (x, y, z).
    point3Dtype Place(double ind, double depth, double value) const {
        return indAlongY ? point3Dtype{depth, ind, value, 0.0}
                         : point3Dtype{ind, depth, value, 0.0};
    }
};

/// Grouped data, group by group, each a row of numPoints values.
struct GroupView {
    std::span<const double> values;
    int numGroups = 0;
    std::size_t numPoints = 0;

    /// The datum of point i in group g, NaN where nothing is stored.
    double At(std::size_t g, std::size_t i) const {
        const std::size_t index = g * numPoints + i;
        return index < values.size() ? values[index] : std::numeric_limits<double>::quiet_NaN();
    }

    /// Groups of which something is stored, at most numGroups.
    std::size_t StoredGroups() const {
        if (numGroups <= 0 || numPoints == 0) return 0;
        const std::size_t stored = (values.size() + numPoints - 1) / numPoints;
        const auto wanted = static_cast<std::size_t>(numGroups);
        return wanted < stored ? wanted : stored;
    }
};

/// The data and the placement of a 2.5D chart.
struct Data25D {
    std::span<const double> ind;
    std::span<const double> dep;
    std::span<const double> dep2;
    std::span<const double> heights;
    GroupView groups;
    int indAxis = 0;
    double constValue = 0.0;
    double baseValue = 0.0;
    double indWidth = 1.0;
    double depthWidth = 1.0;
    double indOffset = 0.0;    ///< from a value to the start of the width placed at it
    double depthOffset = 0.0;  ///< likewise, of the depth width
    double gap = 0.0;          ///< between neighbouring segments, in working units
    double leastHeight = 0.0;  ///< of the bodies of price charts, in working units
    bool exact = false;        ///< everything goes between its converted ends
};

/// The length of the shortest of several arrays.
template <class... Spans>
std::size_t Shortest(const Spans&... spans) {
    std::size_t shortest = std::numeric_limits<std::size_t>::max();
    ((shortest = spans.size() < shortest ? spans.size() : shortest), ...);
    return shortest;
}

/// The colours of single data points.
struct SegmentColors {
    std::span<const RGBDType> colors;  ///< empty when each point has the chart's colour

    /// The colour of point i, the last stored one beyond them, `otherwise` when there are none.
    const RGBDType& At(std::size_t i, const RGBDType& otherwise) const {
        if (colors.empty()) return otherwise;
        return colors[i < colors.size() ? i : colors.size() - 1];
    }
};

}  // namespace varnel::detail

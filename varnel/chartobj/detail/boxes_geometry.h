// Box-and-whisker marks in working coordinates.
#pragma once

#include <array>
#include <cstddef>

#include "varnel/chartobj/detail/chart_data.h"
#include "varnel/chartobj/detail/stock_geometry.h"
#include "varnel/transform/transform.h"

namespace varnel::detail {

/// The parts of a box mark; each has its own colour.
enum BoxPart : std::size_t {
    kLowerWhisker = BOX_COLOR_LOWER_WHISKER,
    kLowerBox = BOX_COLOR_LOWER_BOX,
    kMedianLine = BOX_COLOR_MEDIAN,
    kUpperBox = BOX_COLOR_UPPER_BOX,
    kUpperWhisker = BOX_COLOR_UPPER_WHISKER,
    kMeanSymbol = BOX_COLOR_MEAN,
};

/// The line around a box at a height. It keeps a thousandth of the axes' ranges away from the
/// faces, where it would fight with them for the same pixels.
inline std::array<point3Dtype, 5> MedianLoop(const CTransform3D& t, const GlyphRoom& room,
                                             double z) {
    const double du = std::abs(t.GetAxisWorkingRange(room.o.IndAxis())) / 1000;
    const double dd = std::abs(t.GetAxisWorkingRange(room.o.DepthAxis())) / 1000;
    const auto corner = [&](double u, double d) { return room.o.Place(u, d, z); };
    return {corner(room.left - du, room.near - dd), corner(room.right + du, room.near - dd),
            corner(room.right + du, room.far + dd), corner(room.left - du, room.far + dd),
            corner(room.left - du, room.near - dd)};
}

/// Calls, for each point i whose five box values are data, Line(part, p, q) for whiskers and caps,
/// Box(part, prism) for both halves, Median(loop), and, when wanted and the mean is data,
/// Mean(place) for each of the two faces across the depth.
template <class Visitor>
void WalkBoxes(const CTransform3D& t, const Data25D& data, bool withMean, Visitor&& visitor) {
    for (std::size_t i = 0; i < data.ind.size(); ++i) {
        std::array<double, 5> z;
        bool complete = IsData(data.ind[i]);
        for (std::size_t g = 0; g < z.size(); ++g) {
            complete = complete && IsData(data.groups.At(g, i));
            z[g] = t.CVTWS(2, data.groups.At(g, i));
        }
        if (!complete) continue;
        const GlyphRoom room(t, data, data.ind[i]);
        const double capLeft = (room.left + room.middle) / 2;
        const double capRight = (room.middle + room.right) / 2;
        const auto whisker = [&](BoxPart part, double from, double to) {
            visitor.Line(part, room.At(room.middle, from), room.At(room.middle, to));
            visitor.Line(part, room.At(capLeft, to), room.At(capRight, to));
        };
        whisker(kLowerWhisker, z[1], z[0]);
        visitor.Box(kLowerBox, room.Box(z[1], z[2]));
        visitor.Box(kUpperBox, room.Box(z[2], z[3]));
        visitor.Median(MedianLoop(t, room, z[2]));
        whisker(kUpperWhisker, z[3], z[4]);

        const double mean = data.groups.At(5, i);
        if (!withMean || !IsData(mean)) continue;
        const double zMean = t.CVTWS(2, mean);
        visitor.Mean(PlaceInBox(t, room.o.Place(room.middle, room.near, zMean)));
        visitor.Mean(PlaceInBox(t, room.o.Place(room.middle, room.far, zMean)));
    }
}

}  // namespace varnel::detail

// Bands between two edges, cut into eight-cornered solids, one per segment.
#pragma once

#include <array>

#include "varnel/foundation/points.h"
#include "varnel/transform/transform.h"

namespace varnel::detail {

using SolidCorners = std::array<point3Dtype, 8>;

/// One segment of a band, in data values or working coordinates: from u0 to u1 along the
/// independent axis, between a bottom and a top edge that each have a value at both ends.
struct BandSegment {
    double u0, u1;
    double bottom0, bottom1;
    double top0, top1;
};

/// The solid of a segment between depths d0 and d1, in its own coordinates: corners 0 to 3 are its
/// bottom, 4 to 7 its top, in the order that turns its faces outward in either orientation.
inline SolidCorners PlaceBand(bool indAlongY, const BandSegment& s, double d0, double d1) {
    if (indAlongY)
        return {{{d0, s.u0, s.bottom0, 0},
                 {d0, s.u1, s.bottom1, 0},
                 {d1, s.u1, s.bottom1, 0},
                 {d1, s.u0, s.bottom0, 0},
                 {d0, s.u0, s.top0, 0},
                 {d0, s.u1, s.top1, 0},
                 {d1, s.u1, s.top1, 0},
                 {d1, s.u0, s.top0, 0}}};
    return {{{s.u0, d0, s.bottom0, 0},
             {s.u0, d1, s.bottom0, 0},
             {s.u1, d1, s.bottom1, 0},
             {s.u1, d0, s.bottom1, 0},
             {s.u0, d0, s.top0, 0},
             {s.u0, d1, s.top0, 0},
             {s.u1, d1, s.top1, 0},
             {s.u1, d0, s.top1, 0}}};
}

/// The same, from data values to working coordinates.
inline SolidCorners BandCorners(const CTransform3D& t, bool indAlongY, const BandSegment& s,
                                double d0, double d1) {
    SolidCorners corners = PlaceBand(indAlongY, s, d0, d1);
    t.C3DATWS(corners.data(), 8);
    return corners;
}

/// Calls visit(segment, hangs) for the pieces of a band between a lower and an upper edge that may
/// cross: one, two where they cross inside, none where they coincide. A piece whose upper edge lies
/// below its lower one hangs; its bottom and top are exchanged.
template <class Visit>
void WalkBandPieces(const BandSegment& s, Visit&& visit) {
    const double extent0 = s.top0 - s.bottom0;
    const double extent1 = s.top1 - s.bottom1;
    const auto piece = [&](const BandSegment& p, bool hangs) {
        if (hangs)
            visit(BandSegment{p.u0, p.u1, p.top0, p.top1, p.bottom0, p.bottom1}, true);
        else
            visit(p, false);
    };
    if (extent0 == 0.0 && extent1 == 0.0) return;
    const bool cross = (extent0 < 0.0 && extent1 > 0.0) || (extent0 > 0.0 && extent1 < 0.0);
    if (!cross) return piece(s, extent0 < 0.0 || extent1 < 0.0);
    const double share = extent0 / (extent0 - extent1);
    const double u = s.u0 + share * (s.u1 - s.u0);
    const double z = s.bottom0 + share * (s.bottom1 - s.bottom0);
    piece({s.u0, u, s.bottom0, z, s.top0, z}, extent0 < 0.0);
    piece({u, s.u1, z, s.bottom1, z, s.top1}, extent1 < 0.0);
}

}  // namespace varnel::detail

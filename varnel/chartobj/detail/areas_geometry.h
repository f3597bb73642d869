// Areas: bands between two edges, one eight-cornered solid per segment. Corners are converted to
// working coordinates before the visitor sees them.
#pragma once

#include <cstddef>

#include "varnel/chartobj/detail/bands.h"
#include "varnel/chartobj/detail/chart_data.h"
#include "varnel/chartobj/detail/exact_areas.h"
#include "varnel/transform/transform.h"

namespace varnel::detail {

/// Neighbouring segments touch on a logarithmic independent axis.
inline double AreaGap(const CTransform3D& t, const Data25D& data) {
    return t.GetAxisScaleMode(data.indAxis) != 0 ? 0.0 : data.gap;
}

/// Whether a line from a to b meets a level; one that runs level never does, even on it.
inline bool Crosses(double level, double a, double b) {
    const bool apart = (level < a && level < b) || (level > a && level > b);
    return !apart && a != b;
}

/// The area between the data line and a base value. The line is cut where it crosses the base;
/// pieces are numbered from 1, cuts included, and visit(piece, corners) is called for each.
template <class Visit>
void WalkAreaFill(const CTransform3D& t, const Data25D& data, Visit&& visit) {
    if (data.exact) return WalkExactArea(t, data, visit);
    const double base = data.baseValue;
    const double tolerance = t.GetWorkingRange().z / 500.0;
    const double gap = AreaGap(t, data);
    const double d0 = data.constValue + data.depthOffset;
    const double d1 = d0 + data.depthWidth;
    const bool indAlongY = data.indAxis == 1;
    std::size_t piece = 0;

    const auto draw = [&](double ind0, double dep0, double ind1, double dep1) {
        ++piece;
        // An end on the base gets a base edge a little below it, so that the solid does not close
        // to a line there.
        const double edge = base == dep0 || base == dep1 ? base - tolerance : base;
        if (base <= dep0 && base <= dep1)
            visit(piece,
                  BandCorners(t, indAlongY, {ind0, ind1 - gap, edge, edge, dep0, dep1}, d0, d1));
        else
            visit(piece,
                  BandCorners(t, indAlongY, {ind1 - gap, ind0, dep1, dep0, edge, edge}, d1, d0));
    };

    const std::size_t n = Shortest(data.ind, data.dep);
    for (std::size_t i = 1; i < n; ++i) {
        const double ind0 = data.ind[i - 1];
        const double ind1 = data.ind[i];
        const double dep0 = data.dep[i - 1];
        const double dep1 = data.dep[i];
        if (!IsData(ind0) || !IsData(ind1) || !IsData(dep0) || !IsData(dep1)) {
            ++piece;
            continue;
        }
        // The cut lies on the base, but is made where the line crosses the lowered base.
        if (Crosses(base - tolerance, dep0, dep1)) {
            const double cut = (dep0 - base) / (dep0 - dep1) * (ind1 - ind0) + ind0;
            draw(ind0, dep0, cut, base);
            draw(cut, base, ind1, dep1);
        } else {
            draw(ind0, dep0, ind1, dep1);
        }
    }
}

/// The band from dep to dep - dep2; visit(i, corners) for the segment that ends at point i.
template <class Visit>
void WalkAreaRange(const CTransform3D& t, const Data25D& data, Visit&& visit) {
    if (data.exact) return WalkExactRange(t, data, visit);
    constexpr double kThinnest = 0.01;  // in data units
    const double gap = AreaGap(t, data);
    const double d0 = data.constValue + data.depthOffset;
    const double d1 = d0 + data.depthWidth;
    const auto far = [&](std::size_t i) {
        const double edge = data.dep[i] - data.dep2[i];
        return edge - data.dep[i] <= kThinnest ? edge + kThinnest : edge;
    };
    const auto isData = [&](std::size_t i) {
        return IsData(data.ind[i]) && IsData(data.dep[i]) && IsData(data.dep2[i]);
    };
    const std::size_t n = Shortest(data.ind, data.dep, data.dep2);
    for (std::size_t i = 1; i < n; ++i) {
        if (!isData(i - 1) || !isData(i)) continue;
        const BandSegment s{data.ind[i - 1], data.ind[i] - gap, data.dep[i - 1],
                            data.dep[i],     far(i - 1),        far(i)};
        visit(i, BandCorners(t, data.indAxis == 1, s, d0, d1));
    }
}

/// Stacked bands, group 0 from the base value to its own data, every other one from the running
/// total below it to its own; visit(i, g, corners) for each piece of the segments that end at point
/// i.
template <class Visit>
void WalkGroupAreas(const CTransform3D& t, const Data25D& data, Visit&& visit) {
    if (data.exact) return WalkExactGroups(t, data, visit);
    const double gap = AreaGap(t, data);
    const double d0 = data.constValue + data.depthOffset;
    const double d1 = d0 + data.depthWidth;
    const std::size_t numGroups = data.groups.StoredGroups();
    // A hanging piece lies inside the bands around it; it stands out of them by this much, so that
    // it does not fight with them for the same pixels.
    const double outDepth = data.depthWidth / 500;
    const double outValue = t.GetWorkingRange().z / 1000;
    // What is reached at one end of a segment: the edge that the next band starts from.
    struct Reached {
        double edge;
        double total = 0.0;
        bool Add(double datum) {
            if (!IsData(datum)) return false;
            total += datum;
            return true;
        }
    };
    for (std::size_t i = 1; i < data.ind.size(); ++i) {
        if (!IsData(data.ind[i - 1]) || !IsData(data.ind[i])) continue;
        Reached left{data.baseValue};
        Reached right{data.baseValue};
        for (std::size_t g = 0; g < numGroups; ++g) {
            const bool hasLeft = left.Add(data.groups.At(g, i - 1));
            const bool hasRight = right.Add(data.groups.At(g, i));
            const BandSegment band{data.ind[i - 1], data.ind[i], left.edge,
                                   right.edge,      left.total,  right.total};
            if (hasLeft && hasRight)
                WalkBandPieces(band, [&](BandSegment s, bool hangs) {
                    s.u1 -= gap;
                    const double out = hangs ? outDepth : 0.0;
                    if (hangs) {
                        s.top0 += outValue;
                        s.top1 += outValue;
                    }
                    visit(i, g, BandCorners(t, data.indAxis == 1, s, d0 - out, d1 + out));
                });
            if (hasLeft) left.edge = left.total;
            if (hasRight) right.edge = right.total;
        }
    }
}

}  // namespace varnel::detail

// Areas whose edges and cuts lie exactly where the axes put them, logarithmic ones included:
// everything is converted first, then cut, and what is negative is piled downward from the base.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

#include "varnel/chartobj/detail/bands.h"
#include "varnel/chartobj/detail/chart_data.h"
#include "varnel/chartobj/detail/extent.h"
#include "varnel/transform/transform.h"

namespace varnel::detail {

/// A 2.5D chart's segments in working coordinates.
class SegmentFrame {
 public:
    SegmentFrame(const CTransform3D& t, const Data25D& data)
        : m_Transform(t),
          m_Data(data),
          m_Orientation{data.indAxis == 1},
          m_Depth(WidthExtent(t, m_Orientation.DepthAxis(), data.constValue, data.depthOffset,
                              data.depthWidth, true)) {}

    double Ind(std::size_t i) const {
        return Convert(m_Transform, m_Orientation.IndAxis(), m_Data.ind[i]);
    }
    double Value(double v) const { return Convert(m_Transform, 2, v); }

    /// The solid of a segment, which leaves the chart's gap at its far end.
    SolidCorners Solid(BandSegment s) const {
        s.u1 -= m_Data.gap;
        return PlaceBand(m_Orientation.indAlongY, s, m_Depth.from, m_Depth.to);
    }

 private:
    const CTransform3D& m_Transform;
    const Data25D& m_Data;
    Orientation m_Orientation;
    Extent m_Depth;
};

/// As WalkAreaFill: between the data line and the base, cut on the base.
template <class Visit>
void WalkExactArea(const CTransform3D& t, const Data25D& data, Visit&& visit) {
    const SegmentFrame frame(t, data);
    const double base = frame.Value(data.baseValue);
    std::size_t piece = 0;
    const std::size_t n = Shortest(data.ind, data.dep);
    for (std::size_t i = 1; i < n; ++i) {
        if (!IsData(data.ind[i - 1]) || !IsData(data.ind[i]) || !IsData(data.dep[i - 1]) ||
            !IsData(data.dep[i])) {
            ++piece;
            continue;
        }
        const BandSegment s{
            frame.Ind(i - 1),        frame.Ind(i), base, base, frame.Value(data.dep[i - 1]),
            frame.Value(data.dep[i])};
        const std::size_t before = piece;
        WalkBandPieces(s,
                       [&](const BandSegment& part, bool) { visit(++piece, frame.Solid(part)); });
        // A segment that lies on the base is one without extent.
        if (piece == before) ++piece;
    }
}

/// As WalkAreaRange, without the least thickness.
template <class Visit>
void WalkExactRange(const CTransform3D& t, const Data25D& data, Visit&& visit) {
    const SegmentFrame frame(t, data);
    const auto isData = [&](std::size_t i) {
        return IsData(data.ind[i]) && IsData(data.dep[i]) && IsData(data.dep2[i]);
    };
    const std::size_t n = Shortest(data.ind, data.dep, data.dep2);
    for (std::size_t i = 1; i < n; ++i) {
        if (!isData(i - 1) || !isData(i)) continue;
        const BandSegment s{frame.Ind(i - 1),
                            frame.Ind(i),
                            frame.Value(data.dep[i - 1]),
                            frame.Value(data.dep[i]),
                            frame.Value(data.dep[i - 1] - data.dep2[i - 1]),
                            frame.Value(data.dep[i] - data.dep2[i])};
        WalkBandPieces(s, [&](const BandSegment& part, bool) { visit(i, frame.Solid(part)); });
    }
}

/// The bands of one slice of a segment, in which no datum changes its sign.
template <class Visit>
void WalkExactSlice(const SegmentFrame& frame, const Data25D& data, std::size_t i,
                    const Extent& slice, Visit&& visit) {
    // What one end of the slice has piled up so far.
    struct Piles {
        Pile up, down;
    };
    Piles from{{data.baseValue}, {data.baseValue}};
    Piles to = from;
    const double u0 = frame.Ind(i - 1);
    const double u1 = frame.Ind(i);
    for (std::size_t g = 0; g < data.groups.StoredGroups(); ++g) {
        const double left = data.groups.At(g, i - 1);
        const double right = data.groups.At(g, i);
        const bool complete = IsData(left) && IsData(right);
        const auto at = [&](double share) {
            const double a = IsData(left) ? left : 0.0;
            return a + share * ((IsData(right) ? right : 0.0) - a);
        };
        const bool down = at((slice.from + slice.to) / 2) < 0.0;
        const Extent first = (down ? from.down : from.up).Add(at(slice.from));
        const Extent last = (down ? to.down : to.up).Add(at(slice.to));
        if (!complete) continue;
        WalkBandPieces(
            {u0 + slice.from * (u1 - u0), u0 + slice.to * (u1 - u0), frame.Value(first.from),
             frame.Value(last.from), frame.Value(first.to), frame.Value(last.to)},
            [&](const BandSegment& part, bool) { visit(i, g, frame.Solid(part)); });
    }
}

/// As WalkGroupAreas, in two piles: bands of positive data upward from the base, those of negative
/// ones downward. A segment is cut wherever a group's datum changes its sign in it, so that each
/// group belongs to one pile between two cuts.
template <class Visit>
void WalkExactGroups(const CTransform3D& t, const Data25D& data, Visit&& visit) {
    const SegmentFrame frame(t, data);
    const std::size_t numGroups = data.groups.StoredGroups();
    std::vector<double> cuts;  // shares of the segment
    for (std::size_t i = 1; i < data.ind.size(); ++i) {
        if (!IsData(data.ind[i - 1]) || !IsData(data.ind[i])) continue;
        cuts.assign({0.0, 1.0});
        for (std::size_t g = 0; g < numGroups; ++g) {
            const double left = data.groups.At(g, i - 1);
            const double right = data.groups.At(g, i);
            if ((left < 0.0 && right > 0.0) || (left > 0.0 && right < 0.0))
                cuts.push_back(left / (left - right));
        }
        std::sort(cuts.begin(), cuts.end());
        for (std::size_t k = 1; k < cuts.size(); ++k)
            if (cuts[k - 1] < cuts[k])
                WalkExactSlice(frame, data, i, {cuts[k - 1], cuts[k]}, visit);
    }
}

}  // namespace varnel::detail

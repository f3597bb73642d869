// The order in which points are inserted: bins of a coarse grid, row by row in alternating
// directions, and inside a bin along a Hilbert curve, so that each point lies close to the one
// before it and the walk to its triangle is short.
#include <algorithm>
#include <cmath>
#include <utility>

#include "varnel/foundation/detail/progress.h"
#include "varnel/foundation/detail/raise.h"
#include "varnel/surface/detail/delaunay.h"

namespace varnel::detail {

namespace {

/// The place of a cell along the Hilbert curve through 2^levels x 2^levels cells that starts at
/// (0, 0) and ends at (2^levels - 1, 0).
std::uint32_t HilbertPlace(std::uint32_t x, std::uint32_t y, int levels) {
    // For each of the curve's four orientations (as it is, transposed, and these two turned by half
    // a turn) and each quarter of the square (2 * x bit + y bit): when the curve reaches it, and
    // the orientation inside of it.
    static constexpr std::uint8_t kRank[4][4] = {
        {0, 1, 3, 2}, {0, 3, 1, 2}, {2, 3, 1, 0}, {2, 1, 3, 0}};
    static constexpr std::uint8_t kNext[4][4] = {
        {1, 0, 3, 0}, {0, 2, 1, 1}, {2, 1, 2, 3}, {3, 3, 0, 2}};
    std::uint32_t place = 0;
    unsigned state = 0;
    for (int level = levels - 1; level >= 0; --level) {
        const unsigned quarter = 2 * ((x >> level) & 1U) + ((y >> level) & 1U);
        place = place << 2 | kRank[state][quarter];
        state = kNext[state][quarter];
    }
    return place;
}

}  // namespace

Delaunay::Box Delaunay::GetBounds(int begin, int end) const {
    Box box{m_Sites[begin].x, m_Sites[begin].x, m_Sites[begin].y, m_Sites[begin].y};
    for (int i = begin + 1; i < end; ++i) {
        box.xmin = std::min(box.xmin, m_Sites[i].x);
        box.xmax = std::max(box.xmax, m_Sites[i].x);
        box.ymin = std::min(box.ymin, m_Sites[i].y);
        box.ymax = std::max(box.ymax, m_Sites[i].y);
    }
    return box;
}

// Fills m_DelPointOrder and m_Sites in the order of insertion. On entry m_DelPointOrder lists the
// finite points.
void Delaunay::bsort(const Box& bounds, const SiteScale& scale) {
    const int n = m_NumSites;
    const Origin origin{ERR3DCLASS_POLYSURFACE, "bsort"};
    const int ndiv = rtround(std::pow(n, 0.25));
    const auto scratch = NewArray<SortItem>(n + 4LL, origin);
    const auto starts = NewArray<int>(static_cast<long long>(ndiv) * ndiv + 3, origin);

    // Coordinates count in units of the longer side, which has ndiv bins. The other has as many,
    // unless bins would be thinner than an eighth of their length: along rows that thin the points
    // would lie far apart. 1.01 keeps the largest coordinate inside the last bin.
    const double xrange = bounds.xmax - bounds.xmin;
    const double yrange = bounds.ymax - bounds.ymin;
    const double dmax = std::max(xrange, yrange);
    const double unit = dmax > 0.0 ? dmax : 1.0;
    const auto divide = [&](double range, double& factor) {
        const int bins = std::clamp(rtround(8.0 * ndiv * range / unit), 1, ndiv);
        factor = range > 0.0 ? bins / (range * 1.01 / unit) : 0.0;
        return bins;
    };
    double factx = 0.0, facty = 0.0;
    const int columns = divide(xrange, factx);
    const int rows = divide(yrange, facty);

    const auto site = [&](int point) {
        return Site{scale(m_pPoints[point].x), scale(m_pPoints[point].y)};
    };
    for (int k = 0; k < n; ++k) {
        ProgressStep();
        const Site s = site(m_DelPointOrder[k]);
        const int i = static_cast<int>((s.y - bounds.ymin) / unit * facty);
        const int j = static_cast<int>((s.x - bounds.xmin) / unit * factx);
        const int bin = i % 2 != 0 ? (i + 1) * columns - j : i * columns + j + 1;
        scratch[k] = {static_cast<std::uint32_t>(bin), m_DelPointOrder[k]};
        ++starts[bin + 1];
    }
    // From the number of points in each bin to where each bin starts, and, once the points have
    // been placed, to where it ends.
    for (int bin = 1; bin <= rows * columns + 1; ++bin)
        starts[bin + 1] += starts[bin];
    for (int k = 0; k < n; ++k) {
        ProgressStep();
        const int place = starts[scratch[k].key]++;
        m_DelPointOrder[place] = scratch[k].item;
        m_Sites[place] = site(scratch[k].item);
    }
    for (int bin = 1; bin <= rows * columns; ++bin) {
        if (bin % 64 == 0) Progress(0.3 * bin, rows * columns);
        const bool mirrored = (bin - 1) / columns % 2 != 0;
        SortCell(starts[bin - 1], starts[bin], mirrored, scratch.get());
    }
}

// Orders the points of a cell along the curve that starts at its lower left corner and ends at the
// lower right one, or mirrored. Cells of the curve are square, whatever the cell's shape. Where
// many points share one (a tight cluster), they are ordered among themselves in the same way.
void Delaunay::SortCell(int begin, int end, bool mirrored, SortItem* scratch) {
    constexpr int kFew = 4;
    if (end - begin <= kFew) return;
    const Box box = GetBounds(begin, end);
    const double side = std::max(box.xmax - box.xmin, box.ymax - box.ymin);
    if (side == 0.0) return;
    const int levels = std::min(16, 2 + (std::ilogb(end - begin) + 1) / 2);
    const std::uint32_t last = (1U << levels) - 1;
    const double factor = (last + 1.0) / side;
    const auto cell = [&](double distance) {
        return std::min(last, static_cast<std::uint32_t>(distance * factor));
    };
    for (int i = begin; i < end; ++i) {
        const std::uint32_t x = cell(m_Sites[i].x - box.xmin);
        const std::uint32_t y = cell(m_Sites[i].y - box.ymin);
        scratch[i] = {HilbertPlace(mirrored ? last - x : x, y, levels), i};
    }
    std::sort(scratch + begin, scratch + end,
              [](const SortItem& a, const SortItem& b) { return a.key < b.key; });
    Rearrange(begin, end, scratch);
    for (int i = begin; i < end;) {
        int next = i + 1;
        while (next < end && scratch[next].key == scratch[i].key)
            ++next;
        SortCell(i, next, false, scratch);
        i = next;
    }
}

// Moves the point at scratch[i].item to place i, for all i of the range, one cycle of the
// permutation after the other.
void Delaunay::Rearrange(int begin, int end, SortItem* scratch) {
    for (int first = begin; first < end; ++first) {
        if (scratch[first].item == first) continue;
        const Site site = m_Sites[first];
        const int point = m_DelPointOrder[first];
        int place = first;
        for (int source = scratch[place].item; source != first; source = scratch[place].item) {
            m_Sites[place] = m_Sites[source];
            m_DelPointOrder[place] = m_DelPointOrder[source];
            scratch[place].item = place;
            place = source;
        }
        m_Sites[place] = site;
        m_DelPointOrder[place] = point;
        scratch[place].item = place;
    }
}

}  // namespace varnel::detail

#include "varnel/vector/detail/areas.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

#include "varnel/foundation/detail/progress.h"
#include "varnel/vector/detail/clipper_paths.h"

namespace varnel::detail {
namespace {

/// Areas thinner than this on average, in grid units, are what rounding left over.
constexpr double kThinnest = 3.0;

bool IsThin(const ClipperLib::Path& path) {
    double length = 0.0;
    for (std::size_t i = 0, n = path.size(); i < n; ++i) {
        const auto& a = path[i];
        const auto& b = path[(i + 1) % n];
        length += std::hypot(static_cast<double>(b.X - a.X), static_cast<double>(b.Y - a.Y));
    }
    return 2.0 * std::fabs(ClipperLib::Area(path)) < kThinnest * length;
}

}  // namespace

Area FromPaths(const ClipperLib::Paths& paths) {
    Area area;
    for (const ClipperLib::Path& path : paths) {
        if (path.size() < 3 || IsThin(path)) continue;
        Ring& ring = area.emplace_back();
        ring.reserve(path.size());
        for (const auto& p : path)
            ring.push_back({static_cast<std::int32_t>(p.X), static_cast<std::int32_t>(p.Y)});
    }
    return area;
}

namespace {

/// The bits of a number with gaps between them.
std::uint64_t Spread(std::uint64_t v) {
    v &= 0xffffffffU;
    v = (v | v << 16U) & 0x0000ffff0000ffffU;
    v = (v | v << 8U) & 0x00ff00ff00ff00ffU;
    v = (v | v << 4U) & 0x0f0f0f0f0f0f0f0fU;
    v = (v | v << 2U) & 0x3333333333333333U;
    return (v | v << 1U) & 0x5555555555555555U;
}

/// A place on a curve that fills the page and keeps neighbours together (Morton's).
std::uint64_t CurvePlace(const ClipperLib::Paths& paths) {
    constexpr std::int64_t kOffset = std::int64_t{1} << 31U;  // places may be negative
    if (paths.empty() || paths[0].empty()) return 0;
    return Spread(static_cast<std::uint64_t>(paths[0][0].X + kOffset)) |
           Spread(static_cast<std::uint64_t>(paths[0][0].Y + kOffset)) << 1U;
}

}  // namespace

ClipperLib::Paths Unite(std::vector<ClipperLib::Paths> groups, std::size_t most) {
    constexpr std::size_t kTogether = 12;
    if (groups.size() > most) {
        std::vector<std::pair<std::uint64_t, std::size_t>> order;
        for (std::size_t i = 0; i < groups.size(); ++i)
            order.emplace_back(CurvePlace(groups[i]), i);
        std::sort(order.begin(), order.end());
        std::vector<ClipperLib::Paths> sorted;
        sorted.reserve(order.size());
        for (const auto& [place, i] : order)
            sorted.push_back(std::move(groups[i]));
        groups = std::move(sorted);
    }
    while (groups.size() > most) {
        std::vector<ClipperLib::Paths> fewer;
        for (std::size_t i = 0; i < groups.size(); i += kTogether) {
            Progress(0.0, 1.0);
            ClipperLib::Clipper clipper;
            for (std::size_t k = i; k < std::min(i + kTogether, groups.size()); ++k)
                clipper.AddPaths(groups[k], ClipperLib::ptSubject, true);
            clipper.Execute(ClipperLib::ctUnion, fewer.emplace_back(), ClipperLib::pftNonZero,
                            ClipperLib::pftNonZero);
        }
        groups = std::move(fewer);
    }
    ClipperLib::Paths all;
    for (ClipperLib::Paths& group : groups)
        all.insert(all.end(), std::make_move_iterator(group.begin()),
                   std::make_move_iterator(group.end()));
    return all;
}

Area Union(const std::vector<Area>& areas) {
    if (areas.size() == 1) return areas.front();
    std::vector<ClipperLib::Paths> groups;
    for (const Area& area : areas) {
        ClipperLib::Paths& group = groups.emplace_back();
        for (const Ring& ring : area) {
            ClipperLib::Path& path = group.emplace_back();
            for (const GridPoint& p : ring)
                path.emplace_back(p.x, p.y);
        }
    }
    return FromPaths(Unite(std::move(groups), 1));
}

}  // namespace varnel::detail

#include "varnel/vector/detail/areas.h"

#include <cmath>

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

Area Union(const std::vector<Area>& areas) {
    if (areas.size() == 1) return areas.front();
    ClipperLib::Clipper clipper;
    ClipperLib::Path path;
    for (const Area& area : areas)
        for (const Ring& ring : area) {
            path.clear();
            for (const GridPoint& p : ring)
                path.emplace_back(p.x, p.y);
            clipper.AddPath(path, ClipperLib::ptSubject, true);
        }
    ClipperLib::Paths united;
    clipper.Execute(ClipperLib::ctUnion, united, ClipperLib::pftNonZero, ClipperLib::pftNonZero);
    return FromPaths(united);
}

}  // namespace varnel::detail

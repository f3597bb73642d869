#include "varnel/vector/detail/line_chains.h"

#include <algorithm>
#include <utility>

namespace varnel::detail {
namespace {

std::uint64_t Key(const GridPoint& p) {
    return std::uint64_t{static_cast<std::uint32_t>(p.x)} << 32U | static_cast<std::uint32_t>(p.y);
}

/// Drops corners that lie on the straight way between their neighbours.
void Straighten(Ring& line) {
    if (line.size() < 3) return;
    std::size_t kept = 1;
    for (std::size_t i = 1; i + 1 < line.size(); ++i) {
        const GridPoint& a = line[kept - 1];
        const std::int64_t x1 = line[i].x - a.x;
        const std::int64_t y1 = line[i].y - a.y;
        const std::int64_t x2 = line[i + 1].x - line[i].x;
        const std::int64_t y2 = line[i + 1].y - line[i].y;
        if (x1 * y2 != y1 * x2 || x1 * x2 + y1 * y2 < 0) line[kept++] = line[i];
    }
    line[kept++] = line.back();
    line.resize(kept);
}

}  // namespace

void LineChains::Add(const GridPoint& a, const GridPoint& b) {
    if (a == b) return;
    if (!m_Lines.empty() && m_Lines.back().back() == a)
        m_Lines.back().push_back(b);
    else
        m_Lines.push_back({a, b});
}

std::vector<Ring> LineChains::Take(bool join) {
    std::vector<Ring> lines = std::exchange(m_Lines, {});
    if (join) {
        // Lines by their ends; each line that is taken runs on through the ends it meets.
        std::unordered_multimap<std::uint64_t, std::size_t> ends;
        for (std::size_t i = 0; i < lines.size(); ++i) {
            ends.emplace(Key(lines[i].front()), i);
            ends.emplace(Key(lines[i].back()), i);
        }
        std::vector<bool> used(lines.size(), false);
        std::vector<Ring> joined;
        const auto runOn = [&](Ring& line) {
            for (bool found = true; found;) {
                found = false;
                const auto [first, last] = ends.equal_range(Key(line.back()));
                for (auto it = first; it != last && !found; ++it) {
                    Ring& next = lines[it->second];
                    if (used[it->second]) continue;
                    used[it->second] = true;
                    if (!(next.front() == line.back())) std::reverse(next.begin(), next.end());
                    line.insert(line.end(), next.begin() + 1, next.end());
                    found = true;
                }
            }
        };
        for (std::size_t i = 0; i < lines.size(); ++i) {
            if (used[i]) continue;
            used[i] = true;
            Ring line = std::move(lines[i]);
            runOn(line);
            std::reverse(line.begin(), line.end());
            runOn(line);
            joined.push_back(std::move(line));
        }
        lines = std::move(joined);
    }
    for (Ring& line : lines)
        Straighten(line);
    return lines;
}

}  // namespace varnel::detail

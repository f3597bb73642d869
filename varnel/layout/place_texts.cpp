#include "varnel/layout/detail/place_texts.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "varnel/foundation/detail/less_work.h"
#include "varnel/foundation/detail/whole_within.h"

namespace varnel::detail {
namespace {

/// Rectangles by the cells of a grid that they reach into.
class Taken {
 public:
    explicit Taken(const PixelRect& room) : m_Room(room) {
        m_Across = CellsIn(room.Width());
        m_Up = CellsIn(room.Height());
        m_Cells.resize(static_cast<unsigned>(m_Across * m_Up));  // at most 2^18
    }

    void Add(const PixelRect& rect) {
        if (!rect.Overlaps(m_Room)) return;
        Visit(rect, [&](std::vector<PixelRect>& cell) {
            cell.push_back(rect);
            return ++m_Entries >= kMostEntries;
        });
    }

    /// How far what lies on a point reaches to the right of it; 0: nothing does.
    double Reach(const PixelPoint& at) {
        double reach = 0.0;
        Visit({at.x, at.y, at.x, at.y}, [&](const std::vector<PixelRect>& cell) {
            for (const PixelRect& other : cell)
                if (other.Contains({at.x, at.y, at.x, at.y}))
                    reach = std::max(reach, other.right - at.x);
            return false;
        });
        return reach;
    }

    bool Touches(const PixelRect& rect) {
        return m_Entries >= kMostEntries || Visit(rect, [&](const std::vector<PixelRect>& cell) {
                   return std::ranges::any_of(
                       cell, [&](const PixelRect& other) { return rect.Overlaps(other); });
               });
    }

 private:
    static constexpr double kCell = 24.0;  // pixels
    /// Among so many nothing is free: a hundred thousand markers as large as the room would fill
    /// the memory.
    static constexpr std::size_t kMostEntries = 1'000'000 / detail::kLessWork;

    static int CellsIn(double length) {
        return detail::WholeWithin(std::ceil(length / kCell), 1, 512);
    }

    /// Visits the cells under a rectangle until one says true. What lies at no place has none.
    template <class Cell>
    bool Visit(const PixelRect& rect, Cell&& visit) {
        if (!(rect.left <= rect.right && rect.bottom <= rect.top)) return false;
        const auto column = [&](double x) {
            return detail::WholeWithin((x - m_Room.left) / kCell, 0, m_Across - 1);
        };
        const auto row = [&](double y) {
            return detail::WholeWithin((y - m_Room.bottom) / kCell, 0, m_Up - 1);
        };
        for (int r = row(rect.bottom); r <= row(rect.top); ++r)
            for (int c = column(rect.left); c <= column(rect.right); ++c)
                if (visit(m_Cells[static_cast<unsigned>(r * m_Across + c)])) return true;
        return false;
    }

    PixelRect m_Room;
    int m_Across = 1;
    int m_Up = 1;
    std::size_t m_Entries = 0;
    std::vector<std::vector<PixelRect>> m_Cells;
};

/// The places that a text may have beside a marker of that radius, the best first.
std::vector<PixelRect> PlacesFor(const TextToPlace& text, double marker, double gap) {
    constexpr double kDiagonal = 0.7071;
    constexpr int kSides[][2] = {{1, 0}, {-1, 0}, {0, 1},  {0, -1},
                                 {1, 1}, {-1, 1}, {1, -1}, {-1, -1}};
    std::vector<PixelRect> places;
    const auto add = [&](double left, double bottom) {
        places.push_back({left, bottom, left + text.width, bottom + text.height});
    };
    if (!(marker > 0.0)) add(text.at.x - text.width / 2, text.at.y - text.descent);
    for (const double farther : {0.0, 0.6 * text.height, 1.5 * text.height})
        for (const auto& [across, up] : kSides) {
            const double off =
                (marker + gap + farther) * (across != 0 && up != 0 ? kDiagonal : 1.0);
            // From the point to the near edge, or to the middle where the text is level with it.
            add(text.at.x + across * off - (1 - across) * text.width / 2,
                text.at.y + up * off - (1 - up) * text.height / 2);
        }
    return places;
}

}  // namespace

std::vector<std::optional<PixelRect>> PlaceTexts(std::span<const TextToPlace> texts,
                                                 std::span<const PixelRect> markers,
                                                 const PixelRect& room, double gap,
                                                 std::span<const PixelRect> lines) {
    if (!std::isfinite(room.Width() + room.Height()))
        return std::vector<std::optional<PixelRect>>(texts.size());
    Taken taken(room);
    for (const PixelRect& marker : markers)
        taken.Add(marker);
    Taken crossed(room);
    for (const PixelRect& line : lines)
        crossed.Add(line);
    std::vector<std::vector<PixelRect>> places;
    for (const TextToPlace& text : texts) {
        places.push_back(PlacesFor(text, taken.Reach(text.at), gap));
        std::erase_if(places.back(), [&](const PixelRect& place) {
            return !room.Contains(place) || taken.Touches(place);
        });
    }
    std::vector<std::size_t> order(texts.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::stable_sort(order, {}, [&](std::size_t i) { return places[i].size(); });
    std::vector<std::optional<PixelRect>> chosen(texts.size());
    for (const std::size_t i : order) {
        const auto isFree = [&](const PixelRect& place) { return !taken.Touches(place); };
        const double near = gap + 0.7 * texts[i].height;
        const PixelPoint& at = texts[i].at;
        auto free = std::ranges::find_if(places[i], [&](const PixelRect& place) {
            return place.Overlaps({at.x, at.y, at.x, at.y}, near) && !crossed.Touches(place) &&
                   isFree(place);
        });
        if (free == places[i].end()) free = std::ranges::find_if(places[i], isFree);
        if (free == places[i].end()) continue;
        chosen[i] = *free;
        taken.Add(*free);
    }
    return chosen;
}

}  // namespace varnel::detail

// The order of what can be seen through, and where lines come among it.
#pragma once

#include <cstdint>
#include <vector>

#include "varnel/vector/detail/line_order.h"

namespace varnel::detail {

/// A convex polygon that can be seen through, or a piece of one. Coordinates as in Hiding.
struct Veil {
    std::vector<Vec3> corners;
    std::uint32_t number = 0;  ///< of the polygon
};

/// The veils of a page of that size in pixels from the back to the front, split where they pass
/// through each other; those in one plane keep their order. `middle` is a depth from which theirs
/// are a few units away at most.
std::vector<Veil> OrderVeils(std::vector<Veil> veils, double width, double height, double middle);

/// Cuts lines where they pass through veils or come from behind one, and sets the layer of each
/// piece to the last of the veils that it lies on or before, -1 where there is none. With very many
/// lines and veils all lines stay behind.
void PlaceAmongVeils(std::vector<OrderedLine>& lines, const std::vector<Veil>& veils);

}  // namespace varnel::detail

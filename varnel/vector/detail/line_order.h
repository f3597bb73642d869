// The order in which lines are drawn, so that of two that cross or run over each other the nearer
// one covers the other, while lines of one look come together as far as that allows.
#pragma once

#include <cstdint>
#include <vector>

#include "varnel/render/detail/matrix_stack.h"

namespace varnel::detail {

/// A piece of a line that shows. Coordinates as in Hiding.
struct OrderedLine {
    Vec3 a, b;
    double width = 1.0;       ///< pixels
    std::uint64_t style = 0;  ///< lines of one style cover each other without a trace
    int layer = 0;            ///< not drawn before the layers below it are complete
    double start = 0.0;       ///< of a line with dashes: pixels from where its pattern begins
};

/// The places in `lines` in the order of drawing. Layers are raised so that they never fall along
/// it. Of lines at one depth the later one covers the earlier one.
std::vector<std::uint32_t> OrderLines(std::vector<OrderedLine>& lines);

}  // namespace varnel::detail

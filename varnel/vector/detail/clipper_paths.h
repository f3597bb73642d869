// Areas as the polygon clipping library has them.
#pragma once

#include <polyclipping/clipper.hpp>

#include <cstddef>
#include <vector>

#include "varnel/platform/detail/page_canvas.h"

namespace varnel::detail {

/// The rings without what rounding left over: areas of next to no width.
Area FromPaths(const ClipperLib::Paths& paths);

/// Outlines that cover what all groups cover: those of at most `most` groups, which overlap still.
/// Neighbours are united first and what comes out of them then, since the library's time grows with
/// the square of the outlines that it gets at once.
ClipperLib::Paths Unite(std::vector<ClipperLib::Paths> groups, std::size_t most);

}  // namespace varnel::detail

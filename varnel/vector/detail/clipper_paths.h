// Areas as the polygon clipping library has them.
#pragma once

#include <polyclipping/clipper.hpp>

#include "varnel/platform/detail/page_canvas.h"

namespace varnel::detail {

/// The rings without what rounding left over: areas of next to no width.
Area FromPaths(const ClipperLib::Paths& paths);

}  // namespace varnel::detail

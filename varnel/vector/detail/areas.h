// Operations on areas of the picture.
#pragma once

#include <vector>

#include "varnel/platform/detail/page_canvas.h"

namespace varnel::detail {

/// One area that covers what all of these cover.
Area Union(const std::vector<Area>& areas);

}  // namespace varnel::detail

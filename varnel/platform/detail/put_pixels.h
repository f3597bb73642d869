// Copying a rectangle of pixels from one bitmap to another, whatever their depths.
#pragma once

#include "varnel/platform/pixels.h"

namespace varnel::detail {

/// Copies `width` x `height` pixels from (sourceX, sourceY) of `source` to (x, y) of `target`, all
/// counted from the upper left corners; what lies outside either bitmap is left out. A target of 8
/// bits gets the nearest colours of its table. `source` and `target` may be one bitmap.
void PutPixels(Bitmap& target, int x, int y, int width, int height, const Bitmap& source,
               int sourceX, int sourceY);

}  // namespace varnel::detail

// Copying a rectangle of pixels from one bitmap to another, whatever their depths.
#pragma once

#include "varnel/platform/pixels.h"

namespace varnel::detail {

/// One direction of a copy: where it starts on either side and how far it goes.
struct CopySpan {
    int target;
    int source;
    int count;
};

/// Cuts a copy of `count` pixels to both sides; a count of 0 when nothing is left.
CopySpan ClipCopy(int target, int source, int count, int targetSize, int sourceSize);

/// Copies `width` x `height` pixels from (sourceX, sourceY) of `source` to (x, y) of `target`, all
/// counted from the upper left corners; what lies outside either bitmap is left out. A target of 8
/// bits gets the nearest colours of its table. `source` and `target` may be one bitmap.
void PutPixels(Bitmap& target, int x, int y, int width, int height, const Bitmap& source,
               int sourceX, int sourceY);

}  // namespace varnel::detail

// PNG files.
#pragma once

#include "varnel/foundation/file.h"
#include "varnel/platform/pixels.h"

namespace varnel {

/// Writes the upper-left-first picture of a bitmap as an opaque RGB PNG, compressed fast. Does not
/// commit the file. Throws FileException when writing fails and std::bad_alloc without memory.
void WritePNG(const Bitmap& bitmap, File& file);

}  // namespace varnel

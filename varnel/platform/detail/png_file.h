// PNG files.
#pragma once

#include <vector>

#include "varnel/foundation/file.h"
#include "varnel/foundation/picture_info.h"
#include "varnel/platform/pixels.h"

namespace varnel {

/// Writes the upper-left-first picture of a bitmap as an opaque RGB PNG, compressed fast. Does not
/// commit the file. Throws FileException when writing fails and std::bad_alloc without memory.
void WritePNG(const Bitmap& bitmap, File& file, const PictureInfo& about = {});

/// The bytes of a PNG of rows from the top with 4 bytes a pixel: red, green, blue, alpha. Throws
/// std::bad_alloc without memory.
std::vector<BYTE> EncodePNG(int width, int height, const std::vector<BYTE>& pixels);

}  // namespace varnel

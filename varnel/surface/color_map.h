// Named colour maps: runs of colours from the lowest value to the highest.
//
//   viridis, magma   dark to light, with steps that look equal
//   coolwarm         blue over light grey to red, for values to either side of a middle
//   grey             black to white
// The colours are sRGB; hand them to COpenGL::SetTextureColorArray or to contour levels.
#pragma once

#include <vector>

#include "varnel/foundation/colors.h"
#include "varnel/foundation/export.h"
#include "varnel/foundation/types.h"

namespace varnel {

/// Writes n opaque colours, evenly spaced from the map's first to its last, to `out`, which must
/// have room for them; a single colour is the map's middle. False, and nothing is written, for an
/// unknown name, a number outside 1..256 or a null array.
VARNEL_API bool ColorMap(const CString& name, int n, RGBDType* out);

/// The names of all maps.
VARNEL_API std::vector<CString> ColorMapNames();

}  // namespace varnel

// Named colour maps: runs of colours from the lowest value to the highest.
//
//   viridis, magma, inferno, plasma   dark to light, with steps that look equal
//   cividis                           the same, alike for all kinds of colour vision
//   turbo                             a rainbow without false steps, dark at both ends
//   coolwarm, RdBu                    two colours over a light middle, for values to either side
//   terrain                           sea, lowland, upland and snow
//   grey                              black to white
// "NAME_r" is NAME reversed. The colours are sRGB; hand them to COpenGL::SetTextureColorArray or to
// contour levels, or let a ColorScale pick them by value. The files of the colours name their
// sources.
#pragma once

#include <span>
#include <vector>

#include "varnel/foundation/colors.h"
#include "varnel/foundation/export.h"
#include "varnel/foundation/types.h"

namespace varnel {

/// Writes n opaque colours, evenly spaced from the map's first to its last, to `out`, which must
/// have room for them; a single colour is the map's middle. False, and nothing is written, for an
/// unknown name, a number outside 1..256 or a null array.
VARNEL_API bool ColorMap(const CString& name, int n, RGBDType* out);
VARNEL_API bool ColorMap(const CString& name, std::span<RGBDType> out);

/// The names of all maps, none of them reversed.
VARNEL_API std::vector<CString> ColorMapNames();

}  // namespace varnel

// Filled contours: a surface cut along levels, so that every polygon lies in one band.
//
//     CPolysurface bands = FilledContours(surface, levels, colors);
//     object->PolysurfaceChart2D(&bands, 0.0, PROJECTION_ALONG_Z);   // flat on a plane, or
//     object->PolysurfaceChart3D(&bands);                            // on the surface itself
//
// The cuts go through the polygons, exactly along the level, and neighbours share their points:
// there are no steps of whole cells, no gaps and no overlaps. Turn the object's outlines off.
#pragma once

#include <span>

#include "varnel/foundation/colors.h"
#include "varnel/foundation/export.h"
#include "varnel/surface/polysurface.h"

namespace varnel {

class CTransform3D;

/// The bands of `surface` between ascending levels: band i holds what is at levels[i] or above it
/// and below levels[i + 1]. With one colour less than levels what lies outside them is left open,
/// with one more the first colour is for what lies below all levels and the last for what lies at
/// the highest or above. Both colours of a polygon are its band's; values w are interpolated.
/// Polygons with a point that is not finite are left out. With a transform that has logarithmic
/// axes the cuts are where the drawn surface has the level.
///
/// Raises "Parameter Error" ("FilledContours") of CContour3D for levels that do not ascend, no
/// level, or another number of colours, and "Array New Error".
VARNEL_API CPolysurface FilledContours(const CPolysurface& surface, std::span<const double> levels,
                                       std::span<const RGBDType> colors,
                                       const CTransform3D* transform = nullptr);

}  // namespace varnel

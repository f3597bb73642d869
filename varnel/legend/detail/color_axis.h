// A legend's colour bar as an axis: labels as automatic axes have them, laid over the bar as a
// ColorScale lays values over its map, and arrows at the ends where colours go on.
#pragma once

#include <optional>
#include <span>

#include "varnel/legend/detail/legend_scale.h"
#include "varnel/surface/color_scale.h"

namespace varnel::detail {

/// The bar of a colour scale whose colours are `colors` (ColorScale::Colors), as long as `length`
/// heights of its labels; `across` says that it lies. Colours for what lies below and above are
/// arrows. An unusable scale gives an empty one.
LegendScale ColorAxis(const ColorScale& scale, std::span<const RGBDType> colors, double length,
                      bool across);

/// The labels of an axis alone, for a bar that evenly goes from `min` to `max`.
std::vector<ScaleLabel> ColorAxisLabels(double min, double max, double length, bool across);

}  // namespace varnel::detail

// Where texts that belong to points stand so that none lies on another one or on a marker.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "varnel/layout/fit.h"

namespace varnel::detail {

/// In pixels.
struct TextToPlace {
    PixelPoint at;         ///< its point
    double width = 0.0;    ///< of its letters
    double height = 0.0;   ///< all of it
    double descent = 0.0;  ///< of that below the last baseline
};

/// The box of each text, as many as texts; nothing for those that fit nowhere. A text stands on a
/// point without a marker if it can, otherwise to its right, left, above, below or, last,
/// diagonally beside it, `gap` pixels off the marker or, where all that is taken, a little farther.
/// A free place that is near and not on one of `lines` goes before others. Texts with few free
/// places choose first. Everything stays in the room.
std::vector<std::optional<PixelRect>> PlaceTexts(std::span<const TextToPlace> texts,
                                                 std::span<const PixelRect> markers,
                                                 const PixelRect& room, double gap,
                                                 std::span<const PixelRect> lines = {});

}  // namespace varnel::detail

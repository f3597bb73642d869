// ColorScale: which colour a value has.
//
// A colour map (color_map.h) laid over values from `min` to `max`, evenly, by logarithms, or about
// a middle; continuous or in bands of one colour; with colours of their own for what lies below and
// above and for what is no data. It is a plain value: legends, contours and surfaces read it alike.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "varnel/foundation/colors.h"
#include "varnel/foundation/export.h"
#include "varnel/foundation/types.h"

namespace varnel {

/// How values are laid over the map.
enum ColorScaleMode : int {
    COLORSCALE_LINEAR = 0,
    COLORSCALE_LOGARITHMIC = 1,  ///< `min` and `max` are above 0
    COLORSCALE_DIVERGING = 2,    ///< `center` has the map's middle, both sides change alike
};

struct VARNEL_API ColorScale {
    CString map = "viridis";
    double min = 0.0;
    double max = 1.0;
    int mode = COLORSCALE_LINEAR;
    double center = 0.0;              ///< of a diverging scale
    int bands = 0;                    ///< that many colours, each for an equal part; 0: continuous
    std::optional<RGBDType> below{};  ///< for values below `min`; else the map's lowest colour
    std::optional<RGBDType> above{};  ///< for values above `max`; else the map's highest colour
    RGBDType noData = kNoDataColor;
    /// Whether colour bars tell which colour is no data's: where there are such values.
    bool showNoData = false;

    /// Where a value lies along the map, 0..1 between its limits, beyond that outside them; NaN for
    /// what is no data, a logarithm included that does not exist. Limits that are equal put every
    /// value in the middle.
    double Place(double value) const;

    /// The colours of the map as the scale has them: one for each band, 256 when it is continuous.
    /// Raises "Parameter Error" ("ColorScale") for an unknown map, limits that are not finite or no
    /// positive limits of a logarithmic scale.
    std::vector<RGBDType> Colors() const;

    /// The colours of n values. Raises as Colors does.
    std::vector<RGBDType> Colors(const double* values, std::size_t n) const;
    std::vector<RGBDType> Colors(std::span<const double> values) const {
        return Colors(values.data(), values.size());
    }
    RGBDType Color(double value) const;

    /// The values between the bands, ascending, `min` and `max` included; none when it is
    /// continuous. With them as levels, filled contours have one colour of Colors() each.
    std::vector<double> BandLimits() const;
};

}  // namespace varnel

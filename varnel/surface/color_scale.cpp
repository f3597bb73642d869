#include "varnel/surface/color_scale.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "varnel/foundation/detail/raise.h"
#include "varnel/surface/color_map.h"

namespace varnel {
namespace {

constexpr int kMostColors = 256;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// The share of the way from a to b at which v lies.
double Share(double v, double a, double b) {
    return a == b ? 0.5 : (v - a) / (b - a);
}

/// How far a diverging scale reaches to either side of its centre.
double Reach(const ColorScale& scale) {
    return std::max(std::abs(scale.max - scale.center), std::abs(scale.center - scale.min));
}

[[noreturn]] void Refuse(const CString& why) {
    detail::Raise(ERR3D_PARAMETER, ERR3DCLASS_GENERAL, "ColorScale", why);
}

}  // namespace

double ColorScale::Place(double value) const {
    if (!std::isfinite(value)) return kNaN;
    if (mode == COLORSCALE_LOGARITHMIC)
        return value > 0.0 ? Share(std::log10(value), std::log10(min), std::log10(max)) : kNaN;
    if (mode == COLORSCALE_DIVERGING)
        return Share(value, center - Reach(*this), center + Reach(*this));
    return Share(value, min, max);
}

std::vector<RGBDType> ColorScale::Colors() const {
    if (!std::isfinite(min) || !std::isfinite(max)) Refuse("its limits are not finite");
    if (mode == COLORSCALE_LOGARITHMIC && !(min > 0.0 && max > 0.0))
        Refuse(detail::Say("its limits ", min, " and ", max, " have no logarithms"));
    if (bands < 0 || bands > kMostColors) Refuse(detail::Say("the number of bands is ", bands));
    std::vector<RGBDType> colors(static_cast<std::size_t>(bands > 0 ? bands : kMostColors));
    if (!ColorMap(map, colors)) Refuse(detail::Say("there is no colour map ", map));
    return colors;
}

std::vector<RGBDType> ColorScale::Colors(const double* values, std::size_t n) const {
    const std::vector<RGBDType> colors = Colors();
    const auto count = static_cast<double>(colors.size());
    const double low = std::min(Place(min), Place(max));
    const double high = std::max(Place(min), Place(max));
    std::vector<RGBDType> out(n, noData);
    for (std::size_t i = 0; i < n; ++i) {
        const double place = Place(values[i]);
        if (std::isnan(place)) continue;
        // A continuous scale has its first and last colour at its ends, a banded one beside them.
        const double at = bands > 0 ? std::floor(place * count) : std::round(place * (count - 1));
        out[i] = colors[static_cast<std::size_t>(std::clamp(at, 0.0, count - 1))];
        if (place < low && below) out[i] = *below;
        if (place > high && above) out[i] = *above;
    }
    return out;
}

RGBDType ColorScale::Color(double value) const {
    return Colors(&value, 1).front();
}

std::vector<double> ColorScale::BandLimits() const {
    std::vector<double> limits;
    const double reach = Reach(*this);
    for (int k = 0; bands > 0 && k <= bands; ++k) {
        const double share = static_cast<double>(k) / bands;
        if (mode == COLORSCALE_LOGARITHMIC)
            limits.push_back(min * std::pow(max / min, share));
        else if (mode == COLORSCALE_DIVERGING)
            limits.push_back(center - reach + 2 * reach * share);
        else
            limits.push_back(min + (max - min) * share);
    }
    return limits;
}

}  // namespace varnel

#include "varnel/legend/detail/color_axis.h"

#include <algorithm>
#include <cmath>

#include "varnel/scale/auto_scale.h"
#include "varnel/scale/tic_labels.h"

namespace varnel::detail {
namespace {

/// The share of the bar that an arrow takes.
constexpr double kArrow = 0.06;

bool IsDecade(double value) {
    const double exponent = std::log10(value);
    return std::abs(exponent - std::round(exponent)) < 1e-9;
}

/// Labels at values, where a scale puts them along its map, which the bar shows from `low` to
/// `high`.
std::vector<ScaleLabel> LabelsAt(const ColorScale& scale, const std::vector<double>& values,
                                 double low, double high) {
    LabelOptions options;
    options.logarithmic = scale.mode == COLORSCALE_LOGARITHMIC;
    TicLabels texts = ChooseLabels(values, options);
    // Decades below 1 would all get the digits of the lowest.
    const bool digits = texts.style == LabelStyle::kFixed &&
                        std::any_of(texts.texts.begin(), texts.texts.end(), [](const auto& text) {
                            return text.find('.') != std::string::npos;
                        });
    if (options.logarithmic && digits && std::all_of(values.begin(), values.end(), IsDecade)) {
        options.style = LabelStyle::kPowerOfTen;
        texts = ChooseLabels(values, options);
    }
    std::vector<ScaleLabel> labels;
    for (std::size_t i = 0; i < values.size(); ++i)
        labels.push_back({std::clamp((scale.Place(values[i]) - low) / (high - low), 0.0, 1.0),
                          static_cast<int>(i), CString(texts.texts[i])});
    std::sort(labels.begin(), labels.end(),
              [](const ScaleLabel& a, const ScaleLabel& b) { return a.at < b.at; });
    return labels;
}

/// Whether texts are short enough to be read along a bar.
bool AreShort(const std::vector<std::string>& texts) {
    constexpr std::ptrdiff_t kMost = 6;  // characters
    return std::all_of(texts.begin(), texts.end(), [](const std::string& text) {
        return std::count_if(text.begin(), text.end(), [](char c) {
                   return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
               }) <= kMost;
    });
}

/// The values that the labels of a scale tell. The limits of bands, where they are few and numbers
/// that can be read: where there is no room for all of them, the legend's layout leaves some out.
std::vector<double> LabelledValues(const ColorScale& scale, double length, bool across) {
    constexpr int kMostBands = 20;
    if (scale.min == scale.max) return {scale.min};
    if (scale.bands > 0 && scale.bands <= kMostBands) {
        std::vector<double> limits = scale.BandLimits();
        // A diverging scale may reach further to one side than the values do.
        std::erase_if(limits, [&](double v) {
            const double slack = 1e-9 * std::abs(scale.max - scale.min);
            return v < std::min(scale.min, scale.max) - slack ||
                   v > std::max(scale.min, scale.max) + slack;
        });
        LabelOptions labels;
        labels.logarithmic = scale.mode == COLORSCALE_LOGARITHMIC;
        if (AreShort(ChooseLabels(limits, labels).texts)) return limits;
    }
    ScaleOptions options;
    options.logarithmic = scale.mode == COLORSCALE_LOGARITHMIC;
    options.length = length;
    options.across = across;
    return TicsInside(scale.min, scale.max, options).majors;
}

}  // namespace

LegendScale ColorAxis(const ColorScale& scale, std::span<const RGBDType> colors, double length,
                      bool across) {
    LegendScale axis;
    double low = std::min(scale.Place(scale.min), scale.Place(scale.max));
    double high = std::max(scale.Place(scale.min), scale.Place(scale.max));
    if (colors.empty() || !std::isfinite(low) || !std::isfinite(high)) return axis;
    if (!(high > low)) {  // one value, which has the map's middle
        low = 0.0;
        high = 1.0;
    }
    axis.arrowBelow = scale.below ? kArrow : 0.0;
    axis.arrowAbove = scale.above ? kArrow : 0.0;
    const double body = 1.0 - axis.arrowBelow - axis.arrowAbove;
    const auto along = [&](double share) { return axis.arrowBelow + body * share; };
    if (scale.below) axis.bands.push_back({axis.arrowBelow, *scale.below});
    const auto n = static_cast<double>(colors.size());
    for (std::size_t i = 0; i < colors.size(); ++i) {
        // Where this colour ends: see ColorScale::Color.
        const double k = static_cast<double>(i);
        const double end = scale.bands > 0 || n < 2 ? (k + 1) / n : (k + 0.5) / (n - 1);
        if (end <= low) continue;
        axis.bands.push_back({along(std::min((end - low) / (high - low), 1.0)), colors[i]});
        if (end >= high) break;
    }
    axis.bands.back().end = along(1.0);
    if (scale.above) axis.bands.push_back({1.0, *scale.above});
    axis.labels = LabelsAt(scale, LabelledValues(scale, length * body, across), low, high);
    for (ScaleLabel& label : axis.labels)
        label.at = along(label.at);
    return axis;
}

std::vector<ScaleLabel> ColorAxisLabels(double min, double max, double length, bool across) {
    if (!std::isfinite(min) || !std::isfinite(max) || min == max) return {};
    ColorScale scale;
    scale.min = min;
    scale.max = max;
    return LabelsAt(scale, LabelledValues(scale, length, across), 0.0, 1.0);
}

}  // namespace varnel::detail

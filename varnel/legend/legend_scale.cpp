#include "varnel/legend/detail/legend_scale.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "varnel/axes/detail/label_text.h"

namespace varnel::detail {
namespace {

constexpr double kMostLabels = 500.0;
constexpr int kMostBands = 4096;
constexpr double kTextureNudge = 0.004;  // COpenGL moves values off the borders of the colours

/// A value that rounding errors leave near zero would be written as "-0".
double Clean(double value, double range) {
    return std::abs(value) < 1e-9 * range ? 0.0 : value;
}

/// The number whose digits after the point a format writes: the value in units of its engineering
/// suffix, its mantissa, or the value itself.
double WrittenNumber(double value, int format) {
    double number = value;
    if (format == 2 && value >= 1000.0) {
        number /= 1000.0;
        for (int i = 0; i < 3 && number >= 999.0; ++i)
            number /= 1000.0;
    }
    if ((format == 1 || format == 3) && value != 0.0 && std::isfinite(value))
        number /= std::pow(10.0, std::floor(std::log10(std::abs(value))));
    return number;
}

void Write(std::vector<ScaleLabel>& labels, std::span<const double> values,
           const ScaleFormat& format) {
    const int decimals =
        format.decimals >= 0 ? format.decimals : NeededDecimals(values, format.format);
    for (std::size_t i = 0; i < labels.size(); ++i)
        labels[i].text = LabelText(values[i], format.format, decimals, format.suffixes);
}

std::vector<ScaleLabel> ColorBarLabels(double min, double max, const ScaleFormat& format) {
    const double range = std::abs(max - min);
    double step = format.ticSpace;
    if (!(step > 0.0) || !std::isfinite(step)) return {};
    while (range / step > kMostLabels)
        step *= 10.0;
    const double first = std::ceil(std::min(min, max) / step - 1e-9);
    const double last = std::floor(std::max(min, max) / step + 1e-9);
    // Beyond that, neighbouring multiples are no longer told apart.
    if (std::abs(first) > 1e9 || std::abs(last) > 1e9) return {};

    std::vector<double> values;
    std::vector<ScaleLabel> labels;
    for (int i = static_cast<int>(first); i <= static_cast<int>(last); ++i) {
        values.push_back(Clean(i * step, range));
        labels.push_back({std::clamp((values.back() - min) / (max - min), 0.0, 1.0), i, {}});
    }
    Write(labels, values, format);
    return labels;
}

}  // namespace

int NeededDecimals(std::span<const double> values, int format) {
    constexpr int kMost = 10;
    const auto isExact = [format](double value, double factor) {
        const double digits = WrittenNumber(value, format) * factor;
        if (!std::isfinite(digits) || digits == 0.0) return true;
        // A value that would be written as zero is not told.
        const double rounded = std::round(digits);
        return rounded != 0.0 && std::abs(digits - rounded) <= 1e-6;
    };
    int decimals = 0;
    for (double factor = 1.0; decimals < kMost; ++decimals, factor *= 10.0)
        if (std::all_of(values.begin(), values.end(),
                        [&](double value) { return isExact(value, factor); }))
            break;
    // The general format counts all digits.
    return format == 3 ? decimals + 1 : decimals;
}

double RoundStep(double range, int intervals) {
    const double least = std::abs(range) / intervals;
    if (!(least > 0.0) || !std::isfinite(least)) return 0.0;
    const double decade = std::pow(10.0, std::floor(std::log10(least)));
    for (const double factor : {1.0, 2.0, 5.0})
        if (factor * decade >= least * (1.0 - 1e-9)) return factor * decade;
    return 10.0 * decade;
}

LegendScale ColorBarScale(std::span<const RGBDType> colors, double min, double max,
                          const ScaleFormat& format) {
    LegendScale scale;
    const double range = max - min;
    if (colors.empty() || range == 0.0 || !std::isfinite(range)) return scale;
    const int n = static_cast<int>(colors.size());
    int size = 2;
    while (size < n)
        size *= 2;
    // How much of the scale the whole texture covers; it repeats beyond that.
    const double covered = (max * size / n - min) / range;
    const bool usable = covered > 1.0 / kMostBands && std::isfinite(covered);
    double end = 0.0;
    for (int i = 0; i < kMostBands && end < 1.0; ++i) {
        const double start = end;
        end = usable ? ((i + 1.0) / size - kTextureNudge) * covered : (i + 1.0) / n;
        if (end <= 0.0) continue;
        if (usable && i >= size && start > 1.0 - 2 * kTextureNudge) break;
        const int color = std::min(usable ? i % size : i, n - 1);
        scale.bands.push_back({std::min(end, 1.0), colors[static_cast<std::size_t>(color)]});
    }
    if (!scale.bands.empty()) scale.bands.back().end = 1.0;
    scale.labels = ColorBarLabels(min, max, format);
    return scale;
}

LegendScale ContourScale(std::span<const double> levels, std::span<const RGBDType> colors,
                         const ScaleFormat& format) {
    LegendScale scale;
    const std::size_t bands = std::min(levels.size() + 1, colors.size());
    if (levels.empty() || bands == 0) return scale;
    for (std::size_t i = 0; i < bands; ++i)
        scale.bands.push_back({static_cast<double>(i + 1) / static_cast<double>(bands), colors[i]});
    const bool closed = colors.size() + 1 == levels.size();
    for (std::size_t i = 0; i < (closed ? levels.size() : bands - 1); ++i) {
        const std::size_t band = closed ? i : i + 1;
        scale.labels.push_back(
            {static_cast<double>(band) / static_cast<double>(bands), static_cast<int>(i), {}});
    }
    Write(scale.labels, levels, format);
    return scale;
}

}  // namespace varnel::detail

#include "varnel/scale/auto_scale.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string>
#include <utility>

#include "varnel/foundation/detail/whole_within.h"
#include "varnel/scale/detail/decimal.h"
#include "varnel/scale/detail/number_text.h"
#include "varnel/scale/tic_labels.h"

namespace varnel {
namespace {

using detail::DecimalStep;
using detail::PowerOfTen;

/// A range smaller than this against its values is one value: no label could tell its ends apart.
constexpr double kOneValue = 1e-12;
/// What including 0 may leave empty of an axis.
constexpr double kZeroCost = 0.2;
/// Beyond these magnitudes steps and sums overflow or lose digits.
constexpr double kHuge = 1e290;
constexpr double kTiny = 1e-290;

/// In heights of a label: a character's width, and the distance of labels above each other.
constexpr double kCharacterWidth = 0.56;
constexpr double kTextGap = 0.5;  // between texts side by side
constexpr double kLineDistance = 1.6;
/// Heights of a label that no axis is longer than.
constexpr double kLongest = 1e6;

/// What one height of a step costs against one of its rivals: the more digits, the more.
struct Mantissa {
    double tenths;  // 10 is 1, 25 is 2.5
    int minors;
    double cost;
};
constexpr std::array<Mantissa, 4> kMantissas = {
    {{10.0, 5, 0.0}, {20.0, 4, 0.05}, {25.0, 5, 0.2}, {50.0, 5, 0.05}}};

struct Extent {
    double lo;
    double hi;
    double Size() const { return hi - lo; }
};

struct Counts {
    int fewest;
    int wanted;
    int most;
};

Counts CountsFor(double length) {
    const int room = detail::WholeWithin(length / kLineDistance, 1, 8) + 1;
    const int most = std::min(room, 8);
    const int wanted = detail::WholeWithin(length / 2.4, 2, 6);
    return {length >= 9.0 ? 4 : 2, std::min(wanted, most), most};
}

/// The room that the texts of the majors want, as a fraction of what there is.
double Crowding(const AxisScale& scale, double distance, const ScaleOptions& options) {
    if (!options.across) return kLineDistance / distance;
    std::size_t longest = 0;
    for (const std::string& text : ChooseLabels(scale.majors).texts)
        longest = std::max(longest, detail::CharacterCount(text));
    return (static_cast<double>(longest) * kCharacterWidth + kTextGap) / distance;
}

/// The multiples of a step inside the limits; one that misses a limit by a rounding error is the
/// limit itself.
std::vector<double> MultiplesInside(const DecimalStep& step, const Extent& limits) {
    const double slack = 1e-9 * step.Size();
    std::vector<double> values;
    const double last = step.Below(limits.hi + slack);
    for (double k = step.Above(limits.lo - slack); k <= last; ++k)
        values.push_back(std::clamp(step.Multiple(k), limits.lo, limits.hi));
    return values;
}

/// Leaves out of `minors` what stands in `majors`; both ascend.
void LeaveMajorsOut(std::vector<double>& minors, const std::vector<double>& majors, double step) {
    std::erase_if(minors, [&](double v) {
        const auto near = std::lower_bound(majors.begin(), majors.end(), v - 0.25 * step);
        return near != majors.end() && *near <= v + 0.25 * step;
    });
}

/// A step with its division by minor tics. Whole steps are divided into whole parts.
struct Division {
    DecimalStep major;
    DecimalStep minor;
    int parts;
};

Division Divide(const Mantissa& mantissa, int exponent, bool whole) {
    int parts = mantissa.minors;
    if (whole && exponent == -1) {
        // Steps of 1, 2 and 5.
        parts = mantissa.tenths == 20.0 ? 2 : mantissa.tenths == 10.0 ? 1 : 5;
    }
    return {{mantissa.tenths, exponent}, {mantissa.tenths / parts, exponent}, parts};
}

AxisScale LinearScale(const Extent& data, const Division& division, const ScaleOptions& options) {
    AxisScale scale;
    scale.min = data.lo;
    scale.max = data.hi;
    if (!options.tight) {
        const DecimalStep& unit = options.round ? division.major : division.minor;
        scale.min = unit.Multiple(unit.Below(data.lo));
        scale.max = unit.Multiple(unit.Above(data.hi));
    }
    scale.majors = MultiplesInside(division.major, {scale.min, scale.max});
    scale.majorStep = division.major.Size();
    scale.minorsPerMajor = division.parts;
    return scale;
}

double Cost(const AxisScale& scale, const Extent& data, const Counts& counts,
            const ScaleOptions& options) {
    const int count = static_cast<int>(scale.majors.size());
    const double extent = scale.max - scale.min;
    double cost = 2.0 * (1.0 - data.Size() / extent);
    cost += 0.1 * std::abs(count - counts.wanted);
    cost += 10.0 * std::max({0, counts.fewest - count, count - counts.most});
    if (count > 1) {
        const double crowding = Crowding(scale, scale.majorStep / extent * options.length, options);
        if (crowding > 1.0) cost += 20.0 * (crowding - 1.0) + 2.0;
    }
    return cost;
}

/// The best of the steps around a fifth of the range.
AxisScale BestLinear(const Extent& data, const ScaleOptions& options) {
    const Counts counts = CountsFor(options.length);
    const int decade = static_cast<int>(std::floor(std::log10(data.Size()))) - 1;
    AxisScale best;
    Division division{};
    double bestCost = std::numeric_limits<double>::infinity();
    for (int exponent = decade - 1; exponent <= decade + 1; ++exponent) {
        for (const Mantissa& mantissa : kMantissas) {
            const bool isWhole = exponent >= 0 || (exponent == -1 && mantissa.tenths != 25.0);
            if (options.whole && !isWhole) continue;
            const Division candidate = Divide(mantissa, exponent, options.whole);
            if (data.Size() / candidate.major.Size() > 50.0) continue;
            AxisScale scale = LinearScale(data, candidate, options);
            const double cost = mantissa.cost + Cost(scale, data, counts, options);
            if (cost >= bestCost) continue;
            bestCost = cost;
            best = std::move(scale);
            division = candidate;
        }
    }
    if (bestCost == std::numeric_limits<double>::infinity()) {
        best.min = data.lo;
        best.max = data.hi;
        return best;
    }
    best.minors = MultiplesInside(division.minor, {best.min, best.max});
    LeaveMajorsOut(best.minors, best.majors, division.minor.Size());
    return best;
}

// --- Logarithmic -------------------------------------------------------------------------------

/// A value of a logarithmic axis, or the one before where it has left the range of numbers.
double Positive(double v, double before) {
    return v > 0.0 && std::isfinite(v) ? v : before;
}

/// The next 1, 2 or 5 times a power of ten at or below v, or at or above it.
double OneTwoFive(double v, bool up) {
    const int decade = static_cast<int>(std::floor(std::log10(v)));
    double best = 0.0;
    for (int exponent = decade - 1; exponent <= decade + 1; ++exponent) {
        for (const double mantissa : {1.0, 2.0, 5.0}) {
            const double at = DecimalStep{mantissa, exponent}.Size();
            if (up && at >= v) return Positive(at, v);
            if (!up && at <= v) best = at;
        }
    }
    return up || best == 0.0 ? v : best;
}

/// A limit beyond v: the whole decade where that adds little to the range, else 1, 2 or 5 times
/// one.
double LogLimit(double v, bool up, double decades) {
    constexpr double kDecadeCost = 0.05;
    const double log = std::log10(v);
    const double whole = up ? std::ceil(log) : std::floor(log);
    if (std::abs(whole - log) > kDecadeCost * decades) return OneTwoFive(v, up);
    const double at = Positive(PowerOfTen(static_cast<int>(whole)), v);
    return up ? std::max(at, v) : std::min(at, v);
}

/// Every so many decades so that no more than `most` of them are labelled.
int DecadeStep(int decades, int most) {
    for (const int step : {1, 2, 3, 5, 10, 20, 50, 100}) {
        if (decades / step + 1 <= most) return step;
    }
    return 200;
}

std::vector<double> DecadesInside(const Extent& limits, int step, const std::vector<double>& of) {
    std::vector<double> values;
    const int first = static_cast<int>(std::floor(std::log10(limits.lo)));
    const int last = static_cast<int>(std::ceil(std::log10(limits.hi)));
    for (int decade = first; decade <= last; ++decade) {
        if (decade % step != 0) continue;
        for (const double mantissa : of) {
            const double at = DecimalStep{mantissa, decade}.Size();
            if (at >= limits.lo && at <= limits.hi) values.push_back(at);
        }
    }
    return values;
}

/// Tics of a logarithmic axis of a decade or more.
void AddLogTics(AxisScale& scale, const ScaleOptions& options) {
    constexpr double kDecadesOnly = 4.0;
    constexpr double kEveryDecade = 10.0;
    constexpr int kMostWithNine = 8;
    const Extent limits{scale.min, scale.max};
    const double decades = std::log10(limits.hi) - std::log10(limits.lo);
    // Powers of ten are short, so that more of them than of other numbers fit.
    const double heights = options.across ? 3.0 : kLineDistance;
    const int room = std::max(2, static_cast<int>(options.length / heights) + 1);
    if (decades <= kDecadesOnly) {
        scale.majors = DecadesInside(limits, 1, {1.0, 2.0, 5.0});
        if (static_cast<int>(scale.majors.size()) > std::min(room, 8))
            scale.majors = DecadesInside(limits, 1, {1.0});
    }
    if (decades > kDecadesOnly || scale.majors.size() < 2) {
        const int most = decades > kEveryDecade ? std::min(room, 8) : room;
        const int count = static_cast<int>(std::floor(decades));
        scale.majors = DecadesInside(limits, DecadeStep(count, most), {1.0});
    }
    scale.minors = decades > kMostWithNine ? DecadesInside(limits, 1, {1.0})
                                           : DecadesInside(limits, 1, {1, 2, 3, 4, 5, 6, 7, 8, 9});
    std::erase_if(scale.minors, [&](double v) {
        return std::binary_search(scale.majors.begin(), scale.majors.end(), v);
    });
}

AxisScale LogScale(const Extent& data, const ScaleOptions& options) {
    const double decades = std::log10(data.hi) - std::log10(data.lo);
    AxisScale scale;
    if (decades < 1.0) {
        ScaleOptions linear = options;
        linear.zero = false;
        scale = BestLinear(data, linear);
    }
    if (decades >= 1.0 || !(scale.min > 0.0)) {
        scale = AxisScale();
        scale.min = data.lo;
        scale.max = data.hi;
        if (!options.tight) {
            scale.min = LogLimit(data.lo, false, options.round ? 1e3 : decades);
            scale.max = LogLimit(data.hi, true, options.round ? 1e3 : decades);
        }
        AddLogTics(scale, options);
    }
    scale.logarithmic = true;
    return scale;
}

// --- From data to the extent that is scaled ------------------------------------------------------

bool IsOneValue(const Extent& data) {
    return data.Size() <= kOneValue * std::max(std::abs(data.lo), std::abs(data.hi));
}

/// A single value gets room on both sides.
void WidenValue(Extent& data, const ScaleOptions& options) {
    if (options.logarithmic) {
        data = {Positive(data.lo / 2.0, data.lo), Positive(data.hi * 2.0, data.hi)};
        return;
    }
    const double size = std::max(std::abs(data.lo), std::abs(data.hi));
    const double room = options.whole || size == 0.0 ? 1.0 : 0.1 * size;
    data = {data.lo - room, data.hi + room};
    // The base stays the end that it is.
    if (options.base && *options.base >= data.lo + room) data.lo += room;
}

void IncludeZero(Extent& data, const ScaleOptions& options) {
    if (options.base) {
        data = {std::min(data.lo, *options.base), std::max(data.hi, *options.base)};
    }
    const bool cheap = !options.tight && !options.base;
    if (data.lo > 0.0 && (options.zero || (cheap && data.lo < kZeroCost * data.hi))) data.lo = 0.0;
    if (data.hi < 0.0 && (options.zero || (cheap && data.hi > kZeroCost * data.lo))) data.hi = 0.0;
}

void AddMargin(Extent& data, const ScaleOptions& options) {
    if (!(options.margin > 0.0) || options.tight) return;
    if (options.logarithmic) {
        const double factor = std::pow(data.hi / data.lo, options.margin);
        data = {Positive(data.lo / factor, data.lo), Positive(data.hi * factor, data.hi)};
        return;
    }
    const double room = options.margin * data.Size();
    const auto isEnd = [&](double v) { return v == 0.0 || (options.base && v == *options.base); };
    // Data that are never negative get no limit below 0.
    if (!isEnd(data.lo)) data.lo = data.lo > 0.0 ? std::max(0.0, data.lo - room) : data.lo - room;
    if (!isEnd(data.hi)) data.hi = data.hi < 0.0 ? std::min(0.0, data.hi + room) : data.hi + room;
}

AxisScale ScaleOf(Extent data, const ScaleOptions& options) {
    if (!options.logarithmic) IncludeZero(data, options);
    if (IsOneValue(data)) WidenValue(data, options);
    AddMargin(data, options);
    return options.logarithmic ? LogScale(data, options) : BestLinear(data, options);
}

/// Multiplies values and limits, never past the data.
AxisScale Rescaled(const Extent& data, const ScaleOptions& options, double factor) {
    ScaleOptions scaled = options;
    if (scaled.base) *scaled.base /= factor;
    AxisScale scale = ScaleOf({data.lo / factor, data.hi / factor}, scaled);
    const auto back = [&](double v) {
        constexpr double kMost = std::numeric_limits<double>::max();
        return std::clamp(v * factor, -kMost, kMost);
    };
    scale.min = std::min(back(scale.min), data.lo);
    scale.max = std::max(back(scale.max), data.hi);
    // The smallest doubles have no room between them, and are 0 to the eye.
    if (!(scale.min < scale.max)) return ScaleOf({-1.0, 1.0}, options);
    for (std::vector<double>* tics : {&scale.majors, &scale.minors}) {
        for (double& v : *tics)
            v = std::clamp(back(v), scale.min, scale.max);
    }
    scale.majorStep = back(scale.majorStep);
    return scale;
}

}  // namespace

void DataRange::Add(double value, bool logarithmic) {
    if (!std::isfinite(value) || (logarithmic && value <= 0.0)) {
        ++leftOut;
        return;
    }
    min = count == 0 ? value : std::min(min, value);
    max = count == 0 ? value : std::max(max, value);
    ++count;
}

DataRange RangeOf(std::span<const double> values, bool logarithmic) {
    DataRange range;
    for (const double v : values)
        range.Add(v, logarithmic);
    return range;
}

AxisScale AutoScale(double min, double max, const ScaleOptions& asked) {
    ScaleOptions options = asked;
    if (std::isnan(options.length)) options.length = ScaleOptions().length;
    options.length = std::clamp(options.length, 0.0, kLongest);
    if (!(options.margin > 0.0) || !std::isfinite(options.margin)) options.margin = 0.0;
    if (options.base && !std::isfinite(*options.base)) options.base.reset();
    Extent data{std::min(min, max), std::max(min, max)};
    if (!std::isfinite(min) || !std::isfinite(max) || (options.logarithmic && data.lo <= 0.0))
        data = options.logarithmic ? Extent{1.0, 10.0} : Extent{0.0, 1.0};
    const double size = std::max(std::abs(data.lo), std::abs(data.hi));
    if (!options.logarithmic && size > kHuge) return Rescaled(data, options, 1e200);
    if (!options.logarithmic && size != 0.0 && size < kTiny) return Rescaled(data, options, 1e-200);
    return ScaleOf(data, options);
}

AxisScale TicsInside(double min, double max, const ScaleOptions& options) {
    ScaleOptions kept = options;
    kept.tight = true;
    kept.zero = false;
    kept.base.reset();
    const bool isRange = std::isfinite(min) && std::isfinite(max) &&
                         !(options.logarithmic && std::min(min, max) <= 0.0) &&
                         !IsOneValue({std::min(min, max), std::max(min, max)});
    AxisScale scale = isRange ? AutoScale(min, max, kept) : AxisScale{};
    scale.logarithmic = options.logarithmic;
    scale.min = min;
    scale.max = max;
    return scale;
}

}  // namespace varnel

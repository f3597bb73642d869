#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "varnel/chart/detail/scale_numbers.h"

namespace varnel::detail {
namespace {

constexpr double kNoRange = 1e-20;

double PowerOf10(int k) {
    return std::pow(10.0, k);
}

/// The integer part of v; false when no integer holds it.
bool Truncate(double v, long long& out) {
    if (!(std::abs(v) < 4e18)) return false;
    out = static_cast<long long>(v);
    return true;
}

/// A range carried onto numbers that are not negative, where truncation goes one way.
class NonNegative {
 public:
    NonNegative(double min, double max, double shift) : m_Shift(shift) {
        if (min >= 0.0) {
            m_Way = Way::kAsIs;
            lo = min;
            hi = max;
        } else if (max >= 0.0) {
            m_Way = Way::kShifted;
            lo = min + shift;
            hi = max + shift;
        } else {
            m_Way = Way::kMirrored;
            lo = -max;
            hi = -min;
        }
    }

    /// The way back.
    std::pair<double, double> Undo(double low, double high) const {
        switch (m_Way) {
            case Way::kShifted:
                return {low - m_Shift, high - m_Shift};
            case Way::kMirrored:
                return {0.0 - high, 0.0 - low};  // 0 stays 0, not -0
            default:
                return {low, high};
        }
    }
    bool IsMirrored() const { return m_Way == Way::kMirrored; }

    double lo;
    double hi;

 private:
    enum class Way { kAsIs, kShifted, kMirrored };
    Way m_Way;
    double m_Shift;
};

/// Units from tic to tic, and tics from major to major tic.
struct Intervals {
    int minor;
    int perMajor;
};

Intervals ChooseIntervals(long long units, int perMajorOfMany) {
    if (units > 80) return {5, perMajorOfMany};
    if (units > 40) return {5, 4};
    if (units > 20) return {2, 5};
    if (units > 10) return {1, 5};
    return {1, 2};
}

void WidenPoint(double& min, double& max) {
    if (std::abs(max) < kNoRange) {
        min = 0.0;
        max = 10.0;
    } else if (min < 0.0) {
        max = 0.0;
        min = 2.0 * min;
    } else {
        min = 0.0;
        max = 2.0 * max;
    }
}

/// The value that comes before all others; the first one is looked at even when n is 0.
template <class Before>
double ExtremeOfData(const double* values, int n, Before before) {
    if (values == nullptr || n < 0) return 0.0;
    double found = std::numeric_limits<double>::quiet_NaN();
    for (int i = 0; i < std::max(n, 1); ++i)
        if (std::isfinite(values[i]) && (std::isnan(found) || before(values[i], found)))
            found = values[i];
    return std::isnan(found) ? 0.0 : found;
}

bool IsRange(double min, double max) {
    return max > min && std::isfinite(max - min);
}

}  // namespace

void RoundAxis(double& min, double& max, int minorOnly) {
    double low = min;
    double high = max;
    if (std::abs(low - high) < kNoRange) WidenPoint(low, high);
    if (!IsRange(low, high)) return;
    const double log = std::log10(high - low);
    const int decade = static_cast<int>(log > 0.0 ? log + 0.99999 : log + 0.5);
    const NonNegative range(low, high, PowerOf10(decade));
    const double unit = PowerOf10(decade - 2);
    long long top = 0;
    long long bottom = 0;
    if (!Truncate(range.hi / unit, top) || !Truncate(range.lo / unit, bottom)) return;
    ++top;
    const Intervals intervals = ChooseIntervals(top - bottom, 8);
    const long long step = minorOnly != 0
                               ? intervals.minor
                               : static_cast<long long>(intervals.minor) * intervals.perMajor;
    const long long roundTop = ((top - 1) / step + 1) * step;
    // What starts at 0 stays there, even with a step of one unit.
    const long long roundBottom = bottom <= 1 ? 0 : (bottom - 1) / step * step;
    const auto [newMin, newMax] =
        range.Undo(static_cast<double>(roundBottom) * unit, static_cast<double>(roundTop) * unit);
    min = newMin;
    max = newMax;
}

TicMarks CalcAxisTicMarks(double min, double max) {
    if (max < min) std::swap(min, max);
    const TicMarks none{std::isfinite(min) ? min : 0.0, 0.0, 1, 0};
    if (!IsRange(min, max)) return none;
    const int decade = static_cast<int>(std::ceil(std::log10(max - min)));
    const NonNegative range(min, max, PowerOf10(decade));
    const double unit = PowerOf10(decade - 2);
    long long top = 0;
    long long bottom = 0;
    if (!Truncate(range.hi / unit, top) || !Truncate(range.lo / unit, bottom)) return none;
    const Intervals intervals = ChooseIntervals(top - bottom, 10);
    const long long major = static_cast<long long>(intervals.minor) * intervals.perMajor;
    const long long first =
        (bottom + major) % major == 0 ? bottom : bottom + major - bottom % major;
    auto [low, high] =
        range.Undo(static_cast<double>(bottom) * unit, static_cast<double>(top) * unit);
    if (min >= 0.0 && low < 0.0) low = 0.0;
    if (max <= 0.0 && high > 0.0) high = 0.0;
    TicMarks tics;
    tics.space = intervals.minor * unit;
    tics.perMajor = intervals.perMajor;
    const double digits = std::floor(std::log10(intervals.perMajor * tics.space));
    tics.decimals = std::max(0, -static_cast<int>(digits));
    if (!(low < 0.0 && 0.0 <= high)) tics.origin = static_cast<double>(first) * unit;
    if (range.IsMirrored()) tics.origin = 0.0 - tics.origin;
    return tics;
}

double CenterInside(double min, double max, double origin, double majorSpace) {
    if (!(majorSpace > 0.0) || !IsRange(min, max)) return origin;
    // Rounding errors of the origin are tiny against the tics.
    const double tolerance = 1e-9 * majorSpace;
    if (origin < min - tolerance) {
        origin += std::ceil((min - tolerance - origin) / majorSpace) * majorSpace;
    } else if (origin > max + tolerance) {
        origin -= std::ceil((origin - max - tolerance) / majorSpace) * majorSpace;
    }
    if (origin < min - tolerance || origin > max + tolerance) return origin;
    return std::clamp(origin, min, max);
}

double LowestDecade(double min, double max) {
    const double decade = std::pow(10.0, std::ceil(std::log10(min)));
    return decade <= max ? decade : min;
}

double MinimumOfData(const double* values, int n) {
    return ExtremeOfData(values, n, [](double a, double b) { return a < b; });
}

double MaximumOfData(const double* values, int n) {
    return ExtremeOfData(values, n, [](double a, double b) { return a > b; });
}

}  // namespace varnel::detail
